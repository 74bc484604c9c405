#include "BitNumbers.h"

#include <QLocale>
#include <cmath>
#include <limits>

namespace tarn::bits
{

namespace
{

double roundHalfEven(double value)
{
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction != 0.5)
        return fraction < 0.5 ? below : below + 1;
    return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

std::optional<double> number(const QString& text)
{
    bool ok = false;
    const QString trimmed = text.trimmed();
    double value = trimmed.toDouble(&ok);
    if (!ok) {
        // A decimal comma where the desktop uses one; "1,000" is not taken as a thousand.
        QLocale local = QLocale::system();
        local.setNumberOptions(QLocale::RejectGroupSeparator);
        value = local.toDouble(trimmed, &ok);
    }
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

int halvingCount(qint32 id)
{
    qint64 x = id;
    int count = 0;
    while (x > 1) {
        // An odd x halves to n.5, which goes to the even neighbour.
        const qint64 half = x / 2;
        x = (x % 2 == 0 || half % 2 == 0) ? half : half + 1;
        ++count;
    }
    return count;
}

std::optional<int> bitNumberOfId(const QString& idText)
{
    bool ok = false;
    const qint32 id = idText.trimmed().toInt(&ok);
    if (!ok || id < 0)
        return std::nullopt;
    return halvingCount(id);
}

std::optional<qint16> bitNumberFromText(const QString& text)
{
    const std::optional<double> value = number(text);
    if (!value)
        return std::nullopt;
    const double rounded = roundHalfEven(*value);
    if (rounded < std::numeric_limits<qint16>::min() || rounded > std::numeric_limits<qint16>::max())
        return std::nullopt;
    return static_cast<qint16>(rounded);
}

std::optional<qint32> bitValue(int n)
{
    if (n < 0 || n > HighestBit)
        return std::nullopt;
    return qint32(1) << n;
}

} // namespace tarn::bits
