#pragma once

#include <QHash>
#include <QString>
#include <optional>
#include <vector>

namespace tarn
{

// Where a weapon or grenade slot's id stands in its picker, whose entries are the ids in
// order. Position 0 is never compared: it is the answer when nothing matches, which also
// covers the first entry's own id. The last match wins. An empty text looks for id 0; a
// text that is not a 16-bit number matches nothing. Built once per picker list, so that
// each lookup costs the same however long the list.
class SlotLookup
{
public:
    explicit SlotLookup(std::vector<qint64> ids);

    const std::vector<qint64>& ids() const { return m_ids; }
    // The picker position to show for the id a hidden slot box holds.
    int position(const QString& idText) const;
    // The same for a stored id, without a text in between: a missing value is the empty
    // text, and an id beyond 16 bits matches nothing.
    int position(std::optional<qint64> storedId) const;
    // The id a slot takes when its picker shows the entry at the position. A picker with
    // no entries has nothing to give, and the slot keeps what it holds.
    std::optional<qint64> idAt(int position) const;
    // What the tracking leaves in a slot that holds the stored id.
    std::optional<qint64> tracked(std::optional<qint64> storedId) const { return idAt(position(storedId)); }

private:
    int positionOf(std::optional<qint64> wanted) const;

    std::vector<qint64> m_ids;
    QHash<qint64, int> m_last; // each id's last position past the first
};

} // namespace tarn
