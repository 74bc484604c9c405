#include "ReferenceLayouts.h"

#include "store/Statements.h"

namespace tarn::layouts
{

namespace
{

const QString Enabled = QStringLiteral("&Enabled? (1=yes):");

} // namespace

const ReferenceLayout& weapons()
{
    static const ReferenceLayout layout{QStringLiteral("frmWeapons"),
                                        QStringLiteral("Edit Weapons"),
                                        QStringLiteral("dbWeapons"),
                                        QStringLiteral("Weapons"),
                                        sql::WeaponTable,
                                        {{QStringLiteral("Weapon &ID:"), QStringLiteral("w_id")},
                                         {QStringLiteral("Weapon &Name:"), QStringLiteral("w_name")},
                                         {QStringLiteral("&Damage:"), QStringLiteral("w_damage")},
                                         {QStringLiteral("&Speed:"), QStringLiteral("w_speed")},
                                         {Enabled, QStringLiteral("kd_enabled")}}};
    return layout;
}

const ReferenceLayout& grenades()
{
    static const ReferenceLayout layout{QStringLiteral("frmGrenades"),
                                        QStringLiteral("Edit Grenades"),
                                        QStringLiteral("dbGrenades"),
                                        QStringLiteral("Grenades"),
                                        sql::GrenadeTable,
                                        {{QStringLiteral("Grenade &ID:"), QStringLiteral("g_id")},
                                         {QStringLiteral("Grenade &Name:"), QStringLiteral("g_name")},
                                         {QStringLiteral("&Damage:"), QStringLiteral("g_damage")},
                                         {QStringLiteral("&Speed:"), QStringLiteral("g_speed")},
                                         {Enabled, QStringLiteral("kd_enabled")}}};
    return layout;
}

const ReferenceLayout& items()
{
    static const ReferenceLayout layout{QStringLiteral("frmItems"),
                                        QStringLiteral("Edit Items"),
                                        QStringLiteral("dbItems"),
                                        QStringLiteral("Items"),
                                        sql::ItemTable,
                                        {{QStringLiteral("Item &ID:"), QStringLiteral("i_id")},
                                         {QStringLiteral("Items &Name:"), QStringLiteral("i_name")},
                                         {Enabled, QStringLiteral("kd_enabled")}}};
    return layout;
}

const ReferenceLayout& special()
{
    static const ReferenceLayout layout{QStringLiteral("frmSpecial"),
                                        QStringLiteral("Edit Special"),
                                        QStringLiteral("dbSpecial"),
                                        QStringLiteral("Special"),
                                        sql::SpecialTable,
                                        {{QStringLiteral("Special &ID:"), QStringLiteral("s_id")},
                                         {QStringLiteral("Special &Name:"), QStringLiteral("s_name")},
                                         {Enabled, QStringLiteral("kd_enabled")}}};
    return layout;
}

} // namespace tarn::layouts
