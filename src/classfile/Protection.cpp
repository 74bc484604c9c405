#include "Protection.h"

namespace tarn
{

namespace
{

constexpr unsigned char Shift = 128;
// Codes above these are shifted; the two differ, so code 128 is left alone both ways.
constexpr unsigned char HighestPlainWhenProtecting = 30;
constexpr unsigned char HighestPlainWhenReading = 128;
constexpr char Blank = ' ';

} // namespace

QByteArray protectLine(const QByteArray& line, bool protectOutput)
{
    if (!protectOutput)
        return line;
    QByteArray result = line;
    for (char& c : result) {
        const auto code = static_cast<unsigned char>(c);
        // Codes of 128 and above have no protected form; the export refuses them before
        // they get here, and shifting them round would turn some into line breaks.
        if (code > HighestPlainWhenProtecting && code < Shift)
            c = char(code + Shift);
    }
    return result;
}

QByteArray unprotectLine(const QByteArray& line)
{
    QByteArray result = line;
    for (char& c : result) {
        const auto code = static_cast<unsigned char>(c);
        if (code > HighestPlainWhenReading)
            c = char(code - Shift);
    }
    return result;
}

Tokens splitTokens(const QByteArray& line)
{
    Tokens tokens;
    std::size_t index = 1;
    bool afterBlank = false;
    for (const char c : unprotectLine(line)) {
        if (c == Blank) {
            if (!afterBlank)
                ++index;
            afterBlank = true;
            continue;
        }
        afterBlank = false;
        if (index < tokens.size())
            tokens[index].append(c);
    }
    return tokens;
}

} // namespace tarn
