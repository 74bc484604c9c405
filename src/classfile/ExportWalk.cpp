#include "ExportWalk.h"

#include "Checks.h"
#include "ClassFileWriter.h"
#include "store/Classes.h"
#include "store/StoreError.h"

#include <QHash>

namespace tarn
{

namespace
{

constexpr std::size_t WeaponSlots = 9; // slots 2 to 10
constexpr std::size_t GrenadeSlots = 3;
constexpr std::size_t AmmoLimits = 6;

// Where each column that the export reads stands in the rows of the walk.
struct Columns {
    int rowId = 0, number = 0;
    int name = 0, model = 0, redSkin = 0, blueSkin = 0, decoySkin = 0, armor = 0, speed = 0, health = 0;
    std::array<int, WeaponSlots> weapons{};
    std::array<int, GrenadeSlots> grenades{};
    std::array<int, ItemBoxes> items{};
    std::array<int, SpecialBoxes> specials{};
    std::array<int, AmmoLimits> ammo{};
};

template <std::size_t N> std::array<QString, N> columnNames(const char* prefix, int first)
{
    std::array<QString, N> names;
    for (std::size_t k = 0; k < N; ++k)
        names[k] = QLatin1String(prefix) + QString::number(first + int(k));
    return names;
}

// Where the walk's columns stand, by name. A column the walk's statement lacks is a
// fault of the program, told at once rather than read from another column.
class ColumnFinder
{
public:
    explicit ColumnFinder(const Statement& rows)
    {
        for (int i = 0; i < rows.columnCount(); ++i)
            m_at.insert(rows.columnName(i).toLower(), i);
    }

    int operator()(const QString& name) const
    {
        const int column = int(m_at.value(name, -1));
        if (column < 0)
            throw StoreError(QStringLiteral("The export's walk has no column \"%1\".").arg(name));
        return column;
    }
    template <std::size_t N> std::array<int, N> series(const char* prefix, int first) const
    {
        std::array<int, N> columns{};
        const std::array<QString, N> names = columnNames<N>(prefix, first);
        for (std::size_t k = 0; k < N; ++k)
            columns[k] = (*this)(names[k]);
        return columns;
    }

private:
    QHash<QString, int> m_at;
};

Columns locate(const Statement& rows)
{
    const ColumnFinder at(rows);
    Columns c;
    c.rowId = at(QStringLiteral("rowid"));
    c.number = at(QStringLiteral("class_num"));
    c.name = at(QStringLiteral("class_name"));
    c.model = at(QStringLiteral("model_name"));
    c.redSkin = at(QStringLiteral("skin_name1"));
    c.blueSkin = at(QStringLiteral("skin_name2"));
    c.decoySkin = at(QStringLiteral("decoyskin"));
    c.armor = at(QStringLiteral("max_armor"));
    c.speed = at(QStringLiteral("max_speed"));
    c.health = at(QStringLiteral("max_health"));
    c.weapons = at.series<WeaponSlots>("w", 2);
    c.grenades = at.series<GrenadeSlots>("g", 1);
    c.items = at.series<ItemBoxes>("i", 1);
    c.specials = at.series<SpecialBoxes>("s", 1);
    const std::array<const char*, AmmoLimits> ammo{"maxbullets",  "maxshells", "maxrockets",
                                                   "maxgrenades", "maxcells",  "maxslugs"};
    for (std::size_t k = 0; k < AmmoLimits; ++k)
        c.ammo[k] = at(QLatin1String(ammo[k]));
    return c;
}

template <std::size_t N> std::array<ShownNumber, N> shownSeries(const Statement& row, const std::array<int, N>& columns)
{
    std::array<ShownNumber, N> values;
    for (std::size_t k = 0; k < N; ++k)
        values[k] = row.optionalInt64(columns[k]);
    return values;
}

// The sum of the ids of the ticked boxes, wrapping as a signed 32-bit number. Only
// boxes with a reference row count; a greyed box counts like any other.
template <std::size_t N>
qint32 boxSum(const Statement& row, const std::vector<BoxEntry>& boxes, const std::array<int, N>& columns)
{
    quint32 sum = 0;
    for (std::size_t k = 0; k < boxes.size() && k < N; ++k) {
        if (row.int64(columns[k]) == 1) // a missing value reads as 0
            sum += quint32(boxes[k].id);
    }
    return qint32(sum);
}

// What the picker tracking leaves in each slot of a series, as the class editor's pickers
// do: the id of the entry the search finds, or the slot as stored when the picker has no
// entry to show. The slots it changed get their new values in changed, from `first` on;
// returns whether it changed any.
template <std::size_t N>
bool trackSlots(std::array<ShownNumber, N>& slotIds, const SlotLookup& lookup, ClassSlotWriter::SlotValues& changed,
                std::size_t first)
{
    bool any = false;
    for (std::size_t k = 0; k < N; ++k) {
        const ShownNumber chosen = lookup.tracked(slotIds[k]);
        const bool changes = chosen && chosen != slotIds[k];
        changed[first + k] = changes ? chosen : std::nullopt;
        if (changes)
            slotIds[k] = chosen;
        any = any || changes;
    }
    return any;
}

// Reads the row into the class of the last row, whose texts keep their room.
void readClass(const Statement& row, const Columns& c, const ReferenceLists& lists, ExportedClass& cls)
{
    row.readText(c.name, cls.name);
    row.readText(c.model, cls.model);
    row.readText(c.redSkin, cls.redSkin);
    row.readText(c.blueSkin, cls.blueSkin);
    cls.decoySkin = row.optionalInt64(c.decoySkin);
    cls.weapons = shownSeries(row, c.weapons);
    cls.grenades = shownSeries(row, c.grenades);
    cls.armor = row.optionalInt64(c.armor);
    cls.speed = row.optionalInt64(c.speed);
    cls.health = row.optionalInt64(c.health);
    cls.abilitySum = boxSum(row, lists.specials, c.specials);
    cls.itemSum = boxSum(row, lists.items, c.items);
    cls.ammo = shownSeries(row, c.ammo);
}

} // namespace

ExportWalk::ExportWalk(Database& classDb, const ReferenceLists& lists)
    : m_classDb(classDb), m_lists(lists), m_weaponSlots(idsOf(lists.weapons)), m_grenadeSlots(idsOf(lists.grenades))
{
}

int ExportWalk::run(const QString& configName, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks)
{
    Statement rows = orderedClassRows(m_classDb, configName);
    return walk(rows, writer, storeSlots, checks);
}

void ExportWalk::check(qint64 rowId, ClassChecks& checks)
{
    Statement row = classRowById(m_classDb, rowId);
    walk(row, nullptr, false, &checks);
}

int ExportWalk::walk(Statement& rows, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks)
{
    ClassSlotWriter slotWriter(m_classDb);
    const Columns columns = locate(rows);
    ClassSlotWriter::SlotValues changed;
    int tracked = 0;
    ExportedClass cls;
    while (rows.step()) {
        readClass(rows, columns, m_lists, cls);
        if (checks)
            checks->check(rows.int64(columns.rowId), rows.optionalInt64(columns.number), cls);
        const bool weapons = trackSlots(cls.weapons, m_weaponSlots, changed, 0);
        const bool grenades = trackSlots(cls.grenades, m_grenadeSlots, changed, WeaponSlots);
        if (weapons || grenades) {
            ++tracked;
            if (storeSlots)
                slotWriter.write(rows.int64(columns.rowId), changed);
        }
        if (writer)
            writer->writeClass(cls);
    }
    return tracked;
}

} // namespace tarn
