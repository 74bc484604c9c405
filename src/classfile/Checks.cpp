#include "Checks.h"

#include "Cp1252.h"
#include "ExportWalk.h"
#include "LineReader.h"
#include "store/Configurations.h"

#include <charconv>
#include <limits>

namespace tarn
{

namespace
{

using S = Problem::Severity;

// The lowest code that the plain form does not read back as it was written.
constexpr unsigned char FirstLoweredCode = 129;
constexpr unsigned char NoBreakSpace = 160;
constexpr unsigned char FirstCodeWithoutProtectedForm = 128;

QString quoted(const QString& text)
{
    return u'"' + text + u'"';
}

} // namespace

QString describe(const Problem& problem)
{
    QStringList where;
    if (!problem.configName.isEmpty())
        where << quoted(problem.configName);
    if (problem.classNumber)
        where << QStringLiteral("class %1 %2").arg(*problem.classNumber).arg(quoted(problem.className));
    else if (!problem.className.isEmpty())
        where << quoted(problem.className);
    where << problem.field;
    return QStringLiteral("%1: %2: %3")
        .arg(problem.isError() ? QStringLiteral("error") : QStringLiteral("warning"), where.join(QStringLiteral(", ")),
             problem.what);
}

qsizetype warningCount(const std::vector<Problem>& problems)
{
    return std::count_if(problems.begin(), problems.end(), [](const Problem& p) { return !p.isError(); });
}

bool hasError(const std::vector<Problem>& problems)
{
    return std::any_of(problems.begin(), problems.end(), [](const Problem& p) { return p.isError(); });
}

ClassChecks::ClassChecks(const ExportWalk& walk, QString configName, bool protectOutput, std::size_t listed)
    : m_lists(walk.lists()), m_configName(std::move(configName)), m_protect(protectOutput), m_listed(listed)
{
    checkText("configuration name", m_configName);
}

void ClassChecks::check(qint64 rowId, std::optional<qint64> classNumber, const ExportedClass& cls,
                        const ClassSlotWriter::SlotValues& tracked)
{
    m_rowId = rowId;
    m_number = classNumber;
    m_className = &cls.name;
    if (classNumber && classNumber == m_previousNumber)
        add(S::Warning, QStringLiteral("class number"),
            QStringLiteral("another class of this configuration has number %1 too: which of them the class file "
                           "lists first is not fixed")
                .arg(*classNumber));
    m_previousNumber = classNumber;
    checkSlots(cls, tracked);
    checkNumbers(cls);
    checkNames(cls);
    checkLineLengths(cls);
    m_className = nullptr; // the class is the caller's
}

bool ClassChecks::counted()
{
    if (m_problems.size() < m_listed)
        return false;
    ++m_unlisted;
    return true;
}

// Errors are always listed: the export stops at the first anyway.
void ClassChecks::add(Problem::Severity severity, const QString& field, const QString& what)
{
    if (severity == S::Warning && counted())
        return;
    m_problems.push_back(
        {severity, m_configName, m_rowId, m_number, m_className ? *m_className : QString(), field, what});
}

// The tracking of the class editor and of the export puts the first entry in place of
// an id that is no enabled entry.
void ClassChecks::checkSlots(const ExportedClass& cls, const ClassSlotWriter::SlotValues& tracked)
{
    const auto series = [&](const auto& slotIds, std::size_t first, const std::vector<PickerEntry>& entries,
                            const char* kind, int firstSlot) {
        for (std::size_t k = 0; k < slotIds.size(); ++k) {
            const ShownNumber stored = slotIds[k];
            if (!stored || !tracked[first + k] || counted()) // an empty slot takes the first entry unasked
                continue;
            add(S::Warning, QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(firstSlot + int(k)),
                QStringLiteral("id %1 is no enabled %2: the export stores and writes the first one, %3 (id %4), "
                               "in its place")
                    .arg(*stored)
                    .arg(QLatin1String(kind), quoted(entries.front().name))
                    .arg(entries.front().id));
        }
    };
    series(cls.weapons, 0, m_lists.weapons, "weapon", 2);
    series(cls.grenades, cls.weapons.size(), m_lists.grenades, "grenade", 1);
}

void ClassChecks::checkNumbers(const ExportedClass& cls)
{
    const std::array<std::pair<const char*, ShownNumber>, 10> numbers{{{"max armor", cls.armor},
                                                                       {"max speed", cls.speed},
                                                                       {"max health", cls.health},
                                                                       {"decoy skin", cls.decoySkin},
                                                                       {"bullets limit", cls.ammo[0]},
                                                                       {"shells limit", cls.ammo[1]},
                                                                       {"rockets limit", cls.ammo[2]},
                                                                       {"grenades limit", cls.ammo[3]},
                                                                       {"cells limit", cls.ammo[4]},
                                                                       {"slugs limit", cls.ammo[5]}}};
    for (const auto& [field, value] : numbers) {
        if (!value && !counted())
            add(S::Warning, QLatin1String(field),
                QStringLiteral("empty: the class file gets an empty field here, and will not read back"));
    }
}

// The model line is cut at blanks into its four fields.
void ClassChecks::checkNames(const ExportedClass& cls)
{
    checkText("class name", cls.name);
    const std::array<std::pair<const char*, const QString*>, 3> names{
        {{"model name", &cls.model}, {"red skin", &cls.redSkin}, {"blue skin", &cls.blueSkin}}};
    for (const auto& [field, name] : names) {
        checkText(field, *name);
        if (name->isEmpty())
            add(S::Warning, QLatin1String(field),
                QStringLiteral("empty: the fields after it move up one place, and the class file will not read back"));
        else if (std::find(name->cbegin(), name->cend(), u' ') != name->cend()) // short: no library call
            add(S::Warning, QLatin1String(field),
                QStringLiteral("holds a blank: the class file splits it in two fields, and will not read back"));
    }
}

void ClassChecks::checkText(const char* field, const QString& text)
{
    // Most texts are plain ASCII without a carriage return: they pass at once.
    if (std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80 && c != u'\r'; }))
        return;
    if (text.contains(u'\r')) {
        add(S::Error, QLatin1String(field),
            QStringLiteral("holds a carriage return, which would end its line: the export refuses it"));
        return;
    }
    const Cp1252Encoding encoded = encodeCp1252(text);
    if (!encoded.ok()) {
        add(S::Error, QLatin1String(field),
            QStringLiteral("holds %1, which a class file cannot carry: the export refuses it")
                .arg(quoted(encoded.refused)));
        return;
    }
    for (const char byte : encoded.bytes) {
        const auto code = static_cast<unsigned char>(byte);
        const auto character = [&byte] { return decodeCp1252(QByteArrayView(&byte, 1)); };
        if (m_protect && code >= FirstCodeWithoutProtectedForm) {
            add(S::Error, QLatin1String(field),
                QStringLiteral("holds %1, which a protected class file cannot carry: Save As refuses it")
                    .arg(quoted(character())));
            return;
        }
        if (!m_protect && code == NoBreakSpace) {
            add(S::Warning, QLatin1String(field),
                QStringLiteral("holds a no-break space, which reads back from the plain form as a blank and splits "
                               "the field"));
            return;
        }
        if (!m_protect && code >= FirstLoweredCode) {
            const char lowered = char(code - 128);
            add(S::Warning, QLatin1String(field),
                QStringLiteral("holds %1, which reads back from the plain form as %2")
                    .arg(quoted(character()), quoted(decodeCp1252(QByteArrayView(&lowered, 1)))));
            return;
        }
    }
}

void ClassChecks::checkLineLengths(const ExportedClass& cls)
{
    std::array<char, 24> digits;
    const auto decoy =
        cls.decoySkin ? std::to_chars(digits.begin(), digits.end(), *cls.decoySkin).ptr - digits.data() : 0;
    // One byte a character, for every text the file can carry at all.
    const qsizetype nameLine = cls.name.size() + 2;
    const qsizetype modelLine = cls.model.size() + cls.redSkin.size() + cls.blueSkin.size() + decoy + 3;
    for (const auto& [field, length] : {std::pair{"class name", nameLine}, std::pair{"model name", modelLine}}) {
        if (length > LineReader::MaxLineLength)
            add(S::Error, QLatin1String(field),
                QStringLiteral("makes its line %1 characters long, more than the %2 a class file line holds: the "
                               "export refuses it")
                    .arg(length)
                    .arg(LineReader::MaxLineLength));
    }
}

std::vector<Problem> checkConfiguration(Database& classDb, Database& refDb, const QString& configName,
                                        bool protectOutput, std::size_t listed)
{
    const ReferenceLists lists = loadReferenceLists(refDb);
    ExportWalk walk(classDb, lists);
    ClassChecks checks(walk, configName, protectOutput, listed);
    walk.run(configName, nullptr, false, &checks);
    std::vector<Problem> problems = checks.problems();
    if (const int rows = countPackageRows(classDb, configName); rows > 1)
        problems.insert(problems.begin(), Problem{S::Warning,
                                                  configName,
                                                  {},
                                                  {},
                                                  {},
                                                  QStringLiteral("configuration name"),
                                                  QStringLiteral("%1 configurations carry this name: their classes "
                                                                 "are listed, exported, copied and deleted as one")
                                                      .arg(rows)});
    return problems;
}

std::vector<Problem> checkClass(Database& classDb, const ReferenceLists& lists, const QString& configName, qint64 rowId,
                                bool protectOutput)
{
    ExportWalk walk(classDb, lists);
    ClassChecks checks(walk, configName, protectOutput);
    walk.check(rowId, checks);
    return checks.problems();
}

std::vector<Problem> checkReferenceTables(Database& refDb)
{
    const ReferenceLists tables =
        loadReferenceLists(refDb, std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
    std::vector<Problem> problems;
    const auto add = [&](const char* field, const QString& name, const QString& what) {
        problems.push_back({S::Warning, {}, {}, {}, name, QLatin1String(field), what});
    };
    const auto repeated = [](const auto& entries, qint64 id) {
        return std::count_if(entries.begin(), entries.end(), [id](const auto& e) { return e.id == id; });
    };
    const auto pickers = [&](const std::vector<PickerEntry>& entries, const char* field, const char* kind) {
        for (const PickerEntry& entry : entries) {
            if (const auto times = repeated(entries, entry.id); times > 1)
                add(field, entry.name,
                    QStringLiteral("id %1 is used by %2 enabled %3s: a class that holds it shows and keeps the last "
                                   "of them")
                        .arg(entry.id)
                        .arg(times)
                        .arg(QLatin1String(kind)));
        }
    };
    const auto boxes = [&](const std::vector<BoxEntry>& entries, int shown, const char* field, const char* kind) {
        for (std::size_t row = 0; row < entries.size(); ++row) {
            const BoxEntry& entry = entries[row];
            if (int(row) >= shown)
                add(field, entry.name,
                    QStringLiteral("the class editor has %1 %2 boxes and this is row %3: no class can have it")
                        .arg(shown)
                        .arg(QLatin1String(kind))
                        .arg(row + 1));
            else if (entry.id <= 0 || (entry.id & (entry.id - 1)) != 0)
                add(field, entry.name,
                    QStringLiteral("id %1 is not a power of two: its bit runs into others in the sums, and classes "
                                   "read back with other %2s")
                        .arg(entry.id)
                        .arg(QLatin1String(kind)));
            else if (const auto times = repeated(entries, entry.id); times > 1)
                add(field, entry.name,
                    QStringLiteral("id %1 stands in %2 rows: their boxes add the same bit, and classes read back with "
                                   "both ticked")
                        .arg(entry.id)
                        .arg(times));
        }
    };
    pickers(tables.weapons, "weapon id", "weapon");
    pickers(tables.grenades, "grenade id", "grenade");
    boxes(tables.items, ItemBoxes, "item id", "item");
    boxes(tables.specials, SpecialBoxes, "special ability id", "special ability");
    return problems;
}

} // namespace tarn
