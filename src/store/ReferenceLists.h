#pragma once

#include <QString>
#include <vector>

namespace tarn
{

class Database;

// One entry of a weapon or grenade picker: the name shown and the id stored.
struct PickerEntry {
    QString name;
    qint64 id = 0;
};

// One filled check box of the item or ability frame.
struct BoxEntry {
    QString name;
    qint64 id = 0;
    bool enabled = true; // kd_enabled 1 or missing
};

// What the class editor offers, read from the reference tables: the enabled weapons
// and grenades in id order, and the first rows of item and special in id order, one
// per check box.
struct ReferenceLists {
    std::vector<PickerEntry> weapons;
    std::vector<PickerEntry> grenades;
    std::vector<BoxEntry> items;    // at most ItemBoxes
    std::vector<BoxEntry> specials; // at most SpecialBoxes
};

inline constexpr int ItemBoxes = 8;
inline constexpr int SpecialBoxes = 21;

ReferenceLists loadReferenceLists(Database& refDb);
// The ids of a picker's entries, in its order.
std::vector<qint64> idsOf(const std::vector<PickerEntry>& entries);
// The same with up to the given numbers of item and ability rows, past the boxes too.
ReferenceLists loadReferenceLists(Database& refDb, int itemRows, int specialRows);

} // namespace tarn
