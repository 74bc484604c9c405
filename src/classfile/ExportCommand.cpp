#include "ExportCommand.h"

#include "Checks.h"
#include "ClassFileError.h"
#include "ClassFileWriter.h"
#include "ExportWalk.h"
#include "OutputFile.h"
#include "store/Configurations.h"
#include "store/Database.h"

#include <QDir>
#include <QFileInfo>

namespace tarn
{

namespace
{

// The path as the file system resolves its folder, so that "data/../data/x" and a
// link to the folder compare equal to "data/x", whether or not the file exists yet.
QString resolved(const QString& path)
{
    const QFileInfo info(path);
    const QString folder = info.absoluteDir().canonicalPath();
    return folder.isEmpty() ? info.absoluteFilePath() : QDir(folder).filePath(info.fileName());
}

// One of the data directory's own files, by name or by inode, named in the refusal.
std::optional<QString> ownFileAt(const QString& target, const QStringList& ownFiles)
{
    const QString wanted = resolved(target);
    for (const QString& own : ownFiles) {
        if (resolved(own) == wanted || isSameFile(target, own))
            return own;
    }
    return std::nullopt;
}

QString unstoredSlotsText(const Database& classDb, int classes)
{
    return QStringLiteral("%1 could not take the weapon and grenade slots the export chose for %2 "
                          "(it is read-only); the file carries them, the store does not.")
        .arg(QDir::toNativeSeparators(classDb.path()),
             classes == 1 ? QStringLiteral("1 class") : QStringLiteral("%1 classes").arg(classes));
}

} // namespace

ExportResult exportConfiguration(const ExportStores& stores, const ExportRequest& request, QIODevice& out,
                                 const std::function<void()>& completeOutput)
{
    ExportResult result;
    try {
        const ReferenceLists lists = loadReferenceLists(stores.refDb);
        // Readers are kept out, so the commit after a written file can never be refused as busy.
        const bool storeSlots = !stores.classDb.isReadOnly();
        Transaction transaction(stores.classDb,
                                storeSlots ? Transaction::Lock::Exclusive : Transaction::Lock::Deferred);
        if (!configurationExists(stores.classDb, request.configName))
            throw ClassFileError(QStringLiteral("There is no configuration named \"%1\" (another program may have "
                                                "deleted it); nothing was written.")
                                     .arg(request.configName));
        ClassFileWriter writer(out, request.protectOutput);
        writer.writeHeader(request.modId, request.configName);
        ExportWalk walk(stores.classDb, lists);
        ClassChecks checks(walk, request.configName, request.protectOutput, ExportResult::ListedWarnings);
        const int tracked = walk.run(request.configName, &writer, storeSlots, &checks);
        result.warnings = checks.problems();
        if (request.strict && !result.warnings.empty()) { // the rows are rolled back, the file is never written
            result.error =
                QStringLiteral("the class file would carry %1; a strict export writes nothing.")
                    .arg(result.warnings.size() == 1 ? QStringLiteral("1 warning")
                                                     : QStringLiteral("%1 warnings").arg(result.warnings.size()));
            return result;
        }
        if (completeOutput)
            completeOutput();
        transaction.commit();
        if (!storeSlots && tracked > 0)
            result.unstoredSlots = unstoredSlotsText(stores.classDb, tracked);
        return result;
    } catch (const Error& e) {
        return {.error = e.message(), .unstoredSlots = std::nullopt, .warnings = {}, .unlistedWarnings = 0};
    }
}

ExportResult exportConfigurationToFile(const ExportStores& stores, const ExportRequest& request)
{
    const QString& path = request.target;
    if (const std::optional<QString> own = ownFileAt(path, request.ownFiles))
        return {.error = QStringLiteral("Cannot write %1: it is %2, one of the workbench's own files.")
                             .arg(QDir::toNativeSeparators(path), QDir::toNativeSeparators(*own)),
                .unstoredSlots = std::nullopt,
                .warnings = {},
                .unlistedWarnings = 0};
    OutputFile file(path, request.readerWait);
    if (!file.open())
        return {.error = file.errorText(), .unstoredSlots = std::nullopt, .warnings = {}, .unlistedWarnings = 0};
    ExportResult result = exportConfiguration(stores, request, file.device(), [&] {
        if (!file.commit())
            throw ClassFileError(file.errorText());
    });
    if (result.error && file.failed())
        result.error = file.errorText();
    return result;
}

} // namespace tarn
