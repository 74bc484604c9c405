#include "Configurations.h"

#include "Classes.h"
#include "Database.h"
#include "Statements.h"
#include "StoreError.h"

namespace tarn
{

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

int countPackageRows(Database& classDb, const QString& name)
{
    return classDb.scalar(sql::PackageRowsOfConfig, {name}).toInt();
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
    classDb.prepare(sql::AddConfig).run({name});
}

void deleteConfiguration(Database& classDb, const QString& name)
{
    Transaction transaction(classDb);
    classDb.prepare(sql::DeleteFirstConfigRow).run({name});
    classDb.prepare(sql::DeleteClassesOfConfig).run({name});
    transaction.commit();
}

void copyConfiguration(Database& classDb, const QString& source, const QString& newName)
{
    Transaction transaction(classDb);
    // Copying into a name in use would merge two configurations' classes, numbers repeating.
    if (configurationExists(classDb, newName))
        throw StoreError(
            QStringLiteral("There is already a configuration named \"%1\". The copy needs a name of its own.")
                .arg(newName));
    addConfiguration(classDb, newName);
    copyClassRows(classDb, source, newName);
    transaction.commit();
}

} // namespace tarn
