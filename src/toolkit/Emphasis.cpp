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
    // A style sheet of the label's own, since a window's style sheet would override its palette.
    label.setStyleSheet(QStringLiteral("color: %1;").arg(emphasisBlue(label.palette()).name()));
}

void makeLargerHeading(QLabel& label)
{
    QFont font = label.font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * HeadingScale);
    label.setFont(font);
}

} // namespace tarn
