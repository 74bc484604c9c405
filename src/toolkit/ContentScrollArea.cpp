#include "ContentScrollArea.h"

namespace tarn
{

ContentScrollArea::ContentScrollArea(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // Tab goes from control to control, scrolling each into view
    setWidgetResizable(true);
}

// The whole content, not the few lines a scroll area asks for.
QSize ContentScrollArea::sizeHint() const
{
    if (!widget())
        return QScrollArea::sizeHint();
    const int frame = 2 * frameWidth();
    return widget()->sizeHint() + QSize(frame, frame);
}

} // namespace tarn
