#include "ClassRows.h"

#include "Database.h"
#include "Statements.h"
#include "StoreError.h"

#include <QStringList>

namespace tarn
{

namespace
{

// The column that packs the numbers, behind the rowid and the texts.
constexpr int PackedColumn = 1 + classrows::places.texts;

// select rowid, the texts, tarn_numbers(the numbers) from classdef where ...
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
    return QStringLiteral("select rowid, %1, tarn_numbers(%2) from classdef where %3")
        .arg(texts.join(u", "), numbers.join(u", "), where);
}

} // namespace

ClassRows::ClassRows(Database& classDb, const QString& sql) : m_rows(classDb.prepare(sql)) {}

ClassRows ClassRows::ofConfig(Database& classDb, const QString& config)
{
    static const QString select = selectSql(
        QStringLiteral("%1 order by %2").arg(sql::OrderedClassesOfConfig.filter, sql::OrderedClassesOfConfig.order));
    ClassRows rows(classDb, select);
    rows.m_rows.bindText(1, config);
    return rows;
}

ClassRows ClassRows::byRowId(Database& classDb, qint64 rowId)
{
    static const QString select = selectSql(QStringLiteral("rowid = ?"));
    ClassRows row(classDb, select);
    row.m_rows.bindInt64(1, rowId);
    return row;
}

bool ClassRows::step()
{
    if (!m_rows.step())
        return false;
    const QByteArrayView packed = m_rows.blob(PackedColumn);
    if (packed.size() != PackedNumbers::sizeFor(classrows::places.numbers))
        throw StoreError(QStringLiteral("The numbers of a class row came packed in %1 bytes.").arg(packed.size()));
    m_numbers = PackedNumbers(packed);
    return true;
}

void ClassRows::notRead(ClassColumn column)
{
    throw StoreError(QStringLiteral("The rows read have no column \"%1\" of that kind.").arg(classdef::nameOf(column)));
}

} // namespace tarn
