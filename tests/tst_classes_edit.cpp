// The class editor's storing, Add Class and Delete Class, what it does with text its
// columns can't hold, and its class file export.
#include "support/TestSet.h"
#include "tst_classes_fixture.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>

using namespace tarn;
using namespace tarn::test;

namespace
{

const QString Config = QStringLiteral("Edit Test");
const QString NoClassLeft = QStringLiteral("You should add a new class before changing any fields");

} // namespace

class ClassEditorEditTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditorFixture> f;

    // Leaves the class on show the way a test row names; true when it was left.
    bool leave(const QString& how)
    {
        if (how == "move")
            return f->nav().moveNext();
        if (how == "close")
            return f->editor->close();
        const int before = f->nav().recordCount();
        f->press("AddClass");
        return f->nav().recordCount() == before + 1;
    }

    QString target() { return f->data.path(QStringLiteral("out.class")); }
    void save(const char* action, const QString& file)
    {
        f->dialogs.fileAnswers << file;
        f->editor->findChild<QAction*>(action)->trigger();
    }
    // The editor on "Test Set", whose class file is in tests/data, with Mod ID 12.
    void openTestSet()
    {
        insertTestSet(f->data.classDb());
        f->data.state->modId = QStringLiteral("12");
        f->open(QStringLiteral("Test Set"));
    }

private slots:
    void init() { f = std::make_unique<ClassEditorFixture>(); }

    void editsAreStoredWhenTheClassIsLeft_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("navigator") << "move";
        QTest::newRow("closing the window") << "close";
        QTest::newRow("Add Class") << "add";
    }
    void editsAreStoredWhenTheClassIsLeft()
    {
        QFETCH(QString, how);
        f->addConfig(Config, {1, 2});
        f->open(Config);
        f->type("fldClassName", "Sniper");
        f->type("maxshells", "");
        f->type("fldDecoySkin", "-3");
        QTest::mouseClick(f->control<QCheckBox>("special_4"), Qt::LeftButton, {}, QPoint(6, 9));
        f->choose("w4", 3);
        f->choose("g2", 1);
        QLineEdit* typedIn = f->picker("w2")->lineEdit(); // typing in a picker chooses nothing
        typedIn->selectAll();
        QTest::keyClicks(typedIn, "Railgun");
        QTest::keyClick(typedIn, Qt::Key_Return);
        QCOMPARE(f->box("dw2")->text(), QStringLiteral("0"));
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("C1")); // nothing stored yet
        QVERIFY(leave(how));
        // The default pickers hold the ids 0, 2, 3, 4, ...
        QCOMPARE(rowsOf(f->data.classDb(),
                        "select class_name, maxshells, decoyskin, s5, w4, g2, w1, w2 from classdef "
                        "where package_name = ? and class_num = 1",
                        {Config}),
                 QStringList{"Sniper|<null>|-3|1|4|1|<null>|0"});
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    void aNumberBoxRefusesWhatItsColumnCannotHold_data()
    {
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("how");
        const std::array<std::array<const char*, 4>, 3> rows{{{"Text1", "Class Num", "two", "move"},
                                                              {"fldSpeed", "Max Speed", "40000", "close"},
                                                              {"fldDecoySkin", "Decoy Skin # (blue)", "1.5", "add"}}};
        for (const auto& [box, field, text, how] : rows)
            QTest::addRow("%s \"%s\", %s", field, text, how) << box << field << text << how;
    }
    void aNumberBoxRefusesWhatItsColumnCannotHold()
    {
        QFETCH(QString, boxName);
        QFETCH(QString, field);
        QFETCH(QString, text);
        QFETCH(QString, how);
        f->addConfig(Config, {1, 2});
        f->open(Config);
        f->type("fldClassName", "kept");
        f->type(boxName, text);
        QVERIFY(!leave(how));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY2(f->dialogs.messages[0].startsWith(field + " cannot be \"" + text + "\""),
                 qPrintable(f->dialogs.messages[0]));
        QCOMPARE(f->box(boxName)->text() + u'|' + f->box("fldClassName")->text(), text + "|kept");
        QCOMPARE(f->classNumbers(Config), QList<int>({1, 2}));
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("C1"));
        QVERIFY(f->editor->isVisible());

        f->type(boxName, "12");
        QVERIFY(leave(how));
        QCOMPARE(f->column(Config, boxName == "Text1" ? 12 : 1, "class_name").toString(), QStringLiteral("kept"));
        QCOMPARE(f->dialogs.messages.size(), 1);
    }

    // A number just typed into Class Num is stored first, and counts; no class is added
    // past the highest number a class can have.
    void addClassNumbersAfterTheHighest_data()
    {
        using Numbers = QList<int>;
        QTest::addColumn<Numbers>("numbers");
        QTest::addColumn<int>("deleteAt"); // position deleted first, -1 for none
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Numbers>("expected");
        QTest::addColumn<QString>("name"); // of the class added; empty when none is
        QTest::newRow("1, 2, 5") << Numbers{1, 2, 5} << -1 << "" << Numbers{1, 2, 5, 6} << "Class # 6";
        QTest::newRow("delete 3 of 1, 2, 3") << Numbers{1, 2, 3} << 2 << "" << Numbers{1, 2, 3} << "Class # 3";
        QTest::newRow("delete 2 of 1, 2, 3") << Numbers{1, 2, 3} << 1 << "" << Numbers{1, 3, 4} << "Class # 4";
        QTest::newRow("number just typed") << Numbers{1, 2} << -1 << "9" << Numbers{2, 9, 10} << "Class # 10";
        QTest::newRow("negative numbers") << Numbers{-9, -5} << -1 << "" << Numbers{-9, -5, -4} << "Class #-4";
        QTest::newRow("up to the highest") << Numbers{32766} << -1 << "" << Numbers{32766, 32767} << "Class # 32767";
        QTest::newRow("none past the highest") << Numbers{1, 32767} << -1 << "" << Numbers{1, 32767} << "";
    }
    void addClassNumbersAfterTheHighest()
    {
        QFETCH(QList<int>, numbers);
        QFETCH(int, deleteAt);
        QFETCH(QString, typed);
        QFETCH(QList<int>, expected);
        QFETCH(QString, name);
        f->addConfig(Config, numbers);
        f->addConfig("Other", {40});
        f->open(Config);
        for (int i = 0; i < deleteAt; ++i)
            QVERIFY(f->nav().moveNext());
        if (deleteAt >= 0)
            f->press("Command1");
        if (!typed.isEmpty())
            f->type("Text1", typed);
        f->press("AddClass");
        QCOMPARE(f->classNumbers(Config), expected);
        QCOMPARE(f->classNumbers("Other"), QList<int>{40});
        QVERIFY(!f->dialogs.busy);
        if (name.isEmpty()) {
            QCOMPARE(f->dialogs.messages, QStringList{"No class can be added: class number 32767 is the highest a "
                                                      "class can have, and this configuration already uses it."});
            return;
        }
        const int added = *std::max_element(expected.begin(), expected.end());
        QCOMPARE(f->column(Config, added, "class_name").toString(), name);
        QCOMPARE(f->box("Text1")->text() + u'|' + f->box("fldClassName")->text(), QString::number(added) + u'|' + name);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    // No question is asked, and edits waiting on the class go with it.
    void deleteClassShowsTheFirstClassAfterwards_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QList<int>>("left");
        QTest::newRow("first") << 0 << QList<int>{2, 3};
        QTest::newRow("middle") << 1 << QList<int>{1, 3};
        QTest::newRow("last") << 2 << QList<int>{1, 2};
    }
    void deleteClassShowsTheFirstClassAfterwards()
    {
        QFETCH(int, position);
        QFETCH(QList<int>, left);
        f->addConfig(Config, {1, 2, 3});
        f->open(Config);
        for (int i = 0; i < position; ++i)
            QVERIFY(f->nav().moveNext());
        f->choose("w3", 2);
        const QVariant chosen = f->picker("w3")->currentData();
        f->type("fldModel", "lost");
        f->press("Command1");
        QCOMPARE(f->classNumbers(Config), left);
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("C%1").arg(left.first()));
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(f->dialogs.prompts.isEmpty());
        QCOMPARE(f->data.classDb()
                     .scalar("select count(*) from classdef where package_name = ? and (w3 = ? or model_name = 'lost')",
                             {Config, chosen})
                     .toInt(),
                 0);
        QVERIFY(f->nav().moveNext());
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("C%1").arg(left.last()));
    }

    // An emptied configuration is kept, and gets its first class at the next opening.
    // Its name is bound as typed: no other configuration's classes are touched.
    void deletingTheOnlyClassLeavesAnEmptySetUntilAddClass()
    {
        const QString name = QStringLiteral("O'Brien's'; delete from classdef; --");
        f->addConfig(name, {7});
        f->addConfig("O", {8});
        f->open(name);
        QCOMPARE(f->control<QLabel>("Label31")->text(), name);
        f->press("Command1");
        QCOMPARE(f->dialogs.messages, QStringList{NoClassLeft});
        QVERIFY(f->classNumbers(name).isEmpty());
        QVERIFY(!f->box("fldClassName")->isEnabled());
        QVERIFY(!f->picker("w2")->isEnabled());
        f->press("Command1"); // nothing left to delete: the advice again, and no harm
        QCOMPARE(f->dialogs.messages, QStringList({NoClassLeft, NoClassLeft}));

        f->press("AddClass");
        QCOMPARE(f->classNumbers(name), QList<int>{1});
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Class # 1"));
        QVERIFY(f->box("fldClassName")->isEnabled() && f->picker("w2")->isEnabled());
        f->type("fldModel", "after");
        f->press("Command1");
        QVERIFY(f->editor->close());
        QCOMPARE(f->data.classDb().scalar("select count(*) from package where package_name = ?", {name}).toInt(), 1);
        f->open(name);
        QCOMPARE(rowsOf(f->data.classDb(),
                        "select class_num, class_name, model_name from classdef where package_name = ?", {name}),
                 QStringList{"1|Class # 1|<null>"});
        QCOMPARE(f->classNumbers("O"), QList<int>{8});
        QVERIFY(!f->dialogs.busy);
    }

    // Save As and Save Unprotected.
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
        openTestSet();
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
        openTestSet();
        f->nav().moveLast();
        save("mnuSaveAs", QString());
        QVERIFY(!QFile::exists(target()));
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Gunner"));
        QVERIFY(f->data.state->protectOutput); // the menu entry set it all the same
    }

    // Edits waiting on the class on show are stored first; one the store refuses stops the export.
    void waitingEditsAreStoredFirst()
    {
        openTestSet();
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
        openTestSet();
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
        openTestSet();
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

QTEST_MAIN(ClassEditorEditTest)
#include "tst_classes_edit.moc"
