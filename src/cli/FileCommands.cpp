#include "Commands.h"

#include "classfile/Protection.h"

#include <QIODevice>
#include <QTextStream>

namespace tarn::cli
{

namespace
{

// A line's text without its ending, and the ending as it stood.
std::pair<QByteArray, QByteArray> splitEnding(const QByteArray& line)
{
    qsizetype end = line.size();
    while (end > 0 && (line[end - 1] == '\n' || line[end - 1] == '\r'))
        --end;
    return {line.left(end), line.mid(end)};
}

qsizetype firstUnprotectable(const QByteArray& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 128)
            return i;
    }
    return -1;
}

// The next line of the device with its line feed, if it has one; empty at the end.
// Read byte by byte from the device's buffer, so that a NUL is a byte like any other.
QByteArray readRawLine(QIODevice& in)
{
    QByteArray line;
    char c = 0;
    while (in.getChar(&c)) {
        line += c;
        if (c == '\n')
            break;
    }
    return line;
}

// Passes standard input to standard output a line at a time, each line through
// the given step; a step that refuses a line ends the filter with status 1.
template <typename Step> int filterLines(Console& console, Step step)
{
    int lineNumber = 0;
    for (QByteArray line = readRawLine(console.in); !line.isEmpty(); line = readRawLine(console.in)) {
        const auto [text, ending] = splitEnding(line);
        ++lineNumber;
        const std::optional<QByteArray> converted = step(text, lineNumber);
        if (!converted)
            return Refused;
        console.out.write(*converted + ending);
    }
    return Success;
}

} // namespace

int protectCommand(const Invocation&, Console& console)
{
    return filterLines(console, [&](const QByteArray& text, int lineNumber) -> std::optional<QByteArray> {
        if (const qsizetype at = firstUnprotectable(text); at >= 0) {
            console.error << QStringLiteral("tarnctl: line %1 holds the byte %2 at column %3, which a protected "
                                            "class file cannot carry\n")
                                 .arg(lineNumber)
                                 .arg(static_cast<unsigned char>(text[at]))
                                 .arg(at + 1);
            return std::nullopt;
        }
        return protectLine(text, true);
    });
}

int unprotectCommand(const Invocation&, Console& console)
{
    return filterLines(console,
                       [](const QByteArray& text, int) -> std::optional<QByteArray> { return unprotectLine(text); });
}

} // namespace tarn::cli
