#include "ModId.h"

#include "classfile/Cp1252.h"
#include "classfile/OutputFile.h"

#include <QDir>
#include <QFile>

namespace tarn
{

namespace
{

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
    QFile file(iniPath);
    if (!file.open(QIODevice::ReadOnly))
        return DefaultModId;
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return DefaultModId;
    return parseModId(content);
}

std::optional<QString> writeModId(const QString& iniPath, const QString& modId)
{
    const QString path = QDir::toNativeSeparators(iniPath);
    const Cp1252Encoding encoded = encodeCp1252(modId);
    if (!encoded.ok())
        return QStringLiteral("Cannot write %1: the Mod ID \"%2\" holds \"%3\", which the file cannot carry.")
            .arg(path, modId, encoded.refused);
    return writeWholeFile(iniPath, '"' + encoded.bytes + "\"\r\n");
}

} // namespace tarn
