#include "Recordset.h"

#include <QDir>
#include <algorithm>

#include "Database.h"
#include "StoreError.h"

namespace tarn
{

namespace
{

// The rowids of the source's rows, in its order.
QString idSql(const RecordSource& source)
{
    QString sql = QStringLiteral("select rowid from ") + source.table;
    if (!source.filter.isEmpty())
        sql += QStringLiteral(" where ") + source.filter;
    if (!source.order.isEmpty())
        sql += QStringLiteral(" order by ") + source.order;
    return sql;
}

QStringList columnNames(Statement& statement)
{
    QStringList names;
    for (int i = 0; i < statement.columnCount(); ++i)
        names << statement.columnName(i);
    return names;
}

} // namespace

Recordset::Recordset(Database& db, const RecordSource& source, QVariantList params)
    : m_db(db), m_table(source.table), m_noun(source.noun.isEmpty() ? QStringLiteral("row") : source.noun),
      m_idSql(idSql(source)), m_params(std::move(params)),
      m_readRow(db.prepare(QStringLiteral("select * from %1 where rowid = ?").arg(source.table))),
      m_columns(columnNames(m_readRow))
{
    requery();
}

void Recordset::requery()
{
    Statement statement = m_db.prepare(m_idSql);
    statement.bindAll(m_params);
    std::vector<qint64> ids; // the set stays as it was when the store can't be read
    while (statement.step())
        ids.push_back(statement.int64(0));
    m_ids = std::move(ids);
    m_noCurrent = false;
    m_position = 0; // the first row, or EOF on an empty set
}

void Recordset::moveFirst()
{
    m_noCurrent = false;
    m_position = 0;
}

void Recordset::moveLast()
{
    m_noCurrent = false;
    m_position = m_ids.empty() ? 0 : recordCount() - 1;
}

void Recordset::moveNext()
{
    if (m_noCurrent)
        m_noCurrent = false; // the deleted row's successor has moved into its place
    else if (!eof())
        ++m_position;
}

void Recordset::moveTo(int position)
{
    m_noCurrent = false;
    m_position = std::clamp(position, 0, qMax(recordCount() - 1, 0));
}

void Recordset::moveBack(Place place)
{
    m_position = place.position;
    m_noCurrent = place.noCurrent;
}

std::optional<int> Recordset::positionOf(qint64 rowId) const
{
    const auto found = std::find(m_ids.begin(), m_ids.end(), rowId);
    return found == m_ids.end() ? std::nullopt : std::optional(int(found - m_ids.begin()));
}

void Recordset::movePrevious()
{
    m_noCurrent = false;
    if (!bof())
        --m_position;
}

QVariant Recordset::value(const QString& column) const
{
    return currentRow().value(column.toLower());
}

QVariantMap Recordset::currentRow() const
{
    requireCurrent("read");
    m_readRow.reset();
    m_readRow.bind(1, m_ids[size_t(m_position)]);
    if (!m_readRow.step())
        gone("to show");
    QVariantMap row;
    for (int i = 0; i < m_columns.size(); ++i)
        row.insert(m_columns[i].toLower(), m_readRow.value(i));
    m_readRow.reset();
    return row;
}

void Recordset::update(const QVariantMap& changes)
{
    requireCurrent("update");
    if (changes.isEmpty())
        return;
    QStringList assignments;
    QVariantList values;
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        assignments << it.key() + QStringLiteral(" = ?");
        values << it.value();
    }
    values << m_ids[size_t(m_position)];
    Statement statement =
        m_db.prepare(QStringLiteral("update %1 set %2 where rowid = ?").arg(m_table, assignments.join(u", ")));
    statement.run(values);
    if (m_db.changes() == 0)
        gone("on show");
}

void Recordset::addNew(const QVariantMap& values)
{
    QStringList names;
    QStringList marks;
    QVariantList bound;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        names << it.key();
        marks << QStringLiteral("?");
        bound << it.value();
    }
    const QString sql =
        names.isEmpty()
            ? QStringLiteral("insert into %1 default values").arg(m_table)
            : QStringLiteral("insert into %1 (%2) values (%3)").arg(m_table, names.join(u", "), marks.join(u", "));
    Statement statement = m_db.prepare(sql);
    statement.run(bound);
    const bool atEof = eof();
    m_ids.push_back(m_db.lastInsertRowId());
    if (atEof)
        m_position = recordCount(); // still behind the last row, which is now the new one
}

void Recordset::deleteCurrent()
{
    requireCurrent("delete");
    Statement statement = m_db.prepare(QStringLiteral("delete from %1 where rowid = ?").arg(m_table));
    statement.run({m_ids[size_t(m_position)]});
    m_ids.erase(m_ids.begin() + m_position);
    m_noCurrent = true;
}

void Recordset::gone(const char* which) const
{
    m_readRow.reset();
    throw StoreError(QStringLiteral("The %1 %2 is no longer in %3: another program has deleted it.")
                         .arg(m_noun, QLatin1String(which), QDir::toNativeSeparators(m_db.path())),
                     StoreError::Cause::Gone);
}

void Recordset::requireCurrent(const char* operation) const
{
    if (!hasCurrent())
        throw StoreError(QStringLiteral("No current record to %1.").arg(QLatin1String(operation)));
}

} // namespace tarn
