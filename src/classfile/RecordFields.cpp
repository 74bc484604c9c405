#include "RecordFields.h"

#include "Cp1252.h"

#include <limits>
#include <utility>

namespace tarn
{

namespace
{

// An optional sign and decimal digits, nothing else, within [lowest, highest].
std::optional<qint64> wholeNumber(const QByteArray& token, qint64 lowest, qint64 highest)
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

struct Range {
    qint64 lowest;
    qint64 highest;
};

template <typename T> constexpr Range rangeOf()
{
    return {std::numeric_limits<T>::min(), std::numeric_limits<T>::max()};
}

} // namespace

void RecordFields::setLine(int lineNumber, const QByteArray& line)
{
    m_lineNumber = lineNumber;
    m_tokens = splitTokens(line);
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

std::optional<qint64> RecordFields::number(int field, const char* what, ColumnKind kind)
{
    const QByteArray& token = m_tokens[field];
    const Range range = kind == ColumnKind::Long ? rangeOf<qint32>() : rangeOf<qint16>();
    const std::optional<qint64> value = wholeNumber(token, range.lowest, range.highest);
    if (value)
        return value;
    // Fields close up at blanks, so all behind a missing one are missing too: one word does.
    if (token.isEmpty() && std::exchange(m_missingTold, true))
        return std::nullopt;
    const QString why = token.isEmpty() ? QStringLiteral("is missing")
                                        : QStringLiteral("\"%1\" is not %2").arg(text(field), describeKind(kind));
    m_problems << QStringLiteral("line %1: %2 %3.").arg(m_lineNumber).arg(QLatin1String(what), why);
    return std::nullopt;
}

} // namespace tarn
