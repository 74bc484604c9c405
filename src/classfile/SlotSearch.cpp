#include "SlotSearch.h"

namespace tarn
{

SlotLookup::SlotLookup(std::vector<qint64> ids) : m_ids(std::move(ids))
{
    if (m_ids.size() < 2)
        return; // nothing past the first entry: every id answers 0
    m_last.resize(std::size_t(IdCeiling - IdFloor + 1), 0);
    for (std::size_t i = 1; i < m_ids.size(); ++i) {
        const qint64 id = m_ids[i];
        if (id >= IdFloor && id <= IdCeiling)                    // an id beyond 16 bits is never looked for
            m_last[std::size_t(id - IdFloor)] = std::int32_t(i); // a later entry of the same id replaces an earlier one
    }
}

} // namespace tarn
