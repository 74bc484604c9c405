#include "DefaultRows.h"

#include "Classes.h"
#include "Configurations.h"
#include "Database.h"

#include <QStringList>
#include <array>

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
constexpr qint16 BlasterId = 1;

// A class of the example configuration; slots, items and abilities not named hold 0.
struct ExampleClass {
    qint16 number;
    QString name, model, redSkin, blueSkin;
    qint16 decoySkin;
    std::array<qint16, 2> weapons; // slots 2 and 3
    qint16 grenade;                // slot 1
    qint16 armor, speed, health;
    std::array<bool, 2> items;     // i1 and i2
    std::array<bool, 3> abilities; // s1 to s3
    std::array<qint16, 6> ammo;
};

void addExampleClass(NewClassRows& rows, const QString& config, const ExampleClass& c)
{
    using C = ClassColumn;
    rows.set(C::package_name, config).set(C::class_name, c.name).set(C::class_num, c.number);
    rows.set(C::skin_name1, c.redSkin).set(C::skin_name2, c.blueSkin).set(C::model_name, c.model);
    rows.set(classdef::weapons, std::array<qint16, classdef::weapons.size>{BlasterId, c.weapons[0], c.weapons[1]});
    rows.set(classdef::grenades, std::array<qint16, classdef::grenades.size>{c.grenade});
    rows.set(C::max_speed, c.speed).set(C::max_health, c.health).set(C::max_armor, c.armor);
    rows.set(classdef::items, std::array<bool, classdef::items.size>{c.items[0], c.items[1]});
    rows.set(classdef::specials,
             std::array<bool, classdef::specials.size>{c.abilities[0], c.abilities[1], c.abilities[2]});
    rows.set(C::decoyskin, c.decoySkin).set(classdef::ammo, c.ammo);
    rows.addRow();
}

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

void addDefaultReferenceRows(Database& refDb)
{
    insertArmoury(refDb, QStringLiteral("weapon"), QStringLiteral("w"), weaponNames, weaponDamage, weaponSpeed);
    insertArmoury(refDb, QStringLiteral("grenade"), QStringLiteral("g"), grenadeNames, {}, {});
    insertBits(refDb, QStringLiteral("item"), QStringLiteral("i"), itemNames);
    insertBits(refDb, QStringLiteral("special"), QStringLiteral("s"), specialNames);
}

void addExampleConfiguration(Database& classDb)
{
    const QString name = QStringLiteral("Example");
    addConfiguration(classDb, name);
    NewClassRows rows(classDb);
    addExampleClass(rows, name,
                    {1,
                     QStringLiteral("Scout"),
                     QStringLiteral("male"),
                     QStringLiteral("scout_r"),
                     QStringLiteral("scout_b"),
                     1,
                     {2, 4},
                     1,
                     50,
                     320,
                     100,
                     {false, true},
                     {true, false, true},
                     {100, 20, 0, 5, 0, 0}});
    addExampleClass(rows, name,
                    {2,
                     QStringLiteral("Heavy"),
                     QStringLiteral("cyborg"),
                     QStringLiteral("heavy_r"),
                     QStringLiteral("heavy_b"),
                     0,
                     {7, 5},
                     1,
                     200,
                     240,
                     150,
                     {true, false},
                     {false, true, false},
                     {200, 50, 25, 10, 100, 10}});
}

} // namespace tarn
