#include "ClassFileReader.h"

#include "Cp1252.h"
#include "Protection.h"
#include "RecordFields.h"

namespace tarn
{

namespace
{

constexpr int HeaderLines = 2;

constexpr std::array<const char*, 10> weaponNames{"weapon 1", "weapon 2", "weapon 3", "weapon 4", "weapon 5",
                                                  "weapon 6", "weapon 7", "weapon 8", "weapon 9", "weapon 10"};
constexpr std::array<const char*, 3> grenadeNames{"grenade 1", "grenade 2", "grenade 3"};
constexpr std::array<const char*, 6> ammoNames{"bullets limit",  "shells limit", "rockets limit",
                                               "grenades limit", "cells limit",  "slugs limit"};

template <std::size_t N>
void readIntegers(RecordFields& fields, std::array<qint16, N>& values, const std::array<const char*, N>& names)
{
    for (std::size_t k = 0; k < N; ++k)
        values[k] = fields.integer(int(k + 1), names[k]);
}

} // namespace

TooFewLinesError::TooFewLinesError(bool lineFeeds)
    : ClassFileError(QStringLiteral("The file has fewer than two lines: it is not a class file.")),
      m_lineFeeds(lineFeeds)
{
}

ClassFileReader::ClassFileReader(QIODevice& in) : m_lines(in)
{
    for (int line = 0; line < HeaderLines; ++line) {
        if (m_lines.atEnd())
            throw TooFewLinesError(!m_lines.linesWithLineFeeds().isEmpty());
        m_lines.readLine(m_current);
    }
    // The header alone is an empty configuration, as the export writes it.
    m_current.clear();
    if (!m_lines.atEnd())
        m_lines.readLine(m_current);
    unprotectInPlace(m_current);
    m_currentLine = m_lines.lineNumber();
}

std::optional<RecordEvent> ClassFileReader::next()
{
    for (;;) {
        if (m_advance && !m_lines.atEnd())
            readCurrent();
        m_advance = true;
        if (m_lines.atEnd())
            return std::nullopt;
        if (std::optional<RecordEvent> event = look())
            return event;
    }
}

std::optional<RecordEvent> ClassFileReader::look()
{
    if (m_current.isEmpty())
        return std::nullopt;
    if (!m_current.startsWith('['))
        return BadRecord{m_currentLine, decodeCp1252(m_current)};
    if (m_classes == MaxClasses)
        throw ClassFileError(QStringLiteral("line %1: the file holds more than %2 classes, more than a "
                                            "configuration can number.")
                                 .arg(m_currentLine)
                                 .arg(MaxClasses));
    return readRecord();
}

ReadClass ClassFileReader::readRecord()
{
    ReadClass read{m_currentLine, ++m_classes, {}, {}};
    ClassRecord& record = read.record;
    // The brackets are not tested: the first and the last character are dropped.
    record.name = decodeCp1252(QByteArrayView(m_current).sliced(1, qMax<qsizetype>(m_current.size() - 2, 0)));
    RecordFields fields(read.problems);
    readRecordLine(fields, read.line);
    record.model = fields.text(1);
    record.redSkin = fields.text(2);
    record.blueSkin = fields.text(3);
    record.decoySkin = fields.integer(4, "decoy skin");
    readRecordLine(fields, read.line);
    readIntegers(fields, record.weapons, weaponNames);
    readRecordLine(fields, read.line);
    readIntegers(fields, record.grenades, grenadeNames);
    readRecordLine(fields, read.line);
    record.armor = fields.integer(1, "max armor");
    record.speed = fields.integer(2, "max speed");
    record.health = fields.integer(3, "max health");
    record.abilities = spreadBits<AbilityFlags>(fields.bitSum(4, "ability sum"));
    record.items = spreadBits<ItemFlags>(fields.bitSum(5, "item sum"));
    readRecordLine(fields, read.line);
    readIntegers(fields, record.ammo, ammoNames);
    return read;
}

void ClassFileReader::readRecordLine(RecordFields& fields, int recordLine)
{
    if (m_lines.atEnd())
        throw ClassFileError(QStringLiteral("line %1: the file ends inside the class record that starts on line %2.")
                                 .arg(m_lines.lineNumber() + 1)
                                 .arg(recordLine));
    fields.readLine(m_lines);
}

void ClassFileReader::readCurrent()
{
    m_lines.readLine(m_current);
    unprotectInPlace(m_current);
    m_currentLine = m_lines.lineNumber();
}

} // namespace tarn
