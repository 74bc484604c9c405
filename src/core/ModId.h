#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tarn
{

// The Mod ID kept in tarn.ini: one line, the value between double quotes, one byte
// per character in Windows-1252 like the class file. Any failure to read gives "0".
QString readModId(const QString& iniPath);
// The Mod ID from the file's bytes, by the same rules.
QString parseModId(const QByteArray& content);
// Writes the file whole or not at all; the error text on failure, also for a
// character that Windows-1252 lacks, when the file is not touched.
std::optional<QString> writeModId(const QString& iniPath, const QString& modId);

inline const QString DefaultModId = QStringLiteral("0");

} // namespace tarn
