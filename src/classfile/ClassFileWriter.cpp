#include "ClassFileWriter.h"

#include "ClassFileError.h"
#include "Cp1252.h"
#include "Protection.h"

#include <QIODevice>
#include <algorithm>
#include <charconv>

namespace tarn
{

namespace
{

constexpr unsigned char FirstCodeWithoutProtectedForm = 128;

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

// Appends the bytes of a text, refusing one that the form cannot carry or that holds a
// carriage return, which would end its line.
void appendText(QByteArray& block, const QString& text, bool protect, const TextOwner& owner)
{
    const qsizetype start = block.size();
    QString refused = appendCp1252(block, text);
    const auto appended = QByteArrayView(block).sliced(start);
    if (refused.isEmpty() && protect) {
        const auto found = std::find_if(appended.begin(), appended.end(), [](char c) {
            return static_cast<unsigned char>(c) >= FirstCodeWithoutProtectedForm;
        });
        if (found != appended.end())
            refused = decodeCp1252(QByteArray(1, *found));
    }
    if (refused.isEmpty() && appended.contains('\r'))
        throw ClassFileError(QStringLiteral("%1 holds a carriage return, which would end its line in a class file.")
                                 .arg(owner.describe()));
    if (refused.isEmpty())
        return;
    const QString file = protect ? QStringLiteral("a protected class file") : QStringLiteral("a class file");
    throw ClassFileError(
        QStringLiteral("%1 \"%2\" holds \"%3\", which %4 cannot carry.").arg(owner.describe(), text, refused, file));
}

// A text of the line, with the holder to name if it is refused.
struct Text {
    const QString& value;
    TextOwner owner;
};

struct LineEnd {
};

// Appends the fields of lines to a block of bytes.
class Lines
{
public:
    Lines(QByteArray& block, bool protect) : m_block(block), m_protect(protect) {}

    Lines& operator<<(const Text& text)
    {
        appendText(m_block, text.value, m_protect, text.owner);
        return *this;
    }
    Lines& operator<<(const char* text)
    {
        m_block += text;
        return *this;
    }
    Lines& operator<<(char c)
    {
        m_block += c;
        return *this;
    }
    Lines& operator<<(LineEnd)
    {
        m_block += "\r\n";
        return *this;
    }
    // A missing value is written as empty text.
    Lines& operator<<(const ShownNumber& value)
    {
        if (value)
            appendNumber(*value);
        return *this;
    }
    template <std::size_t N> Lines& operator<<(const std::array<ShownNumber, N>& values)
    {
        for (std::size_t k = 0; k < N; ++k)
            (k ? *this << ' ' : *this) << values[k];
        return *this;
    }
    // The two sums stand behind a sign place: a blank for zero and above, a minus below.
    Lines& signBlank(qint32 sum)
    {
        m_block += sum < 0 ? '-' : ' ';
        appendNumber(sum < 0 ? -qint64(sum) : qint64(sum));
        return *this;
    }

private:
    void appendNumber(qint64 value)
    {
        std::array<char, 24> digits{};
        const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        m_block.append(digits.data(), end - digits.data());
    }

    QByteArray& m_block;
    bool m_protect;
};

} // namespace

// A class takes a few hundred bytes; the block grows past that only for long texts.
ClassFileWriter::ClassFileWriter(QIODevice& out, bool protectOutput) : m_out(out), m_protect(protectOutput)
{
    m_block.reserve(1024);
}

void ClassFileWriter::writeHeader(const QString& modId, const QString& configName)
{
    m_block.truncate(0);
    Lines(m_block, m_protect) << "V3 " << Text{modId, {nullptr, "Mod ID"}} << LineEnd()
                              << Text{configName, {nullptr, "configuration name"}} << LineEnd();
    write();
}

void ClassFileWriter::writeClass(const ExportedClass& cls)
{
    const auto text = [&](const QString& value, const char* what) { return Text{value, {&cls.name, what}}; };
    m_block.truncate(0);
    Lines lines(m_block, m_protect);
    lines << LineEnd() << '[' << text(cls.name, "class name") << ']' << LineEnd();
    lines << text(cls.model, "model name") << ' ' << text(cls.redSkin, "red skin") << ' '
          << text(cls.blueSkin, "blue skin") << ' ' << cls.decoySkin << LineEnd();
    lines << "1 " << cls.weapons << LineEnd();
    lines << cls.grenades << LineEnd();
    lines << cls.armor << ' ' << cls.speed << ' ' << cls.health << ' ';
    lines.signBlank(cls.abilitySum) << ' ';
    lines.signBlank(cls.itemSum) << LineEnd();
    lines << cls.ammo << LineEnd();
    write();
}

// Protection goes byte by byte and leaves the line ends, which lie below its
// threshold, as they are; so a block of whole lines goes through it at once, in place,
// and the empty line that opens a class stays empty.
void ClassFileWriter::write()
{
    if (m_protect)
        protectInPlace(m_block);
    if (m_out.write(m_block) != m_block.size())
        throw ClassFileError(QStringLiteral("Cannot write the class file: %1").arg(m_out.errorString()));
}

} // namespace tarn
