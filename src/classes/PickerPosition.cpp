#include "PickerPosition.h"

namespace tarn
{

int pickerPosition(const SlotLookup& lookup, const QString& idText)
{
    if (idText.isEmpty())
        return lookup.position(std::optional<qint64>(0));
    bool ok = false;
    const short id = idText.toShort(&ok);
    return ok ? lookup.position(std::optional<qint64>(id)) : 0;
}

} // namespace tarn
