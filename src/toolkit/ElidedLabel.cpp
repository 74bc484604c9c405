#include "ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace tarn
{

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent)
{
    setSizePolicy(QSizePolicy::Ignored, sizePolicy().verticalPolicy());
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
    style()->drawItemText(&painter, room, int(alignment()), palette(), isEnabled(), shown, foregroundRole());
}

} // namespace tarn
