#include "AppState.h"

#include "DataDirectory.h"

#include <QDir>

namespace tarn
{

std::unique_ptr<AppState> AppState::open(const QString& dataDirectory, std::chrono::milliseconds busyWait)
{
    auto state = std::make_unique<AppState>();
    state->dataDirectory = dataDirectory;
    state->stores = openStores(dataDirectory, busyWait);
    return state;
}

QString AppState::settingsPath() const
{
    return QDir(dataDirectory).filePath(SettingsFile);
}

} // namespace tarn
