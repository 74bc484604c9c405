#include "ReferenceWindows.h"

namespace tarn {

// PLACEHOLDER until the reference editors land.
std::unique_ptr<QWidget> createReferenceWindow(ReferenceTable, AppState&, Dialogs&, QWidget* parent)
{
    auto window = std::make_unique<QWidget>(parent, Qt::Window);
    return window;
}

} // namespace tarn
