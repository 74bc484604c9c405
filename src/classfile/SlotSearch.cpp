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

int positionOf(const std::vector<qint64>& ids, std::optional<qint64> wanted)
{
    int position = 0;
    for (std::size_t i = 1; wanted && i < ids.size(); ++i) {
        if (ids[i] == *wanted)
            position = int(i);
    }
    return position;
}

} // namespace

int findSlotPosition(const std::vector<qint64>& ids, const QString& idText)
{
    return positionOf(ids, wantedId(idText));
}

int findSlotPosition(const std::vector<qint64>& ids, std::optional<qint64> storedId)
{
    return positionOf(ids, wantedId(storedId));
}

std::optional<qint64> chosenSlotId(const std::vector<qint64>& ids, int position)
{
    if (position < 0 || std::size_t(position) >= ids.size())
        return std::nullopt;
    return ids[std::size_t(position)];
}

} // namespace tarn
