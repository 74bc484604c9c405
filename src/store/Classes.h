#pragma once

#include "ClassColumns.h"
#include "Statement.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <array>
#include <bitset>
#include <optional>
#include <utility>
#include <vector>

namespace tarn
{

class Database;

// The rows of classdef, one class each, as the import, the example configuration, the
// copy and the export store and walk them. Each throws StoreError when the store refuses.

// Turns the CHECK constraints of the connection's tables off for its lifetime. SQLite
// leaves the checks out of a statement compiled while they are off, and compiles every
// statement afresh when they are turned on again, so only the statements that run in
// its lifetime skip them: keep it to the one statement that needs it.
class SkippedChecks
{
public:
    explicit SkippedChecks(Database& db);
    ~SkippedChecks();
    SkippedChecks(const SkippedChecks&) = delete;
    SkippedChecks& operator=(const SkippedChecks&) = delete;

private:
    Database& m_db;
};

// Stores whole class rows through one prepared statement. Each value is given to its
// column by name, and each column of a row takes exactly one: a text for a text column,
// a 16-bit number for a number column, a flag for a flag column. Those are the very
// values classdef's checks allow, so its insert skips them; while it lives, no other
// statement may run on the connection. A value of the wrong kind, a column given twice
// or left out is a fault of the program and throws StoreError at once.
class NewClassRows
{
public:
    explicit NewClassRows(Database& classDb);

    NewClassRows& set(ClassColumn column, const QString& text)
    {
        m_insert.bindText(take(column, ColumnKind::Text), text);
        return *this;
    }
    NewClassRows& set(ClassColumn column, qint16 number)
    {
        m_insert.bindInt64(take(column, ColumnKind::Integer), number);
        return *this;
    }
    NewClassRows& set(ClassColumn column, bool flag)
    {
        m_insert.bindInt64(take(column, ColumnKind::Flag), flag ? 1 : 0);
        return *this;
    }
    // A string literal would otherwise be taken as a flag.
    NewClassRows& set(ClassColumn column, const char*) = delete;
    // Element k of the values goes to column k of the series.
    template <ClassColumn First, std::size_t Count, typename T>
    NewClassRows& set(classdef::Series<First, Count> series, const std::array<T, Count>& values)
    {
        for (std::size_t k = 0; k < Count; ++k)
            set(series.at(k), values[k]);
        return *this;
    }
    // Stores the row of the values given since the last one.
    void addRow();

private:
    // Marks the column as given and returns its parameter. Here in the header, so that
    // the check folds away for a column named in the call.
    int take(ClassColumn column, ColumnKind given)
    {
        const std::size_t index = classdef::indexOf(column);
        if (index >= classdef::ColumnCount || classdef::kindOf(column) != given || m_given.test(index)) [[unlikely]]
            refuse(column, given);
        m_given.set(index);
        return int(index) + 1;
    }
    // Throws StoreError: the column takes another kind, has its value already, or is none.
    [[noreturn]] void refuse(ClassColumn column, ColumnKind given) const;

    SkippedChecks m_skipped;
    Statement m_insert;
    std::bitset<classdef::ColumnCount> m_given;
};

// One class as the class list shows it.
struct ClassListRow {
    qint64 rowId = 0;
    std::optional<qint64> number;
    QString name;
    QString model;
    std::optional<qint64> armor, speed, health;
    std::array<std::optional<qint64>, 9> weapons; // slots 2 to 10
};
// The classes of a configuration in the navigator's order.
std::vector<ClassListRow> classListRows(Database& classDb, const QString& config);

// The highest class number of the configuration; nothing when it has no numbered class.
std::optional<qint64> highestClassNumber(Database& classDb, const QString& config);
// The rowids of the configuration's classes of that number.
std::vector<qint64> classRowIds(Database& classDb, const QString& config, qint64 number);

// Copies every class of the source configuration under the new name, all columns as
// stored. No order is asked for: the rows go in as SQLite finds them, and every reader
// orders classes by class_num itself.
void copyClassRows(Database& classDb, const QString& source, const QString& newName);

// Writes the weapon slots 2 to 10 and the grenade slots 1 to 3 of class rows, in one
// statement prepared once for every row: a slot given no value keeps what it holds.
class ClassSlotWriter
{
public:
    static constexpr std::size_t Slots = 12;
    using SlotValues = std::array<std::optional<qint64>, Slots>; // w2 to w10, then g1 to g3

    explicit ClassSlotWriter(Database& classDb);
    void write(qint64 rowId, const SlotValues& changed);

private:
    Statement m_update;
};

} // namespace tarn
