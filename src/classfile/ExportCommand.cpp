#include "ExportCommand.h"

#include "ClassFileError.h"
#include "ClassFileWriter.h"
#include "ExportWalk.h"
#include "OutputFile.h"
#include "core/DataDirectory.h"
#include "store/Database.h"

#include <QDir>
#include <QFileInfo>
#include <functional>

namespace tarn
{

namespace
{

// The rows take the tracked slots only once the output is complete, so that a
// refused or failed export changes nothing.
std::optional<QString> exportTo(const ExportStores& stores, const ExportRequest& request, QIODevice& out,
                                const std::function<void()>& completeOutput)
{
    try {
        const ReferenceLists lists = loadReferenceLists(stores.refDb);
        Transaction transaction(stores.classDb);
        ClassFileWriter writer(out, request.protectOutput);
        writer.writeHeader(request.modId, request.configName);
        ExportWalk(stores.classDb, lists).run(request.configName, writer);
        completeOutput();
        transaction.commit();
        return std::nullopt;
    } catch (const Error& e) {
        return e.message();
    }
}

} // namespace

std::optional<QString> exportConfiguration(const ExportStores& stores, const ExportRequest& request, QIODevice& out)
{
    return exportTo(stores, request, out, [] {});
}

std::optional<QString> exportConfigurationToFile(const ExportStores& stores, const ExportRequest& request)
{
    const QString& path = request.target;
    const QDir dataDirectory = QFileInfo(stores.classDb.path()).dir();
    for (const QString& own : {stores.classDb.path(), stores.refDb.path(), dataDirectory.filePath(SettingsFile)}) {
        if (isSameFile(path, own))
            return QStringLiteral("Cannot write %1: it is %2, one of the workbench's own files.")
                .arg(QDir::toNativeSeparators(path), QDir::toNativeSeparators(own));
    }
    OutputFile file(path);
    if (!file.open())
        return file.errorText();
    std::optional<QString> error = exportTo(stores, request, file.device(), [&] {
        if (!file.commit())
            throw ClassFileError(file.errorText());
    });
    if (error && file.failed())
        return file.errorText();
    return error;
}

} // namespace tarn
