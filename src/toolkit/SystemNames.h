#pragma once

class QWidget;

namespace tarn
{

// Gives a window and every named control in it its system name as accessible
// description, so support and automation can find each by the same name everywhere.
void publishSystemNames(QWidget& window);

} // namespace tarn
