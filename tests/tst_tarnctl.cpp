#include "core/Stores.h"
#include "store/Database.h"
#include "support/TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace tarn;
using namespace tarn::test;

namespace
{

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// tarnctl, started with the arguments as given.
Outcome run(const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(QStringLiteral(TARNCTL_PATH), arguments);
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(60000);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

class TarnctlTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;

    QString data() const { return m_dir->filePath(QStringLiteral("data")); }
    QString inData(const QString& name) const { return QDir(data()).filePath(name); }
    QString file(const QString& name) const { return m_dir->filePath(name); }
    Database classStore() const { return Database(inData("tarn_dat.db"), Database::Open::Existing); }
    Outcome tarnctl(const QStringList& arguments, const QByteArray& input = {})
    {
        return run(QStringList{"--data-dir", data()} + arguments, input);
    }
    int count(const QString& sql) { return classStore().scalar(sql).toInt(); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        Stores stores = openStores(data());
        insertTestSet(*stores.classDb);
    }

    // One line on standard error says what and why; "-" is standard input. A usage error
    // ends with status 2 and a second line that points to the help.
    void problemsAreToldInOneLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("said");
        const auto row = [](const char* name, const QStringList& arguments, const QString& said, int status = 1,
                            const QByteArray& input = {}) {
            QTest::newRow(name) << arguments << input << status << said;
        };
        const auto usage = [&](const char* name, QStringList args) { row(name, args, "\nTry 'tarnctl --help'.\n", 2); };
        row("standard input no class file can be", {"import", "-", "zeros"}, "line 1 is longer than 32767 characters",
            1, QByteArray(8 * 1024 * 1024, '\0'));
        row("delete unknown", {"delete", "nobody"}, "no configuration is named \"nobody\"");
        row("copy unknown", {"copy", "nobody", "x"}, "nobody");
        row("export unknown", {"export", "nobody", "f.class"}, "nobody");
        row("import missing file", {"import", "/no/such/file.class", "x"}, "/no/such/file.class");
        row("empty mod id", {"modid", ""}, "empty Mod ID");
        row("bad record on standard input", {"import", "-", "x"},
            "tarnctl: Cannot import (standard input): line 3: Bad Class Record: ?", 1,
            classFile(ClassFileHeader + QByteArrayList{"?"} + classRecord("A]")));
        row("check of a file whose lines end with a line feed alone", {"check", "-"},
            "(standard input): The file's lines end with a line feed alone, which a class file does not allow: its "
            "lines end with a carriage return and a line feed, and only a carriage return ends a line.\n",
            1, classFile(ClassFileHeader + classRecord("A]"), "\n"));
        row("check names the line of a problem", {"check", "-"},
            "(standard input): line 7: max health \"abc\" is not a whole number from -32768 to 32767.\n", 1,
            classFile(ClassFileHeader + classRecord("A]", 4, "1 2 abc  0  0")));
        row("check of a file warns of a line feed in a name", {"check", "in.class"},
            "in.class: warning: line 3: a line feed without a carriage return before it does not end the line.\n", 0,
            classFile(ClassFileHeader + classRecord("A\nB]")));
        row("a file after --", {"check", "--", "-no.class"}, "cannot open -no.class");
        row("protect takes no code from 128 on", {"protect"},
            "tarnctl: line 2 holds the byte 128 at column 3, which a protected class file cannot carry\n", 1,
            "fine\nna\x80ve\n");
        usage("nothing", {});
        usage("unknown command", {"frobnicate"});
        usage("missing argument", {"copy", "only-one"});
        usage("too many", {"list", "extra"});
        usage("unknown option", {"--colour", "list"});
        usage("option on the wrong command", {"import", "a", "b", "--unprotected"});
        usage("json on the wrong command", {"new", "a", "--json"});
        usage("wait without a number", {"--wait", "soon", "list"});
        usage("negative wait", {"--wait", "-1", "list"});
        usage("help on an unknown command", {"help", "frobnicate"});
        usage("check of two things", {"check", "f.class", "--ref"});
        usage("check of nothing", {"check"});
        usage("strict on the wrong command", {"list", "--strict"});
    }
    void problemsAreToldInOneLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(int, status);
        QFETCH(QString, said);
        if (const qsizetype at = arguments.indexOf("in.class"); at >= 0) { // the input as a file
            QVERIFY(writeFile(file("in.class"), input));
            arguments[at] = file("in.class");
        }
        const Outcome outcome = status == 2 ? run(arguments) : tarnctl(arguments, input);
        QCOMPARE(outcome.status, status);
        QVERIFY2(outcome.err.contains(said.toUtf8()) && outcome.err.count('\n') == (status == 2 ? 2 : 1) &&
                     (status != 2 || outcome.err.startsWith("tarnctl: ")),
                 outcome.err.constData());
    }

    void writeFailuresLeaveTheOldFile_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("linked"); // a second link: written in place, never replaced
        QTest::newRow("export") << QStringList{"export", "Test Set", "old.class"} << "old.class" << false;
        QTest::newRow("export into a linked file")
            << QStringList{"export", "Test Set", "old.class"} << "old.class" << true;
        QTest::newRow("Set Mod ID") << QStringList{"modid", QString(2000, u'7')} << "tarn.ini" << false;
        QTest::newRow("Set Mod ID, linked") << QStringList{"modid", QString(2000, u'7')} << "tarn.ini" << true;
    }
    // A child whose files may not grow meets the failure of a write: it is told with the
    // system's reason, never killed by the signal, and the old file stays whole.
    void writeFailuresLeaveTheOldFile()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, target);
        QFETCH(bool, linked);
        const QString path = inData(target);
        const QByteArray old = "\"12\"\r\n" + QByteArray(30, 'x');
        QVERIFY(writeFile(path, old));
        if (linked)
            QCOMPARE(::link(QFile::encodeName(path).constData(), QFile::encodeName(file("other link")).constData()), 0);
        // Room for the old file but not for the new: 1 KiB may be written, the export takes more.
        for (int copy = 0; copy < 30; ++copy) // whole classes, so that the export stores nothing
            classStore().exec("insert into classdef select * from classdef where rowid = "
                              "(select min(rowid) from classdef where class_num = 5)");
        QProcess process;
        process.setWorkingDirectory(data());
        process.start(QStringLiteral("bash"), QStringList{"-c", "ulimit -f 1; exec \"$0\" \"$@\"",
                                                          QStringLiteral(TARNCTL_PATH), "--data-dir", data()} +
                                                  arguments);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 1);
        QVERIFY2(process.readAllStandardError().contains("File too large"), "the system's reason");
        QCOMPARE(readFile(path), old);
    }

    // What is not a regular file of one link is written into, never replaced.
    void exportWritesIntoSpecialTargets()
    {
        const QByteArray expected = readFile(testDataPath("test_set_unprotected.class"));
        QCOMPARE(tarnctl({"modid", " 12 "}).status, 0);
        QCOMPARE(tarnctl({"modid"}).out, "12\n");
        const auto exportTo = [&](const QString& to) { return tarnctl({"export", "Test Set", to, "--unprotected"}); };

        QCOMPARE(exportTo("-").out, expected);

        const QString fifo = file("pipe");
        QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        QProcess reader;
        reader.start(QStringLiteral("cat"), {fifo});
        QVERIFY(reader.waitForStarted());
        QCOMPARE(exportTo(fifo).status, 0);
        QVERIFY(reader.waitForFinished(60000));
        QCOMPARE(reader.readAllStandardOutput(), expected);
        QVERIFY(!QFileInfo(fifo).isFile());

        // Nobody reads: the wait is bounded, and the store stays free for others meanwhile.
        const QString unread = file("unread pipe");
        QCOMPARE(::mkfifo(QFile::encodeName(unread).constData(), 0600), 0);
        QProcess waiting;
        waiting.start(QStringLiteral(TARNCTL_PATH),
                      {"--data-dir", data(), "--wait", "3", "export", "Test Set", unread});
        QVERIFY(waiting.waitForStarted());
        // A wait shorter than the export's: its start-up reads the store for a moment.
        QCOMPARE(tarnctl({"--wait", "2", "new", "meanwhile"}).status, 0);
        QVERIFY(waiting.waitForFinished(60000));
        QCOMPARE(waiting.exitCode(), 1);
        QVERIFY2(waiting.readAllStandardError().contains("it is a named pipe that no program is reading"),
                 "the wait is told");

        QVERIFY(writeFile(file("linked"), "old"));
        QCOMPARE(::link(QFile::encodeName(file("linked")).constData(), QFile::encodeName(file("link2")).constData()),
                 0);
        QCOMPARE(exportTo(file("linked")).status, 0);
        QCOMPARE(readFile(file("link2")), expected);

        if (::geteuid() != 0)
            QSKIP("a device node of our own needs root");
        // The same devices as /dev/null and /dev/full, in our own folder: the system's are never the target.
        const QString null = file("null"), full = file("full");
        QCOMPARE(::mknod(QFile::encodeName(null).constData(), S_IFCHR | 0600, makedev(1, 3)), 0);
        QCOMPARE(::mknod(QFile::encodeName(full).constData(), S_IFCHR | 0600, makedev(1, 7)), 0);
        QCOMPARE(exportTo(null).status, 0);
        QVERIFY(!QFileInfo(null).isFile());
        const Outcome failed = exportTo(full);
        QCOMPARE(failed.status, 1);
        QVERIFY2(failed.err.contains("No space left on device"), failed.err.constData());
        // Standard output on the full device: status 1, and the slots the export tracked are not kept.
        classStore().exec("update classdef set w2 = 999");
        QProcess toFull;
        toFull.setStandardOutputFile(full);
        toFull.start(QStringLiteral(TARNCTL_PATH), {"--data-dir", data(), "export", "Test Set", "-"});
        QVERIFY(toFull.waitForFinished(60000));
        QCOMPARE(toFull.exitCode(), 1);
        QCOMPARE(count("select count(*) from classdef where w2 = 999"), 4);
    }

    // The stores, their journals and tarn.ini are known by their inode, whatever the path
    // says, and by their name before they exist.
    void exportNeverWritesOverItsOwnFiles_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("class store") << "tarn_dat.db";
        QTest::newRow("reference store, by another path") << "./../data/tarn_ref.db";
        QTest::newRow("reference store, by a link of another name") << "alias.db"; // made by the test
        QTest::newRow("settings") << "tarn.ini";
        QTest::newRow("a store's journal, by its name alone") << "tarn_dat.db-journal";
    }
    void exportNeverWritesOverItsOwnFiles()
    {
        QFETCH(QString, target);
        QCOMPARE(tarnctl({"modid", "12"}).status, 0);
        const QString path = inData(target);
        if (target == "alias.db")
            QVERIFY(QFile::link(inData("tarn_ref.db"), path));
        const QByteArray before = readFile(path);
        const Outcome outcome = tarnctl({"export", "Test Set", path});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.err.contains("one of the workbench's own files"), outcome.err.constData());
        QCOMPARE(readFile(path), before);
        QCOMPARE(QFileInfo::exists(path), !before.isEmpty());
    }

    // A store another program holds for two seconds is waited for, without --wait too;
    // a shorter wait, in seconds, ends with the store told as busy.
    void heldStoreIsWaitedFor_data()
    {
        QTest::addColumn<QStringList>("wait");
        QTest::addColumn<int>("status");
        QTest::newRow("the default wait") << QStringList{} << 0;
        QTest::newRow("three seconds") << QStringList{"--wait", "3"} << 0;
        QTest::newRow("a fifth of a second") << QStringList{"--wait", "0.2"} << 1;
    }
    void heldStoreIsWaitedFor()
    {
        QFETCH(QStringList, wait);
        QFETCH(int, status);
        Database holder = classStore();
        holder.exec(QStringLiteral("BEGIN EXCLUSIVE"));
        QProcess waiting;
        waiting.start(QStringLiteral(TARNCTL_PATH),
                      QStringList{"--data-dir", data()} + wait + QStringList{"new", "after"});
        if (status == 0) // else held until the end, so that the wait surely runs out
            QTimer::singleShot(2000, &waiting, [&] { holder.exec(QStringLiteral("ROLLBACK")); });
        QTRY_COMPARE_WITH_TIMEOUT(waiting.state(), QProcess::NotRunning, 60000);
        QCOMPARE(waiting.exitCode(), status);
        const QByteArray said = waiting.readAllStandardError();
        QCOMPARE(said, status == 0 ? QByteArray()
                                   : "tarnctl: " + inData("tarn_dat.db").toUtf8() +
                                         " is busy: another program is writing to it (database is locked). Close that "
                                         "program or wait until it is done, then try again.\n");
        if (status == 0) // listed in the main window's order
            QCOMPARE(tarnctl({"list"}).out, QByteArray("Example\nTest Set\nafter\n"));
    }

    // Status 0 means the file is complete and the tracked slots are stored; status 1 that
    // the old file is as it was and no row changed, even when a reader holds the store.
    void exitStatusTellsTheTruthUnderAReadersLock()
    {
        classStore().exec("update classdef set w2 = 999");
        QVERIFY(writeFile(file("old.class"), "old"));
        Database reader = classStore();
        reader.exec(QStringLiteral("BEGIN"));
        QCOMPARE(reader.scalar("select count(*) from classdef").toInt(), 4);
        const Outcome held = tarnctl({"--wait", "0", "export", "Test Set", file("old.class")});
        reader.exec(QStringLiteral("COMMIT"));
        QCOMPARE(held.status, 1);
        QVERIFY2(held.err.contains("is busy"), held.err.constData());
        QCOMPARE(readFile(file("old.class")), "old");
        QCOMPARE(count("select count(*) from classdef where w2 = 999"), 4);
        QCOMPARE(tarnctl({"--wait", "0", "export", "Test Set", file("old.class")}).status, 0);
        QCOMPARE(count("select count(*) from classdef where w2 = 999"), 2); // Example's rows were not exported
    }

    // Two first starts at once make one set of stores, which the later one uses.
    void racingFirstStartsShareOneSetOfStores()
    {
        for (int round = 0; round < 10; ++round) {
            const QString dir = file(QStringLiteral("race%1").arg(round));
            std::array<QProcess, 3> starts;
            for (QProcess& start : starts)
                start.start(QStringLiteral(TARNCTL_PATH), {"--data-dir", dir, "init", "-q"});
            for (QProcess& start : starts) {
                QVERIFY(start.waitForFinished(60000));
                const QByteArray said = start.readAllStandardError();
                QVERIFY2(start.exitCode() == 0 || said.contains("exists already; init touches nothing"), said);
            }
            QCOMPARE(run({"--data-dir", dir, "list"}).out, QByteArray("Example\n"));
            QCOMPARE(QDir(dir).entryList(QDir::Files), QStringList({"tarn_dat.db", "tarn_ref.db"}));
        }
    }

    // A tarn.ini that is no regular file reads as no Mod ID, never hangs, and is not written.
    void aSettingsFileThatIsNoFileReadsAsUnset()
    {
        const QString ini = inData("tarn.ini");
        QCOMPARE(::mkfifo(QFile::encodeName(ini).constData(), 0600), 0);
        QCOMPARE(tarnctl({"modid"}).out, QByteArray("0\n"));
        const Outcome refused = tarnctl({"modid", "5"});
        QCOMPARE(refused.status, 1);
        QVERIFY2(refused.err.contains("tarn.ini: it is not a regular file"), refused.err.constData());
        QCOMPARE(tarnctl({"export", "Test Set", file("out.class")}).status, 0);
        QVERIFY(readFile(file("out.class")).startsWith("\xD6\xB3\xA0\xB0\r\n")); // "V3 0", protected
        if (::geteuid() != 0)
            QSKIP("a device node of our own needs root");
        QVERIFY(QFile::remove(ini));
        QCOMPARE(::mknod(QFile::encodeName(ini).constData(), S_IFCHR | 0600, makedev(1, 5)), 0); // as /dev/zero
        QCOMPARE(tarnctl({"modid"}).out, QByteArray("0\n"));
    }

    // check --config and --ref find what an export would meet; warnings pass unless
    // --strict, errors fail; a strict export that would carry a warning writes nothing.
    void checksAndStrictExportsSetTheStatus_data()
    {
        QTest::addColumn<QString>("spoil"); // a statement on the class store, or on the reference store ("ref:")
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("said"); // on standard error, or standard output with --json
        const QStringList config{"check", "--config", "Test Set"};
        const QString weapon = "update classdef set w3 = 57 where class_num = 5";
        QTest::newRow("no problems") << "" << config << 0 << "";
        QTest::newRow("a warning") << weapon << config << 0
                                   << "tarnctl: warning: \"Test Set\", class 5 \"Gunner\", "
                                      "weapon 3: id 57 is no enabled weapon";
        QTest::newRow("a warning, strict") << weapon << config + QStringList{"--strict"} << 1 << "weapon 3";
        QTest::newRow("as JSON") << weapon << config + QStringList{"--json"} << 0 << "\"field\": \"weapon 3\"";
        const QString accent = "update classdef set class_name = 'Gunn\u00e9r' where class_num = 5";
        QTest::newRow("an error") << accent << config << 1 << "tarnctl: error: ";
        QTest::newRow("a warning in the plain form")
            << accent << config + QStringList{"--unprotected"} << 0 << "tarnctl: warning: ";
        QTest::newRow("reference tables")
            << "ref:update weapon set w_id = 2 where w_id = 3" << QStringList{"check", "--ref"} << 0
            << "weapon id: id 2 is used by 2 enabled weapons";
        QTest::newRow("reference tables, strict") << "ref:update weapon set w_id = 2 where w_id = 3"
                                                  << QStringList{"check", "--ref", "--strict"} << 1 << "weapon id";
        QTest::newRow("export with a warning")
            << weapon << QStringList{"export", "Test Set", "out.class"} << 0 << "tarnctl: warning: ";
        QTest::newRow("strict export with a warning")
            << weapon << QStringList{"export", "Test Set", "out.class", "--strict"} << 1
            << "tarnctl: the class file would carry 1 warning; a strict export writes nothing.";
    }
    void checksAndStrictExportsSetTheStatus()
    {
        QFETCH(QString, spoil);
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, said);
        if (spoil.startsWith("ref:"))
            Database(inData("tarn_ref.db"), Database::Open::Existing).exec(spoil.mid(4));
        else if (!spoil.isEmpty())
            classStore().exec(spoil);
        if (arguments.first() == "export")
            arguments[2] = file(arguments[2]);
        const Outcome outcome = tarnctl(arguments);
        QCOMPARE(outcome.status, status);
        const QByteArray told = arguments.contains("--json") ? outcome.out : outcome.err;
        QVERIFY2(said.isEmpty() ? told.isEmpty() : told.contains(said.toUtf8()), told.constData());
        if (arguments.first() == "export") { // written and tracked, or neither
            QCOMPARE(QFileInfo::exists(arguments[2]), status == 0);
            QCOMPARE(count("select count(*) from classdef where w3 = 57"), status);
        }
    }

    // delete and an import under a name in use keep a backup first, unless --no-backup;
    // one that cannot be made is told and the command goes on; restore puts one back.
    void backupsComeBeforeWhatCanLoseRows()
    {
        QCOMPARE(tarnctl({"--no-backup", "delete", "Example"}).status, 0);
        QCOMPARE(tarnctl({"backups"}).out, QByteArray());
        QCOMPARE(tarnctl({"import", testDataPath("test_set_protected.class"), "Fresh"}).out, "Import Complete\n");
        QCOMPARE(tarnctl({"backups"}).out, QByteArray());
        QCOMPARE(tarnctl({"delete", "Fresh"}).status, 0);
        const QByteArray when = tarnctl({"backups"}).out.trimmed();
        QCOMPARE(when.size(), qsizetype(19));
        QCOMPARE(tarnctl({"restore", when}).out, "Restored the backup of " + when + '\n');
        QCOMPARE(tarnctl({"list"}).out, QByteArray("Fresh\nTest Set\n"));

        QVERIFY(QDir(inData("backups")).removeRecursively());
        QVERIFY(writeFile(inData("backups"), "in the way"));
        const Outcome told = tarnctl({"delete", "Fresh"});
        QCOMPARE(told.status, 0);
        QVERIFY2(told.err.startsWith("tarnctl: warning: No backup of the stores was made: "), told.err.constData());
        QCOMPARE(tarnctl({"list"}).out, QByteArray("Test Set\n"));
    }

    // The whole help names every command; a command's help is its own.
    void helpIsTheCommandsOwn_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("told");
        const QStringList exportOnly{"tarnctl export NAME FILE [--unprotected]"};
        QTest::newRow("all") << QStringList{"--help"}
                             << QStringList{"init",   "list",   "new",     "delete",  "copy",
                                            "export", "import", "modid",   "protect", "unprotect",
                                            "check",  "--wait", "--quiet", "\"-\"",   "Exit status"};
        QTest::newRow("option") << QStringList{"export", "--help"} << exportOnly;
        QTest::newRow("help command") << QStringList{"help", "export"} << exportOnly;
    }
    void helpIsTheCommandsOwn()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, told);
        const Outcome outcome = run(arguments);
        QCOMPARE(outcome.status, 0);
        for (const QString& text : told)
            QVERIFY2(outcome.out.contains(text.toUtf8()), qPrintable(text));
        QCOMPARE(outcome.out.contains("tarnctl import"), arguments.first() == "--help");
    }

    // tarnctl never makes stores but through init, and tells what is missing.
    void storesAreMadeOnlyByInit_data()
    {
        QTest::addColumn<QStringList>("present");
        QTest::addColumn<QString>("said");
        QTest::newRow("no directory") << QStringList{}
                                      << "no Tarn stores in %1 (run the workbench once, or `tarnctl init`)";
        QTest::newRow("class store only")
            << QStringList{"tarn_dat.db"} << "%1/tarn_ref.db is missing, though tarn_dat.db is there";
        QTest::newRow("reference store only")
            << QStringList{"tarn_ref.db"} << "%1/tarn_dat.db is missing, though tarn_ref.db is there";
    }
    void storesAreMadeOnlyByInit()
    {
        QFETCH(QStringList, present);
        QFETCH(QString, said);
        const QString dir = file("other");
        for (const QString& store : present) {
            QVERIFY(QDir().mkpath(dir));
            QVERIFY(QFile::copy(inData(store), QDir(dir).filePath(store)));
        }
        const QStringList before = QDir(dir).entryList(QDir::Files);
        const Outcome listed = run({"--data-dir", dir, "list"});
        QCOMPARE(listed.status, 1);
        QCOMPARE(listed.err, ("tarnctl: " + said.arg(dir) + '\n').toUtf8());
        QCOMPARE(QDir(dir).entryList(QDir::Files), before);

        const Outcome init = run({"--data-dir", dir, "init", "--quiet"});
        QCOMPARE(init.status, present.isEmpty() ? 0 : 1);
        QCOMPARE(init.out, QByteArray());
        const QStringList made{"tarn_dat.db", "tarn_ref.db"};
        QCOMPARE(QDir(dir).entryList(QDir::Files), present.isEmpty() ? made : before);
        if (present.isEmpty())
            QCOMPARE(run({"--data-dir", dir, "init"}).status, 1); // existing stores are never touched
    }

    // Names reach the store as typed, a leading dash after "--" and blanks too. A name in use
    // twice is listed once, its classes counted once; --quiet keeps the errors.
    void namesAreListedAsTypedAndQuietKeepsErrors()
    {
        QCOMPARE(tarnctl({"new", "--", "-dash "}).status, 0);
        QCOMPARE(tarnctl({"copy", "Test Set", " spaced "}).status, 0);
        QCOMPARE(count("select count(*) from classdef where package_name = ' spaced '"), 2);
        QCOMPARE(tarnctl({"new", "Empty"}).status, 0);
        const Outcome quiet = tarnctl({"-q", "import", testDataPath("test_set_protected.class"), "Test Set"});
        QCOMPARE(quiet.status, 0);
        QCOMPARE(quiet.out, QByteArray());
        QCOMPARE(tarnctl({"list"}).out, QByteArray(" spaced \n-dash \nEmpty\nExample\nTest Set\n"));
        const QJsonArray list = QJsonDocument::fromJson(tarnctl({"list", "--json"}).out).array();
        QCOMPARE(list.size(), 5);
        QCOMPARE(list[2].toObject(), (QJsonObject{{"name", "Empty"}, {"classes", 0}, {"package_rows", 1}}));
        QCOMPARE(list[4].toObject(), (QJsonObject{{"name", "Test Set"}, {"classes", 4}, {"package_rows", 2}}));
        QCOMPARE(tarnctl({"--quiet", "delete", "nobody"}).err,
                 QByteArray("tarnctl: no configuration is named \"nobody\"\n"));
    }

    // The filters pass the bytes through the protection the class file tests check code by
    // code: every line keeps its length and its ending, and code 0 stays where it stood.
    // Each row is read both ways: protect gives the second text, unprotect the first.
    void filtersPassLinesThrough_data()
    {
        QTest::addColumn<QByteArray>("plain");
        QTest::addColumn<QByteArray>("shielded");
        QTest::newRow("NUL at start, middle and end")
            << QByteArray("\0a\0b\0\r\n\0\n\0\0", 11) << QByteArray("\0\xE1\0\xE2\0\r\n\0\n\0\0", 11);
        QTest::newRow("every kind of line end")
            << QByteArray("V3 12\r\nTest Set\r\n\r\nlast\nno ending")
            << QByteArray("\xd6\xb3\xa0\xb1\xb2\r\n\xd4\xe5\xf3\xf4\xa0\xd3\xe5\xf4\r\n\r\n"
                          "\xec\xe1\xf3\xf4\n\xee\xef\xa0\xe5\xee\xe4\xe9\xee\xe7");
        QTest::newRow("127 the last code protect takes") << QByteArray("\x7F\r\n") << QByteArray("\xFF\r\n");
    }
    void filtersPassLinesThrough()
    {
        QFETCH(QByteArray, plain);
        QFETCH(QByteArray, shielded);
        for (const auto& [filter, input, output] :
             {std::tuple{"protect", plain, shielded}, {"unprotect", shielded, plain}}) {
            const Outcome outcome = run({filter}, input);
            QCOMPARE(outcome.status, 0);
            QCOMPARE(outcome.out, output);
        }
    }
};

QTEST_GUILESS_MAIN(TarnctlTest)
#include "tst_tarnctl.moc"
