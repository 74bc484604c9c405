#include "frmClasses.h"

#include "toolkit/Dialogs.h"

namespace tarn {

frmClasses::frmClasses(AppState&, Dialogs& dialogs, QWidget* parent) : QMainWindow(parent)
{
    setWindowFlag(Qt::Window);
    dialogs.setBusy(false);
}

} // namespace tarn
