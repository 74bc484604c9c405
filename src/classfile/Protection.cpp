#include "Protection.h"

#include <algorithm>

namespace tarn
{

namespace
{

constexpr unsigned char Shift = 128;
// Codes above these are shifted; the two differ, so code 128 is left alone both ways.
constexpr unsigned char HighestPlainWhenProtecting = 30;
constexpr unsigned char HighestPlainWhenReading = 128;
constexpr char Blank = ' ';

// The protected form of a byte. Codes of 128 and above have no protected form; the
// export refuses them before they get here, and shifting them round would turn some
// into line breaks. A comparison, not a table, so that a whole block goes through at
// the processor's full width.
constexpr char protectedByte(char c)
{
    const auto code = static_cast<unsigned char>(c);
    return char(code > HighestPlainWhenProtecting && code < Shift ? code + Shift : code);
}

} // namespace

QByteArray protectLine(const QByteArray& line, bool protectOutput)
{
    QByteArray result = line;
    if (protectOutput)
        protectInPlace(result);
    return result;
}

void protectInPlace(QByteArray& bytes)
{
    char* const begin = bytes.data();
    std::transform(begin, begin + bytes.size(), begin, protectedByte);
}

QByteArray unprotectLine(const QByteArray& line)
{
    QByteArray result = line;
    unprotectInPlace(result);
    return result;
}

void unprotectInPlace(QByteArray& bytes)
{
    for (char& c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (code > HighestPlainWhenReading)
            c = char(code - Shift);
    }
}

Tokens splitTokens(QByteArrayView text)
{
    const qsizetype size = text.size();
    Tokens tokens;
    std::size_t index = 1;
    qsizetype i = 0;
    while (i < size) {
        if (text[i] == Blank) {
            while (i < size && text[i] == Blank)
                ++i;
            ++index; // a run of blanks is one separator, also at the start of the line
            continue;
        }
        const qsizetype start = i;
        while (i < size && text[i] != Blank)
            ++i;
        if (index < tokens.size())
            tokens[index] = text.sliced(start, i - start);
    }
    return tokens;
}

} // namespace tarn
