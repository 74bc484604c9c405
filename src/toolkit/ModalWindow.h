#pragma once

class QWidget;

namespace tarn
{

// Shows a window application-modal and returns once it has been closed.
void runModal(QWidget& window);

} // namespace tarn
