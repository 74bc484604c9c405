#pragma once

#include "ClassFileError.h"
#include "ClassRecord.h"
#include "LineReader.h"

#include <QStringList>
#include <optional>
#include <variant>

class QIODevice;

namespace tarn
{

class RecordFields;

// A class record of the file, numbered from 1 in file order. Problems lists the
// fields that could not be converted, each with its line; the record is whole when
// it is empty.
struct ReadClass {
    int line = 0; // of the "[" line
    qint16 number = 0;
    ClassRecord record;
    QStringList problems;
};

// A line that stands where a record should start and does not open with "[".
struct BadRecord {
    int line = 0;
    QString text; // unprotected and decoded
};

using RecordEvent = std::variant<ReadClass, BadRecord>;

// The file ends before its second line. Its one line holds line feeds when the file's
// lines end with a line feed alone, as a class file's do once their carriage returns
// are stripped.
class TooFewLinesError : public ClassFileError
{
public:
    explicit TooFewLinesError(bool lineFeeds);
    bool lineFeeds() const { return m_lineFeeds; }

private:
    bool m_lineFeeds;
};

// Reads the records of a class file of either form, one at a time. From line 3 on,
// an empty line is passed over and a line opening with "[" starts a record of six
// lines. The end of the file is tested before a line is looked at, so the last line
// that is read between records is never looked at, and a file of two or three lines
// holds no class.
class ClassFileReader
{
public:
    static constexpr int MaxClasses = 32767;

    // Reads the two header lines and line 3. Throws TooFewLinesError when the file has
    // fewer than two lines, and ClassFileError when it cannot be read; a file of the two
    // header lines holds no class.
    explicit ClassFileReader(QIODevice& in);

    // The next record or bad line, or nothing at the end of the file. Reading can go
    // on past a bad line or a record with problems. Throws ClassFileError when the
    // file ends inside a record, holds a line that is too long, holds more classes
    // than a configuration can number, or cannot be read.
    std::optional<RecordEvent> next();

    const QList<int>& linesWithLineFeeds() const { return m_lines.linesWithLineFeeds(); }

private:
    std::optional<RecordEvent> look();
    ReadClass readRecord();
    void readRecordLine(RecordFields& fields, int recordLine);
    void readCurrent();

    LineReader m_lines;
    QByteArray m_current; // unprotected
    int m_currentLine = 0;
    qint16 m_classes = 0;
    bool m_advance = false;
};

} // namespace tarn
