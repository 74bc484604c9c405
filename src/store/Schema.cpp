#include "Schema.h"

#include "ClassColumns.h"
#include "Database.h"
#include "Statements.h"
#include "StoreError.h"

#include <QDir>
#include <QSet>
#include <array>

namespace tarn
{

namespace
{

using K = ColumnKind;

constexpr auto packageColumns = std::to_array<ColumnDef>({{"package_name", K::Text}});

constexpr auto weaponColumns = std::to_array<ColumnDef>({{"w_id", K::Integer},
                                                         {"w_name", K::Text},
                                                         {"w_damage", K::Open},
                                                         {"w_speed", K::Open},
                                                         {"kd_enabled", K::Integer}});
constexpr auto grenadeColumns = std::to_array<ColumnDef>({{"g_id", K::Integer},
                                                          {"g_name", K::Text},
                                                          {"g_damage", K::Open},
                                                          {"g_speed", K::Open},
                                                          {"kd_enabled", K::Integer}});
constexpr auto itemColumns =
    std::to_array<ColumnDef>({{"i_id", K::Long}, {"i_name", K::Text}, {"kd_enabled", K::Integer}});
constexpr auto specialColumns =
    std::to_array<ColumnDef>({{"s_id", K::Long}, {"s_name", K::Text}, {"kd_enabled", K::Integer}});

const TableDef packageTable{"package", packageColumns};
const TableDef classdefTable{"classdef", classdef::columns};
const TableDef weaponTable{"weapon", weaponColumns};
const TableDef grenadeTable{"grenade", grenadeColumns};
const TableDef itemTable{"item", itemColumns};
const TableDef specialTable{"special", specialColumns};

constexpr std::array<const TableDef*, 2> dataTableList{&packageTable, &classdefTable};
constexpr std::array<const TableDef*, 4> referenceTableList{&weaponTable, &grenadeTable, &itemTable, &specialTable};

QString columnSql(const ColumnDef& column)
{
    const QString name = QString::fromLatin1(column.name);
    switch (column.kind) {
    case K::Integer:
        return QStringLiteral("%1 INTEGER CHECK (%1 BETWEEN -32768 AND 32767)").arg(name);
    case K::Long:
        return QStringLiteral("%1 INTEGER CHECK (%1 BETWEEN -2147483648 AND 2147483647)").arg(name);
    case K::Flag:
        return QStringLiteral("%1 INTEGER CHECK (%1 IN (0, 1))").arg(name);
    case K::Text:
    case K::Open:
        break;
    }
    return name + QStringLiteral(" TEXT");
}

std::optional<qint64> wholeNumber(const QString& text)
{
    bool ok = false;
    const qint64 value = text.trimmed().toLongLong(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

} // namespace

namespace schema
{

std::span<const TableDef* const> dataTables()
{
    return dataTableList;
}
std::span<const TableDef* const> referenceTables()
{
    return referenceTableList;
}

QStringList classColumnNames()
{
    QStringList names;
    for (const ColumnDef& column : classdef::columns)
        names << QString::fromLatin1(column.name);
    return names;
}

ColumnKind kindOf(const QString& table, const QString& column)
{
    for (const auto& list : {dataTables(), referenceTables()}) {
        for (const TableDef* def : list) {
            if (table.compare(QLatin1String(def->name), Qt::CaseInsensitive) != 0)
                continue;
            for (const ColumnDef& c : def->columns) {
                if (column.compare(QLatin1String(c.name), Qt::CaseInsensitive) == 0)
                    return c.kind;
            }
        }
    }
    return K::Text;
}

QString createStatement(const TableDef& table)
{
    QStringList columns;
    for (const ColumnDef& column : table.columns)
        columns << columnSql(column);
    return QStringLiteral("CREATE TABLE %1 (%2) STRICT").arg(QLatin1String(table.name), columns.join(u", "));
}

void create(Database& db, std::span<const TableDef* const> tables)
{
    for (const TableDef* table : tables)
        db.exec(createStatement(*table));
}

void addClassOrderIndex(Database& classDb)
{
    try {
        classDb.exec(sql::CreateClassOrderIndex);
    } catch (const StoreError&) {
        // Reads stay correct without the index, only slower.
    }
}

void verify(Database& db, std::span<const TableDef* const> tables)
{
    const QString file = QDir::toNativeSeparators(db.path());
    for (const TableDef* table : tables) {
        Statement info = db.prepare(QStringLiteral("SELECT name FROM pragma_table_info(?)"));
        info.bind(1, QString::fromLatin1(table->name));
        QSet<QString> present;
        while (info.step())
            present.insert(info.text(0).toLower());
        if (present.isEmpty())
            throw StoreError(QStringLiteral("%1 has no table \"%2\".").arg(file, QLatin1String(table->name)));
        for (const ColumnDef& column : table->columns) {
            if (!present.contains(QLatin1String(column.name)))
                throw StoreError(QStringLiteral("%1: table \"%2\" has no column \"%3\".")
                                     .arg(file, QLatin1String(table->name), QLatin1String(column.name)));
        }
    }
}

} // namespace schema

std::optional<QVariant> columnValueFromText(ColumnKind kind, const QString& text)
{
    if (text.isEmpty())
        return QVariant();
    if (kind == K::Text || kind == K::Open)
        return QVariant(text);
    const std::optional<qint64> number = wholeNumber(text);
    if (!number)
        return std::nullopt;
    const bool fits = kind == K::Integer ? (*number >= -32768 && *number <= 32767)
                      : kind == K::Long  ? (*number >= INT32_MIN && *number <= INT32_MAX)
                                         : (*number == 0 || *number == 1);
    return fits ? std::optional(QVariant(qlonglong(*number))) : std::nullopt;
}

QString textFromColumnValue(const QVariant& value)
{
    return value.isNull() ? QString() : value.toString();
}

QString describeKind(ColumnKind kind)
{
    switch (kind) {
    case K::Integer:
        return QStringLiteral("a whole number from -32768 to 32767");
    case K::Long:
        return QStringLiteral("a whole number from -2147483648 to 2147483647");
    case K::Flag:
        return QStringLiteral("0 or 1");
    case K::Text:
    case K::Open:
        break;
    }
    return QStringLiteral("text");
}

} // namespace tarn
