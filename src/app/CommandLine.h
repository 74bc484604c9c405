#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace tarn::app
{

// The workbench's command line. When exitStatus is set, the program prints output
// (to standard output for 0, else to standard error) and ends without a window.
struct CommandLine {
    QString dataDirectory;
    // A class file to import once the main window shows (tarn FILE, as the desktop opens one).
    QString classFile;
    std::optional<int> exitStatus;
    QString output;
};

// Takes --data-dir DIR, --help, --version and one FILE, and lets Qt's own options (-platform,
// -style and the like) through to QApplication. Anything else is a usage error.
CommandLine parseCommandLine(const QStringList& arguments, const QString& version);
CommandLine parseCommandLine(int argc, char** argv);

} // namespace tarn::app
