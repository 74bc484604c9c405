#include "TestSupport.h"

#include "store/Configurations.h"
#include "store/Database.h"

#include <QFile>

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

QByteArrayList classRecord(const QByteArray& name, int line, const QByteArray& text)
{
    QByteArrayList lines{"[" + name, "m r b 0", "1 0 0 0 0 0 0 0 0 0", "0 0 0", "1 2 3  0  0", "1 2 3 4 5 6"};
    if (line >= 0)
        lines[line] = text;
    return lines;
}

} // namespace tarn::test
