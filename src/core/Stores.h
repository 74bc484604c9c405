#pragma once

#include "store/Database.h"

#include <QString>
#include <memory>

namespace tarn
{

// The two open stores of a data directory: the configurations and their classes,
// and the reference tables the classes choose from.
struct Stores {
    std::unique_ptr<Database> classDb;
    std::unique_ptr<Database> refDb;
};

// Opens the stores of a data directory, making the directory and any missing store
// (with its tables and starting rows) first. An existing file is never overwritten.
// Throws StoreError naming the file and the reason. Statements wait up to busyWait
// for a store that another program is writing.
Stores openStores(const QString& dataDirectory, std::chrono::milliseconds busyWait = Database::DefaultBusyWait);

} // namespace tarn
