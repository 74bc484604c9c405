#include "Stores.h"

#include "DataDirectory.h"
#include "store/DefaultRows.h"
#include "store/Schema.h"
#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>

namespace tarn
{

namespace
{

using Seed = std::function<void(Database&)>;

// Builds a new store under a temporary name and moves it into place only when it is
// complete, so that a failure never leaves a half-made store behind.
void createStore(const QString& path, std::span<const TableDef* const> tables, const Seed& seed)
{
    const QString building = path + QStringLiteral(".new");
    QFile::remove(building);
    {
        Database db(building, Database::Open::CreateNew);
        Transaction transaction(db);
        schema::create(db, tables);
        seed(db);
        transaction.commit();
    }
    if (!QFile::rename(building, path)) {
        QFile::remove(building);
        throw StoreError(QStringLiteral("Cannot create %1.").arg(QDir::toNativeSeparators(path)));
    }
}

std::unique_ptr<Database> openStore(const QString& path, std::span<const TableDef* const> tables, const Seed& seed,
                                    std::chrono::milliseconds busyWait)
{
    if (!QFileInfo::exists(path))
        createStore(path, tables, seed);
    auto db = std::make_unique<Database>(path, Database::Open::Existing, busyWait);
    schema::verify(*db, tables);
    return db;
}

} // namespace

Stores openStores(const QString& dataDirectory, std::chrono::milliseconds busyWait)
{
    if (!QDir().mkpath(dataDirectory))
        throw StoreError(
            QStringLiteral("Cannot create the data directory %1.").arg(QDir::toNativeSeparators(dataDirectory)));
    const QDir dir(dataDirectory);
    Stores stores;
    stores.classDb = openStore(dir.filePath(ClassStoreFile), schema::dataTables(), addExampleConfiguration, busyWait);
    schema::addClassOrderIndex(*stores.classDb);
    stores.refDb =
        openStore(dir.filePath(ReferenceStoreFile), schema::referenceTables(), addDefaultReferenceRows, busyWait);
    return stores;
}

} // namespace tarn
