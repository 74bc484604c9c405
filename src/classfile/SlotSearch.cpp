#include "SlotSearch.h"

#include <limits>

namespace tarn
{

namespace
{

std::optional<qint64> wantedId(const QString& idText)
{
    if (idText.isEmpty())
        return 0;
    bool ok = false;
    const short id = idText.toShort(&ok);
    return ok ? std::optional<qint64>(id) : std::nullopt;
}

std::optional<qint64> wantedId(std::optional<qint64> storedId)
{
    if (!storedId)
        return 0;
    const bool fits =
        *storedId >= std::numeric_limits<qint16>::min() && *storedId <= std::numeric_limits<qint16>::max();
    return fits ? storedId : std::nullopt;
}

} // namespace

SlotLookup::SlotLookup(std::vector<qint64> ids) : m_ids(std::move(ids))
{
    m_last.reserve(qsizetype(m_ids.size()));
    for (std::size_t i = 1; i < m_ids.size(); ++i)
        m_last.insert(m_ids[i], int(i)); // a later entry of the same id replaces an earlier one
}

int SlotLookup::positionOf(std::optional<qint64> wanted) const
{
    return wanted ? m_last.value(*wanted, 0) : 0;
}

int SlotLookup::position(const QString& idText) const
{
    return positionOf(wantedId(idText));
}

int SlotLookup::position(std::optional<qint64> storedId) const
{
    return positionOf(wantedId(storedId));
}

std::optional<qint64> SlotLookup::idAt(int position) const
{
    if (position < 0 || std::size_t(position) >= m_ids.size())
        return std::nullopt;
    return m_ids[std::size_t(position)];
}

} // namespace tarn
