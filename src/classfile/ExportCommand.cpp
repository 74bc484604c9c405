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

struct ExportRequest {
    const QString& configName;
    const QString& modId;
    bool protectOutput;
};

// The rows take the tracked slots only once the output is complete, so that a
// refused or failed export changes nothing.
std::optional<QString> exportTo(Database& classDb, Database& refDb, const ExportRequest& request, QIODevice& out,
                                const std::function<void()>& completeOutput)
{
    try {
        const ReferenceLists lists = loadReferenceLists(refDb);
        Transaction transaction(classDb);
        ClassFileWriter writer(out, request.protectOutput);
        writer.writeHeader(request.modId, request.configName);
        ExportWalk(classDb, lists).run(request.configName, writer);
        completeOutput();
        transaction.commit();
        return std::nullopt;
    } catch (const Error& e) {
        return e.message();
    }
}

} // namespace

std::optional<QString> exportConfiguration(Database& classDb, Database& refDb, const QString& configName,
                                           const QString& modId, bool protectOutput, QIODevice& out)
{
    return exportTo(classDb, refDb, {configName, modId, protectOutput}, out, [] {});
}

std::optional<QString> exportConfigurationToFile(Database& classDb, Database& refDb, const QString& configName,
                                                 const QString& modId, bool protectOutput, const QString& path)
{
    const QDir dataDirectory = QFileInfo(classDb.path()).dir();
    for (const QString& own : {classDb.path(), refDb.path(), dataDirectory.filePath(SettingsFile)}) {
        if (isSameFile(path, own))
            return QStringLiteral("Cannot write %1: it is %2, one of the workbench's own files.")
                .arg(QDir::toNativeSeparators(path), QDir::toNativeSeparators(own));
    }
    OutputFile file(path);
    if (!file.open())
        return file.errorText();
    const std::optional<QString> error =
        exportTo(classDb, refDb, {configName, modId, protectOutput}, file.device(), [&] {
            if (!file.commit())
                throw ClassFileError(file.errorText());
        });
    if (error && file.failed())
        return file.errorText();
    return error;
}

} // namespace tarn
