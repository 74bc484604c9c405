#pragma once

#include <QString>

class QAbstractButton;
class QLabel;

namespace tarn
{

// Text the author or a file supplied (a name, a Mod ID, a line of a class file) is shown
// as it stands: never read as markup, and an '&' never taken for an access key.

// Shows the text in a label; where the label takes access keys (it has a buddy), '&' is doubled.
void showLiteral(QLabel& label, const QString& text);
// Shows the text as a button's or check box's caption, which always takes access keys.
void showLiteral(QAbstractButton& button, const QString& text);

} // namespace tarn
