#pragma once

#include <QtGlobal>
#include <cstdint>
#include <optional>
#include <vector>

namespace tarn
{

// Where a weapon or grenade slot's id stands in its picker, whose entries are the ids in
// order. Position 0 is never compared: it is the answer when nothing matches, which also
// covers the first entry's own id. The last match wins. Built once per picker list, as a
// table over every 16-bit id, so that a lookup is one read however long the list. The
// export's slot tracking and the class editor's pickers share it.
class SlotLookup
{
public:
    explicit SlotLookup(std::vector<qint64> ids);

    // The picker position to show for a stored id: a missing value looks for id 0, and
    // an id beyond 16 bits matches nothing.
    int position(std::optional<qint64> storedId) const
    {
        const bool fits = !storedId || (*storedId >= IdFloor && *storedId <= IdCeiling);
        return fits ? positionOf(storedId.value_or(0)) : 0;
    }
    // The id a slot takes when its picker shows the entry at the position. A picker with
    // no entries has nothing to give, and the slot keeps what it holds.
    std::optional<qint64> idAt(int position) const
    {
        if (position < 0 || std::size_t(position) >= m_ids.size())
            return std::nullopt;
        return m_ids[std::size_t(position)];
    }
    // What the tracking leaves in a slot that holds the stored id.
    std::optional<qint64> tracked(std::optional<qint64> storedId) const { return idAt(position(storedId)); }

private:
    static constexpr qint64 IdFloor = -32768;
    static constexpr qint64 IdCeiling = 32767;

    // The position of a 16-bit id.
    int positionOf(qint64 id) const { return m_last.empty() ? 0 : m_last[std::size_t(id - IdFloor)]; }

    std::vector<qint64> m_ids;
    std::vector<std::int32_t> m_last; // by id from -32768 on: its last position past the first, or 0
};

} // namespace tarn
