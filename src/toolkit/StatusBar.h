#pragma once

#include <QString>

namespace tarn
{

// What the status bars say after a class file was written or read.
QString exportedStatus(int classes, const QString& file);
QString importedStatus(int classes, const QString& file, const QString& configName);

} // namespace tarn
