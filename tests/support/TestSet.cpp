#include "TestSet.h"

#include "store/Configurations.h"
#include "store/Database.h"

namespace tarn::test
{

void insertTestSet(Database& classDb)
{
    addConfiguration(classDb, QStringLiteral("Test Set"));
    Statement insert = classDb.prepare(QStringLiteral(
        "insert into classdef (package_name, class_num, class_name, model_name, skin_name1, skin_name2, decoyskin, "
        "w2, w3, w4, w5, w6, w7, w8, w9, w10, g1, g2, g3, max_armor, max_speed, max_health, i1, i2, s1, s3, "
        "maxbullets, maxshells, maxrockets, maxgrenades, maxcells, maxslugs) values "
        "('Test Set', ?, ?, ?, ?, ?, ?, ?, ?, 0, 0, 0, 0, 0, 0, 0, ?, ?, 0, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    insert.run(
        {1, "Light Scout", "scout", "red", "blue", 2, 2, 0, 1, 0, 50, 320, 100, 0, 1, 1, 1, 100, 20, 0, 5, 0, 0});
    insert.run(
        {5, "Gunner", "gunner", "redg", "blueg", 0, 3, 4, 1, 2, 100, 240, 120, 1, 1, 0, 0, 200, 50, 10, 5, 50, 10});
}

} // namespace tarn::test
