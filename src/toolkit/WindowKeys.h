#pragma once

class QWidget;

namespace tarn
{

// Esc and Ctrl+W close the window exactly as its title-bar button does, so that the
// window's close event stores or refuses the waiting edits.
void addCloseKeys(QWidget& window);

} // namespace tarn
