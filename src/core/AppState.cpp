#include "AppState.h"

#include "DataDirectory.h"

#include <QDir>

namespace tarn {

QString AppState::settingsPath() const
{
    return QDir(dataDirectory).filePath(SettingsFile);
}

} // namespace tarn
