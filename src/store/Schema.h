#pragma once

#include "Columns.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>
#include <span>

namespace tarn
{

class Database;

namespace schema
{

// The tables of each database file.
std::span<const TableDef* const> dataTables();
std::span<const TableDef* const> referenceTables();

// The names of classdef's columns, in the order of the table (store/ClassColumns.h).
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
