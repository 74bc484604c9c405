#include "Commands.h"

#include "classfile/ClassFileError.h"
#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "classfile/LineReader.h"
#include "core/AppState.h"
#include "core/Backups.h"
#include "core/DataDirectory.h"
#include "core/ModId.h"
#include "store/Configurations.h"
#include "store/StoreError.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFileDevice>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>
#include <QTextStream>
#include <functional>

namespace tarn::cli
{

namespace
{

int refuse(Console& console, const QString& why)
{
    console.error << "tarnctl: " << why << '\n';
    console.error.flush();
    return Refused;
}

// Both stores must be there: tarnctl never makes them, so that a mistyped data
// directory is told instead of quietly filled with new, empty stores.
std::optional<QString> missingStores(const QString& dataDirectory)
{
    const QDir dir(dataDirectory);
    const bool classStore = QFileInfo::exists(dir.filePath(ClassStoreFile));
    const bool referenceStore = QFileInfo::exists(dir.filePath(ReferenceStoreFile));
    if (!classStore && !referenceStore)
        return QStringLiteral("no Tarn stores in %1 (run the workbench once, or `tarnctl init`)")
            .arg(QDir::toNativeSeparators(dataDirectory));
    if (classStore && referenceStore)
        return std::nullopt;
    return QStringLiteral("%1 is missing, though %2 is there")
        .arg(QDir::toNativeSeparators(dir.filePath(classStore ? ReferenceStoreFile : ClassStoreFile)),
             classStore ? ClassStoreFile : ReferenceStoreFile);
}

// Opens the stores of the data directory and runs the command on them; a store
// that is missing, cannot be opened or refuses is reported and ends with status 1.
int withStores(const Invocation& call, Console& console, const std::function<int(AppState&)>& command)
{
    if (const std::optional<QString> missing = missingStores(call.dataDirectory))
        return refuse(console, *missing);
    try {
        const std::unique_ptr<AppState> state = AppState::open(call.dataDirectory, call.busyWait);
        return command(*state);
    } catch (const StoreError& error) {
        return refuse(console, error.message());
    }
}

// A backup of the stores before a command that can lose rows; one that fails is told
// and the command goes on.
void backUpFirst(const Invocation& call, AppState& state, Console& console)
{
    if (call.noBackup)
        return;
    if (const std::optional<QString> failed =
            backUpStores(state.dataDirectory, state.stores, QDateTime::currentDateTime()))
        console.error << "tarnctl: warning: " << *failed << '\n';
}

std::optional<int> requireConfiguration(AppState& state, const QString& name, Console& console)
{
    if (configurationExists(state.classDb(), name))
        return std::nullopt;
    return refuse(console, QStringLiteral("no configuration is named \"%1\"").arg(name));
}

// Everything handed to standard output has left the process.
bool writtenOut(QIODevice& out)
{
    auto* file = qobject_cast<QFileDevice*>(&out);
    return !file || (file->flush() && file->error() == QFileDevice::NoError);
}

// Copies standard input to the spool, a chunk at a time so that memory stays flat. It
// stops behind a line longer than any class file holds: the import refuses that line
// by its number, and nothing after it needs reading.
std::optional<QString> spool(QIODevice& in, QFileDevice& spool)
{
    QByteArray chunk(qsizetype(64) * 1024, Qt::Uninitialized);
    qsizetype sinceLineEnd = 0;
    qint64 got = 0;
    while ((got = in.read(chunk.data(), chunk.size())) > 0) {
        const QByteArrayView read(chunk.constData(), got);
        if (spool.write(read.data(), got) != got)
            return spool.errorString();
        const qsizetype lastEnd = read.lastIndexOf('\r');
        sinceLineEnd = lastEnd < 0 ? sinceLineEnd + got : got - lastEnd - 1;
        if (sinceLineEnd > LineReader::MaxLineLength)
            break;
    }
    if (got < 0)
        return in.errorString();
    return spool.flush() ? std::nullopt : std::optional(spool.errorString());
}

// The whole input is spooled before the store is written, so that a pipe from another
// tarnctl on the same store never waits on the lock this import would hold.
ImportResult importFromStandardInput(Database& classDb, const QString& name, QIODevice& in)
{
    QTemporaryFile file;
    std::optional<QString> error = file.open() ? spool(in, file) : std::optional(file.errorString());
    ImportResult result;
    if (!error && file.seek(0))
        result = importClassFile(classDb, name, file);
    else
        result.message = error.value_or(file.errorString());
    if (result.status == ImportResult::Status::Failed)
        result.message = cannotImport(StandardInputName, result.message);
    return result;
}

} // namespace

int initCommand(const Invocation& call, Console& console)
{
    const QDir dir(call.dataDirectory);
    for (const QString& store : {ClassStoreFile, ReferenceStoreFile}) {
        if (QFileInfo::exists(dir.filePath(store)))
            return refuse(console, QStringLiteral("%1 exists already; init touches nothing")
                                       .arg(QDir::toNativeSeparators(dir.filePath(store))));
    }
    try {
        AppState::open(call.dataDirectory, call.busyWait);
    } catch (const StoreError& error) {
        return refuse(console, error.message());
    }
    if (!call.quiet)
        console.text << "Created the stores in " << QDir::toNativeSeparators(call.dataDirectory) << '\n';
    return Success;
}

int listCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        // Package rows of one name share one pool of classes, so the name is told once.
        QStringList names = listConfigurations(state.classDb());
        names.removeDuplicates();
        if (!call.json) {
            for (const QString& name : names)
                console.text << name << '\n';
            return Success;
        }
        QJsonArray list;
        for (const QString& name : names)
            list.append(QJsonObject{{QStringLiteral("name"), name},
                                    {QStringLiteral("classes"), countClasses(state.classDb(), name)},
                                    {QStringLiteral("package_rows"), countPackageRows(state.classDb(), name)}});
        console.text << QJsonDocument(list).toJson(QJsonDocument::Indented);
        return Success;
    });
}

int newCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (call.arguments[0].isEmpty())
            return refuse(console, QStringLiteral("a configuration name cannot be empty"));
        addConfiguration(state.classDb(), call.arguments[0]);
        return Success;
    });
}

int deleteCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (const auto refused = requireConfiguration(state, call.arguments[0], console))
            return *refused;
        backUpFirst(call, state, console);
        deleteConfiguration(state.classDb(), call.arguments[0]);
        return Success;
    });
}

int copyCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (const auto refused = requireConfiguration(state, call.arguments[0], console))
            return *refused;
        if (call.arguments[1].isEmpty())
            return refuse(console, QStringLiteral("a configuration name cannot be empty"));
        copyConfiguration(state.classDb(), call.arguments[0], call.arguments[1]);
        return Success;
    });
}

int exportCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        const QString& name = call.arguments[0];
        if (const auto refused = requireConfiguration(state, name, console))
            return *refused;
        const ExportStores stores{state.classDb(), state.refDb()};
        const ExportRequest request{.configName = name,
                                    .modId = readModId(state.settingsPath()),
                                    .protectOutput = !call.unprotected,
                                    .target = call.arguments[1],
                                    .ownFiles = ownFiles(state.dataDirectory),
                                    .readerWait = call.busyWait,
                                    .strict = call.strict};
        ExportResult result;
        if (request.target != StandardStream) {
            result = exportConfigurationToFile(stores, request);
        } else {
            // Standard output takes the whole file while the store is held, so that a
            // failed write there undoes the rows too.
            QBuffer file;
            file.open(QIODevice::WriteOnly);
            result = exportConfiguration(stores, request, file, [&] {
                if (console.out.write(file.data()) != file.data().size() || !writtenOut(console.out))
                    throw ClassFileError(
                        QStringLiteral("cannot write standard output: %1").arg(console.out.errorString()));
            });
        }
        reportProblems(result.warnings, {}, console);
        if (result.unlistedWarnings > 0)
            console.error << "tarnctl: warning: " << result.unlistedWarnings
                          << " more warnings; tarnctl check --config lists them all\n";
        if (result.error)
            return refuse(console, *result.error);
        if (result.unstoredSlots)
            console.error << "tarnctl: warning: " << *result.unstoredSlots << '\n';
        return Success;
    });
}

int checkStoredCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (!call.config.isEmpty()) {
            if (const auto refused = requireConfiguration(state, call.config, console))
                return *refused;
        }
        const std::vector<Problem> problems =
            call.reference ? checkReferenceTables(state.refDb())
                           : checkConfiguration(state.classDb(), state.refDb(), call.config, !call.unprotected);
        reportProblems(problems, call, console);
        if (problems.empty() && !call.quiet && !call.json)
            console.text << "no problems\n";
        return statusOf(problems, call);
    });
}

int importCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (call.arguments[1].isEmpty())
            return refuse(console, QStringLiteral("a configuration name cannot be empty"));
        if (configurationExists(state.classDb(), call.arguments[1])) // the import joins its classes
            backUpFirst(call, state, console);
        const ImportResult result =
            call.arguments[0] == StandardStream
                ? importFromStandardInput(state.classDb(), call.arguments[1], console.in)
                : importClassFile(state.classDb(), {.file = call.arguments[0], .newName = call.arguments[1]});
        // The workbench's own words, as scripts may look for them, behind the file and line.
        if (result.status == ImportResult::Status::BadRecord)
            return refuse(console, cannotImport(sourceName(call.arguments[0]),
                                                QStringLiteral("line %1: %2").arg(result.line).arg(result.message)));
        if (result.status != ImportResult::Status::Complete)
            return refuse(console, result.message);
        if (!call.quiet)
            console.text << result.message << '\n';
        return Success;
    });
}

int modIdCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        if (call.arguments.isEmpty()) {
            console.text << readModId(state.settingsPath()) << '\n';
            return Success;
        }
        if (call.arguments[0].isEmpty())
            return refuse(console, QStringLiteral("an empty Mod ID is not taken; the Mod ID stays \"%1\"")
                                       .arg(readModId(state.settingsPath())));
        const auto error = writeModId(state.settingsPath(), call.arguments[0]);
        return error ? refuse(console, *error) : Success;
    });
}

int backupsCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        for (const QString& when : listBackups(state.dataDirectory))
            console.text << when << '\n';
        return Success;
    });
}

int restoreCommand(const Invocation& call, Console& console)
{
    return withStores(call, console, [&](AppState& state) {
        restoreBackup(state.dataDirectory, state.stores, call.arguments[0], QDateTime::currentDateTime());
        if (!call.quiet)
            console.text << "Restored the backup of " << call.arguments[0] << '\n';
        return Success;
    });
}

} // namespace tarn::cli
