#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace tarn
{

// The picker position to show for the id a weapon or grenade slot holds, ids being
// the picker's entries in order. Position 0 is never compared: it is the answer
// when nothing matches, which also covers the first entry's own id. The last match
// wins. An empty text looks for id 0; a text that is not a 16-bit number matches
// nothing.
int findSlotPosition(const std::vector<qint64>& ids, const QString& idText);
// The same for a stored id, without a text in between: a missing value is the empty
// text, and an id beyond 16 bits matches nothing.
int findSlotPosition(const std::vector<qint64>& ids, std::optional<qint64> storedId);

// The id a slot takes when its picker shows the entry at the position. A picker with no
// entries has nothing to give, and the slot keeps what it holds.
std::optional<qint64> chosenSlotId(const std::vector<qint64>& ids, int position);

} // namespace tarn
