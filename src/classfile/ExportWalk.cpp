#include "ExportWalk.h"

#include "Checks.h"
#include "ClassFileWriter.h"
#include "store/Classes.h"

namespace tarn
{

namespace
{

// The slots the pickers track (slot 1 always holds the blaster), the item boxes the
// class editor shows and the special ability boxes.
using TrackedWeapons = classdef::Series<ClassColumn::w2, 9>;
using ItemColumns = classdef::Series<ClassColumn::i1, ItemBoxes>;
using SpecialColumns = classdef::Series<ClassColumn::s1, SpecialBoxes>;
constexpr std::size_t WeaponSlots = TrackedWeapons::size;

// Where each column that the export reads stands in the rows of the walk, found once
// for the statement. A column the walk's statement lacks is a fault of the program,
// told at once rather than read from another column.
struct Columns {
    explicit Columns(const Statement& rows) : Columns(ClassColumnPositions(rows)) {}

    explicit Columns(const ClassColumnPositions& at)
        : rowId(at.rowId()), number(at[ClassColumn::class_num]), name(at[ClassColumn::class_name]),
          model(at[ClassColumn::model_name]), redSkin(at[ClassColumn::skin_name1]),
          blueSkin(at[ClassColumn::skin_name2]), decoySkin(at[ClassColumn::decoyskin]),
          armor(at[ClassColumn::max_armor]), speed(at[ClassColumn::max_speed]), health(at[ClassColumn::max_health]),
          weapons(at[TrackedWeapons{}]), grenades(at[classdef::grenades]), items(at[ItemColumns{}]),
          specials(at[SpecialColumns{}]), ammo(at[classdef::ammo])
    {
    }

    int rowId, number;
    int name, model, redSkin, blueSkin, decoySkin, armor, speed, health;
    std::array<int, TrackedWeapons::size> weapons;
    std::array<int, classdef::grenades.size> grenades;
    std::array<int, ItemColumns::size> items;
    std::array<int, SpecialColumns::size> specials;
    std::array<int, classdef::ammo.size> ammo;
};

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
// entry to show. The slots it would change get their new values in changed, from `first`
// on; returns whether it would change any.
template <std::size_t N>
bool trackSlots(const std::array<ShownNumber, N>& slotIds, const SlotLookup& lookup,
                ClassSlotWriter::SlotValues& changed, std::size_t first)
{
    bool any = false;
    for (std::size_t k = 0; k < N; ++k) {
        const ShownNumber chosen = lookup.tracked(slotIds[k]);
        const bool changes = chosen && chosen != slotIds[k];
        changed[first + k] = changes ? chosen : std::nullopt;
        any = any || changes;
    }
    return any;
}

// Puts the tracking's new values into the slots of a series.
template <std::size_t N>
void takeSlots(std::array<ShownNumber, N>& slotIds, const ClassSlotWriter::SlotValues& changed, std::size_t first)
{
    for (std::size_t k = 0; k < N; ++k) {
        if (changed[first + k])
            slotIds[k] = changed[first + k];
    }
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
    const Columns columns(rows);
    ClassSlotWriter::SlotValues changed;
    int tracked = 0;
    ExportedClass cls;
    while (rows.step()) {
        readClass(rows, columns, m_lists, cls);
        const bool weapons = trackSlots(cls.weapons, m_weaponSlots, changed, 0);
        const bool grenades = trackSlots(cls.grenades, m_grenadeSlots, changed, WeaponSlots);
        if (checks)
            checks->check(rows.int64(columns.rowId), rows.optionalInt64(columns.number), cls, changed);
        if (weapons || grenades) {
            takeSlots(cls.weapons, changed, 0);
            takeSlots(cls.grenades, changed, WeaponSlots);
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
