#include "CommandLine.h"

#include <QCommandLineParser>

namespace tarn::app
{

namespace
{

const char* const HelpText = R"(Usage: tarn [--data-dir DIR] [FILE]

Tarn Workbench: the player classes of a game modification, kept as named
configurations and exported to class files.

  --data-dir DIR   keep the stores and tarn.ini in DIR; else $TARN_DATA_DIR, else the
                   program's own directory when it holds tarn_dat.db, else the per-user
                   data directory
  FILE             a class file to import as a new configuration, as Import from
                   Class File... does
  -h, --help       this text
  --version        the version
)";

// Qt's own options, which QApplication takes off the command line itself.
const QStringList QtOptionsWithValue{"platform",      "platformpluginpath",
                                     "platformtheme", "plugin",
                                     "session",       "style",
                                     "stylesheet",    "qwindowgeometry",
                                     "qwindowicon",   "qwindowtitle",
                                     "display",       "geometry",
                                     "name",          "title",
                                     "visual",        "dialogs",
                                     "fontengine"};
const QStringList QtFlags{"reverse", "widgetcount", "nograb", "dograb", "sync"};

CommandLine usageError(const QString& why)
{
    return {{}, {}, 2, QStringLiteral("tarn: %1\nTry 'tarn --help'.\n").arg(why)};
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& version)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QString(), QStringLiteral("dir"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption versionOption(QStringLiteral("version"));
    parser.addOptions({dataDir, help, versionOption});
    for (const QString& name : QtOptionsWithValue)
        parser.addOption(QCommandLineOption(name, QString(), QStringLiteral("value")));
    for (const QString& name : QtFlags)
        parser.addOption(QCommandLineOption(name));
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    if (parser.isSet(help))
        return {{}, {}, 0, QLatin1String(HelpText)};
    if (parser.isSet(versionOption))
        return {{}, {}, 0, QStringLiteral("tarn %1\n").arg(version)};
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1 || (files.size() == 1 && files.first().isEmpty()))
        return usageError(QStringLiteral("unexpected argument \"%1\"").arg(files.last()));
    return {parser.value(dataDir), files.value(0), std::nullopt, {}};
}

CommandLine parseCommandLine(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return parseCommandLine(arguments, QStringLiteral(TARN_VERSION));
}

} // namespace tarn::app
