#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <span>

namespace tarn
{

class Database;

// What a column holds, as the windows and the class file see it.
enum class ColumnKind {
    Text,    // a string
    Integer, // signed 16-bit whole number
    Long,    // signed 32-bit whole number
    Flag,    // 0 or 1, bound to a check box
    Open,    // free text the program never computes with
};

struct ColumnDef {
    const char* name;
    ColumnKind kind;
};

struct TableDef {
    const char* name;
    std::span<const ColumnDef> columns;
};

namespace schema
{

const TableDef& package();
const TableDef& classdef();
const TableDef& weapon();
const TableDef& grenade();
const TableDef& item();
const TableDef& special();

// The tables of each database file.
std::span<const TableDef* const> dataTables();
std::span<const TableDef* const> referenceTables();

// The columns of classdef in the order the import and the copy assign them.
QStringList classColumnNames();

// The kind of a column, looked up without regard to case; Text for an unknown one.
ColumnKind kindOf(const QString& table, const QString& column);

QString createStatement(const TableDef& table);
void create(Database& db, std::span<const TableDef* const> tables);
// Adds the index that serves the ordered walk of a configuration, the class
// editor's set and the highest class number, to a class store made before it. A
// store that cannot take it now (read-only, busy) works without it.
void addClassOrderIndex(Database& classDb);
// Proves the file is one of ours: every table is there with every column.
// Throws StoreError naming the file and what is missing.
void verify(Database& db, std::span<const TableDef* const> tables);

} // namespace schema

// Turns the text of a box into the value its column stores: empty text is NULL,
// a number column takes only a whole number in its range. Nothing when the text
// cannot be stored in the column.
std::optional<QVariant> columnValueFromText(ColumnKind kind, const QString& text);
// The text a box shows for a stored value; NULL shows as empty text.
QString textFromColumnValue(const QVariant& value);
// "a whole number from -32768 to 32767" and the like, for messages.
QString describeKind(ColumnKind kind);

} // namespace tarn
