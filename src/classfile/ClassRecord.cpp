#include "ClassRecord.h"

#include "store/Classes.h"

namespace tarn
{

namespace
{

template <typename T, std::size_t N> NewClassRows& operator<<(NewClassRows& rows, const std::array<T, N>& fields)
{
    for (const T field : fields)
        rows << field;
    return rows;
}

} // namespace

void addClassRow(NewClassRows& rows, const ClassRecord& record, const QString& packageName, qint16 classNum)
{
    rows << packageName << record.name << classNum << record.redSkin << record.blueSkin << record.model;
    rows << record.weapons << record.grenades << record.speed << record.health << record.armor;
    rows << record.items << record.abilities << record.decoySkin << record.ammo;
    rows.addRow();
}

} // namespace tarn
