#pragma once

#include "Stores.h"

#include <QString>
#include <memory>

namespace tarn
{

// What every window shares for the whole run. One instance, made at start-up and
// handed to the windows; nothing of it is saved but the Mod ID.
struct AppState {
    QString dataDirectory;
    Stores stores;         // classDb on tarn_dat.db, refDb on tarn_ref.db
    QString currentConfig; // the selected configuration; empty means none
    QString modId = QStringLiteral("0");
    bool protectOutput = false; // the form of the next export
    // Where the windows remember their geometry and folders; empty remembers nothing.
    QString windowSettingsFile;

    // Opens (or first makes) the stores of a data directory; throws StoreError.
    static std::unique_ptr<AppState> open(const QString& dataDirectory,
                                          std::chrono::milliseconds busyWait = Database::DefaultBusyWait);

    Database& classDb() { return *stores.classDb; }
    Database& refDb() { return *stores.refDb; }
    QString settingsPath() const;
};

} // namespace tarn
