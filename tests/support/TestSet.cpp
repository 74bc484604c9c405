#include "TestSet.h"

#include "store/ClassColumns.h"
#include "store/Configurations.h"
#include "store/Database.h"

#include <QStringList>
#include <array>

namespace tarn::test
{

void insertTestSet(Database& classDb)
{
    using enum ClassColumn;
    const std::array given{class_num, class_name, model_name, skin_name1, skin_name2,  decoyskin, w2,      w3,
                           g1,        g2,         max_armor,  max_speed,  max_health,  i1,        i2,      s1,
                           s3,        maxbullets, maxshells,  maxrockets, maxgrenades, maxcells,  maxslugs};
    const std::array zero{w4, w5, w6, w7, w8, w9, w10, g3}; // the other columns are left empty
    QStringList names, values;
    const auto add = [&](const auto& columns, const QString& value) {
        for (const ClassColumn column : columns) {
            names << classdef::nameOf(column);
            values << value;
        }
    };
    add(given, QStringLiteral("?"));
    add(zero, QStringLiteral("0"));
    addConfiguration(classDb, QStringLiteral("Test Set"));
    Statement insert = classDb.prepare(QStringLiteral("insert into classdef (package_name, %1) values ('Test Set', %2)")
                                           .arg(names.join(u", "), values.join(u", ")));
    insert.run(
        {1, "Light Scout", "scout", "red", "blue", 2, 2, 0, 1, 0, 50, 320, 100, 0, 1, 1, 1, 100, 20, 0, 5, 0, 0});
    insert.run(
        {5, "Gunner", "gunner", "redg", "blueg", 0, 3, 4, 1, 2, 100, 240, 120, 1, 1, 0, 0, 200, 50, 10, 5, 50, 10});
}

} // namespace tarn::test
