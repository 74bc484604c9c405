#pragma once

#include <QString>
#include <QStringList>

namespace tarn
{

// Where the stores and tarn.ini live, in this order: the --data-dir option, the
// TARN_DATA_DIR environment variable, the program's own directory when it already
// holds tarn_dat.db (a portable install), else the per-user data location.
struct DataDirectoryChoice {
    QString option;           // --data-dir, empty when not given
    QString environment;      // TARN_DATA_DIR, empty when not set
    QString programDirectory; // where the executable lies
    QString userDirectory;    // the per-user data location
};

QString chooseDataDirectory(const DataDirectoryChoice& choice);
// The choice for this process, from its environment and executable.
QString resolveDataDirectory(const QString& option);

// The windows' own settings: beside the program for a portable install (the data
// directory is the program's), else in the per-user configuration location.
QString chooseWindowSettingsFile(const QString& dataDirectory, const QString& programDirectory,
                                 const QString& userConfigDirectory);
QString resolveWindowSettingsFile(const QString& dataDirectory);

// The files of the data directory that only the workbench may write: the stores with
// SQLite's journals beside them, and tarn.ini.
QStringList ownFiles(const QString& dataDirectory);

inline const QString ClassStoreFile = QStringLiteral("tarn_dat.db");
inline const QString ReferenceStoreFile = QStringLiteral("tarn_ref.db");
inline const QString SettingsFile = QStringLiteral("tarn.ini");

} // namespace tarn
