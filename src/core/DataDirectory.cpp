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

} // namespace tarn
