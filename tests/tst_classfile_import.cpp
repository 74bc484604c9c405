#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "classfile/Protection.h"
#include "store/Database.h"
#include "support/TestSupport.h"

#include <QBuffer>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

using Status = ImportResult::Status;

// Protection leaves the line ends (codes 10 and 13) as they are.
QByteArray protectedFile(const QByteArrayList& lines)
{
    return protectLine(classFile(lines), true);
}

std::unique_ptr<QBuffer> reading(const QByteArray& bytes)
{
    auto in = std::make_unique<QBuffer>();
    in->setData(bytes);
    in->open(QIODevice::ReadOnly);
    return in;
}

QByteArray testData(const char* name)
{
    return readFile(testDataPath(QString::fromLatin1(name)));
}

} // namespace

class TestClassfileImport : public QObject
{
    Q_OBJECT

    std::unique_ptr<TempData> m_data;

    Database& db() { return m_data->classDb(); }
    ImportResult importBytes(const QString& name, const QByteArray& bytes)
    {
        return importClassFile(db(), name, *reading(bytes));
    }
    QStringList classes(const QString& name, const QString& columns = QStringLiteral("class_name"))
    {
        return rowsOf(
            db(), QStringLiteral("select %1 from classdef where package_name = ? order by rowid").arg(columns), {name});
    }
    int packageRows(const QString& name)
    {
        return db().scalar("select count(*) from package where package_name = ?", {name}).toInt();
    }
    // The ticked columns among prefix1 to prefix<count> of the first class of "New".
    QStringList ticked(const QString& prefix, int count)
    {
        QStringList columns;
        for (int k = 1; k <= count; ++k)
            columns << prefix + QString::number(k);
        const QStringList values = classes("New", columns.join(u',')).value(0).split(u'|');
        QStringList set;
        for (int k = 0; k < count; ++k) {
            if (values.value(k) == QLatin1String("1"))
                set << columns[k];
        }
        return set;
    }

    // Rows before the stop stay; the configuration is never listed.
    void verifyStopped(const ImportResult& result, Status status, const QString& message, int kept)
    {
        QCOMPARE(result.status, status);
        QCOMPARE(result.message, message);
        QCOMPARE(result.classes, kept);
        QCOMPARE(classCount(db(), "New"), kept);
        QCOMPARE(packageRows("New"), 0);
    }

private slots:
    void init() { m_data = std::make_unique<TempData>(); }

    void workedExample_data()
    {
        QTest::addColumn<bool>("protect");
        QTest::addColumn<QByteArray>("file");
        QTest::newRow("protected") << true << testData("test_set_protected.class");
        QTest::newRow("unprotected") << false << testData("test_set_unprotected.class");
    }

    // Read into rows, and written back by the export to the same bytes.
    void workedExample()
    {
        QFETCH(bool, protect);
        QFETCH(QByteArray, file);
        const ImportResult result = importBytes("Test Set", file);
        QCOMPARE(result.status, Status::Complete);
        QCOMPARE(result.message, "Import Complete");
        QCOMPARE(result.classes, 2);
        QCOMPARE(packageRows("Test Set"), 1);
        // s21 is stored as 0, not left NULL.
        QCOMPARE(classes("Test Set", "class_num, class_name, w1, s21"),
                 (QStringList{"1|Light Scout|1|0", "2|Gunner|1|0"}));
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        QCOMPARE(exportConfiguration(db(), m_data->refDb(), "Test Set", "12", protect, out), std::nullopt);
        QCOMPARE(out.data(), file);
    }

    void recordLoop_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("names");
        const QByteArrayList header = ClassFileHeader;
        const QByteArrayList a = classRecord("A]");
        const QByteArrayList b = classRecord("B]");
        const QByteArray longest(32767 - 2, 'n');
        QTest::newRow("several empty lines")
            << classFile(header + QByteArrayList{"", ""} + a + QByteArrayList{"", "", ""} + b) << QStringList{"A", "B"};
        QTest::newRow("empty lines at the end") << classFile(header + a + QByteArrayList{"", ""}) << QStringList{"A"};
        QTest::newRow("last line without terminator") << classFile(header + a).chopped(2) << QStringList{"A"};
        QTest::newRow("last line is not looked at")
            << classFile(header + a + QByteArrayList{"", "[Lost]"}) << QStringList{"A"};
        QTest::newRow("three lines") << classFile(header + QByteArrayList{"[X]"}) << QStringList{};
        QTest::newRow("[]") << classFile(header + classRecord("]")) << QStringList{""};
        QTest::newRow("[ alone") << classFile(header + classRecord("")) << QStringList{""};
        QTest::newRow("no closing bracket") << classFile(header + classRecord("Name")) << QStringList{"Nam"};
        QTest::newRow("blanks in the name")
            << classFile(header + classRecord(" two  blanks ]")) << QStringList{" two  blanks "};
        QTest::newRow("longest line") << classFile(header + classRecord(longest + "]") + QByteArrayList{""})
                                      << QStringList{QString::fromLatin1(longest)};
        QTest::newRow("lone line feeds") << classFile(header + a + b, "\n") << QStringList{"A", "B"};
        QTest::newRow("lone carriage returns") << classFile(header + a + b, "\r") << QStringList{"A", "B"};
        QTest::newRow("any header") << classFile(QByteArrayList{"\xFF\x80 junk", ""} + a) << QStringList{"A"};
        QTest::newRow("protected, no empty line between") << protectedFile(header + a + b) << QStringList{"A", "B"};
    }

    void recordLoop()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, names);
        const ImportResult result = importBytes("New", file);
        QCOMPARE(result.status, Status::Complete);
        QCOMPARE(result.classes, names.size());
        QCOMPARE(packageRows("New"), 1);
        QStringList numbered; // numbered from 1 in file order
        for (int i = 0; i < names.size(); ++i)
            numbered << names[i] + u'|' + QString::number(i + 1);
        QCOMPARE(classes("New", "class_name, class_num"), numbered);
    }

    void bitSums_data()
    {
        QTest::addColumn<QByteArray>("sums");
        QTest::addColumn<QStringList>("abilities");
        QTest::addColumn<QStringList>("items");
        QStringList allAbilities, allItems;
        for (int k = 1; k <= 21; ++k)
            allAbilities << QStringLiteral("s%1").arg(k);
        for (int k = 1; k <= 9; ++k)
            allItems << QStringLiteral("i%1").arg(k);
        QTest::newRow("5 and 2") << QByteArray("  5  2") << QStringList{"s1", "s3"} << QStringList{"i2"};
        QTest::newRow("0 and 0") << QByteArray("  0  0") << QStringList{} << QStringList{};
        QTest::newRow("256 is i9") << QByteArray("  0  256") << QStringList{} << QStringList{"i9"};
        QTest::newRow("2^21 is past s21") << QByteArray("  2097152  512") << QStringList{} << QStringList{};
        QTest::newRow("-1 sets all") << QByteArray(" -1 -1") << allAbilities << allItems;
        QTest::newRow("plus sign") << QByteArray(" +3 +0") << QStringList{"s1", "s2"} << QStringList{};
    }

    void bitSums()
    {
        QFETCH(QByteArray, sums);
        QFETCH(QStringList, abilities);
        QFETCH(QStringList, items);
        const QByteArray file = classFile(ClassFileHeader + classRecord("A]", 4, "1 2 3 " + sums));
        QCOMPARE(importBytes("New", file).status, Status::Complete);
        QCOMPARE(ticked("s", 21), abilities);
        QCOMPARE(ticked("i", 9), items);
    }

    // The second record starts on line 9: b 9, c 10, d 11, e 12, f 13, g 14.
    void failures_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("kept");
        const QByteArrayList first = ClassFileHeader + classRecord("A]");
        const QByteArrayList stray = first + QByteArrayList{"stray  text", ""} + classRecord("B]");
        const QString badRecord = QStringLiteral("Bad Class Record: stray  text");
        QTest::newRow("bad record") << classFile(stray) << badRecord << 1;
        QTest::newRow("bad record, protected") << protectedFile(stray) << badRecord << 1;
        const auto second = [&](int line, const QByteArray& text) {
            return classFile(first + classRecord("B]", line, text));
        };
        const QString integer = QStringLiteral("is not a whole number from -32768 to 32767.");
        const QString sum = QStringLiteral("is not a whole number from -2147483648 to 2147483647.");
        const QString fewLines = QStringLiteral("The file has fewer than three lines: it is not a class file.");
        QTest::newRow("letters") << second(4, "1 2 abc  0  0") << "line 13: max health \"abc\" " + integer << 1;
        QTest::newRow("too big") << second(4, "1 2 32768  0  0") << "line 13: max health \"32768\" " + integer << 1;
        QTest::newRow("smallest fits, sum too big")
            << second(4, "1 2 -32768  0  2147483648") << "line 13: item sum \"2147483648\" " + sum << 1;
        QTest::newRow("fraction") << second(4, "1 2 3  5.0  0") << "line 13: ability sum \"5.0\" " + sum << 1;
        QTest::newRow("two in one line") << second(4, "x 2 y  0  0")
                                         << "line 13: max armor \"x\" " + integer + "\nline 13: max health \"y\" " +
                                                integer
                                         << 1;
        QTest::newRow("empty skin") << second(1, "m r  0") << "line 10: decoy skin is missing." << 1;
        QTest::newRow("blank in a model") << second(1, "my m r b 0") << "line 10: decoy skin \"b\" " + integer << 1;
        QTest::newRow("short weapon line") << second(2, "1 2 3") << "line 11: weapon 4 is missing." << 1;
        QTest::newRow("two lines") << classFile(ClassFileHeader) << fewLines << 0;
        QTest::newRow("ends inside a record")
            << classFile(first + classRecord("B]").mid(0, 3))
            << "line 12: the file ends inside the class record that starts on line 9." << 1;
        QTest::newRow("line too long") << classFile(first + classRecord(QByteArray(32768, 'x')))
                                       << "line 9 is longer than 32767 characters." << 1;
    }

    void failures()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        QFETCH(int, kept);
        const Status status = message.startsWith(u"Bad Class Record: ") ? Status::BadRecord : Status::Failed;
        verifyStopped(importBytes("New", file), status, message, kept);
    }

    void classCounterStopsAt32767()
    {
        QByteArray file = classFile(ClassFileHeader);
        const QByteArray one = classFile(classRecord("c]"));
        for (int i = 0; i < 32768; ++i)
            file += one;
        verifyStopped(importBytes("New", file), Status::Failed,
                      QStringLiteral("line 196605: the file holds more than 32767 classes, more than a configuration "
                                     "can number."),
                      32767);
    }

    // The name is bound as typed, and a name in use takes a second package row.
    void nameInUseJoinsItsRows()
    {
        const QString sly = QStringLiteral("x' OR '1'='1");
        const QByteArray file = testData("test_set_unprotected.class");
        QCOMPARE(importBytes(sly, file).status, Status::Complete);
        QCOMPARE(importBytes(sly, file).status, Status::Complete);
        QCOMPARE(packageRows(sly), 2);
        QCOMPARE(classes(sly, "class_name, class_num"),
                 (QStringList{"Light Scout|1", "Gunner|2", "Light Scout|1", "Gunner|2"}));
        QCOMPARE(classCount(db(), "Example"), 2);
    }

    void fromFile()
    {
        QCOMPARE(importClassFile(db(), "New", testDataPath("test_set_protected.class")).classes, 2);
        const QString missing = m_data->path("nowhere.class");
        const ImportResult result = importClassFile(db(), "Lost", missing);
        QCOMPARE(result.status, Status::Failed);
        QVERIFY2(result.message.startsWith("Cannot open " + missing + ": "), qPrintable(result.message));
        QCOMPARE(packageRows("Lost"), 0);
    }

    void checkListsEveryProblem()
    {
        const QByteArray file =
            classFile(ClassFileHeader + classRecord("A]", 4, "1 2 x  0  0") + QByteArrayList{"junk"} +
                      classRecord("B]", 2, "1 0 0 q") + classRecord("C]").mid(0, 2));
        QCOMPARE(checkClassFile(*reading(file)),
                 (QStringList{"line 7: max health \"x\" is not a whole number from -32768 to 32767.",
                              "line 9: Bad Class Record: junk",
                              "line 12: weapon 4 \"q\" is not a whole number from -32768 to 32767.",
                              "line 12: weapon 5 is missing.",
                              "line 18: the file ends inside the class record that starts on line 16."}));
        QCOMPARE(checkClassFile(*reading(testData("test_set_protected.class"))), QStringList{});
        QCOMPARE(packageRows("New"), 0);
    }
};

QTEST_GUILESS_MAIN(TestClassfileImport)
#include "tst_classfile_import.moc"
