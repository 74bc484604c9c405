#include "Guarded.h"

#include "Dialogs.h"
#include "store/Error.h"

namespace tarn
{

bool guarded(Dialogs& dialogs, QWidget* window, const std::function<void()>& command)
{
    try {
        command();
        return true;
    } catch (const Error& error) {
        dialogs.setBusy(false);
        dialogs.message(window, error.message());
        return false;
    }
}

} // namespace tarn
