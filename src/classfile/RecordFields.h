#pragma once

#include "LineReader.h"
#include "Protection.h"
#include "store/Schema.h"

#include <QString>
#include <QStringList>
#include <optional>

namespace tarn
{

// The fields of one record line, converted as the import stores them. A field that
// is missing or out of its range is noted in the problem list, with its line, and
// reads as 0 so that the rest of the record can still be looked at.
class RecordFields
{
public:
    explicit RecordFields(QStringList& problems) : m_problems(problems) {}

    // Takes the next line of the file.
    void readLine(LineReader& lines);
    QString text(int field) const;
    // A signed 16-bit number.
    qint16 integer(int field, const char* what);
    // A signed 32-bit number, a fraction taken down to a whole number; its leading sign
    // blank has gone as a separator already.
    qint32 bitSum(int field, const char* what);

private:
    std::optional<qint64> number(int field, const char* what, ColumnKind kind);

    QStringList& m_problems;
    QByteArray m_line; // unprotected; the tokens view it, and it keeps its room from line to line
    Tokens m_tokens;
    int m_lineNumber = 0;
    bool m_missingTold = false;
};

} // namespace tarn
