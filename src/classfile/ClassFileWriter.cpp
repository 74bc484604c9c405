#include "ClassFileWriter.h"

#include "ClassFileError.h"
#include "Cp1252.h"
#include "Protection.h"

#include <QIODevice>
#include <algorithm>

namespace tarn
{

namespace
{

constexpr char LineEnd[] = "\r\n";
constexpr unsigned char FirstCodeWithoutProtectedForm = 128;

QByteArray number(const ShownNumber& value)
{
    return value ? QByteArray::number(*value) : QByteArray();
}

template <std::size_t N> QByteArray numbers(const std::array<ShownNumber, N>& values)
{
    QByteArray line;
    for (const ShownNumber& value : values)
        line += number(value) + ' ';
    line.chop(1);
    return line;
}

// The two sums stand behind a sign place: a blank for zero and above, a minus below.
QByteArray signBlank(qint32 sum)
{
    const qint64 wide = sum;
    return (wide < 0 ? "-" : " ") + QByteArray::number(wide < 0 ? -wide : wide);
}

std::optional<char> firstWithoutProtectedForm(const QByteArray& bytes)
{
    const auto found = std::find_if(bytes.begin(), bytes.end(), [](char c) {
        return static_cast<unsigned char>(c) >= FirstCodeWithoutProtectedForm;
    });
    return found == bytes.end() ? std::nullopt : std::optional(*found);
}

// Names the holder of a text for the message that refuses it; only put into words
// when a text is refused.
struct TextOwner {
    const QString* className; // none for the header lines
    const char* what;

    QString describe() const
    {
        if (!className)
            return QStringLiteral("The %1").arg(QLatin1String(what));
        return QStringLiteral("Class \"%1\": the %2").arg(*className, QLatin1String(what));
    }
};

QByteArray encode(const QString& text, bool protect, const TextOwner& owner)
{
    const Cp1252Encoding encoded = encodeCp1252(text);
    QString refused = encoded.refused;
    if (refused.isEmpty() && protect) {
        if (const std::optional<char> byte = firstWithoutProtectedForm(encoded.bytes))
            refused = decodeCp1252(QByteArray(1, *byte));
    }
    if (refused.isEmpty())
        return encoded.bytes;
    const QString file = protect ? QStringLiteral("a protected class file") : QStringLiteral("a class file");
    throw ClassFileError(
        QStringLiteral("%1 \"%2\" holds \"%3\", which %4 cannot carry.").arg(owner.describe(), text, refused, file));
}

} // namespace

ClassFileWriter::ClassFileWriter(QIODevice& out, bool protectOutput) : m_out(out), m_protect(protectOutput) {}

void ClassFileWriter::writeHeader(const QString& modId, const QString& configName)
{
    QByteArray block;
    appendLine(block, "V3 " + encode(modId, m_protect, {nullptr, "Mod ID"}));
    appendLine(block, encode(configName, m_protect, {nullptr, "configuration name"}));
    write(block);
}

void ClassFileWriter::writeClass(const ExportedClass& cls)
{
    const auto text = [&](const QString& value, const char* what) {
        return encode(value, m_protect, {&cls.name, what});
    };
    QByteArray block = LineEnd; // the empty line that opens a class is never protected
    appendLine(block, '[' + text(cls.name, "class name") + ']');
    appendLine(block, text(cls.model, "model name") + ' ' + text(cls.redSkin, "red skin") + ' ' +
                          text(cls.blueSkin, "blue skin") + ' ' + number(cls.decoySkin));
    appendLine(block, "1 " + numbers(cls.weapons));
    appendLine(block, numbers(cls.grenades));
    appendLine(block, number(cls.armor) + ' ' + number(cls.speed) + ' ' + number(cls.health) + ' ' +
                          signBlank(cls.abilitySum) + ' ' + signBlank(cls.itemSum));
    appendLine(block, numbers(cls.ammo));
    write(block);
}

void ClassFileWriter::appendLine(QByteArray& block, const QByteArray& line) const
{
    block += protectLine(line, m_protect);
    block += LineEnd;
}

void ClassFileWriter::write(const QByteArray& block)
{
    if (m_out.write(block) != block.size())
        throw ClassFileError(QStringLiteral("Cannot write the class file: %1").arg(m_out.errorString()));
}

} // namespace tarn
