#pragma once

#include <QColor>

class QLabel;
class QPalette;
class QWidget;

namespace tarn
{

// The blue of the windows' bold notes and headings, in a shade that reads on the
// palette's window colour: pure blue on a light window, a lighter blue on a dark one.
QColor emphasisBlue(const QPalette& palette);
// Paints the label's text in that blue.
void showInBlue(QLabel& label);

// The widget's own font, in bold.
void makeBold(QWidget& widget);

// A heading that stays larger than the text around it at any font size.
void makeLargerHeading(QLabel& label);

} // namespace tarn
