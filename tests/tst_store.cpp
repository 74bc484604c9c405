#include "classfile/ExportCommand.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/StoreError.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QBuffer>
#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

// The dynaset's set, the store's own refusals, the boxes' text as column values, and the
// data control bound to a dynaset. The dynaset's moves and deletes are tested through the
// real windows.
class StoreTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<Database> m_db;
    ScriptedDialogs m_dialogs;

private slots:
    void init()
    {
        m_dialogs = {};
        QFile::remove(m_dir.filePath("ref.db"));
        m_db = std::make_unique<Database>(m_dir.filePath("ref.db"), Database::Open::CreateNew);
        schema::create(*m_db, schema::referenceTables());
    }

    // The set is the statement's, fixed when opened: values are read fresh at each look, and
    // a row added stands at the end, the current row staying, until a requery. On an empty
    // set the row added waits behind the end, with no current row, until a move.
    void recordsetKeepsItsSetUntilRequery()
    {
        m_db->exec(QStringLiteral("insert into weapon (w_id, w_name, kd_enabled) values (20, 'b', 1), (10, 'a', 1)"));
        Recordset rs(*m_db, {QStringLiteral("weapon"), QStringLiteral("kd_enabled = 1"), QStringLiteral("w_id"),
                             QStringLiteral("weapon")});
        rs.movePrevious();
        QVERIFY(rs.bof() && !rs.hasCurrent());
        rs.moveFirst();
        m_db->exec(QStringLiteral("update weapon set w_name = 'renamed', kd_enabled = 0 where w_id = 10"));
        rs.addNew({{"w_id", 1}, {"w_name", "first by id"}, {"kd_enabled", 1}});
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("renamed"));
        QCOMPARE(rs.recordCount(), 3);
        rs.moveLast();
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("first by id"));
        QVERIFY(rs.value("w_damage").isNull()); // unset columns are missing values
        rs.requery();
        QCOMPARE(rs.recordCount(), 2);
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("first by id"));
        rs.deleteCurrent(); // the next row moves into its place, but is not current until a move
        QVERIFY_THROWS_EXCEPTION(StoreError, rs.value("w_name"));

        Recordset none(*m_db, {QStringLiteral("weapon"), QStringLiteral("w_id > 100"), {}, {}});
        QVERIFY(none.isEmpty() && none.eof());
        none.addNew({{"w_id", 200}});
        QVERIFY(!none.hasCurrent());
        none.moveLast();
        QCOMPARE(none.value("w_id").toInt(), 200);
    }

    // A box's text becomes the value of its column, or is refused: both bounds of each kind
    // of number, from inside and from outside. The store's own check agrees on every whole
    // number and on letters, so that no other program can store what a box refuses.
    void textFromBoxesBecomesColumnValues_data()
    {
        QTest::addColumn<QString>("column"); // table.column
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("empty is missing") << "weapon.w_id"
                                          << "" << true << QVariant();
        QTest::newRow("lowest") << "weapon.w_id"
                                << "-32768" << true << QVariant(qlonglong(-32768));
        QTest::newRow("highest") << "weapon.w_id"
                                 << "32767" << true << QVariant(qlonglong(32767));
        QTest::newRow("too low") << "weapon.w_id"
                                 << "-32769" << false << QVariant();
        QTest::newRow("too high") << "weapon.w_id"
                                  << "32768" << false << QVariant();
        QTest::newRow("letters") << "weapon.w_id"
                                 << "abc" << false << QVariant();
        QTest::newRow("fraction") << "weapon.w_id"
                                  << "1.5" << false << QVariant();
        QTest::newRow("kd_enabled beyond 16 bits") << "special.kd_enabled"
                                                   << "40000" << false << QVariant();
        QTest::newRow("long top") << "item.i_id"
                                  << "2147483647" << true << QVariant(qlonglong(2147483647));
        QTest::newRow("long over") << "item.i_id"
                                   << "2147483648" << false << QVariant();
        QTest::newRow("long bottom") << "item.i_id"
                                     << "-2147483648" << true << QVariant(qlonglong(-2147483648LL));
        QTest::newRow("long under") << "item.i_id"
                                    << "-2147483649" << false << QVariant();
        QTest::newRow("text kept as typed") << "weapon.w_name"
                                            << " a b " << true << QVariant(" a b ");
    }
    void textFromBoxesBecomesColumnValues()
    {
        QFETCH(QString, column);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(QVariant, value);
        const QString table = column.section(u'.', 0, 0), name = column.section(u'.', 1);
        const auto result = columnValueFromText(schema::kindOf(table, name), text);
        QCOMPARE(result.has_value(), accepted);
        if (accepted)
            QCOMPARE(*result, value);
        if (text.isEmpty() || text.contains(u'.'))
            return; // the store's check lets a fraction through; the box alone refuses it
        const QString insert = QStringLiteral("insert into %1 (%2) values ('%3')").arg(table, name, text);
        if (accepted)
            m_db->exec(insert);
        else
            QVERIFY_THROWS_EXCEPTION(StoreError, m_db->exec(insert));
    }

    // A configuration name is bound as typed: quotes and statement text are stored,
    // listed, copied, exported and deleted as they stand, and reach no other rows.
    void quotedNameIsTakenAsTyped()
    {
        TempData data;
        const QString name = QStringLiteral("O'Brien'); drop table classdef; --");
        const QString copy = name + QStringLiteral(" ' or 1=1 --");
        const QString others = QStringLiteral("select * from classdef where package_name = 'Example'");
        const QStringList example = rowsOf(data.classDb(), others);
        insertClass(data.classDb(), name, 1, {{"class_name", "Quoted"}});
        QCOMPARE(listConfigurations(data.classDb()), (QStringList{"Example", name}));
        QCOMPARE(countClasses(data.classDb(), name), 1);
        copyConfiguration(data.classDb(), name, copy);
        QCOMPARE(rowsOf(data.classDb(), "select class_name from classdef where package_name = ?", {copy}),
                 QStringList{"Quoted"});
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        const ExportRequest request{
            .configName = name, .modId = "0", .protectOutput = false, .target = {}, .ownFiles = {}};
        QCOMPARE(exportConfiguration({data.classDb(), data.refDb()}, request, file).error, std::nullopt);
        QCOMPARE(file.data().split('\n').mid(1, 3), (QByteArrayList{name.toLatin1() + '\r', "\r", "[Quoted]\r"}));
        deleteConfiguration(data.classDb(), name);
        QCOMPARE(listConfigurations(data.classDb()), (QStringList{"Example", copy}));
        QCOMPARE(countClasses(data.classDb(), name), 0);
        QCOMPARE(rowsOf(data.classDb(), others), example);
    }

    void storeRefusalIsShownAndTheRowKept()
    {
        // A form over the item table, whose name box holds an edit the store refuses.
        TempData data;
        QWidget window;
        auto* name = new QLineEdit(&window);
        auto* control = new DataControl(&window);
        control->setDialogs(m_dialogs);
        control->bindText(new QLineEdit(&window), QStringLiteral("i_id"), QStringLiteral("Item ID"));
        control->bindText(name, QStringLiteral("i_name"), QStringLiteral("Items Name"));
        control->bindCheck(new QCheckBox(&window), QStringLiteral("kd_enabled"), QStringLiteral("Enabled"));
        control->open(data.refDb(), {QStringLiteral("item"), {}, QStringLiteral("i_id"), QStringLiteral("item")});
        data.refDb().exec(QStringLiteral("create trigger refuse before update on item "
                                         "begin select raise(abort, 'item is locked'); end"));
        name->setText(QStringLiteral("Changed"));
        QVERIFY(!control->moveNext());
        QCOMPARE(m_dialogs.messages.size(), 1);
        QVERIFY2(m_dialogs.messages[0].startsWith(QStringLiteral("The row could not be stored: ")) &&
                     m_dialogs.messages[0].contains(QStringLiteral("item is locked")),
                 qPrintable(m_dialogs.messages[0]));
        QCOMPARE(name->text(), QStringLiteral("Changed"));
    }

    // A control opened before its window gave it Dialogs would swallow the refusals it
    // must tell, so it stops the program at once and names itself. The stop is watched
    // from a second run of this test program, kept inside our temporary folder.
    void controlWithoutDialogsStopsTheProgram()
    {
        if (qEnvironmentVariableIsSet("TARN_OPEN_WITHOUT_DIALOGS")) {
            DataControl control;
            control.setObjectName(QStringLiteral("dbOrphan"));
            control.open(*m_db, {QStringLiteral("item"), {}, QStringLiteral("i_id"), QStringLiteral("item")});
            return;
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TARN_OPEN_WITHOUT_DIALOGS"), QStringLiteral("1"));
        environment.insert(QStringLiteral("TMPDIR"), m_dir.path());
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setWorkingDirectory(m_dir.path());
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("controlWithoutDialogsStopsTheProgram")});
        QVERIFY(child.waitForFinished(60000));
        const QByteArray said = child.readAll();
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QVERIFY2(said.contains("DataControl dbOrphan was opened before its window gave it Dialogs"), said.constData());
    }
};

QTEST_MAIN(StoreTest)
#include "tst_store.moc"
