#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tarn
{

// The Mod ID kept in tarn.ini: one line, the value between double quotes.
// Any failure to read gives "0".
QString readModId(const QString& iniPath);
// The Mod ID from the file's bytes, by the same rules.
QString parseModId(const QByteArray& content);
QByteArray formatModId(const QString& modId);
// Writes the file whole or not at all; the error text on failure.
std::optional<QString> writeModId(const QString& iniPath, const QString& modId);

inline const QString DefaultModId = QStringLiteral("0");

} // namespace tarn
