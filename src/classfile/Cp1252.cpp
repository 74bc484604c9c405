#include "Cp1252.h"

#include <array>
#include <optional>

namespace tarn
{

namespace
{

// Bytes 0x80 to 0x9F; all other bytes are the Unicode code point of the same number.
constexpr std::array<char16_t, 32> highControls{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned char FirstHigh = 0x80;
constexpr unsigned char PastHigh = 0xA0;

bool inHighRange(char16_t unit)
{
    return unit >= FirstHigh && unit < PastHigh;
}

std::optional<unsigned char> byteOf(char16_t unit)
{
    if (unit <= 0xFF && !inHighRange(unit))
        return static_cast<unsigned char>(unit);
    for (std::size_t i = 0; i < highControls.size(); ++i) {
        if (highControls[i] == unit)
            return static_cast<unsigned char>(FirstHigh + i);
    }
    return std::nullopt;
}

// The whole character at position i, both halves of a surrogate pair.
QString characterAt(QStringView text, qsizetype i)
{
    const bool pair = QChar::isHighSurrogate(text[i].unicode()) && i + 1 < text.size() &&
                      QChar::isLowSurrogate(text[i + 1].unicode());
    return text.mid(i, pair ? 2 : 1).toString();
}

} // namespace

QString decodeCp1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        *out++ = QChar(inHighRange(byte) ? highControls[byte - FirstHigh] : char16_t(byte));
    }
    return text;
}

Cp1252Encoding encodeCp1252(QStringView text)
{
    Cp1252Encoding result;
    result.bytes.resize(text.size());
    Cp1252Written written = writeCp1252(result.bytes.data(), text);
    result.bytes.truncate(written.bytes);
    result.refused = std::move(written.refused);
    return result;
}

Cp1252Written writeCp1252(char* out, QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unicode = text[i].unicode();
        if (unicode < 0x80) { // the one byte of the same code
            out[i] = char(unicode);
            continue;
        }
        const std::optional<unsigned char> byte = byteOf(unicode);
        if (!byte)
            return {i, characterAt(text, i)};
        out[i] = char(*byte);
    }
    return {text.size(), {}};
}

} // namespace tarn
