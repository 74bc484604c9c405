#include "ClassRecord.h"

namespace tarn
{

namespace
{

template <typename T, std::size_t N> void append(QVariantList& values, const std::array<T, N>& fields)
{
    for (const T field : fields)
        values << int(field);
}

} // namespace

QVariantList classRowValues(const ClassRecord& record, const QString& packageName, qint16 classNum)
{
    QVariantList values;
    values.reserve(59);
    values << packageName << record.name << int(classNum) << record.redSkin << record.blueSkin << record.model;
    append(values, record.weapons);
    append(values, record.grenades);
    values << int(record.speed) << int(record.health) << int(record.armor);
    append(values, record.items);
    append(values, record.abilities);
    values << int(record.decoySkin);
    append(values, record.ammo);
    return values;
}

} // namespace tarn
