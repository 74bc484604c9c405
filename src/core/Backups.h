#pragma once

#include "Stores.h"

#include <QDateTime>
#include <QStringList>
#include <optional>

namespace tarn
{

// Copies of both stores in backups/ of the data directory, one folder each, named by
// the time they were made ("2026-11-25T15-40-12"), so that a deleted configuration or a
// bad import can be taken back.
inline const QString BackupFolder = QStringLiteral("backups");
// At most one backup an hour is made, and the last twenty are kept.
inline constexpr qint64 BackupSpacingSeconds = 3600;
inline constexpr int BackupsKept = 20;

// The backups of the data directory, newest first.
QStringList listBackups(const QString& dataDirectory);

// Copies both open stores into a new backup (unless the newest is younger than an hour,
// or forced), then drops all but the newest twenty. A failure is returned to be told: a
// backup that cannot be made never stops the work it comes before.
std::optional<QString> backUpStores(const QString& dataDirectory, Stores& stores, const QDateTime& now,
                                    bool force = false);

// Puts a backup back into the open stores, after a forced backup of them as they are.
// Throws StoreError when the backup is missing or cannot be copied.
void restoreBackup(const QString& dataDirectory, Stores& stores, const QString& when, const QDateTime& now);

} // namespace tarn
