#include "ClassRows.h"

#include "Database.h"
#include "Statements.h"
#include "StoreError.h"

#include <QStringList>

namespace tarn
{

namespace
{

// select rowid, the texts, tarn_numbers(?, the numbers) from classdef WHERE: the capture
// is parameter 1, so a parameter of WHERE is parameter 2.
QString selectSql(const QString& where)
{
    QStringList texts, numbers;
    for (std::size_t c = 0; c < classdef::ColumnCount; ++c) {
        const QLatin1String name(classdef::columns[c].name);
        if (classrows::places.text[c] >= 0)
            texts << name;
        else if (classrows::places.number[c] >= 0)
            numbers << name;
    }
    return QStringLiteral("select rowid, %1, tarn_numbers(?, %2) from classdef where %3")
        .arg(texts.join(u", "), numbers.join(u", "), where);
}

} // namespace

ClassRows::ClassRows(Database& classDb, const QString& sql)
    : m_rows(classDb.prepare(sql)), m_numbers(std::make_unique<NumberCapture>())
{
    m_rows.bindCapture(1, *m_numbers);
}

ClassRows ClassRows::ofConfig(Database& classDb, const QString& config)
{
    static const QString select = selectSql(
        QStringLiteral("%1 order by %2").arg(sql::OrderedClassesOfConfig.filter, sql::OrderedClassesOfConfig.order));
    ClassRows rows(classDb, select);
    rows.m_rows.bindText(2, config);
    return rows;
}

ClassRows ClassRows::byRowId(Database& classDb, qint64 rowId)
{
    static const QString select = selectSql(QStringLiteral("rowid = ?"));
    ClassRows row(classDb, select);
    row.m_rows.bindInt64(2, rowId);
    return row;
}

void ClassRows::notRead(ClassColumn column)
{
    throw StoreError(QStringLiteral("The rows read have no column \"%1\" of that kind.").arg(classdef::nameOf(column)));
}

} // namespace tarn
