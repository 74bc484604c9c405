#pragma once

#include <QString>
#include <optional>

class QIODevice;

namespace tarn
{

class Database;

// The stores an export reads: the classes, whose slots it may store, and the reference
// tables the pickers are filled from.
struct ExportStores {
    Database& classDb;
    Database& refDb;
};

// What to export, and where.
struct ExportRequest {
    QString configName;
    QString modId;
    bool protectOutput = true;
    QString target; // the file, for exportConfigurationToFile
};

// Writes the class file of a configuration, protected or not, to a device opened for
// writing: the classes in class_num order, each after the editor's slot tracking,
// whose changes it stores in the rows as the editor's walk through them would. The
// rows change only when the whole file was written. Returns what failed or was
// refused, naming the class and the field; nothing on success.
std::optional<QString> exportConfiguration(const ExportStores& stores, const ExportRequest& request, QIODevice& out);

// The same into the request's target, written through OutputFile: a refused or failed
// export leaves an existing regular file exactly as it was, and a device, a pipe or a
// file with several links is written into in place. The stores and tarn.ini of the data
// directory are refused as targets.
std::optional<QString> exportConfigurationToFile(const ExportStores& stores, const ExportRequest& request);

} // namespace tarn
