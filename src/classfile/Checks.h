#pragma once

#include "ClassFileWriter.h"
#include "store/Classes.h"
#include "store/ReferenceLists.h"

#include <QString>
#include <limits>
#include <optional>
#include <vector>

namespace tarn
{

class Database;
class ExportWalk;

// Something the export will refuse (an error) or quietly alter (a warning), found before
// it happens, with where it is and what will happen.
struct Problem {
    enum class Severity { Warning, Error };
    Severity severity = Severity::Warning;
    QString configName;          // empty for the reference tables
    std::optional<qint64> rowId; // the class's row, to go to
    std::optional<qint64> classNumber;
    QString className;
    QString field; // "weapon 3", "max armor", "item table"
    QString what;  // what will happen, in an author's words

    bool isError() const { return severity == Severity::Error; }
};

// One line: "warning: "Example", class 2 "Gunner", weapon 3: id 57 is ...".
QString describe(const Problem& problem);
// How many of the problems are warnings, and whether any is an error.
qsizetype warningCount(const std::vector<Problem>& problems);
bool hasError(const std::vector<Problem>& problems);

// The checks of one configuration's classes, met one by one in class_num order as the
// export walks them, before the slot tracking touches them.
class ClassChecks
{
public:
    // Past `listed` warnings, further ones are only counted: a configuration of 30,000
    // stale classes would otherwise hold hundreds of thousands of lines nobody reads.
    // The checks of the classes the walk meets, with the walk's own lists.
    ClassChecks(const ExportWalk& walk, QString configName, bool protectOutput,
                std::size_t listed = std::numeric_limits<std::size_t>::max());

    // The class as stored; tracked holds what the slot tracking puts in its slots.
    void check(qint64 rowId, std::optional<qint64> classNumber, const ExportedClass& cls,
               const ClassSlotWriter::SlotValues& tracked);
    const std::vector<Problem>& problems() const { return m_problems; }
    // The warnings past the listed ones.
    qsizetype unlisted() const { return m_unlisted; }

private:
    void add(Problem::Severity severity, const QString& field, const QString& what);
    // True when a warning can only be counted, and counts it.
    bool counted();
    void checkSlots(const ExportedClass& cls, const ClassSlotWriter::SlotValues& tracked);
    void checkNumbers(const ExportedClass& cls);
    void checkNames(const ExportedClass& cls);
    void checkText(const char* field, const QString& text);
    void checkLineLengths(const ExportedClass& cls);

    const ReferenceLists& m_lists;
    QString m_configName;
    bool m_protect;
    std::size_t m_listed;
    std::vector<Problem> m_problems;
    qsizetype m_unlisted = 0;
    // The class on show while checking it, and the number before it.
    std::optional<qint64> m_rowId;
    std::optional<qint64> m_number;
    const QString* m_className = nullptr; // of the class being checked
    std::optional<qint64> m_previousNumber;
};

// Every problem of a stored configuration, for the form it would be exported in.
std::vector<Problem> checkConfiguration(Database& classDb, Database& refDb, const QString& configName,
                                        bool protectOutput,
                                        std::size_t listed = std::numeric_limits<std::size_t>::max());
// The problems of one stored class, by its rowid.
std::vector<Problem> checkClass(Database& classDb, const ReferenceLists& lists, const QString& configName, qint64 rowId,
                                bool protectOutput);
// Every problem of the reference tables: ids that collide, rows the editor never shows.
std::vector<Problem> checkReferenceTables(Database& refDb);

} // namespace tarn
