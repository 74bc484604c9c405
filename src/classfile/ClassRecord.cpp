#include "ClassRecord.h"

#include "store/Classes.h"

namespace tarn
{

void addClassRow(NewClassRows& rows, const ClassRecord& record, const QString& packageName, qint16 classNum)
{
    using C = ClassColumn;
    rows.set(C::package_name, packageName).set(C::class_name, record.name).set(C::class_num, classNum);
    rows.set(C::skin_name1, record.redSkin).set(C::skin_name2, record.blueSkin).set(C::model_name, record.model);
    rows.set(classdef::weapons, record.weapons).set(classdef::grenades, record.grenades);
    rows.set(C::max_speed, record.speed).set(C::max_health, record.health).set(C::max_armor, record.armor);
    rows.set(classdef::items, record.items).set(classdef::specials, record.abilities);
    rows.set(C::decoyskin, record.decoySkin).set(classdef::ammo, record.ammo);
    rows.addRow();
}

} // namespace tarn
