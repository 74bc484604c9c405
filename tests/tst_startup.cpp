#include "core/Backups.h"
#include "core/DataDirectory.h"
#include "core/ModId.h"
#include "core/Stores.h"
#include "store/Configurations.h"
#include "store/StoreError.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

class StartupTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_brokenStore;

private slots:
    // Help and version need no display; anything unknown is one line and status 2. A store
    // that cannot be opened ends the start with status 1 and the reason, offscreen without
    // the box that would wait for someone to close it.
    void commandLineIsAnsweredWithoutADisplay_data()
    {
        const QString broken = m_brokenStore.filePath(ClassStoreFile);
        QVERIFY(writeFile(broken, "not a database"));
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("said");
        QTest::newRow("help") << QStringList{"--help"} << 0 << "Usage: tarn [--data-dir DIR] [FILE]\n";
        QTest::newRow("version") << QStringList{"--version"} << 0 << "tarn 1.4.0\n";
        QTest::newRow("unknown option") << QStringList{"--bogus"} << 2
                                        << "tarn: Unknown option 'bogus'.\nTry 'tarn --help'.\n";
        QTest::newRow("a second file") << QStringList{"one.class", "two.class"} << 2
                                       << "tarn: unexpected argument \"two.class\"\nTry 'tarn --help'.\n";
        QTest::newRow("a store that cannot be opened")
            << QStringList{"--data-dir", m_brokenStore.path(), "-platform", "offscreen"} << 1
            << "tarn: " + broken +
                   " is not a store of this program: it is no database at all (file is not a "
                   "database).\n";
    }
    void commandLineIsAnsweredWithoutADisplay()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, said);
        QProcess tarn;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(name));
        tarn.setProcessEnvironment(environment);
        tarn.start(QStringLiteral(TARN_PATH), arguments);
        QVERIFY(tarn.waitForFinished(60000));
        QCOMPARE(tarn.exitStatus(), QProcess::NormalExit);
        QCOMPARE(tarn.exitCode(), status);
        const QByteArray output = status == 0 ? tarn.readAllStandardOutput() : tarn.readAllStandardError();
        QVERIFY2(status == 0 ? output.startsWith(said.toUtf8()) : output == said.toUtf8(), output.constData());
    }

    void modIdIsReadByItsRules_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("modId");
        QTest::newRow("quoted") << QByteArray("\"my mod\"\r\n") << "my mod";
        QTest::newRow("unquoted") << QByteArray("42\r\n") << "42";
        QTest::newRow("unquoted to the comma") << QByteArray("42,43\r\n") << "42";
        QTest::newRow("spaces inside quotes go") << QByteArray("\"  42 \"\r\n") << "42";
        QTest::newRow("blanks ahead skipped") << QByteArray("   \"x\"") << "x";
        QTest::newRow("empty quotes") << QByteArray("\"\"\r\n") << "";
        QTest::newRow("empty file") << QByteArray() << "0";
        QTest::newRow("only blanks") << QByteArray("   ") << "0";
        QTest::newRow("rest of file ignored") << QByteArray("\"a\"\r\n\"b\"\r\n") << "a";
        QTest::newRow("no closing quote") << QByteArray("\"open\r\nnext") << "open";
        QTest::newRow("comma inside quotes") << QByteArray("\"a,b\"") << "a,b";
        QTest::newRow("tab kept inside") << QByteArray("\"a\tb\"") << "a\tb";
        QTest::newRow("Windows-1252 bytes") << QByteArray("\"Mod\xE9\x80\"\r\n") << QStringLiteral("Mod\u00E9\u20AC");
        // A UTF-8 byte-order mark is three characters of text, which keep the quotes in.
        QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF\"12\"\r\n")
                                         << QStringLiteral("\u00EF\u00BB\u00BF\"12\"");
    }
    void modIdIsReadByItsRules()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, modId);
        QCOMPARE(parseModId(content), modId);
    }

    void modIdFileRoundTrips()
    {
        QTemporaryDir dir;
        const QString ini = dir.filePath(SettingsFile);
        QCOMPARE(readModId(ini), QStringLiteral("0")); // missing file
        QVERIFY(!writeModId(ini, QStringLiteral("7")));
        QCOMPARE(readFile(ini), QByteArray("\"7\"\r\n"));
        QVERIFY(!writeModId(ini, QStringLiteral("  ")));
        QCOMPARE(readModId(ini), QString()); // spaces only come back empty
        QVERIFY(!writeModId(ini, QStringLiteral(" 12\u00E9 ")));
        QCOMPARE(readFile(ini), QByteArray("\" 12\xE9 \"\r\n"));
        QCOMPARE(readModId(ini), QStringLiteral("12\u00E9"));
        QCOMPARE(writeModId(ini, QStringLiteral("a\u4E2D")),
                 "Cannot write " + QDir::toNativeSeparators(ini) +
                     QStringLiteral(": the Mod ID \"a\u4E2D\" holds \"\u4E2D\", which the file cannot carry."));
        QCOMPARE(readFile(ini), QByteArray("\" 12\xE9 \"\r\n"));
    }

    // The data directory: the option, the environment, beside the program when a store stands
    // there, else the user's. The window settings live beside a portable install.
    void placesAreChosenInOrder()
    {
        QTemporaryDir portable;
        QCOMPARE(chooseWindowSettingsFile(portable.path(), portable.path(), "/home/u/.config/tarn"),
                 QDir(portable.path()).filePath("tarn-windows.ini"));
        QCOMPARE(chooseWindowSettingsFile(portable.path() + "/data", portable.path(), "/home/u/.config/tarn"),
                 QStringLiteral("/home/u/.config/tarn/windows.ini"));
        DataDirectoryChoice choice{"/opt", "/env", portable.path(), "/home/u/.local/share/tarn"};
        QCOMPARE(chooseDataDirectory(choice), QStringLiteral("/opt"));
        choice.option.clear();
        QCOMPARE(chooseDataDirectory(choice), QStringLiteral("/env"));
        choice.environment.clear();
        QCOMPARE(chooseDataDirectory(choice), choice.userDirectory); // no store beside the program
        QVERIFY(writeFile(QDir(portable.path()).filePath(ClassStoreFile), ""));
        QCOMPARE(chooseDataDirectory(choice), portable.path());
    }

    // Missing stores are made once, with the starting rows; a class store made before the
    // class order index gets it when it is opened. No store is made under a plain file.
    void missingStoresAreMadeOnceWithStartingRows()
    {
        QTemporaryDir dir;
        const QString data = dir.filePath("new/nested");
        {
            Stores stores = openStores(data);
            QCOMPARE(listConfigurations(*stores.classDb), QStringList{"Example"});
            QCOMPARE(stores.refDb->scalar("select count(*) from item").toInt(), 8);
            QCOMPARE(stores.refDb->scalar("select count(*) from special").toInt(), 21);
            QCOMPARE(stores.refDb->scalar("select sum(s_id) from special").toLongLong(), (1LL << 21) - 1);
            QVERIFY(stores.refDb->scalar("select count(*) from weapon where kd_enabled = 1").toInt() > 1);
            QVERIFY(!QFile::exists(QDir(data).filePath(ClassStoreFile + ".new")));
            deleteConfiguration(*stores.classDb, QStringLiteral("Example"));
            stores.classDb->exec(QStringLiteral("drop index classdef_order"));
        }
        Stores again = openStores(data); // opened, not made again
        QVERIFY(listConfigurations(*again.classDb).isEmpty());
        QCOMPARE(rowsOf(*again.classDb, "select name from sqlite_master where name = 'classdef_order'"),
                 QStringList{"classdef_order"});
        QVERIFY_THROWS_EXCEPTION(StoreError, openStores(QDir(data).filePath(ClassStoreFile + "/data")));
    }

    void foreignFilesAreRefusedAndLeftAlone_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("said");
        QTemporaryDir other;
        Database(other.filePath("other.db"), Database::Open::CreateNew).exec("create table package (name text)");
        QTest::newRow("text as class store") << ClassStoreFile << QByteArray("not a database at all, just text\n")
                                             << ClassStoreFile + " is not a store of this program";
        QTest::newRow("text as reference store") << ReferenceStoreFile << QByteArray("garbage garbage garbage")
                                                 << ReferenceStoreFile + " is not a store of this program";
        Stores made = openStores(other.path());
        QTest::newRow("a store cut short") << ClassStoreFile << readFile(made.classDb->path()).left(4096)
                                           << ClassStoreFile + " is damaged: part of it cannot be read";
        QTest::newRow("database of another program") << ClassStoreFile << readFile(other.filePath("other.db"))
                                                     << "table \"package\" has no column \"package_name\"";
    }
    void foreignFilesAreRefusedAndLeftAlone()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(QString, said);
        QTemporaryDir dir;
        const QString path = dir.filePath(file);
        QVERIFY(writeFile(path, content));
        try {
            openStores(dir.path());
            QFAIL("a foreign file was taken for a store");
        } catch (const StoreError& error) {
            QVERIFY2(error.message().contains(said), qPrintable(error.message()));
        }
        QCOMPARE(readFile(path), content);
    }

    // A backup is made at most once an hour and the last twenty are kept; a restore puts
    // one back after keeping the stores as they were.
    void backupsAreMadeLimitedAndRestored()
    {
        QTemporaryDir dir;
        Stores stores = openStores(dir.path());
        const QDateTime nine(QDate(2026, 1, 1), QTime(9, 0));
        QCOMPARE(backUpStores(dir.path(), stores, nine), std::nullopt);
        QCOMPARE(backUpStores(dir.path(), stores, nine.addSecs(3599)), std::nullopt);
        QCOMPARE(listBackups(dir.path()), QStringList{"2026-01-01T09-00-00"});
        for (int hour = 1; hour <= 20; ++hour)
            QCOMPARE(backUpStores(dir.path(), stores, nine.addSecs(3600 * hour)), std::nullopt);
        const QStringList kept = listBackups(dir.path());
        QCOMPARE(kept.size(), 20);
        QCOMPARE(kept.first() + u'|' + kept.last(), "2026-01-02T05-00-00|2026-01-01T10-00-00");

        deleteConfiguration(*stores.classDb, "Example");
        restoreBackup(dir.path(), stores, kept.last(), nine.addDays(2));
        QCOMPARE(listConfigurations(*stores.classDb), QStringList{"Example"});
        const QStringList after = listBackups(dir.path());
        QCOMPARE(after.size(), 20);
        QCOMPARE(after.first(), "2026-01-03T09-00-00"); // the stores as they were before the restore
        restoreBackup(dir.path(), stores, after.first(), nine.addDays(3));
        QVERIFY(listConfigurations(*stores.classDb).isEmpty());
        QVERIFY_THROWS_EXCEPTION(StoreError, restoreBackup(dir.path(), stores, "1999-01-01T00-00-00", nine));

        // A backup that cannot be made is told, and nothing else changes.
        QVERIFY(QDir(dir.filePath("backups")).removeRecursively());
        QVERIFY(writeFile(dir.filePath("backups"), "in the way"));
        const std::optional<QString> failed = backUpStores(dir.path(), stores, nine.addDays(4));
        QVERIFY(failed && failed->startsWith("No backup of the stores was made: "));
    }
};

QTEST_GUILESS_MAIN(StartupTest)
#include "tst_startup.moc"
