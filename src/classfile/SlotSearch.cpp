#include "SlotSearch.h"

#include <optional>

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

} // namespace

int findSlotPosition(const std::vector<qint64>& ids, const QString& idText)
{
    const std::optional<qint64> wanted = wantedId(idText);
    int position = 0;
    for (std::size_t i = 1; wanted && i < ids.size(); ++i) {
        if (ids[i] == *wanted)
            position = int(i);
    }
    return position;
}

} // namespace tarn
