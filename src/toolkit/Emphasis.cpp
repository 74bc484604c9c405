#include "Emphasis.h"

#include <QLabel>
#include <QPalette>

namespace tarn
{

namespace
{
// Half again as large as the text around it, as 12 points beside the old 8-point dialogs.
constexpr qreal HeadingScale = 1.5;
} // namespace

QColor emphasisBlue(const QPalette& palette)
{
    const bool darkWindow = palette.color(QPalette::Window).lightnessF() < 0.5;
    return darkWindow ? QColor(0x8a, 0xb4, 0xff) : QColor(Qt::blue);
}

void showInBlue(QLabel& label)
{
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, emphasisBlue(palette));
    label.setPalette(palette);
}

void makeBold(QWidget& widget)
{
    QFont font = widget.font();
    font.setBold(true);
    widget.setFont(font);
}

void makeLargerHeading(QLabel& label)
{
    QFont font = label.font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * HeadingScale);
    label.setFont(font);
}

} // namespace tarn
