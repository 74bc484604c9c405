#include "Classes.h"

#include "Database.h"
#include "Schema.h"
#include "Statements.h"
#include "StoreError.h"

#include <QStringList>
#include <algorithm>

namespace tarn
{

namespace
{

QString insertClassSql()
{
    const QStringList columns = schema::classColumnNames();
    const QStringList places(columns.size(), QStringLiteral("?"));
    return QStringLiteral("insert into classdef (%1) values (%2)").arg(columns.join(u", "), places.join(u", "));
}

// The columns a class file is made from, behind the rowid.
QString exportColumnsSql()
{
    QStringList columns = schema::classColumnNames();
    for (const char* unread : {"package_name", "w1", "i9"})
        columns.removeOne(QLatin1String(unread));
    return QStringLiteral("select rowid, %1 from classdef").arg(columns.join(u", "));
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

NewClassRows& NewClassRows::operator<<(const QString& text)
{
    m_insert.bindText(m_next++, text);
    return *this;
}

NewClassRows& NewClassRows::operator<<(qint16 number)
{
    m_insert.bindInt64(m_next++, number);
    return *this;
}

NewClassRows& NewClassRows::operator<<(bool flag)
{
    m_insert.bindInt64(m_next++, flag ? 1 : 0);
    return *this;
}

void NewClassRows::addRow()
{
    Q_ASSERT(m_next == m_insert.parameterCount() + 1);
    m_next = 1;
    m_insert.step();
    m_insert.rewind();
}

Statement orderedClassRows(Database& classDb, const QString& config)
{
    static const QString select =
        QStringLiteral("%1 where %2 order by %3")
            .arg(exportColumnsSql(), sql::OrderedClassesOfConfig.filter, sql::OrderedClassesOfConfig.order);
    Statement rows = classDb.prepare(select);
    rows.bind(1, config);
    return rows;
}

Statement classRowById(Database& classDb, qint64 rowId)
{
    static const QString select = exportColumnsSql() + QStringLiteral(" where rowid = ?");
    Statement row = classDb.prepare(select);
    row.bind(1, rowId);
    return row;
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
    QStringList columns = schema::classColumnNames();
    columns.removeFirst(); // package_name takes the new name
    const QString list = columns.join(u", ");
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
