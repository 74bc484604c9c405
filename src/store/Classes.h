#pragma once

#include "Statement.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace tarn
{

class Database;

// The rows of classdef, one class each, as the import, the example configuration, the
// copy and the export store and walk them. Each throws StoreError when the store refuses.

// Turns the CHECK constraints of the connection's tables off for its lifetime.
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

// Stores whole class rows through one prepared statement. The values of a row are given
// in the order of schema::classColumnNames(), package_name first. Its numbers are 16-bit
// integers and flags, the very ranges classdef's checks allow, so the checks are skipped
// while it lives.
class NewClassRows
{
public:
    explicit NewClassRows(Database& classDb);

    NewClassRows& operator<<(const QString& text);
    NewClassRows& operator<<(qint16 number);
    NewClassRows& operator<<(bool flag);
    // A string literal would otherwise be taken as a flag.
    NewClassRows& operator<<(const char*) = delete;
    // Stores the row of the values given since the last one; every column must have one.
    void addRow();

private:
    SkippedChecks m_skipped;
    Statement m_insert;
    int m_next = 1;
};

// The classes of a configuration in the order the class editor shows them, for the
// export: each row led by its rowid, then every column the class file is made from (all
// but package_name, class_num, w1 and i9, which it never reads).
Statement orderedClassRows(Database& classDb, const QString& config);
// The same columns of one class, by its rowid.
Statement classRowById(Database& classDb, qint64 rowId);

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
// stored, in the order the engine reads them. Asking for the stored order would make it
// sort every row first, a third of the copy's work.
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
