// The class editor's storing, Add Class and Delete Class, and what it does with
// text its columns can't hold.
#include "tst_classes_fixture.h"

#include <QCheckBox>
#include <QLabel>

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

    // A number just typed into Class Num is stored first, and counts.
    void addClassNumbersAfterTheHighest_data()
    {
        using Numbers = QList<int>;
        QTest::addColumn<Numbers>("numbers");
        QTest::addColumn<int>("deleteAt"); // position deleted first, -1 for none
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Numbers>("expected");
        QTest::addColumn<QString>("name");
        QTest::newRow("1, 2, 5") << Numbers{1, 2, 5} << -1 << "" << Numbers{1, 2, 5, 6} << "Class # 6";
        QTest::newRow("delete 3 of 1, 2, 3") << Numbers{1, 2, 3} << 2 << "" << Numbers{1, 2, 3} << "Class # 3";
        QTest::newRow("delete 2 of 1, 2, 3") << Numbers{1, 2, 3} << 1 << "" << Numbers{1, 3, 4} << "Class # 4";
        QTest::newRow("number just typed") << Numbers{1, 2} << -1 << "9" << Numbers{2, 9, 10} << "Class # 10";
        QTest::newRow("negative numbers") << Numbers{-9, -5} << -1 << "" << Numbers{-9, -5, -4} << "Class #-4";
        QTest::newRow("up to the highest") << Numbers{32766} << -1 << "" << Numbers{32766, 32767} << "Class # 32767";
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
        const int added = *std::max_element(expected.begin(), expected.end());
        QCOMPARE(f->column(Config, added, "class_name").toString(), name);
        QCOMPARE(f->box("Text1")->text() + u'|' + f->box("fldClassName")->text(), QString::number(added) + u'|' + name);
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(!f->dialogs.busy);
    }

    void addClassAtTheHighestNumberAddsNothing()
    {
        f->addConfig(Config, {1, 32767});
        f->open(Config);
        f->press("AddClass");
        QCOMPARE(f->classNumbers(Config), QList<int>({1, 32767}));
        QCOMPARE(f->dialogs.messages, QStringList{"No class can be added: class number 32767 is the highest a class "
                                                  "can have, and this configuration already uses it."});
        QVERIFY(!f->dialogs.busy);
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
};

QTEST_MAIN(ClassEditorEditTest)
#include "tst_classes_edit.moc"
