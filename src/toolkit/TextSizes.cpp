#include "TextSizes.h"

#include <QMainWindow>
#include <QScrollArea>

namespace tarn
{

namespace
{

// Its size hint is the whole content, not the few lines a scroll area asks for.
class ContentScrollArea : public QScrollArea
{
public:
    using QScrollArea::QScrollArea;

    QSize sizeHint() const override
    {
        if (!widget())
            return QScrollArea::sizeHint();
        const int frame = 2 * frameWidth();
        return widget()->sizeHint() + QSize(frame, frame);
    }
};

// The frame and inner margins of a box grow with its font, about one line high.
int padding(const QWidget& box)
{
    return box.fontMetrics().height();
}

int widthOf(const QWidget& box, int characters)
{
    return box.fontMetrics().horizontalAdvance(QString(characters, u'0')) + padding(box);
}

} // namespace

void setWidthInCharacters(QWidget& box, int characters)
{
    box.setFixedWidth(widthOf(box, characters));
}

void setSizeInCharacters(QWidget& list, int characters, int lines)
{
    list.setFixedSize(widthOf(list, characters), list.fontMetrics().lineSpacing() * lines + padding(list));
}

void scrollCentralWidget(QMainWindow& window)
{
    auto* area = new ContentScrollArea(&window);
    area->setObjectName(QStringLiteral("contentScroll"));
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // Tab goes from control to control, scrolling each into view
    area->setWidgetResizable(true);
    area->setWidget(window.takeCentralWidget());
    window.setCentralWidget(area);
}

} // namespace tarn
