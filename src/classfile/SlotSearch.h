#pragma once

#include <QString>
#include <vector>

namespace tarn
{

// The picker position to show for the id a weapon or grenade slot holds, ids being
// the picker's entries in order. Position 0 is never compared: it is the answer
// when nothing matches, which also covers the first entry's own id. The last match
// wins. An empty text looks for id 0; a text that is not a 16-bit number matches
// nothing.
int findSlotPosition(const std::vector<qint64>& ids, const QString& idText);

} // namespace tarn
