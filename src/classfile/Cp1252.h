#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace tarn
{

// Class files carry one byte per character in Windows-1252 on every platform. The
// five bytes the code page leaves undefined decode to the control character of the
// same number, so every byte has a character and every file can be read.
QString decodeCp1252(QByteArrayView bytes);

struct Cp1252Encoding {
    QByteArray bytes;
    // The first character that has no byte; the bytes are incomplete when it is set.
    QString refused;
    bool ok() const { return refused.isEmpty(); }
};

Cp1252Encoding encodeCp1252(QStringView text);
// Writes the bytes of the text from out on, one for each UTF-16 unit, so out must have
// room for text.size() bytes. Stops at the first character that has no byte.
struct Cp1252Written {
    qsizetype bytes = 0;
    QString refused; // that character; empty when the whole text was written
};
Cp1252Written writeCp1252(char* out, QStringView text);

} // namespace tarn
