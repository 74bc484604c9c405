#include "ModId.h"

#include "classfile/Cp1252.h"
#include "classfile/OutputFile.h"

#include <QDir>
#include <QFileInfo>

namespace tarn
{

namespace
{

// One quoted line is all the file holds; anything larger is not a settings file.
constexpr qint64 SettingsFileLimit = qint64(64) * 1024;

QString trimSpaces(QString text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ')
        --end;
    qsizetype start = 0;
    while (start < end && text[start] == u' ')
        ++start;
    return text.mid(start, end - start);
}

} // namespace

QString parseModId(const QByteArray& content)
{
    qsizetype pos = 0;
    while (pos < content.size() && (content[pos] == ' ' || content[pos] == '\t'))
        ++pos;
    if (pos >= content.size())
        return DefaultModId; // the file ends before its item
    const auto lineEnd = [&](qsizetype from) {
        qsizetype end = from;
        while (end < content.size() && content[end] != '\r' && content[end] != '\n')
            ++end;
        return end;
    };
    QByteArray item;
    if (content[pos] == '"') {
        const qsizetype close = content.indexOf('"', pos + 1);
        const qsizetype end = close < 0 ? lineEnd(pos + 1) : close;
        item = content.mid(pos + 1, end - pos - 1);
    } else {
        qsizetype end = lineEnd(pos);
        const qsizetype comma = content.indexOf(',', pos);
        if (comma >= 0 && comma < end)
            end = comma;
        item = content.mid(pos, end - pos);
    }
    return trimSpaces(decodeCp1252(item));
}

QString readModId(const QString& iniPath)
{
    const std::optional<QByteArray> content = readSmallFile(iniPath, SettingsFileLimit);
    return content ? parseModId(*content) : DefaultModId;
}

std::optional<QString> writeModId(const QString& iniPath, const QString& modId)
{
    const QString path = QDir::toNativeSeparators(iniPath);
    if (const QFileInfo info(iniPath); info.exists() && !info.isFile())
        return QStringLiteral("Cannot write %1: it is not a regular file.").arg(path);
    const Cp1252Encoding encoded = encodeCp1252(modId);
    if (!encoded.ok())
        return QStringLiteral("Cannot write %1: the Mod ID \"%2\" holds \"%3\", which the file cannot carry.")
            .arg(path, modId, encoded.refused);
    return writeWholeFile(iniPath, '"' + encoded.bytes + "\"\r\n");
}

} // namespace tarn
