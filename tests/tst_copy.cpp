#include "store/Configurations.h"
#include "store/Database.h"
#include "store/Schema.h"
#include "store/StoreError.h"
#include "support/TestSupport.h"

#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

// A value of every kind for each column, now and then a missing one, never the same twice.
QVariant sampleValue(ColumnKind kind, int row, int column)
{
    if ((row + column) % 5 == 0)
        return {};
    switch (kind) {
    case ColumnKind::Integer:
        return qlonglong((row * 7919 + column * 104729) % 65536 - 32768);
    case ColumnKind::Flag:
        return qlonglong((row + column) % 2);
    default:
        return QStringLiteral("r%1 c%2 O'Brien ü").arg(row).arg(column);
    }
}

// Stores classes under a name, with the given class numbers and every other column filled.
void addClasses(Database& db, const QString& config, const QList<int>& classNums)
{
    const QStringList columns = schema::classColumnNames();
    Statement insert = db.prepare(QStringLiteral("insert into classdef (%1) values (%2)")
                                      .arg(columns.join(u','), QStringList(columns.size(), "?").join(u',')));
    for (int row : classNums) {
        QVariantList values{config};
        for (qsizetype c = 1; c < columns.size(); ++c)
            values << sampleValue(schema::kindOf(QStringLiteral("classdef"), columns[c]), row, int(c));
        values[2] = row; // class_num
        insert.run(values);
    }
}

// A configuration's classes without package_name, the one column a copy changes.
QStringList classesOf(Database& db, const QString& config)
{
    const QString columns = schema::classColumnNames().mid(1).join(u',');
    return rowsOf(db, QStringLiteral("select %1 from classdef where package_name = ? order by class_num").arg(columns),
                  {config});
}

} // namespace

// Make Copy's one statement; the window's side is tested with the main window.
class TestCopy : public QObject
{
    Q_OBJECT

private slots:
    // Names with quotes reach the store as typed; a source without classes gives an empty copy.
    void copiesEveryColumnOfEveryClass()
    {
        const QString source = QStringLiteral("O'Neil's");
        const QString copy = QStringLiteral("x' OR '1'='1");
        TempData data;
        Database& db = data.classDb();
        addConfiguration(db, QStringLiteral("alpha"));
        addConfiguration(db, source);
        addClasses(db, source, {7, 1, 3}); // gaps, and stored out of number order
        // The source is the name exactly: not another case, and "_" or "%" match only themselves.
        for (const QString& alike : {QStringLiteral("ALPHA"), QStringLiteral("alpXa"), QStringLiteral("alpha%")}) {
            addConfiguration(db, alike);
            addClasses(db, alike, {1});
        }
        addConfiguration(db, QStringLiteral("alp_a"));
        copyConfiguration(db, QStringLiteral("alpha"), QStringLiteral("alpha too")); // a source without classes
        copyConfiguration(db, QStringLiteral("alp_a"), QStringLiteral("alp_a too"));
        QVERIFY(configurationExists(db, QStringLiteral("alpha too")));
        QCOMPARE(classCount(db, QStringLiteral("alpha too")), 0);
        QCOMPARE(classCount(db, QStringLiteral("alp_a too")), 0);
        const QString packages = QStringLiteral("select * from package order by rowid");
        const QString classes = QStringLiteral("select * from classdef order by rowid");
        const QStringList packagesBefore = rowsOf(db, packages);
        const QStringList classesBefore = rowsOf(db, classes);

        copyConfiguration(db, source, copy);

        const QStringList copied = classesOf(db, copy);
        QCOMPARE(copied.size(), 3);
        QCOMPARE(copied.first().split(u'|').size(), 58);
        QCOMPARE(copied, classesOf(db, source));
        QVERIFY(copied.first().contains(QStringLiteral("<null>"))); // missing values stayed missing
        // Every earlier row is as it was, and only the copy was added.
        QCOMPARE(rowsOf(db, packages), packagesBefore + QStringList{copy});
        const QStringList classesAfter = rowsOf(db, classes);
        QCOMPARE(classesAfter.mid(0, classesBefore.size()), classesBefore);
        QCOMPARE(classesAfter.size(), classesBefore.size() + 3);
        // The copy skips the table's checks for its own rows only.
        QVERIFY_THROWS_EXCEPTION(StoreError, db.exec(QStringLiteral("update classdef set class_num = 40000")));
    }
};

QTEST_GUILESS_MAIN(TestCopy)
#include "tst_copy.moc"
