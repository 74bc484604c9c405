#include "core/Stores.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "support/TestSet.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tarn;

namespace
{

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

class TarnctlTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString data() const { return m_dir->filePath(QStringLiteral("data")); }
    QString file(const QString& name) const { return m_dir->filePath(name); }

    Outcome tarnctl(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.start(QStringLiteral(TARNCTL_PATH), QStringList{"--data-dir", data()} + arguments);
        process.write(input);
        process.closeWriteChannel();
        process.waitForFinished(60000);
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    Outcome bare(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.start(QStringLiteral(TARNCTL_PATH), arguments);
        process.write(input);
        process.closeWriteChannel();
        process.waitForFinished(60000);
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }
    int count(const QString& sql, const QVariantList& params = {})
    {
        Database db(QDir(data()).filePath("tarn_dat.db"), Database::Open::Existing);
        return db.scalar(sql, params).toInt();
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        Stores stores = openStores(data());
        test::insertTestSet(*stores.classDb);
    }

    void listsInTheMainWindowsOrder()
    {
        QCOMPARE(tarnctl({"new", "alpha"}).status, 0);
        const Outcome listed = tarnctl({"list"});
        QCOMPARE(listed.status, 0);
        QCOMPARE(listed.out, QByteArray("Example\nTest Set\nalpha\n"));
    }

    void exportGivesTheExpectedBytes_data()
    {
        QTest::addColumn<QStringList>("option");
        QTest::addColumn<QString>("expected");
        QTest::newRow("protected") << QStringList{} << QFINDTESTDATA("data/test_set_protected.class");
        QTest::newRow("unprotected") << QStringList{"--unprotected"}
                                     << QFINDTESTDATA("data/test_set_unprotected.class");
    }
    void exportGivesTheExpectedBytes()
    {
        QFETCH(QStringList, option);
        QFETCH(QString, expected);
        QCOMPARE(tarnctl({"modid", "12"}).status, 0);
        const Outcome exported = tarnctl(QStringList{"export", "Test Set", file("out.class")} + option);
        QCOMPARE(exported.status, 0);
        QCOMPARE(readFile(file("out.class")), readFile(expected));
        QCOMPARE(readFile(file("out.class")).size(), 213);
    }

    void importThenExportRoundTrips_data()
    {
        QTest::addColumn<QString>("source");
        QTest::newRow("protected") << QFINDTESTDATA("data/test_set_protected.class");
        QTest::newRow("unprotected") << QFINDTESTDATA("data/test_set_unprotected.class");
    }
    void importThenExportRoundTrips()
    {
        QFETCH(QString, source);
        tarnctl({"modid", "12"});
        const Outcome imported = tarnctl({"import", source, "Test Set"});
        QCOMPARE(imported.status, 0);
        QCOMPARE(imported.out, QByteArray("Import Complete\n"));
        QCOMPARE(count("select count(*) from classdef where package_name = 'Test Set'"), 4);
        tarnctl({"delete", "Test Set"}); // the first of the two, and every class of the name
        tarnctl({"import", source, "Test Set"});
        const bool wasProtected = source.contains("_protected");
        QStringList options{"export", "Test Set", file("again.class")};
        if (!wasProtected)
            options << "--unprotected";
        QCOMPARE(tarnctl(options).status, 0);
        QCOMPARE(readFile(file("again.class")), readFile(source));
    }

    void namesAreTakenExactlyAndTouchOnlyTheirRows_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("apostrophe") << QStringLiteral("Bob's classes");
        QTest::newRow("statement text") << QStringLiteral("x' OR '1'='1");
        QTest::newRow("blanks") << QStringLiteral(" padded ");
    }
    void namesAreTakenExactlyAndTouchOnlyTheirRows()
    {
        QFETCH(QString, name);
        QCOMPARE(tarnctl({"copy", "Test Set", name}).status, 0);
        QCOMPARE(count("select count(*) from classdef where package_name = ?", {name}), 2);
        QCOMPARE(count("select count(*) from classdef where package_name = ? and class_num = 5", {name}), 1);
        QCOMPARE(tarnctl({"copy", name, name + "2"}).status, 0);
        QCOMPARE(tarnctl({"delete", name}).status, 0);
        QCOMPARE(count("select count(*) from classdef where package_name = ?", {name}), 0);
        QCOMPARE(count("select count(*) from classdef where package_name = 'Test Set'"), 2);
        QCOMPARE(count("select count(*) from classdef where package_name = ?", {name + "2"}), 2);
        QVERIFY(tarnctl({"list"}).out.contains((name + "2\n").toUtf8()));
    }

    void refusalsSayWhatAndWhy_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("said");
        QTest::newRow("delete unknown") << QStringList{"delete", "nobody"} << "no configuration is named \"nobody\"";
        QTest::newRow("copy unknown") << QStringList{"copy", "nobody", "x"} << "nobody";
        QTest::newRow("export unknown") << QStringList{"export", "nobody", "f.class"} << "nobody";
        QTest::newRow("import missing file")
            << QStringList{"import", "/no/such/file.class", "x"} << "/no/such/file.class";
        QTest::newRow("export into missing folder")
            << QStringList{"export", "Test Set", "/no/such/dir/f.class"} << "/no/such/dir/f.class";
        QTest::newRow("empty mod id") << QStringList{"modid", ""} << "empty Mod ID";
    }
    void refusalsSayWhatAndWhy()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, said);
        const Outcome outcome = tarnctl(arguments);
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.contains(said.toUtf8()), outcome.err.constData());
    }

    void badRecordIsReportedAndNoConfigurationMade()
    {
        writeFile(file("bad.class"),
                  "V3 0\r\nx\r\n\r\n[A]\r\nm r b 0\r\n1 0 0 0 0 0 0 0 0 0\r\n0 0 0\r\n1 2 3  0  0\r\n1 2 3 4 5 6\r\n"
                  "stray\r\n[B]\r\nm r b 0\r\n");
        const Outcome outcome = tarnctl({"import", file("bad.class"), "broken"});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(outcome.err, QByteArray("Bad Class Record: stray\n"));
        QVERIFY(!tarnctl({"list"}).out.contains("broken"));
    }

    void refusedProtectedExportLeavesTheOldFile()
    {
        {
            Database db(QDir(data()).filePath("tarn_dat.db"), Database::Open::Existing);
            db.exec(QStringLiteral("update classdef set model_name = 'gunnér' where class_name = 'Gunner'"));
        }
        writeFile(file("old.class"), "old content");
        const Outcome outcome = tarnctl({"export", "Test Set", file("old.class")});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.contains("Gunner"), outcome.err.constData());
        QCOMPARE(readFile(file("old.class")), QByteArray("old content"));
        QCOMPARE(tarnctl({"export", "Test Set", file("old.class"), "--unprotected"}).status, 0);
        QVERIFY(readFile(file("old.class")).contains("gunn\xe9r"));
    }

    void lockedStoreIsReportedNotCorrupted()
    {
        Database holder(QDir(data()).filePath("tarn_dat.db"), Database::Open::Existing);
        Transaction hold(holder);
        const Outcome outcome = tarnctl({"new", "while locked"});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.contains("locked"), outcome.err.constData());
        hold.commit();
        QCOMPARE(tarnctl({"new", "after"}).status, 0);
        QCOMPARE(count("select count(*) from package"), 3);
    }

    void usageErrorsExitWithTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList{};
        QTest::newRow("unknown command") << QStringList{"frobnicate"};
        QTest::newRow("missing argument") << QStringList{"copy", "only-one"};
        QTest::newRow("too many") << QStringList{"list", "extra"};
        QTest::newRow("unknown option") << QStringList{"--colour", "list"};
        QTest::newRow("option on the wrong command") << QStringList{"import", "a", "b", "--unprotected"};
    }
    void usageErrorsExitWithTwo()
    {
        QFETCH(QStringList, arguments);
        const Outcome outcome = bare(arguments);
        QCOMPARE(outcome.status, 2);
        QVERIFY(outcome.err.contains("Usage:"));
    }

    void helpDocumentsEveryCommand()
    {
        const Outcome outcome = bare({"--help"});
        QCOMPARE(outcome.status, 0);
        for (const char* command : {"list", "new", "delete", "copy", "export", "import", "modid", "protect", "check"})
            QVERIFY2(outcome.out.contains(command), command);
    }

    void filtersKeepLineEnds()
    {
        const QByteArray plain("V3 12\r\nTest Set\r\n\r\nlast\nno ending");
        const Outcome protectedOut = bare({"protect"}, plain);
        QCOMPARE(protectedOut.status, 0);
        QVERIFY(protectedOut.out.startsWith("\xd6\xb3\xa0\xb1\xb2\r\n"));
        QCOMPARE(protectedOut.out.size(), plain.size());
        const Outcome back = bare({"unprotect"}, protectedOut.out);
        QCOMPARE(back.out, plain);
        const Outcome refused = bare({"protect"}, "fine\nna\xefve\n");
        QCOMPARE(refused.status, 1);
        QVERIFY(refused.err.contains("line 2"));
    }

    void checkListsProblemsWithLineNumbers()
    {
        writeFile(
            file("bad.class"),
            "V3 0\r\nx\r\n\r\n[A]\r\nm r b 0\r\n1 0 0 0 0 0 0 0 0 0\r\n0 0 0\r\n1 2 abc  0  0\r\n1 2 3 4 5 6\r\n\r\n");
        const Outcome bad = bare({"check", file("bad.class")});
        QCOMPARE(bad.status, 1);
        QVERIFY2(bad.err.contains("line 8") && bad.err.contains("abc"), bad.err.constData());
        QCOMPARE(bad.err.count('\n'), 1);
        const Outcome good = bare({"check", QFINDTESTDATA("data/test_set_protected.class")});
        QCOMPARE(good.status, 0);
        QVERIFY(good.err.isEmpty());
    }

    void modIdIsPrintedAndSet()
    {
        QCOMPARE(tarnctl({"modid"}).out, QByteArray("0\n"));
        QCOMPARE(tarnctl({"modid", " 42 "}).status, 0);
        QCOMPARE(readFile(QDir(data()).filePath("tarn.ini")), QByteArray("\" 42 \"\r\n"));
        QCOMPARE(tarnctl({"modid"}).out, QByteArray("42\n"));
    }
};

QTEST_GUILESS_MAIN(TarnctlTest)
#include "tst_tarnctl.moc"
