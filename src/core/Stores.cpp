#include "Stores.h"

#include "DataDirectory.h"
#include "store/DefaultRows.h"
#include "store/Schema.h"
#include "store/StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <functional>

namespace tarn
{

namespace
{

using Seed = std::function<void(Database&)>;

const QString CreationLockFile = QStringLiteral("tarn-create.lock");
// Making both stores takes a fraction of a second; a lock held longer than this is a
// program that hangs, not one that is making them.
constexpr std::chrono::milliseconds MinimumCreationWait{30000};

// Builds a new store under a temporary name and moves it into place only when it is
// complete, so that a failure never leaves a half-made store behind.
void createStore(const QString& path, std::span<const TableDef* const> tables, const Seed& seed)
{
    const QString building = path + QStringLiteral(".new");
    const auto removeBuilding = [&] {
        QFile::remove(building);
        QFile::remove(building + QStringLiteral("-journal"));
    };
    removeBuilding(); // left by a program that died while making it
    try {
        Database db(building, Database::Open::CreateNew);
        Transaction transaction(db);
        schema::create(db, tables);
        seed(db);
        transaction.commit();
    } catch (const StoreError&) {
        removeBuilding();
        throw;
    }
    if (!QFile::rename(building, path)) {
        removeBuilding();
        throw StoreError(QStringLiteral("Cannot create %1.").arg(QDir::toNativeSeparators(path)));
    }
}

std::unique_ptr<Database> openStore(const QString& path, std::span<const TableDef* const> tables,
                                    std::chrono::milliseconds busyWait)
{
    auto db = std::make_unique<Database>(path, Database::Open::Existing, busyWait);
    schema::verify(*db, tables);
    return db;
}

// Two first starts at once (two `tarnctl init`, two workbenches) make the stores one at
// a time: the second waits for the first, then finds its stores and uses them.
void createMissingStores(const QDir& dir, std::chrono::milliseconds busyWait)
{
    const QString classStore = dir.filePath(ClassStoreFile);
    const QString referenceStore = dir.filePath(ReferenceStoreFile);
    if (QFileInfo::exists(classStore) && QFileInfo::exists(referenceStore))
        return;
    QLockFile lock(dir.filePath(CreationLockFile));
    if (!lock.tryLock(int(std::max(busyWait, MinimumCreationWait).count())))
        throw StoreError(QStringLiteral("Cannot create the stores in %1: another program has been making them for "
                                        "too long (%2 is locked).")
                             .arg(QDir::toNativeSeparators(dir.path()), CreationLockFile));
    if (!QFileInfo::exists(classStore))
        createStore(classStore, schema::dataTables(), addExampleConfiguration);
    if (!QFileInfo::exists(referenceStore))
        createStore(referenceStore, schema::referenceTables(), addDefaultReferenceRows);
}

} // namespace

Stores openStores(const QString& dataDirectory, std::chrono::milliseconds busyWait)
{
    if (!QDir().mkpath(dataDirectory))
        throw StoreError(
            QStringLiteral("Cannot create the data directory %1.").arg(QDir::toNativeSeparators(dataDirectory)));
    const QDir dir(dataDirectory);
    createMissingStores(dir, busyWait);
    Stores stores;
    stores.classDb = openStore(dir.filePath(ClassStoreFile), schema::dataTables(), busyWait);
    schema::addClassOrderIndex(*stores.classDb);
    stores.refDb = openStore(dir.filePath(ReferenceStoreFile), schema::referenceTables(), busyWait);
    return stores;
}

} // namespace tarn
