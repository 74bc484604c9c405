#pragma once

#include "RecordSource.h"

#include <QString>

// The fixed statements and the record sources the program names. Every statement lives in
// store/, but not all of them here: those built from classdef's columns are made in
// Classes.cpp, a record set's in Recordset.cpp, the reference lists' in ReferenceLists.cpp,
// the schema's in Schema.cpp, the starting rows' in DefaultRows.cpp, and the connection's
// pragmas and transactions in Database.cpp and Classes.cpp (SkippedChecks). A
// configuration name is always bound as the parameter "?", never pasted into the text.
namespace tarn::sql
{

inline const QString ListConfigs = QStringLiteral("select * from package order by package_name");
inline const QString ConfigByName = QStringLiteral("select * from package where package_name = ?");
inline const QString AddConfig = QStringLiteral("insert into package (package_name) values (?)");
inline const QString DeleteFirstConfigRow =
    QStringLiteral("delete from package where rowid = (select min(rowid) from package where package_name = ?)");
inline const QString DeleteClassesOfConfig = QStringLiteral("delete from classdef where package_name = ?");
inline const QString AllClasses = QStringLiteral("select * from classdef");
inline const QString ClassesOfConfig = QStringLiteral("select * from classdef where package_name = ?");
inline const RecordSource OrderedClassesOfConfig{QStringLiteral("classdef"), QStringLiteral("package_name = ?"),
                                                 QStringLiteral("package_name,class_num"), QStringLiteral("class")};
// A slot given NULL keeps its value: a slot the tracking fills is never left empty.
inline const QString UpdateSlots = QStringLiteral(
    "update classdef set w2 = coalesce(?, w2), w3 = coalesce(?, w3), w4 = coalesce(?, w4), w5 = coalesce(?, w5), "
    "w6 = coalesce(?, w6), w7 = coalesce(?, w7), w8 = coalesce(?, w8), w9 = coalesce(?, w9), "
    "w10 = coalesce(?, w10), g1 = coalesce(?, g1), g2 = coalesce(?, g2), g3 = coalesce(?, g3) where rowid = ?");
inline const QString ClassListOfConfig =
    QStringLiteral("select rowid, class_num, class_name, model_name, max_armor, max_speed, max_health, "
                   "w2, w3, w4, w5, w6, w7, w8, w9, w10 from classdef where package_name = ? "
                   "order by package_name,class_num");
inline const QString OrderedClasses = QStringLiteral("select * from classdef order by package_name,class_num");
inline const QString CreateClassOrderIndex =
    QStringLiteral("create index if not exists classdef_order on classdef (package_name, class_num)");
inline const QString PackageRowsOfConfig = QStringLiteral("select count(*) from package where package_name = ?");
inline const QString ClassCountOfConfig = QStringLiteral("select count(*) from classdef where package_name = ?");
inline const QString ClassRowsByNumber =
    QStringLiteral("select rowid from classdef where package_name = ? and class_num = ?");
inline const QString HighestClassNum = QStringLiteral("SELECT max(class_num) from classdef where package_name = ?");
inline const QString EnabledWeapons = QStringLiteral("SELECT * FROM weapon where kd_enabled = 1 order by w_id");
inline const QString EnabledGrenades = QStringLiteral("SELECT * FROM grenade where kd_enabled = 1 order by g_id");
inline const QString ItemsById = QStringLiteral("SELECT * FROM item order by i_id");
inline const QString SpecialsById = QStringLiteral("SELECT * FROM special order by s_id");
inline const RecordSource WeaponTable{QStringLiteral("weapon"), {}, QStringLiteral("w_id"), QStringLiteral("weapon")};
inline const RecordSource GrenadeTable{
    QStringLiteral("grenade"), {}, QStringLiteral("g_id"), QStringLiteral("grenade")};
inline const RecordSource ItemTable{QStringLiteral("Item"), {}, QStringLiteral("i_id"), QStringLiteral("item")};
inline const RecordSource SpecialTable{
    QStringLiteral("special"), {}, QStringLiteral("s_id"), QStringLiteral("special ability")};

} // namespace tarn::sql
