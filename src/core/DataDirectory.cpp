#include "DataDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tarn
{

QString chooseDataDirectory(const DataDirectoryChoice& choice)
{
    if (!choice.option.isEmpty())
        return choice.option;
    if (!choice.environment.isEmpty())
        return choice.environment;
    if (!choice.programDirectory.isEmpty() && QFileInfo::exists(QDir(choice.programDirectory).filePath(ClassStoreFile)))
        return choice.programDirectory;
    return choice.userDirectory;
}

QString resolveDataDirectory(const QString& option)
{
    return chooseDataDirectory({option, qEnvironmentVariable("TARN_DATA_DIR"), QCoreApplication::applicationDirPath(),
                                QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)});
}

QStringList ownFiles(const QString& dataDirectory)
{
    const QDir dir(dataDirectory);
    QStringList files{dir.filePath(SettingsFile)};
    for (const QString& store : {ClassStoreFile, ReferenceStoreFile}) {
        for (const char* journal : {"", "-journal", "-wal", "-shm"})
            files << dir.filePath(store + QLatin1String(journal));
    }
    return files;
}

QString chooseWindowSettingsFile(const QString& dataDirectory, const QString& programDirectory,
                                 const QString& userConfigDirectory)
{
    const bool portable = QDir(dataDirectory).canonicalPath() == QDir(programDirectory).canonicalPath();
    return portable ? QDir(programDirectory).filePath(QStringLiteral("tarn-windows.ini"))
                    : QDir(userConfigDirectory).filePath(QStringLiteral("windows.ini"));
}

QString resolveWindowSettingsFile(const QString& dataDirectory)
{
    return chooseWindowSettingsFile(dataDirectory, QCoreApplication::applicationDirPath(),
                                    QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
}

} // namespace tarn
