#pragma once

#include <QByteArray>
#include <QList>

class QIODevice;

namespace tarn
{

// Reads a class file line by line from a device opened for reading, holding no more
// than one chunk and one line at a time, so that memory stays flat whatever the size
// of the file. A line ends at a carriage return, with a line feed right behind it
// belonging to the terminator. A line feed anywhere else is part of the line.
class LineReader
{
public:
    static constexpr qsizetype MaxLineLength = 32767;

    explicit LineReader(QIODevice& in);

    // True when no further line can be read.
    bool atEnd();
    // The next line without its terminator, into a buffer kept from line to line so that
    // its room is reused. Throws ClassFileError past the end, on a line longer than
    // MaxLineLength and when the device fails.
    void readLine(QByteArray& into);
    // The number of the last line read, from 1.
    int lineNumber() const { return m_lineNumber; }
    // The numbers of the lines read so far that hold a line feed: a line feed without
    // a carriage return before it, which ends no line here but may in other readers.
    const QList<int>& linesWithLineFeeds() const { return m_linesWithLineFeeds; }

private:
    bool fill();
    qsizetype findLineEnd() const;
    void skipLineEnd();
    [[noreturn]] void tooLong() const;

    QIODevice& m_in;
    QByteArray m_buffer;
    qsizetype m_pos = 0;
    bool m_deviceDone = false;
    int m_lineNumber = 0;
    QList<int> m_linesWithLineFeeds;
};

} // namespace tarn
