#include "Guarded.h"

#include "Dialogs.h"
#include "store/StoreError.h"

namespace tarn
{

bool guarded(Dialogs& dialogs, QWidget* window, const std::function<void()>& command)
{
    try {
        command();
        return true;
    } catch (const StoreError& error) {
        dialogs.setBusy(false);
        dialogs.message(window, error.message());
        return false;
    }
}

} // namespace tarn
