#include "Backups.h"

#include "DataDirectory.h"
#include "store/StoreError.h"

#include <QDir>
#include <QRegularExpression>

namespace tarn
{

namespace
{

const QString NameFormat = QStringLiteral("yyyy-MM-ddTHH-mm-ss");

QDir backupsOf(const QString& dataDirectory)
{
    return {QDir(dataDirectory).filePath(BackupFolder)};
}

// A name for a backup made now; a second one in the same second gets a number.
QString freshName(const QDir& backups, const QDateTime& now)
{
    const QString name = now.toString(NameFormat);
    QString fresh = name;
    for (int n = 2; backups.exists(fresh); ++n)
        fresh = QStringLiteral("%1-%2").arg(name).arg(n);
    return fresh;
}

void copyStores(Stores& stores, const QDir& folder)
{
    for (Database* store : {stores.classDb.get(), stores.refDb.get()}) {
        Database copy(folder.filePath(QFileInfo(store->path()).fileName()), Database::Open::CreateNew);
        store->copyInto(copy);
    }
}

void prune(const QDir& backups)
{
    const QStringList names = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (qsizetype i = BackupsKept; i < names.size(); ++i)
        QDir(backups.filePath(names[i])).removeRecursively();
}

} // namespace

QStringList listBackups(const QString& dataDirectory)
{
    static const QRegularExpression backupName(QStringLiteral("^\\d{4}-\\d\\d-\\d\\dT\\d\\d-\\d\\d-\\d\\d(-\\d+)?$"));
    QStringList names =
        backupsOf(dataDirectory).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    names.removeIf([](const QString& name) { return !backupName.match(name).hasMatch(); });
    return names;
}

namespace
{

// A new backup of both stores; what failed, if anything.
std::optional<QString> makeBackup(const QString& dataDirectory, Stores& stores, const QDateTime& now)
{
    const QDir backups = backupsOf(dataDirectory);
    const QString name = freshName(backups, now);
    if (!backups.mkpath(name))
        return QStringLiteral("No backup of the stores was made: %1 cannot be created.")
            .arg(QDir::toNativeSeparators(backups.filePath(name)));
    try {
        copyStores(stores, QDir(backups.filePath(name)));
    } catch (const StoreError& error) {
        QDir(backups.filePath(name)).removeRecursively();
        return QStringLiteral("No backup of the stores was made: %1").arg(error.message());
    }
    return std::nullopt;
}

} // namespace

std::optional<QString> backUpStores(const QString& dataDirectory, Stores& stores, const QDateTime& now, bool force)
{
    const QStringList existing = listBackups(dataDirectory);
    if (!force && !existing.isEmpty()) {
        const QDateTime newest = QDateTime::fromString(existing.first().left(NameFormat.size()), NameFormat);
        if (newest.isValid() && newest <= now && newest.secsTo(now) < BackupSpacingSeconds)
            return std::nullopt;
    }
    std::optional<QString> failed = makeBackup(dataDirectory, stores, now);
    prune(backupsOf(dataDirectory));
    return failed;
}

// The stores as they are go to a backup first, and old backups are dropped only once the
// chosen one is back.
void restoreBackup(const QString& dataDirectory, Stores& stores, const QString& when, const QDateTime& now)
{
    if (!listBackups(dataDirectory).contains(when))
        throw StoreError(QStringLiteral("There is no backup \"%1\" in %2.")
                             .arg(when, QDir::toNativeSeparators(backupsOf(dataDirectory).path())));
    if (const std::optional<QString> failed = makeBackup(dataDirectory, stores, now))
        throw StoreError(*failed + QStringLiteral(" Nothing was restored, so that nothing is lost."));
    const QDir folder(backupsOf(dataDirectory).filePath(when));
    for (Database* store : {stores.classDb.get(), stores.refDb.get()}) {
        Database saved(folder.filePath(QFileInfo(store->path()).fileName()), Database::Open::ReadOnly);
        saved.copyInto(*store);
    }
    prune(backupsOf(dataDirectory));
}

} // namespace tarn
