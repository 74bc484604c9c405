#include "Tarnctl.h"

#include "Commands.h"
#include "core/DataDirectory.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <functional>
#include <map>

namespace tarn::cli
{

namespace
{

const char* const UsageText = R"(Usage:
  tarnctl [--data-dir DIR] list                      configuration names, one per line, in list order
  tarnctl [--data-dir DIR] new NAME                  adds an empty configuration
  tarnctl [--data-dir DIR] delete NAME               deletes a configuration and its classes
  tarnctl [--data-dir DIR] copy SOURCE NEW           copies a configuration with all its classes
  tarnctl [--data-dir DIR] export NAME FILE [--unprotected]
                                                     writes a class file, protected unless --unprotected
  tarnctl [--data-dir DIR] import FILE NAME          reads a class file as a new configuration
  tarnctl [--data-dir DIR] modid [VALUE]             prints the Mod ID, or sets it
  tarnctl protect | unprotect                        filters standard input to standard output, line by line
  tarnctl check FILE                                 lists every problem an import of FILE would meet
  tarnctl --help | --version

The data directory is DIR, else $TARN_DATA_DIR, else the program's own directory when it
holds tarn_dat.db, else the workbench's per-user data directory. Missing stores are created.
--wait SECONDS sets how long a command on the stores waits while another program is
writing to them, 30 seconds unless given, before it reports the store busy.
Names are taken exactly as typed. A FILE of "-" is standard output for export, and
standard input for import and check. An export never replaces a device, a pipe or a
file with several links: it writes into them. Exit status: 0 done, 1 refused or failed,
2 usage error.
)";

// A day: longer than any build step should hang on a store.
constexpr int MaxWaitSeconds = 86400;

using Command = std::function<int(const Invocation&, Console&)>;

struct CommandInfo {
    Command run;
    int minArguments;
    int maxArguments;
};

const std::map<QString, CommandInfo>& commands()
{
    static const std::map<QString, CommandInfo> table{
        {QStringLiteral("list"), {listCommand, 0, 0}},           {QStringLiteral("new"), {newCommand, 1, 1}},
        {QStringLiteral("delete"), {deleteCommand, 1, 1}},       {QStringLiteral("copy"), {copyCommand, 2, 2}},
        {QStringLiteral("export"), {exportCommand, 2, 2}},       {QStringLiteral("import"), {importCommand, 2, 2}},
        {QStringLiteral("modid"), {modIdCommand, 0, 1}},         {QStringLiteral("protect"), {protectCommand, 0, 0}},
        {QStringLiteral("unprotect"), {unprotectCommand, 0, 0}}, {QStringLiteral("check"), {checkCommand, 1, 1}},
    };
    return table;
}

int usageError(Console& console, const QString& why)
{
    console.error << "tarnctl: " << why << "\n\n" << UsageText;
    console.error.flush();
    return Usage;
}

} // namespace

int run(const QStringList& arguments, Console& console)
{
    QCommandLineParser parser;
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QString(), QStringLiteral("dir"));
    const QCommandLineOption unprotected(QStringLiteral("unprotected"));
    const QCommandLineOption wait(QStringLiteral("wait"), QString(), QStringLiteral("seconds"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringLiteral("version"));
    parser.addOptions({dataDir, unprotected, wait, help, version});
    if (!parser.parse(QStringList{QStringLiteral("tarnctl")} + arguments))
        return usageError(console, parser.errorText());
    if (parser.isSet(help)) {
        console.text << UsageText;
        return Success;
    }
    if (parser.isSet(version)) {
        console.text << "tarnctl " << QCoreApplication::applicationVersion() << '\n';
        return Success;
    }
    QStringList positional = parser.positionalArguments();
    if (positional.isEmpty())
        return usageError(console, QStringLiteral("no command given"));
    const QString command = positional.takeFirst();
    const auto found = commands().find(command);
    if (found == commands().end())
        return usageError(console, QStringLiteral("unknown command \"%1\"").arg(command));
    const CommandInfo& info = found->second;
    if (positional.size() < info.minArguments || positional.size() > info.maxArguments)
        return usageError(console, QStringLiteral("wrong number of arguments for \"%1\"").arg(command));
    if (parser.isSet(unprotected) && command != QLatin1String("export"))
        return usageError(console, QStringLiteral("--unprotected goes with export only"));
    Invocation call{command, positional, resolveDataDirectory(parser.value(dataDir)), parser.isSet(unprotected)};
    if (parser.isSet(wait)) {
        bool ok = false;
        const double seconds = parser.value(wait).toDouble(&ok);
        if (!ok || seconds < 0 || seconds > MaxWaitSeconds)
            return usageError(console, QStringLiteral("--wait takes a number of seconds from 0 to %1, not \"%2\"")
                                           .arg(MaxWaitSeconds)
                                           .arg(parser.value(wait)));
        call.busyWait = std::chrono::milliseconds(qint64(seconds * 1000));
    }
    return info.run(call, console);
}

} // namespace tarn::cli
