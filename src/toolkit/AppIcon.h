#pragma once

#include <QPixmap>

namespace tarn
{

// The program's 32 by 32 icon, drawn in a handful of flat colours.
QPixmap appIcon();

} // namespace tarn
