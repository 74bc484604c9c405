#pragma once

#include <QWidget>
#include <memory>

namespace tarn
{

struct AppState;
class Dialogs;

// The four reference tables the class editor chooses from.
enum class ReferenceTable { Weapons, Grenades, Special, Items };

// The maintenance window of one reference table, loaded and ready to show modally.
std::unique_ptr<QWidget> createReferenceWindow(ReferenceTable table, AppState& state, Dialogs& dialogs,
                                               QWidget* parent);

} // namespace tarn
