#include "ExportWalk.h"

#include "Checks.h"
#include "ClassFileWriter.h"
#include "store/ClassRows.h"
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

// The sum of the ids of the ticked boxes, wrapping as a signed 32-bit number. Only
// boxes with a reference row count; a greyed box counts like any other.
template <typename Boxes> qint32 boxSum(const ClassRows& row, const std::vector<BoxEntry>& boxes, Boxes columns)
{
    quint32 sum = 0;
    for (std::size_t k = 0; k < boxes.size() && k < columns.size; ++k) {
        if (row.isTicked(columns.at(k)))
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
void readClass(const ClassRows& row, const ReferenceLists& lists, ExportedClass& cls)
{
    using C = ClassColumn;
    row.readText(C::class_name, cls.name);
    row.readText(C::model_name, cls.model);
    row.readText(C::skin_name1, cls.redSkin);
    row.readText(C::skin_name2, cls.blueSkin);
    cls.decoySkin = row.number(C::decoyskin);
    cls.weapons = row.numbers(TrackedWeapons{});
    cls.grenades = row.numbers(classdef::grenades);
    cls.armor = row.number(C::max_armor);
    cls.speed = row.number(C::max_speed);
    cls.health = row.number(C::max_health);
    cls.abilitySum = boxSum(row, lists.specials, SpecialColumns{});
    cls.itemSum = boxSum(row, lists.items, ItemColumns{});
    cls.ammo = row.numbers(classdef::ammo);
}

} // namespace

ExportWalk::ExportWalk(Database& classDb, const ReferenceLists& lists)
    : m_classDb(classDb), m_lists(lists), m_weaponSlots(idsOf(lists.weapons)), m_grenadeSlots(idsOf(lists.grenades))
{
}

int ExportWalk::run(const QString& configName, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks)
{
    ClassRows rows = ClassRows::ofConfig(m_classDb, configName);
    return walk(rows, writer, storeSlots, checks);
}

void ExportWalk::check(qint64 rowId, ClassChecks& checks)
{
    ClassRows row = ClassRows::byRowId(m_classDb, rowId);
    walk(row, nullptr, false, &checks);
}

int ExportWalk::walk(ClassRows& rows, ClassFileWriter* writer, bool storeSlots, ClassChecks* checks)
{
    ClassSlotWriter slotWriter(m_classDb);
    ClassSlotWriter::SlotValues changed;
    int tracked = 0;
    ExportedClass cls;
    while (rows.step()) {
        readClass(rows, m_lists, cls);
        const bool weapons = trackSlots(cls.weapons, m_weaponSlots, changed, 0);
        const bool grenades = trackSlots(cls.grenades, m_grenadeSlots, changed, WeaponSlots);
        if (checks)
            checks->check(rows.rowId(), rows.number(ClassColumn::class_num), cls, changed);
        if (weapons || grenades) {
            takeSlots(cls.weapons, changed, 0);
            takeSlots(cls.grenades, changed, WeaponSlots);
            ++tracked;
            if (storeSlots)
                slotWriter.write(rows.rowId(), changed);
        }
        if (writer)
            writer->writeClass(cls);
    }
    return tracked;
}

} // namespace tarn
