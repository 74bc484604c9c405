#include "TextSizes.h"

#include <QWidget>

namespace tarn
{

namespace
{

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

} // namespace tarn
