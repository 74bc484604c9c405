#include "StatusBar.h"

#include <QDir>

namespace tarn
{

namespace
{

QString classCount(int classes)
{
    return classes == 1 ? QStringLiteral("1 class") : QStringLiteral("%1 classes").arg(classes);
}

} // namespace

QString exportedStatus(int classes, const QString& file)
{
    return QStringLiteral("Wrote %1 to %2").arg(classCount(classes), QDir::toNativeSeparators(file));
}

QString importedStatus(int classes, const QString& file, const QString& configName)
{
    return QStringLiteral("Read %1 from %2 into \"%3\"")
        .arg(classCount(classes), QDir::toNativeSeparators(file), configName);
}

} // namespace tarn
