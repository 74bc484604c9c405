#pragma once

#include <QString>
#include <optional>

class QIODevice;

namespace tarn
{

class Database;

// Writes the class file of a configuration, protected or not, to a device opened for
// writing: the classes in class_num order, each after the editor's slot tracking,
// whose changes it stores in the rows as the editor's walk through them would. The
// rows change only when the whole file was written. Returns what failed or was
// refused, naming the class and the field; nothing on success.
std::optional<QString> exportConfiguration(Database& classDb, Database& refDb, const QString& configName,
                                           const QString& modId, bool protectOutput, QIODevice& out);

// The same into a file, written through OutputFile: a refused or failed export leaves
// an existing regular file exactly as it was, and a device, a pipe or a file with
// several links is written into in place. The stores and tarn.ini of the data
// directory are refused as targets.
std::optional<QString> exportConfigurationToFile(Database& classDb, Database& refDb, const QString& configName,
                                                 const QString& modId, bool protectOutput, const QString& path);

} // namespace tarn
