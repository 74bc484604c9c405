#include "classfile/ExportCommand.h"
#include "classfile/SlotSearch.h"
#include "store/Database.h"
#include "support/TestSet.h"
#include "support/TestSupport.h"

#include <QTest>

using namespace tarn;
using namespace tarn::test;

class TestClassfileExport : public QObject
{
    Q_OBJECT

    std::unique_ptr<TempData> m_data;

    void insertClass(const QString& config, int classNum, QVariantMap columns)
    {
        columns.insert(QStringLiteral("package_name"), config);
        columns.insert(QStringLiteral("class_num"), classNum);
        insertRow(m_data->classDb(), QStringLiteral("classdef"), columns);
    }

    // Replaces the rows of item or special with the given (id, kd_enabled) pairs.
    void setBoxes(const QString& table, const QList<QVariantList>& rows)
    {
        m_data->refDb().exec(QStringLiteral("delete from %1").arg(table));
        Statement insert = m_data->refDb().prepare(
            QStringLiteral("insert into %1 (%2_id, %2_name, kd_enabled) values (?, 'x', ?)").arg(table, table.left(1)));
        for (const QVariantList& row : rows)
            insert.run(row);
    }

    std::optional<QString> exportTo(const QString& path, const QString& config, bool protect, const QString& modId)
    {
        return exportConfigurationToFile(m_data->classDb(), m_data->refDb(), config, modId, protect, path);
    }

    QByteArray exported(const QString& config, bool protect, const QString& modId = QStringLiteral("0"))
    {
        const QString path = m_data->path(QStringLiteral("exported.class"));
        const std::optional<QString> error = exportTo(path, config, protect, modId);
        return error ? error->toUtf8() : readFile(path);
    }

    QByteArrayList exportedLines(const QString& config)
    {
        QByteArrayList lines = exported(config, false).split('\n');
        for (QByteArray& line : lines)
            line.chop(1);
        lines.removeLast(); // behind the last terminator
        return lines;
    }

    QString slotsOf(const QString& config, int classNum)
    {
        return rowsOf(m_data->classDb(), "select w2, w5, g1, g2 from classdef where package_name = ? and class_num = ?",
                      {config, classNum})
            .value(0);
    }

private slots:
    void init() { m_data = std::make_unique<TempData>(); }

    void slotSearch_data()
    {
        QTest::addColumn<QList<qint64>>("ids");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        const QList<qint64> repeated{0, 3, 3, 7};
        QTest::newRow("last match wins") << repeated << "3" << 2;
        QTest::newRow("last position is searched") << repeated << "7" << 3;
        QTest::newRow("negative id") << QList<qint64>{0, -32768} << "-32768" << 1;
        QTest::newRow("empty text looks for 0 past position 0") << repeated << "" << 0;
        QTest::newRow("empty text finds a later 0") << QList<qint64>{5, 0} << "" << 1;
        QTest::newRow("first entry's own id") << QList<qint64>{4, 5} << "4" << 0;
        QTest::newRow("no entry") << QList<qint64>{} << "4" << 0;
        QTest::newRow("not a number") << QList<qint64>{0, 0} << "abc" << 0;
        QTest::newRow("beyond 16 bits") << QList<qint64>{0, 65536} << "65536" << 0;
    }

    void slotSearch()
    {
        QFETCH(QList<qint64>, ids);
        QFETCH(QString, text);
        QFETCH(int, position);
        QCOMPARE(findSlotPosition(std::vector<qint64>(ids.begin(), ids.end()), text), position);
    }

    void workedExample_data()
    {
        QTest::addColumn<bool>("protect");
        QTest::addColumn<QString>("expected");
        QTest::newRow("protected") << true << testDataPath("test_set_protected.class");
        QTest::newRow("unprotected") << false << testDataPath("test_set_unprotected.class");
    }

    // The second class's sums start again from 0; a longer old file is replaced whole.
    void workedExample()
    {
        QFETCH(bool, protect);
        QFETCH(QString, expected);
        insertTestSet(m_data->classDb());
        const QString path = m_data->path("replace.class");
        QVERIFY(writeFile(path, QByteArray(1000, 'x')));
        QCOMPARE(exportTo(path, "Test Set", protect, "12"), std::nullopt);
        QCOMPARE(readFile(path), readFile(expected));
        QCOMPARE(readFile(path).size(), 213);
    }

    void oneClassGivesNineLines()
    {
        insertClass("One", 1, {{"class_name", "Solo Act"}, {"w1", 7}, {"i9", 1}});
        const QByteArrayList lines = exportedLines("One");
        QCOMPARE(lines.size(), 9);
        QCOMPARE(lines[2], QByteArray());
        QCOMPARE(lines[3], "[Solo Act]");
        QCOMPARE(lines[4], "   "); // four empty fields
        QCOMPARE(lines[5], "1 0 0 0 0 0 0 0 0 0");
        QCOMPARE(lines[7], "    0  0");
        QCOMPARE(lines[8], "     ");
    }

    // Boxes stand for rows by position: a greyed row's tick counts, a column with no
    // row behind it does not.
    void onlyBoxesWithARowCount()
    {
        setBoxes("item", {{1, 1}, {2, 0}, {4, QVariant()}});
        setBoxes("special", {{1 << 30, 1}, {1 << 30, 1}, {-8, 1}}); // id order: -8, 2^30, 2^30
        insertClass("Boxes", 1, {{"i2", 1}, {"i3", 1}, {"i5", 1}, {"i9", 1}, {"s2", 1}, {"s3", 1}, {"s4", 1}});
        insertClass("Boxes", 2, {{"s1", 1}, {"i1", 0}});
        const QByteArrayList lines = exportedLines("Boxes");
        QCOMPARE(lines[7], "   -2147483648  6");
        QCOMPARE(lines[14], "   -8  0");
    }

    // The name is bound, not pasted: another configuration's class stays out.
    void classesGoInClassNumOrder()
    {
        const QString sly = QStringLiteral("x' OR '1'='1");
        for (int num : {5, 1, 3})
            insertClass(sly, num, {{"class_name", QString::number(num)}});
        insertClass("Other", 2, {{"class_name", "other"}});
        const QByteArrayList lines = exportedLines(sly);
        QCOMPARE(lines.size(), 23);
        QCOMPARE(lines[1], sly.toLatin1());
        QCOMPARE((QByteArrayList{lines[3], lines[10], lines[17]}), (QByteArrayList{"[1]", "[3]", "[5]"}));
    }

    // Enabled weapons are 0, 2, 3 ... 10 and grenades 0 to 4 in the starting rows.
    void slotsTakeTheTrackedIdAndKeepIt()
    {
        m_data->refDb().exec("update weapon set kd_enabled = 0 where w_id = 5");
        insertClass("Track", 1, {{"w2", 4}, {"w5", 5}, {"g1", 99}, {"g2", 3}});
        QCOMPARE(exportedLines("Track")[5], "1 4 0 0 0 0 0 0 0 0");
        QCOMPARE(exportedLines("Track")[6], "0 3 0");
        QCOMPARE(slotsOf("Track", 1), "4|0|0|3");
    }

    void emptyPickerLeavesSlotsAsStored()
    {
        m_data->refDb().exec("update grenade set kd_enabled = 0");
        insertClass("NoGrenades", 1, {{"g1", 9}});
        QCOMPARE(exportedLines("NoGrenades")[6], "9  ");
        QCOMPARE(slotsOf("NoGrenades", 1), "0|0|9|<null>");
    }

    void configurationWithoutClassesGivesTheHeaderOnly()
    {
        QCOMPARE(exported("Nothing", false, "7"), "V3 7\r\nNothing\r\n");
        QCOMPARE(exported("Nothing", true, "7"), "\xD6\xB3\xA0\xB7\r\n\xCE\xEF\xF4\xE8\xE9\xEE\xE7\r\n");
    }

    void textsTheFormCannotCarry_data()
    {
        QTest::addColumn<bool>("protect");
        QTest::addColumn<QString>("modId");
        QTest::addColumn<QString>("model");
        QTest::addColumn<QString>("message");
        const QString prefix = QStringLiteral("Class \"Gunner\": the model name ");
        QTest::newRow("accent, protected")
            << true << "1" << QStringLiteral("gunn\u00E9r")
            << prefix + QStringLiteral("\"gunn\u00E9r\" holds \"\u00E9\", which a protected class file cannot carry.");
        QTest::newRow("euro sign, protected")
            << true << "1" << QStringLiteral("\u20AC")
            << prefix + QStringLiteral("\"\u20AC\" holds \"\u20AC\", which a protected class file cannot carry.");
        QTest::newRow("no Windows-1252 byte")
            << false << "1" << QStringLiteral("a\u4E2D")
            << prefix + QStringLiteral("\"a\u4E2D\" holds \"\u4E2D\", which a class file cannot carry.");
        QTest::newRow("Mod ID") << true << QStringLiteral("\u00E9") << "gunner"
                                << QStringLiteral("The Mod ID \"\u00E9\" holds \"\u00E9\", which a protected class "
                                                  "file cannot carry.");
    }

    // A refused export leaves the file and the rows as they were.
    void textsTheFormCannotCarry()
    {
        QFETCH(bool, protect);
        QFETCH(QString, modId);
        QFETCH(QString, model);
        QFETCH(QString, message);
        insertClass("C", 1, {{"class_name", "Gunner"}, {"model_name", model}});
        const QString path = m_data->path("out.class");
        QVERIFY(writeFile(path, "old content"));
        QCOMPARE(exportTo(path, "C", protect, modId), message);
        QCOMPARE(readFile(path), "old content");
        QCOMPARE(slotsOf("C", 1), "<null>|<null>|<null>|<null>");
    }

    void unwritableFileIsNamed()
    {
        const QString path = m_data->path("missing/dir/out.class");
        const std::optional<QString> error = exportTo(path, "Example", false, "0");
        QVERIFY(error && error->startsWith("Cannot write " + path + ": "));
    }
};

QTEST_GUILESS_MAIN(TestClassfileExport)
#include "tst_classfile_export.moc"
