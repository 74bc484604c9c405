#include "classfile/ExportCommand.h"
#include "classfile/ImportCommand.h"
#include "classfile/Protection.h"
#include "core/Stores.h"
#include "store/Database.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tarn;

namespace
{

using Status = ImportResult::Status;

const QByteArrayList header{"V3 0", "Some Config"};

// A record whose line f ends in the sums 0 and 0.
QByteArrayList record(const QByteArray& name)
{
    return {"[" + name, "m r b 0", "1 0 0 0 0 0 0 0 0 0", "0 0 0", "1 2 3  0  0", "1 2 3 4 5 6"};
}

QByteArrayList record(const QByteArray& name, int line, const QByteArray& text)
{
    QByteArrayList lines = record(name);
    lines[line] = text;
    return lines;
}

QByteArray classFile(const QByteArrayList& lines, const QByteArray& lineEnd = "\r\n")
{
    return lines.join(lineEnd) + lineEnd;
}

QByteArray protectedFile(const QByteArrayList& lines)
{
    QByteArrayList protectedLines;
    for (const QByteArray& line : lines)
        protectedLines << protectLine(line, true);
    return classFile(protectedLines);
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
    QFile file(QFINDTESTDATA(QString::fromLatin1("data/") + name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList flagsSet(const QVariantMap& row, const QString& prefix, int count)
{
    QStringList set;
    for (int k = 1; k <= count; ++k) {
        if (row.value(prefix + QString::number(k)).toInt() == 1)
            set << prefix + QString::number(k);
    }
    return set;
}

QVariantList valuesOf(const QVariantMap& row, const QStringList& columns)
{
    QVariantList values;
    for (const QString& column : columns)
        values << row.value(column);
    return values;
}

const QStringList slotColumns{"w1", "w2", "w3", "w4", "w5", "w6", "w7", "w8", "w9", "w10", "g1", "g2", "g3"};
const QStringList limitColumns{"max_armor", "max_speed",  "max_health",  "decoyskin", "maxbullets",
                               "maxshells", "maxrockets", "maxgrenades", "maxcells",  "maxslugs"};

} // namespace

class TestClassfileImport : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    Stores m_stores;

    ImportResult importBytes(const QString& name, const QByteArray& bytes)
    {
        return importClassFile(*m_stores.classDb, name, *reading(bytes));
    }

    QList<QVariantMap> rowsOf(const QString& name)
    {
        Statement rows = m_stores.classDb->prepare("select * from classdef where package_name = ? order by rowid");
        rows.bind(1, name);
        QList<QVariantMap> list;
        while (rows.step()) {
            QVariantMap row;
            for (int i = 0; i < rows.columnCount(); ++i)
                row.insert(rows.columnName(i), rows.value(i));
            list << row;
        }
        return list;
    }

    QStringList classNamesOf(const QString& name)
    {
        QStringList names;
        for (const QVariantMap& row : rowsOf(name))
            names << row.value("class_name").toString();
        return names;
    }

    int packageRows(const QString& name)
    {
        return m_stores.classDb->scalar("select count(*) from package where package_name = ?", {name}).toInt();
    }

    // Rows before the stop stay; the configuration is never listed.
    void verifyStopped(const ImportResult& result, Status status, const QString& message, int kept)
    {
        QCOMPARE(result.status, status);
        QCOMPARE(result.message, message);
        QCOMPARE(result.classes, kept);
        QCOMPARE(rowsOf("New").size(), kept);
        QCOMPARE(packageRows("New"), 0);
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_stores = openStores(m_dir->path());
    }

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
        const QList<QVariantMap> rows = rowsOf("Test Set");
        QCOMPARE(rows.size(), 2);
        const QStringList texts{"class_name", "class_num", "model_name", "skin_name1", "skin_name2"};
        QCOMPARE(valuesOf(rows[0], texts), (QVariantList{"Light Scout", 1, "scout", "red", "blue"}));
        QCOMPARE(valuesOf(rows[1], texts), (QVariantList{"Gunner", 2, "gunner", "redg", "blueg"}));
        QCOMPARE(valuesOf(rows[0], slotColumns), (QVariantList{1, 2, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0}));
        QCOMPARE(valuesOf(rows[1], slotColumns), (QVariantList{1, 3, 4, 0, 0, 0, 0, 0, 0, 0, 1, 2, 0}));
        QCOMPARE(valuesOf(rows[0], limitColumns), (QVariantList{50, 320, 100, 2, 100, 20, 0, 5, 0, 0}));
        QCOMPARE(valuesOf(rows[1], limitColumns), (QVariantList{100, 240, 120, 0, 200, 50, 10, 5, 50, 10}));
        QCOMPARE(flagsSet(rows[0], "s", 21), (QStringList{"s1", "s3"}));
        QCOMPARE(flagsSet(rows[0], "i", 9), QStringList{"i2"});
        QCOMPARE(flagsSet(rows[1], "s", 21), QStringList{});
        QCOMPARE(flagsSet(rows[1], "i", 9), (QStringList{"i1", "i2"}));
        QCOMPARE(rows[1].value("s21"), QVariant(0)); // stored as 0, not left NULL
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        QCOMPARE(exportConfiguration(*m_stores.classDb, *m_stores.refDb, "Test Set", "12", protect, out), std::nullopt);
        QCOMPARE(out.data(), file);
    }

    void recordLoop_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("names");
        const QByteArrayList a = record("A]");
        const QByteArrayList b = record("B]");
        QTest::newRow("no empty line between records") << classFile(header + a + b) << QStringList{"A", "B"};
        QTest::newRow("several empty lines")
            << classFile(header + QByteArrayList{"", ""} + a + QByteArrayList{"", "", ""} + b) << QStringList{"A", "B"};
        QTest::newRow("empty lines at the end") << classFile(header + a + QByteArrayList{"", ""}) << QStringList{"A"};
        QTest::newRow("last line without terminator") << classFile(header + a).chopped(2) << QStringList{"A"};
        QTest::newRow("bracket line last is not looked at")
            << classFile(header + a + QByteArrayList{"", "[Lost]"}) << QStringList{"A"};
        QTest::newRow("stray line last is not looked at")
            << classFile(header + a + QByteArrayList{"junk"}) << QStringList{"A"};
        QTest::newRow("three lines") << classFile(header + QByteArrayList{"[X]"}) << QStringList{};
        QTest::newRow("[]") << classFile(header + record("]")) << QStringList{""};
        QTest::newRow("[ alone") << classFile(header + record("")) << QStringList{""};
        QTest::newRow("no closing bracket") << classFile(header + record("Name")) << QStringList{"Nam"};
        QTest::newRow("blanks in the name")
            << classFile(header + record(" two  blanks ]")) << QStringList{" two  blanks "};
        QTest::newRow("lone line feeds") << classFile(header + a + b, "\n") << QStringList{"A", "B"};
        QTest::newRow("lone carriage returns") << classFile(header + a + b, "\r") << QStringList{"A", "B"};
        QTest::newRow("any header") << classFile(QByteArrayList{"\xFF\x80 junk", ""} + a) << QStringList{"A"};
        QTest::newRow("protected") << protectedFile(header + a + b) << QStringList{"A", "B"};
    }

    void recordLoop()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, names);
        const ImportResult result = importBytes("New", file);
        QCOMPARE(result.status, Status::Complete);
        QCOMPARE(result.classes, names.size());
        QCOMPARE(classNamesOf("New"), names);
        QCOMPARE(packageRows("New"), 1);
        const QList<QVariantMap> rows = rowsOf("New");
        for (int i = 0; i < rows.size(); ++i)
            QCOMPARE(rows[i].value("class_num"), QVariant(i + 1));
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
        QCOMPARE(importBytes("New", classFile(header + record("A]", 4, "1 2 3 " + sums))).status, Status::Complete);
        const QVariantMap row = rowsOf("New").value(0);
        QCOMPARE(flagsSet(row, "s", 21), abilities);
        QCOMPARE(flagsSet(row, "i", 9), items);
    }

    void badRecord_data()
    {
        QTest::addColumn<QByteArray>("file");
        const QByteArrayList lines = header + record("A]") + QByteArrayList{"stray  text", ""} + record("B]");
        QTest::newRow("unprotected") << classFile(lines);
        QTest::newRow("protected") << protectedFile(lines);
    }

    void badRecord()
    {
        QFETCH(QByteArray, file);
        verifyStopped(importBytes("New", file), Status::BadRecord, "Bad Class Record: stray  text", 1);
    }

    // The second record starts on line 9: b 9, c 10, d 11, e 12, f 13, g 14.
    void failures_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("kept");
        const auto second = [](int line, const QByteArray& text) {
            return classFile(header + record("A]") + record("B]", line, text));
        };
        const QString integer = QStringLiteral("is not a whole number from -32768 to 32767.");
        const QString sum = QStringLiteral("is not a whole number from -2147483648 to 2147483647.");
        const QString fewLines = QStringLiteral("The file has fewer than three lines: it is not a class file.");
        QTest::newRow("letters") << second(4, "1 2 abc  0  0") << "line 13: max health \"abc\" " + integer << 1;
        QTest::newRow("missing") << second(4, "1 2") << "line 13: max health is missing." << 1;
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
        QTest::newRow("empty") << QByteArray() << fewLines << 0;
        QTest::newRow("two lines") << classFile(header) << fewLines << 0;
        QTest::newRow("ends inside a record")
            << classFile(header + record("A]") + record("B]").mid(0, 3))
            << "line 12: the file ends inside the class record that starts on line 9." << 1;
        QTest::newRow("line too long") << classFile(header + record("A]") + record(QByteArray(32768, 'x')))
                                       << "line 9 is longer than 32767 characters." << 1;
    }

    void failures()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, message);
        QFETCH(int, kept);
        verifyStopped(importBytes("New", file), Status::Failed, message, kept);
    }

    void longestLineIsRead()
    {
        const QByteArray name(32767 - 2, 'n');
        QCOMPARE(importBytes("New", classFile(header + record(name + "]") + QByteArrayList{""})).status,
                 Status::Complete);
        QCOMPARE(classNamesOf("New"), QStringList{QString::fromLatin1(name)});
    }

    void classCounterStopsAt32767()
    {
        QByteArray file = classFile(header);
        const QByteArray one = classFile(record("c]"));
        for (int i = 0; i < 32768; ++i)
            file += one;
        verifyStopped(importBytes("New", file), Status::Failed,
                      QStringLiteral("line 196605: the file holds more than 32767 classes, more than a configuration "
                                     "can number."),
                      32767);
    }

    void nameInUseJoinsItsRows()
    {
        const QByteArray file = testData("test_set_unprotected.class");
        QCOMPARE(importBytes("Twice", file).status, Status::Complete);
        QCOMPARE(importBytes("Twice", file).status, Status::Complete);
        QCOMPARE(packageRows("Twice"), 2);
        QList<int> numbers;
        for (const QVariantMap& row : rowsOf("Twice"))
            numbers << row.value("class_num").toInt();
        QCOMPARE(numbers, (QList<int>{1, 2, 1, 2}));
    }

    void nameIsStoredAsTyped()
    {
        const QString sly = QStringLiteral("x' OR '1'='1");
        QCOMPARE(importBytes(sly, testData("test_set_protected.class")).status, Status::Complete);
        QCOMPARE(packageRows(sly), 1);
        QCOMPARE(classNamesOf(sly), (QStringList{"Light Scout", "Gunner"}));
        QCOMPARE(classNamesOf("Example").size(), 2);
    }

    void fromFile()
    {
        const QString path = QFINDTESTDATA("data/test_set_protected.class");
        QCOMPARE(importClassFile(*m_stores.classDb, "New", path).classes, 2);
        const QString missing = m_dir->filePath("nowhere.class");
        const ImportResult result = importClassFile(*m_stores.classDb, "Lost", missing);
        QCOMPARE(result.status, Status::Failed);
        QVERIFY2(result.message.startsWith("Cannot open " + missing + ": "), qPrintable(result.message));
        QCOMPARE(packageRows("Lost"), 0);
    }

    void checkListsEveryProblem()
    {
        const QByteArray file = classFile(header + record("A]", 4, "1 2 x  0  0") + QByteArrayList{"junk"} +
                                          record("B]", 2, "1 0 0 q") + record("C]").mid(0, 2));
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
