#include "TestSupport.h"

#include "store/ClassColumns.h"
#include "store/Configurations.h"
#include "store/Database.h"

#include <QFile>
#include <array>

namespace tarn::test
{

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QStringList rowsOf(Database& db, const QString& sql, const QVariantList& params)
{
    Statement query = db.prepare(sql);
    query.bindAll(params);
    QStringList rows;
    while (query.step()) {
        QStringList values;
        for (int i = 0; i < query.columnCount(); ++i)
            values << (query.isNull(i) ? QStringLiteral("<null>") : query.text(i));
        rows << values.join(u'|');
    }
    return rows;
}

int classCount(Database& classDb, const QString& config)
{
    return classDb.scalar(QStringLiteral("select count(*) from classdef where package_name = ?"), {config}).toInt();
}

// Inserts one row of the given column values.
static void insertRow(Database& db, const QString& table, const QVariantMap& columns)
{
    const QStringList places(columns.size(), QStringLiteral("?"));
    db.prepare(
          QStringLiteral("insert into %1 (%2) values (%3)").arg(table, columns.keys().join(u','), places.join(u',')))
        .run(columns.values());
}

void insertClass(Database& classDb, const QString& config, int number, QVariantMap columns)
{
    if (!configurationExists(classDb, config))
        addConfiguration(classDb, config);
    columns.insert(QStringLiteral("package_name"), config);
    columns.insert(QStringLiteral("class_num"), number);
    insertRow(classDb, QStringLiteral("classdef"), columns);
}

void setReferenceRows(Database& refDb, const QString& table, const QList<RefRow>& rows)
{
    refDb.exec(QStringLiteral("delete from %1").arg(table));
    for (const RefRow& row : rows) {
        const QString prefix = table.left(1);
        insertRow(refDb, table, {{prefix + "_id", row.id}, {prefix + "_name", row.name}, {"kd_enabled", row.enabled}});
    }
}

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

QByteArrayList classRecord(const QByteArray& name, int line, const QByteArray& text)
{
    QByteArrayList lines{"[" + name, "m r b 0", "1 0 0 0 0 0 0 0 0 0", "0 0 0", "1 2 3  0  0", "1 2 3 4 5 6"};
    if (line >= 0)
        lines[line] = text;
    return lines;
}

} // namespace tarn::test
