#include "ClassRecord.h"

#include "store/Classes.h"

namespace tarn
{

namespace
{

template <typename T, std::size_t N>
ClassRowInserter& operator<<(ClassRowInserter& rows, const std::array<T, N>& fields)
{
    for (const T field : fields)
        rows << qint64(field);
    return rows;
}

} // namespace

void insertClassRow(ClassRowInserter& rows, const ClassRecord& record, const QString& packageName, qint16 classNum)
{
    rows << packageName << record.name << qint64(classNum) << record.redSkin << record.blueSkin << record.model;
    rows << record.weapons << record.grenades << qint64(record.speed) << qint64(record.health) << qint64(record.armor);
    rows << record.items << record.abilities << qint64(record.decoySkin) << record.ammo;
    rows.insertRow();
}

} // namespace tarn
