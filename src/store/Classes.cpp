#include "Classes.h"

#include "Database.h"
#include "Schema.h"
#include "Statements.h"
#include "StoreError.h"

#include <QStringList>
#include <algorithm>
#include <initializer_list>

namespace tarn
{

namespace
{

QStringList namesOf(std::initializer_list<ClassColumn> except = {})
{
    QStringList names;
    for (const ColumnDef& column : classdef::columns)
        names << QLatin1String(column.name);
    for (const ClassColumn column : except)
        names.removeOne(classdef::nameOf(column));
    return names;
}

// Every column in the table's order, so that column k takes parameter k + 1.
QString insertClassSql()
{
    const QStringList columns = namesOf();
    const QStringList places(columns.size(), QStringLiteral("?"));
    return QStringLiteral("insert into classdef (%1) values (%2)").arg(columns.join(u", "), places.join(u", "));
}

} // namespace

SkippedChecks::SkippedChecks(Database& db) : m_db(db)
{
    m_db.exec(QStringLiteral("PRAGMA ignore_check_constraints = ON"));
}

SkippedChecks::~SkippedChecks()
{
    try {
        m_db.exec(QStringLiteral("PRAGMA ignore_check_constraints = OFF"));
    } catch (const StoreError&) {
        // Setting a flag of the connection does not touch the file and cannot fail.
    }
}

NewClassRows::NewClassRows(Database& classDb) : m_skipped(classDb), m_insert(classDb.prepare(insertClassSql())) {}

void NewClassRows::refuse(ClassColumn column, ColumnKind given) const
{
    const std::size_t index = classdef::indexOf(column);
    if (index >= classdef::ColumnCount)
        throw StoreError(QStringLiteral("A new class row was given a value for column %1 of classdef, which has %2.")
                             .arg(index + 1)
                             .arg(classdef::ColumnCount));
    if (classdef::kindOf(column) != given)
        throw StoreError(
            QStringLiteral("A new class row was given %1 for its column \"%2\", which takes %3.")
                .arg(describeKind(given), classdef::nameOf(column), describeKind(classdef::kindOf(column))));
    throw StoreError(
        QStringLiteral("A new class row was given its column \"%1\" twice.").arg(classdef::nameOf(column)));
}

void NewClassRows::addRow()
{
    if (!m_given.all()) {
        std::size_t missing = 0;
        while (m_given.test(missing))
            ++missing;
        throw StoreError(QStringLiteral("A new class row was given no value for its column \"%1\".")
                             .arg(classdef::nameOf(ClassColumn(missing))));
    }
    m_given.reset();
    m_insert.step();
    m_insert.rewind();
}

std::vector<ClassListRow> classListRows(Database& classDb, const QString& config)
{
    Statement rows = classDb.prepare(sql::ClassListOfConfig);
    rows.bind(1, config);
    std::vector<ClassListRow> list;
    while (rows.step()) {
        ClassListRow row{rows.int64(0),         rows.optionalInt64(1), rows.text(2),          rows.text(3),
                         rows.optionalInt64(4), rows.optionalInt64(5), rows.optionalInt64(6), {}};
        for (int k = 0; k < int(row.weapons.size()); ++k)
            row.weapons[std::size_t(k)] = rows.optionalInt64(7 + k);
        list.push_back(std::move(row));
    }
    return list;
}

std::optional<qint64> highestClassNumber(Database& classDb, const QString& config)
{
    const QVariant highest = classDb.scalar(sql::HighestClassNum, {config});
    return highest.isNull() ? std::nullopt : std::optional<qint64>(highest.toLongLong());
}

std::vector<qint64> classRowIds(Database& classDb, const QString& config, qint64 number)
{
    Statement rows = classDb.prepare(sql::ClassRowsByNumber);
    rows.bindAll({config, number});
    std::vector<qint64> ids;
    while (rows.step())
        ids.push_back(rows.int64(0));
    return ids;
}

void copyClassRows(Database& classDb, const QString& source, const QString& newName)
{
    const QString list = namesOf({ClassColumn::package_name}).join(u", "); // package_name takes the new name
    // The source rows passed the table's checks when they were stored and go over unchanged,
    // so checking every column of every copy again would only cost time.
    const SkippedChecks skipped(classDb);
    // SQLite reads the whole source set before it inserts, so rows added here are never copied again.
    classDb
        .prepare(QStringLiteral("insert into classdef (package_name, %1) select ?, %1 from classdef "
                                "where package_name = ?")
                     .arg(list))
        .run({newName, source});
}

ClassSlotWriter::ClassSlotWriter(Database& classDb) : m_update(classDb.prepare(sql::UpdateSlots)) {}

void ClassSlotWriter::write(qint64 rowId, const SlotValues& changed)
{
    int index = 1;
    for (const std::optional<qint64>& value : changed) {
        if (value)
            m_update.bindInt64(index++, *value);
        else
            m_update.bindNull(index++);
    }
    m_update.bindInt64(index, rowId);
    m_update.step();
    m_update.rewind(); // every parameter is bound anew on the next write
}

} // namespace tarn
