#include "DefaultRows.h"

#include "Database.h"
#include "Schema.h"

#include <QStringList>

namespace tarn
{

namespace
{

// Id 1 is the blaster that every class carries in slot 1; it is kept out of the pickers.
const QStringList weaponNames{QStringLiteral("None"),
                              QStringLiteral("Blaster"),
                              QStringLiteral("Shotgun"),
                              QStringLiteral("Super Shotgun"),
                              QStringLiteral("Machinegun"),
                              QStringLiteral("Chaingun"),
                              QStringLiteral("Grenade Launcher"),
                              QStringLiteral("Rocket Launcher"),
                              QStringLiteral("HyperBlaster"),
                              QStringLiteral("Railgun"),
                              QStringLiteral("BFG10K")};
// Damage and speed of each weapon above, in the same order.
const QStringList weaponDamage{"0", "15", "4", "6", "8", "6", "120", "100", "15", "100", "200"};
const QStringList weaponSpeed{"0", "1000", "1", "1", "10", "20", "600", "650", "1000", "0", "400"};
constexpr int BlasterId = 1;

const QStringList grenadeNames{QStringLiteral("None"), QStringLiteral("Hand Grenade"), QStringLiteral("Flash Grenade"),
                               QStringLiteral("Cluster Grenade"), QStringLiteral("Proximity Mine")};

const QStringList itemNames{QStringLiteral("Power Screen"),     QStringLiteral("Power Shield"),
                            QStringLiteral("Silencer"),         QStringLiteral("Rebreather"),
                            QStringLiteral("Environment Suit"), QStringLiteral("Bandolier"),
                            QStringLiteral("Ammo Pack"),        QStringLiteral("Night Vision")};

const QStringList specialNames{
    QStringLiteral("Double Jump"),   QStringLiteral("Jetpack"),        QStringLiteral("Cloaking"),
    QStringLiteral("Regeneration"),  QStringLiteral("Vampire"),        QStringLiteral("Grappling Hook"),
    QStringLiteral("Fall Immunity"), QStringLiteral("Slime Immunity"), QStringLiteral("Lava Immunity"),
    QStringLiteral("Stealth Steps"), QStringLiteral("Radar"),          QStringLiteral("Laser Sight"),
    QStringLiteral("Medic Healing"), QStringLiteral("Armor Repair"),   QStringLiteral("Ammo Supply"),
    QStringLiteral("Disguise"),      QStringLiteral("Wall Climb"),     QStringLiteral("Quad Recharge"),
    QStringLiteral("Haste"),         QStringLiteral("Flag Carrier"),   QStringLiteral("Team Shield")};

void insertArmoury(Database& refDb, const QString& table, const QString& prefix, const QStringList& names,
                   const QStringList& damage, const QStringList& speed)
{
    Statement insert = refDb.prepare(QStringLiteral("insert into %1 (%2_id, %2_name, %2_damage, %2_speed, kd_enabled) "
                                                    "values (?, ?, ?, ?, ?)")
                                         .arg(table, prefix));
    for (int i = 0; i < names.size(); ++i) {
        const bool offered = !(prefix == QLatin1String("w") && i == BlasterId);
        insert.run(
            {i, names[i], damage.value(i, QStringLiteral("0")), speed.value(i, QStringLiteral("0")), offered ? 1 : 0});
    }
}

void insertBits(Database& refDb, const QString& table, const QString& prefix, const QStringList& names)
{
    Statement insert = refDb.prepare(
        QStringLiteral("insert into %1 (%2_id, %2_name, kd_enabled) values (?, ?, 1)").arg(table, prefix));
    for (int i = 0; i < names.size(); ++i)
        insert.run({qlonglong(1) << i, names[i]});
}

} // namespace

void insertDefaultReferenceRows(Database& refDb)
{
    insertArmoury(refDb, QStringLiteral("weapon"), QStringLiteral("w"), weaponNames, weaponDamage, weaponSpeed);
    insertArmoury(refDb, QStringLiteral("grenade"), QStringLiteral("g"), grenadeNames, {}, {});
    insertBits(refDb, QStringLiteral("item"), QStringLiteral("i"), itemNames);
    insertBits(refDb, QStringLiteral("special"), QStringLiteral("s"), specialNames);
}

void insertExampleConfiguration(Database& classDb)
{
    const QString name = QStringLiteral("Example");
    classDb.prepare(QStringLiteral("insert into package (package_name) values (?)")).run({name});
    Statement insert = classDb.prepare(QStringLiteral(
        "insert into classdef (package_name, class_num, class_name, model_name, skin_name1, skin_name2, decoyskin, "
        "w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, g1, g2, g3, max_armor, max_speed, max_health, "
        "i1, i2, i3, i4, i5, i6, i7, i8, i9, s1, s2, s3, s4, s5, s6, s7, s8, s9, s10, s11, s12, s13, s14, s15, "
        "s16, s17, s18, s19, s20, s21, maxbullets, maxshells, maxrockets, maxgrenades, maxcells, maxslugs) "
        "values (?, ?, ?, ?, ?, ?, ?, 1, ?, ?, 0, 0, 0, 0, 0, 0, 0, ?, 0, 0, ?, ?, ?, "
        "?, ?, 0, 0, 0, 0, 0, 0, 0, ?, ?, ?, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "
        "?, ?, ?, ?, ?, ?)"));
    // name, model, skins, decoy, two weapons, grenade, armor/speed/health, items 1-2, abilities 1-3, ammunition
    insert.run({name,
                1,
                QStringLiteral("Scout"),
                QStringLiteral("male"),
                QStringLiteral("scout_r"),
                QStringLiteral("scout_b"),
                1,
                2,
                4,
                1,
                50,
                320,
                100,
                0,
                1,
                1,
                0,
                1,
                100,
                20,
                0,
                5,
                0,
                0});
    insert.run({name,
                2,
                QStringLiteral("Heavy"),
                QStringLiteral("cyborg"),
                QStringLiteral("heavy_r"),
                QStringLiteral("heavy_b"),
                0,
                7,
                5,
                1,
                200,
                240,
                150,
                1,
                0,
                0,
                1,
                0,
                200,
                50,
                25,
                10,
                100,
                10});
}

} // namespace tarn
