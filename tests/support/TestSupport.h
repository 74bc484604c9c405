#pragma once

#include "core/AppState.h"

#include <QTemporaryDir>
#include <memory>

namespace tarn::test
{

// A fresh data directory with the starting stores, removed when the test ends.
struct TempData {
    QTemporaryDir dir;
    std::unique_ptr<AppState> state = AppState::open(dir.path());

    Database& classDb() { return state->classDb(); }
    Database& refDb() { return state->refDb(); }
};

// Text of a caption without its mnemonic marker.
QString plain(const QString& caption);

} // namespace tarn::test
