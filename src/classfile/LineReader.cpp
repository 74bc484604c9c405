#include "LineReader.h"

#include "ClassFileError.h"

#include <QIODevice>
#include <algorithm>

namespace tarn
{

namespace
{

constexpr qsizetype ChunkSize = qsizetype(64) * 1024;

constexpr char LineEnd = '\r';

} // namespace

LineReader::LineReader(QIODevice& in) : m_in(in) {}

bool LineReader::atEnd()
{
    return m_pos >= m_buffer.size() && !fill();
}

void LineReader::readLine(QByteArray& into)
{
    if (atEnd())
        throw ClassFileError(QStringLiteral("line %1: the file ends before this line.").arg(m_lineNumber + 1));
    ++m_lineNumber;
    qsizetype end = findLineEnd();
    while (end < 0) {
        if (m_buffer.size() - m_pos > MaxLineLength)
            tooLong();
        if (!fill())
            end = m_buffer.size(); // the last line of the file, with no terminator
        else
            end = findLineEnd();
    }
    if (end - m_pos > MaxLineLength)
        tooLong();
    const QByteArrayView line = QByteArrayView(m_buffer).sliced(m_pos, end - m_pos);
    if (line.contains('\n'))
        m_linesWithLineFeeds << m_lineNumber;
    into.resize(line.size()); // within the room of the last line, unless this one is longer
    std::copy(line.begin(), line.end(), into.begin());
    m_pos = end;
    skipLineEnd();
}

// Drops what has been read and appends the next chunk; false when the device has
// nothing more.
bool LineReader::fill()
{
    if (m_deviceDone)
        return false;
    m_buffer.remove(0, m_pos);
    m_pos = 0;
    const qsizetype kept = m_buffer.size();
    m_buffer.resize(kept + ChunkSize);
    const qint64 got = m_in.read(m_buffer.data() + kept, ChunkSize);
    m_buffer.resize(kept + qMax<qint64>(got, 0));
    if (got < 0)
        throw ClassFileError(QStringLiteral("Cannot read past line %1: %2").arg(m_lineNumber).arg(m_in.errorString()));
    m_deviceDone = got == 0;
    return !m_deviceDone;
}

qsizetype LineReader::findLineEnd() const
{
    return m_buffer.indexOf(LineEnd, m_pos);
}

void LineReader::skipLineEnd()
{
    if (m_pos >= m_buffer.size())
        return;
    ++m_pos; // the carriage return
    if ((m_pos < m_buffer.size() || fill()) && m_buffer[m_pos] == '\n')
        ++m_pos;
}

void LineReader::tooLong() const
{
    throw ClassFileError(QStringLiteral("line %1 is longer than %2 characters.").arg(m_lineNumber).arg(MaxLineLength));
}

} // namespace tarn
