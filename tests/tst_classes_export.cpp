#include "support/TestSet.h"
#include "tst_classes_fixture.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QPushButton>

using namespace tarn;
using namespace tarn::test;

class ClassEditorExportTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditorFixture> f;

    QString target() { return f->data.path(QStringLiteral("out.class")); }
    void save(const char* action, const QString& file)
    {
        f->dialogs.fileAnswers << file;
        f->editor->findChild<QAction*>(action)->trigger();
    }

private slots:
    void init()
    {
        f = std::make_unique<ClassEditorFixture>();
        insertTestSet(f->data.classDb());
        f->data.state->modId = QStringLiteral("12");
        f->open(QStringLiteral("Test Set"));
    }

    void writesTheClassFileInEitherForm_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("protectOutput");
        QTest::newRow("Save As") << "mnuSaveAs" << testDataPath("test_set_protected.class") << true;
        QTest::newRow("Save Unprotected")
            << "mnuSaveUnprotected" << testDataPath("test_set_unprotected.class") << false;
    }
    void writesTheClassFileInEitherForm()
    {
        QFETCH(QString, action);
        QFETCH(QString, expected);
        QFETCH(bool, protectOutput);
        f->nav().moveLast();
        save(qPrintable(action), target());
        QCOMPARE(f->dialogs.fileFilters, QStringList{"Class Config (*.class)|*.class|All Files (*.*)|*.*"});
        QCOMPARE(readFile(target()), readFile(expected));
        QCOMPARE(f->data.state->protectOutput, protectOutput);
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Light Scout")); // the first class is on show
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(!f->dialogs.busy);
    }

    void cancelTouchesNothingAndKeepsTheClassOnShow()
    {
        f->nav().moveLast();
        save("mnuSaveAs", QString());
        QVERIFY(!QFile::exists(target()));
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Gunner"));
        QVERIFY(f->data.state->protectOutput); // the menu entry set it all the same
    }

    // Edits waiting on the class on show are stored first; one the store refuses stops the export.
    void waitingEditsAreStoredFirst()
    {
        f->type(QStringLiteral("fldArmor"), QStringLiteral("lots"));
        save("mnuSaveUnprotected", target());
        QVERIFY(!QFile::exists(target()));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY(f->dialogs.messages[0].startsWith(QStringLiteral("Max Armor cannot be \"lots\"")));
        QCOMPARE(f->box("fldArmor")->text(), QStringLiteral("lots"));
        f->type(QStringLiteral("fldArmor"), QStringLiteral("7"));
        f->type(QStringLiteral("fldClassName"), QStringLiteral("Heavy Scout"));
        save("mnuSaveUnprotected", target());
        QVERIFY(readFile(target()).contains("\r\n[Heavy Scout]\r\n"));
        QCOMPARE(f->column(QStringLiteral("Test Set"), 1, QStringLiteral("class_name")).toString(),
                 QStringLiteral("Heavy Scout"));
    }

    void refusedExportIsToldAndLeavesTheOldFile()
    {
        QVERIFY(writeFile(target(), "old"));
        f->nav().moveLast();
        f->box(QStringLiteral("fldModel"))->setText(QStringLiteral("gunnér")); // typed or pasted alike
        save("mnuSaveAs", target());
        QCOMPARE(readFile(target()), QByteArray("old"));
        QCOMPARE(f->dialogs.messages, QStringList{QStringLiteral("Class \"Gunner\": the model name \"gunnér\" holds "
                                                                 "\"é\", which a protected class file cannot carry.")});
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Gunner")); // still on the class to correct
        save("mnuSaveUnprotected", target());
        QVERIFY(readFile(target()).contains("gunn\xe9r"));
    }

    // tarnctl and the workbench share one export: the same bytes and the same rows after it.
    void workbenchAndTarnctlExportAlike()
    {
        f->addClass(QStringLiteral("Test Set"), 9, {{"class_name", "Odd"}, {"w4", 99}, {"g2", 77}});
        f->editor.reset();
        const QDir copy(f->data.path(QStringLiteral("copy")));
        QVERIFY(copy.mkpath(QStringLiteral(".")));
        for (const char* name : {"tarn_dat.db", "tarn_ref.db"})
            QVERIFY(QFile::copy(f->data.path(name), copy.filePath(name)));
        QVERIFY(writeFile(copy.filePath(QStringLiteral("tarn.ini")), "\"12\"\r\n"));

        f->open(QStringLiteral("Test Set"));
        save("mnuSaveAs", target());
        f->editor.reset();

        const QString cliTarget = f->data.path(QStringLiteral("cli.class"));
        QCOMPARE(QProcess::execute(QStringLiteral(TARNCTL_PATH),
                                   {"--data-dir", copy.path(), "export", "Test Set", cliTarget}),
                 0);
        QCOMPARE(readFile(cliTarget), readFile(target()));
        const QString allRows = QStringLiteral("select * from classdef order by rowid");
        Database cliStore(copy.filePath(QStringLiteral("tarn_dat.db")), Database::Open::Existing);
        QCOMPARE(rowsOf(cliStore, allRows), rowsOf(f->data.classDb(), allRows));
        QCOMPARE(f->column(QStringLiteral("Test Set"), 9, QStringLiteral("w4")).toInt(), 0); // tracked and stored
    }
};

QTEST_MAIN(ClassEditorExportTest)
#include "tst_classes_export.moc"
