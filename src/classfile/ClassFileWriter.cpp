#include "ClassFileWriter.h"

#include "ClassFileError.h"
#include "Cp1252.h"
#include "LineReader.h"
#include "Protection.h"

#include <QBuffer>
#include <QIODevice>
#include <algorithm>
#include <charconv>
#include <string_view>

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

// Writes the bytes of a text at out, refusing one that the form cannot carry or that
// holds a carriage return, which would end its line. Returns the end of what it wrote.
char* writeText(char* out, const QString& text, bool protect, const TextOwner& owner)
{
    Cp1252Written written = writeCp1252(out, text);
    const std::string_view bytes(out, std::size_t(written.bytes));
    QString& refused = written.refused;
    if (refused.isEmpty() && protect) {
        const auto found = std::find_if(bytes.begin(), bytes.end(), [](char c) {
            return static_cast<unsigned char>(c) >= FirstCodeWithoutProtectedForm;
        });
        if (found != bytes.end())
            refused = decodeCp1252(QByteArray(1, *found));
    }
    if (refused.isEmpty() && bytes.find('\r') != std::string_view::npos)
        throw ClassFileError(QStringLiteral("%1 holds a carriage return, which would end its line in a class file.")
                                 .arg(owner.describe()));
    if (refused.isEmpty())
        return out + written.bytes;
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

// Writes the fields of lines into a block made large enough for them beforehand, and
// cuts the block to what was written when it is done.
class Lines
{
public:
    // A number takes at most 20 characters; 24 numbers, blanks and line ends fit in this.
    static constexpr qsizetype RoomBesideTexts = 1024;

    Lines(QByteArray& block, qsizetype room, bool protect) : m_block(block), m_protect(protect)
    {
        block.resize(room);
        m_at = block.data();
        m_lineStart = m_at;
    }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;
    ~Lines() { m_block.truncate(m_at - m_block.constData()); }

    Lines& operator<<(const Text& text)
    {
        const char* start = m_at;
        m_at = writeText(m_at, text.value, m_protect, text.owner);
        if (m_at - start > m_longestText) {
            m_longestText = m_at - start;
            m_longestOwner = text.owner;
        }
        return *this;
    }
    Lines& operator<<(std::string_view text)
    {
        m_at = std::copy(text.begin(), text.end(), m_at);
        return *this;
    }
    Lines& operator<<(char c)
    {
        *m_at++ = c;
        return *this;
    }
    // A line longer than a reader takes is refused, naming its longest text.
    Lines& operator<<(LineEnd)
    {
        if (m_at - m_lineStart > LineReader::MaxLineLength)
            throw ClassFileError(QStringLiteral("%1 makes its line %2 characters long, and a class file line holds "
                                                "at most %3, so the file would not read back.")
                                     .arg(m_longestOwner.describe())
                                     .arg(m_at - m_lineStart)
                                     .arg(LineReader::MaxLineLength));
        *this << std::string_view("\r\n");
        m_lineStart = m_at;
        m_longestText = 0;
        return *this;
    }
    // A missing value is written as empty text.
    Lines& operator<<(const ShownNumber& value)
    {
        if (value)
            writeNumber(*value);
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
        *this << (sum < 0 ? '-' : ' ');
        writeNumber(sum < 0 ? -qint64(sum) : qint64(sum));
        return *this;
    }

private:
    void writeNumber(qint64 value) { m_at = std::to_chars(m_at, m_at + MaxDigits, value).ptr; }

    static constexpr int MaxDigits = 20;
    QByteArray& m_block;
    bool m_protect;
    char* m_at = nullptr;
    const char* m_lineStart = nullptr;
    qsizetype m_longestText = 0;
    TextOwner m_longestOwner{nullptr, ""};
};

} // namespace

ClassFileWriter::ClassFileWriter(QIODevice& out, bool protectOutput) : m_out(out), m_protect(protectOutput) {}

void ClassFileWriter::writeHeader(const QString& modId, const QString& configName)
{
    {
        Lines lines(m_block, Lines::RoomBesideTexts + modId.size() + configName.size(), m_protect);
        lines << "V3 " << Text{modId, {nullptr, "Mod ID"}} << LineEnd()
              << Text{configName, {nullptr, "configuration name"}} << LineEnd();
    }
    write();
}

void ClassFileWriter::writeClass(const ExportedClass& cls)
{
    const auto text = [&](const QString& value, const char* what) { return Text{value, {&cls.name, what}}; };
    {
        const qsizetype texts = cls.name.size() + cls.model.size() + cls.redSkin.size() + cls.blueSkin.size();
        Lines lines(m_block, Lines::RoomBesideTexts + texts, m_protect);
        lines << LineEnd() << '[' << text(cls.name, "class name") << ']' << LineEnd();
        lines << text(cls.model, "model name") << ' ' << text(cls.redSkin, "red skin") << ' '
              << text(cls.blueSkin, "blue skin") << ' ' << cls.decoySkin << LineEnd();
        lines << "1 " << cls.weapons << LineEnd();
        lines << cls.grenades << LineEnd();
        lines << cls.armor << ' ' << cls.speed << ' ' << cls.health << ' ';
        lines.signBlank(cls.abilitySum) << ' ';
        lines.signBlank(cls.itemSum) << LineEnd();
        lines << cls.ammo << LineEnd();
    }
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

QByteArray classLines(const ExportedClass& cls, bool protectOutput)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    ClassFileWriter(out, protectOutput).writeClass(cls);
    return out.data();
}

} // namespace tarn
