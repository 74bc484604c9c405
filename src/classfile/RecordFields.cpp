#include "RecordFields.h"

#include "Cp1252.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tarn
{

namespace
{

// An optional sign and decimal digits, nothing else, within [lowest, highest].
std::optional<qint64> wholeNumber(QByteArrayView token, qint64 lowest, qint64 highest)
{
    const bool signed_ = token.startsWith('+') || token.startsWith('-');
    const qsizetype first = signed_ ? 1 : 0;
    if (token.size() == first)
        return std::nullopt;
    const qint64 largestMagnitude = qMax(highest, -lowest);
    qint64 magnitude = 0;
    for (qsizetype i = first; i < token.size(); ++i) {
        if (token[i] < '0' || token[i] > '9')
            return std::nullopt;
        magnitude = magnitude * 10 + (token[i] - '0');
        if (magnitude > largestMagnitude)
            return std::nullopt;
    }
    const qint64 value = token.startsWith('-') ? -magnitude : magnitude;
    return value >= lowest && value <= highest ? std::optional(value) : std::nullopt;
}

// A number with an optional decimal fraction, taken down to a whole number within
// [lowest, highest]: 5.7 is 5 and -0.5 is -1.
std::optional<qint64> flooredNumber(QByteArrayView token, qint64 lowest, qint64 highest)
{
    const qsizetype point = token.indexOf('.');
    if (point < 0)
        return wholeNumber(token, lowest, highest);
    const QByteArrayView fraction = token.sliced(point + 1);
    if (!std::all_of(fraction.cbegin(), fraction.cend(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    QByteArray whole = token.first(point).toByteArray();
    const bool negative = whole.startsWith('-');
    if (whole.isEmpty() || whole == "-" || whole == "+") {
        if (fraction.isEmpty())
            return std::nullopt; // no digit at all
        whole += '0';
    }
    const std::optional<qint64> value = wholeNumber(whole, lowest - 1, highest);
    if (!value)
        return std::nullopt;
    const bool belowWhole = negative && fraction.count('0') < fraction.size();
    const qint64 floored = *value - (belowWhole ? 1 : 0);
    return floored >= lowest ? std::optional(floored) : std::nullopt;
}

struct Range {
    qint64 lowest;
    qint64 highest;
};

template <typename T> constexpr Range rangeOf()
{
    return {std::numeric_limits<T>::min(), std::numeric_limits<T>::max()};
}

} // namespace

void RecordFields::readLine(LineReader& lines)
{
    lines.readLine(m_line);
    m_lineNumber = lines.lineNumber();
    unprotectInPlace(m_line);
    m_tokens = splitTokens(m_line);
    m_missingTold = false;
}

QString RecordFields::text(int field) const
{
    return decodeCp1252(m_tokens[field]);
}

qint16 RecordFields::integer(int field, const char* what)
{
    return qint16(number(field, what, ColumnKind::Integer).value_or(0));
}

qint32 RecordFields::bitSum(int field, const char* what)
{
    return qint32(number(field, what, ColumnKind::Long).value_or(0));
}

// A 16-bit field takes whole numbers only; a bit sum is taken down to one.
std::optional<qint64> RecordFields::number(int field, const char* what, ColumnKind kind)
{
    const QByteArrayView token = m_tokens[field];
    const bool sum = kind == ColumnKind::Long;
    const Range range = sum ? rangeOf<qint32>() : rangeOf<qint16>();
    const std::optional<qint64> value =
        sum ? flooredNumber(token, range.lowest, range.highest) : wholeNumber(token, range.lowest, range.highest);
    if (value)
        return value;
    // Fields close up at blanks, so all behind a missing one are missing too: one word does.
    if (token.isEmpty() && std::exchange(m_missingTold, true))
        return std::nullopt;
    const QString expected = sum ? QStringLiteral("a number from -2147483648 to 2147483647") : describeKind(kind);
    const QString why =
        token.isEmpty() ? QStringLiteral("is missing") : QStringLiteral("\"%1\" is not %2").arg(text(field), expected);
    m_problems << QStringLiteral("line %1: %2 %3.").arg(m_lineNumber).arg(QLatin1String(what), why);
    return std::nullopt;
}

} // namespace tarn
