#pragma once

#include <QIcon>

namespace tarn
{

// The program's icon at every size it is drawn in, from the embedded PNGs that are
// made from the one SVG drawing the desktop entry uses too.
QIcon appIcon();

} // namespace tarn
