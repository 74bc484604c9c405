#include "LiteralText.h"

#include <QAbstractButton>
#include <QLabel>

namespace tarn
{

namespace
{

QString withoutAccessKeys(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

void showLiteral(QLabel& label, const QString& text)
{
    label.setTextFormat(Qt::PlainText);
    label.setText(label.buddy() ? withoutAccessKeys(text) : text);
}

void showLiteral(QAbstractButton& button, const QString& text)
{
    button.setText(withoutAccessKeys(text));
}

} // namespace tarn
