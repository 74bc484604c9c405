#pragma once

#include <functional>

class QWidget;

namespace tarn
{

class Dialogs;

// Runs a window's command; a failure (of the store, of a class file) is shown to the author, never lost,
// and the busy cursor is put back. True when the command ran to its end.
bool guarded(Dialogs& dialogs, QWidget* window, const std::function<void()>& command);

} // namespace tarn
