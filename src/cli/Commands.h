#pragma once

#include "Tarnctl.h"
#include "classfile/Checks.h"

#include <QDir>
#include <QString>
#include <QStringList>
#include <chrono>

namespace tarn::cli
{

// The command line once its options are taken off: the command, its arguments and
// the data directory they work on.
struct Invocation {
    QString command;
    QStringList arguments;
    QString dataDirectory;
    bool unprotected = false;
    bool json = false;
    bool quiet = false;
    bool strict = false;                       // a warning fails the command as an error does
    QString config{};                          // check --config NAME
    bool reference = false;                    // check --ref
    bool noBackup = false;                     // the script keeps its own copies
    std::chrono::milliseconds busyWait{30000}; // a build may run many imports at once
};

// A file argument of "-" is standard output for export, standard input for import and check.
inline const QString StandardStream = QStringLiteral("-");
inline const QString StandardInputName = QStringLiteral("(standard input)");

// A file argument as tarnctl's messages name it.
inline QString sourceName(const QString& file)
{
    return file == StandardStream ? StandardInputName : QDir::toNativeSeparators(file);
}

// Commands on the stores of the data directory.
int initCommand(const Invocation& call, Console& console);
int listCommand(const Invocation& call, Console& console);
int newCommand(const Invocation& call, Console& console);
int deleteCommand(const Invocation& call, Console& console);
int copyCommand(const Invocation& call, Console& console);
int exportCommand(const Invocation& call, Console& console);
int importCommand(const Invocation& call, Console& console);
int modIdCommand(const Invocation& call, Console& console);
int backupsCommand(const Invocation& call, Console& console);
int restoreCommand(const Invocation& call, Console& console);
// check --config NAME and check --ref: the stored rows' problems.
int checkStoredCommand(const Invocation& call, Console& console);

// What the checks found, as tarnctl tells it: a line on standard error for each problem
// ("tarnctl: warning: ..."), or the list as JSON on standard output with --json.
void reportProblems(const std::vector<Problem>& problems, const Invocation& call, Console& console);
// 1 when a problem fails the command: an error, or with --strict any warning.
int statusOf(const std::vector<Problem>& problems, const Invocation& call);

// Commands on class files alone.
int protectCommand(const Invocation& call, Console& console);
int unprotectCommand(const Invocation& call, Console& console);
int checkCommand(const Invocation& call, Console& console);

} // namespace tarn::cli
