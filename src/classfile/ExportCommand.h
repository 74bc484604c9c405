#pragma once

#include "Checks.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
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
    QString target;                          // the file, for exportConfigurationToFile
    QStringList ownFiles;                    // the data directory's files, refused as targets by name and by inode
    std::chrono::milliseconds readerWait{0}; // how long a named pipe may wait for its reader
    bool strict = false;                     // a warning refuses the export as an error does
};

// What an export came to. On an error the target and the rows are as they were; the
// warnings are kept when a strict export refuses because of them.
struct ExportResult {
    std::optional<QString> error;
    // Set when the file was written but the store could not take the slots the tracking
    // changed (a read-only store): the file carries them, the rows do not.
    std::optional<QString> unstoredSlots;
    // What the file carries that the author may not expect: the checks' warnings, the
    // first ListedWarnings of them, and how many more there are.
    std::vector<Problem> warnings;
    qsizetype unlistedWarnings = 0;

    static constexpr std::size_t ListedWarnings = 100;
    qsizetype warningCount() const { return qsizetype(warnings.size()) + unlistedWarnings; }
};

// Writes the class file of a configuration, protected or not, to a device opened for
// writing: the classes in class_num order, each after the editor's slot tracking,
// whose changes it stores in the rows as the editor's walk through them would. The
// store is held from the first row read to the last row stored, and the rows change
// only when the whole file was written: completeOutput (if given) finishes the output
// while the store is still held, and whatever it throws undoes the rows.
ExportResult exportConfiguration(const ExportStores& stores, const ExportRequest& request, QIODevice& out,
                                 const std::function<void()>& completeOutput = {});

// The same into the request's target, written through OutputFile: a refused or failed
// export leaves an existing regular file exactly as it was, and a device, a pipe or a
// file with several links is written into in place. The target is opened before the
// store is held, so a pipe that nobody reads never keeps the store from others.
ExportResult exportConfigurationToFile(const ExportStores& stores, const ExportRequest& request);

} // namespace tarn
