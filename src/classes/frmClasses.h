#pragma once

#include <QMainWindow>

namespace tarn {

struct AppState;
class Dialogs;

// PLACEHOLDER until the class editor lands.
class frmClasses : public QMainWindow {
    Q_OBJECT
public:
    frmClasses(AppState& state, Dialogs& dialogs, QWidget* parent = nullptr);
};

} // namespace tarn
