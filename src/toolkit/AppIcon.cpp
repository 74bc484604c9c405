#include "AppIcon.h"

#include <QPainter>

namespace tarn
{

QPixmap appIcon()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(QColor(0, 0, 128));
    painter.drawRect(1, 1, 29, 29);
    painter.setBrush(QColor(0, 128, 128));
    painter.drawRect(5, 5, 21, 5);   // the bar of the T
    painter.drawRect(13, 10, 5, 16); // its stem
    painter.setPen(QColor(255, 255, 0));
    painter.drawLine(4, 27, 27, 27); // the water line of the tarn
    return pixmap;
}

} // namespace tarn
