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

const char* const Closing = R"(
Options go anywhere on the line:
  --data-dir DIR   the data directory; else $TARN_DATA_DIR, else the program's own directory
                   when it holds tarn_dat.db, else the workbench's per-user data directory
  --wait SECONDS   how long a command waits while another program is writing to the
                   stores, 30 seconds unless given, before it reports the store busy
  -q, --quiet      no success messages ("Import Complete", "no problems"); errors stay
  --no-backup      no backup of the stores before delete, restore or an import under a
                   name in use, for scripts that keep their own copies
  -h, --help       this text; "tarnctl help COMMAND" or "COMMAND --help" for one command
  --version        the version
  --               the end of the options: a name or FILE after it may start with "-"

tarnctl never creates stores, except through "tarnctl init". Names are taken exactly as
typed. A FILE of "-" is standard output for export, and standard input for import and
check. An export never replaces a device, a pipe or a file with several links: it writes
into them, and it refuses the data directory's own stores and tarn.ini.

Exit status: 0 done, 1 refused or failed (the reason on standard error), 2 usage error.
)";

using Command = std::function<int(const Invocation&, Console&)>;

struct CommandInfo {
    Command run;
    int minArguments;
    int maxArguments;
    const char* synopsis; // behind "tarnctl "
    const char* summary;
};

// A day: longer than any build step should hang on a store.
constexpr int MaxWaitSeconds = 86400;

const std::map<QString, CommandInfo>& commands()
{
    static const std::map<QString, CommandInfo> table{
        {QStringLiteral("init"),
         {initCommand, 0, 0, "init",
          "creates the two stores of the data directory, as the workbench's first start does"}},
        {QStringLiteral("list"),
         {listCommand, 0, 0, "list [--json]",
          "configuration names, one per line, in list order; with --json, each with its class count and the "
          "number of package rows that carry it"}},
        {QStringLiteral("new"), {newCommand, 1, 1, "new NAME", "adds an empty configuration"}},
        {QStringLiteral("delete"), {deleteCommand, 1, 1, "delete NAME", "deletes a configuration and its classes"}},
        {QStringLiteral("copy"), {copyCommand, 2, 2, "copy SOURCE NEW", "copies a configuration with all its classes"}},
        {QStringLiteral("export"),
         {exportCommand, 2, 2, "export NAME FILE [--unprotected] [--strict]",
          "writes a class file, protected unless --unprotected; its warnings go to standard error, and with "
          "--strict any warning refuses the export"}},
        {QStringLiteral("import"),
         {importCommand, 2, 2, "import FILE NAME", "reads a class file as a new configuration"}},
        {QStringLiteral("modid"), {modIdCommand, 0, 1, "modid [VALUE]", "prints the Mod ID, or sets it"}},
        {QStringLiteral("backups"),
         {backupsCommand, 0, 0, "backups",
          "lists the backups of the stores, newest first; delete, restore and an import under a name in use make "
          "one first (at most one an hour, the last 20 kept) unless --no-backup"}},
        {QStringLiteral("restore"),
         {restoreCommand, 1, 1, "restore WHEN",
          "puts back the stores of a backup, after a backup of the stores as they are"}},
        {QStringLiteral("protect"),
         {protectCommand, 0, 0, "protect",
          "filters standard input to standard output, line by line, into the "
          "protected form"}},
        {QStringLiteral("unprotect"),
         {unprotectCommand, 0, 0, "unprotect",
          "filters standard input to standard output, line by line, into the "
          "plain form"}},
        {QStringLiteral("check"),
         {checkCommand, 0, 1, "check FILE | --config NAME [--unprotected] | --ref  [--strict] [--json]",
          "lists every problem an import of FILE would meet, or that an export of a stored configuration or the "
          "reference tables would meet; 1 on an error, and with --strict on any warning"}},
    };
    return table;
}

QString commandHelp(const CommandInfo& info)
{
    return QStringLiteral("  tarnctl %1\n      %2\n").arg(QLatin1String(info.synopsis), QLatin1String(info.summary));
}

QString generalHelp()
{
    QString text = QStringLiteral("Usage: tarnctl [OPTIONS] COMMAND [ARGUMENTS]\n\nCommands:\n");
    for (const auto& [name, info] : commands())
        text += commandHelp(info);
    return text + QLatin1String(Closing);
}

int usageError(Console& console, const QString& why)
{
    console.error << "tarnctl: " << why << "\nTry 'tarnctl --help'.\n";
    console.error.flush();
    return Usage;
}

int showHelp(Console& console, const QString& command)
{
    if (command.isEmpty()) {
        console.text << generalHelp();
        return Success;
    }
    const auto found = commands().find(command);
    if (found == commands().end())
        return usageError(console, QStringLiteral("unknown command \"%1\"").arg(command));
    console.text << "Usage:\n" << commandHelp(found->second);
    return Success;
}

} // namespace

int run(const QStringList& arguments, Console& console)
{
    QCommandLineParser parser;
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QString(), QStringLiteral("dir"));
    const QCommandLineOption unprotected(QStringLiteral("unprotected"));
    const QCommandLineOption json(QStringLiteral("json"));
    const QCommandLineOption wait(QStringLiteral("wait"), QString(), QStringLiteral("seconds"));
    const QCommandLineOption quiet(QStringList{QStringLiteral("q"), QStringLiteral("quiet")});
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringLiteral("version"));
    const QCommandLineOption strict(QStringLiteral("strict"));
    const QCommandLineOption config(QStringLiteral("config"), QString(), QStringLiteral("name"));
    const QCommandLineOption reference(QStringLiteral("ref"));
    const QCommandLineOption noBackup(QStringLiteral("no-backup"));
    parser.addOptions({dataDir, unprotected, json, wait, quiet, help, version, strict, config, reference, noBackup});
    if (!parser.parse(QStringList{QStringLiteral("tarnctl")} + arguments))
        return usageError(console, parser.errorText());
    QStringList positional = parser.positionalArguments();
    if (parser.isSet(help))
        return showHelp(console, positional.value(0));
    if (parser.isSet(version)) {
        console.text << "tarnctl " << QCoreApplication::applicationVersion() << '\n';
        return Success;
    }
    if (positional.isEmpty())
        return usageError(console, QStringLiteral("no command given"));
    const QString command = positional.takeFirst();
    if (command == QLatin1String("help") && positional.size() <= 1)
        return showHelp(console, positional.value(0));
    const auto found = commands().find(command);
    if (found == commands().end())
        return usageError(console, QStringLiteral("unknown command \"%1\"").arg(command));
    const CommandInfo& info = found->second;
    if (positional.size() < info.minArguments)
        return usageError(console, QStringLiteral("missing arguments: tarnctl %1").arg(QLatin1String(info.synopsis)));
    if (positional.size() > info.maxArguments)
        return usageError(
            console, QStringLiteral("too many arguments for %1: \"%2\"").arg(command, positional[info.maxArguments]));
    const bool check = command == QLatin1String("check");
    if (parser.isSet(unprotected) && command != QLatin1String("export") && !(check && parser.isSet(config)))
        return usageError(console, QStringLiteral("--unprotected goes with export and check --config only"));
    if (parser.isSet(json) && command != QLatin1String("list") && !check)
        return usageError(console, QStringLiteral("--json goes with list and check only"));
    if (parser.isSet(strict) && command != QLatin1String("export") && !check)
        return usageError(console, QStringLiteral("--strict goes with export and check only"));
    if ((parser.isSet(config) || parser.isSet(reference)) && !check)
        return usageError(console, QStringLiteral("--config and --ref go with check only"));
    if (check && int(positional.size()) + int(parser.isSet(config)) + int(parser.isSet(reference)) != 1)
        return usageError(console, QStringLiteral("check takes one of FILE, --config NAME and --ref"));
    Invocation call{command, positional, resolveDataDirectory(parser.value(dataDir))};
    call.unprotected = parser.isSet(unprotected);
    call.json = parser.isSet(json);
    call.quiet = parser.isSet(quiet);
    call.strict = parser.isSet(strict);
    call.config = parser.value(config);
    call.reference = parser.isSet(reference);
    call.noBackup = parser.isSet(noBackup);
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
