#include "Configurations.h"

#include "Database.h"
#include "Schema.h"
#include "Statements.h"
#include "StoreError.h"

namespace tarn
{

namespace
{

void insertPackageRow(Database& classDb, const QString& name)
{
    classDb.prepare(QStringLiteral("insert into package (package_name) values (?)")).run({name});
}

} // namespace

QStringList listConfigurations(Database& classDb)
{
    Statement query = classDb.prepare(sql::ListConfigs);
    const int column = [&] {
        for (int i = 0; i < query.columnCount(); ++i) {
            if (query.columnName(i).compare(QLatin1String("package_name"), Qt::CaseInsensitive) == 0)
                return i;
        }
        return 0;
    }();
    QStringList names;
    while (query.step())
        names << query.text(column);
    return names;
}

int countClasses(Database& classDb, const QString& name)
{
    return classDb.scalar(sql::ClassCountOfConfig, {name}).toInt();
}

bool configurationExists(Database& classDb, const QString& name)
{
    Statement query = classDb.prepare(sql::ConfigByName);
    query.bind(1, name);
    return query.step();
}

void addConfiguration(Database& classDb, const QString& name)
{
    insertPackageRow(classDb, name);
}

void deleteConfiguration(Database& classDb, const QString& name)
{
    Transaction transaction(classDb);
    classDb
        .prepare(QStringLiteral("delete from package where rowid = "
                                "(select min(rowid) from package where package_name = ?)"))
        .run({name});
    classDb.prepare(sql::DeleteClassesOfConfig).run({name});
    transaction.commit();
}

void copyConfiguration(Database& classDb, const QString& source, const QString& newName)
{
    QStringList columns = schema::classColumnNames();
    columns.removeFirst(); // package_name takes the new name
    const QString list = columns.join(u", ");
    Transaction transaction(classDb);
    // Copying into a name in use would merge two configurations' classes, numbers repeating.
    if (configurationExists(classDb, newName))
        throw StoreError(
            QStringLiteral("There is already a configuration named \"%1\". The copy needs a name of its own.")
                .arg(newName));
    insertPackageRow(classDb, newName);
    // SQLite reads the whole source set before it inserts, so rows added here are never copied again.
    classDb
        .prepare(QStringLiteral("insert into classdef (package_name, %1) select ?, %1 from classdef "
                                "where package_name = ? order by rowid")
                     .arg(list))
        .run({newName, source});
    transaction.commit();
}

} // namespace tarn
