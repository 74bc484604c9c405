// The class editor's storing, Add Class and Delete Class, and what it does with
// text its columns can't hold.
#include "tst_classes_fixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

using namespace tarn;
using namespace tarn::test;

namespace
{

const QString Config = QStringLiteral("Edit Test");
const QString NoClassLeft = QStringLiteral("You should add a new class before changing any fields");

QList<int> numbersOf(const QString& text)
{
    QList<int> numbers;
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts))
        numbers << part.toInt();
    return numbers;
}

} // namespace

class ClassEditorEditTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditorFixture> f;

    void clickAdd() { QTest::mouseClick(f->control<QPushButton>("AddClass"), Qt::LeftButton); }
    void clickDelete() { QTest::mouseClick(f->control<QPushButton>("Command1"), Qt::LeftButton); }

    // Leaves the class on show the way a test row names; true when it was left.
    bool leave(const QString& how)
    {
        if (how == "move")
            return f->nav().moveNext();
        if (how == "close")
            return f->editor->close();
        const int before = f->nav().recordCount();
        clickAdd();
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
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("C1")); // nothing stored yet
        QVERIFY(leave(how));
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("Sniper"));
        QVERIFY(f->column(Config, 1, "maxshells").isNull());
        QCOMPARE(f->column(Config, 1, "decoyskin").toInt(), -3);
        QCOMPARE(f->column(Config, 1, "s5").toInt(), 1);
        QCOMPARE(f->column(Config, 1, "w4").toInt(), 4); // the default pickers hold the ids 0, 2, 3, 4, ...
        QCOMPARE(f->column(Config, 1, "g2").toInt(), 1);
        QVERIFY(f->column(Config, 1, "w1").isNull());
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    void typingInAPickerChoosesNothing()
    {
        f->addConfig(Config, {1, 2});
        f->open(Config);
        QComboBox* w2 = f->picker("w2");
        w2->lineEdit()->selectAll();
        QTest::keyClicks(w2->lineEdit(), "Railgun");
        QTest::keyClick(w2->lineEdit(), Qt::Key_Return);
        QTest::keyClick(w2->lineEdit(), Qt::Key_Tab);
        QCOMPARE(f->box("dw2")->text(), QStringLiteral("0"));
        QVERIFY(f->nav().moveNext());
        QVERIFY(f->nav().moveFirst());
        QCOMPARE(w2->currentText(), QStringLiteral("None")); // the next row shown overwrites the typing
        QCOMPARE(f->column(Config, 1, "w2").toInt(), 0);
    }

    void aChoiceGoesWithADeletedClass()
    {
        f->addConfig(Config, {1, 2});
        f->open(Config);
        f->choose("w3", 2);
        f->type("fldModel", "lost");
        clickDelete();
        QCOMPARE(f->classNumbers(Config), QList<int>{2});
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("C2"));
        QVERIFY(f->column(Config, 2, "w3").isNull());
        QVERIFY(f->column(Config, 2, "model_name").isNull());
    }

    void aNumberBoxRefusesWhatItsColumnCannotHold_data()
    {
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("how");
        QTest::newRow("letters in Class Num, move") << "Text1"
                                                    << "Class Num"
                                                    << "two"
                                                    << "move";
        QTest::newRow("letters in Class Num, add") << "Text1"
                                                   << "Class Num"
                                                   << "x1"
                                                   << "add";
        QTest::newRow("speed too high, close") << "fldSpeed"
                                               << "Max Speed"
                                               << "40000"
                                               << "close";
        QTest::newRow("health too low, move") << "fldHealth"
                                              << "Max Health"
                                              << "-32769"
                                              << "move";
        QTest::newRow("decoy skin fraction, add") << "fldDecoySkin"
                                                  << "Decoy Skin # (blue)"
                                                  << "1.5"
                                                  << "add";
        QTest::newRow("slugs letters, close") << "maxslugs"
                                              << "Slugs"
                                              << "lots"
                                              << "close";
        QTest::newRow("cells too high, move") << "maxcells"
                                              << "Cells"
                                              << "99999"
                                              << "move";
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
        QVERIFY2(f->dialogs.messages[0].contains(field) && f->dialogs.messages[0].contains('"' + text + '"'),
                 qPrintable(f->dialogs.messages[0]));
        QCOMPARE(f->box(boxName)->text(), text);
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("kept"));
        QCOMPARE(f->classNumbers(Config), QList<int>({1, 2}));
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("C1"));
        QVERIFY(f->editor->isVisible());

        f->type(boxName, "12");
        QVERIFY(leave(how));
        QCOMPARE(f->column(Config, boxName == "Text1" ? 12 : 1, "class_name").toString(), QStringLiteral("kept"));
        QCOMPARE(f->dialogs.messages.size(), 1);
    }

    void addClassNumbersAfterTheHighest_data()
    {
        QTest::addColumn<QString>("numbers");
        QTest::addColumn<int>("deleteAt"); // position deleted first, -1 for none
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("name");
        QTest::newRow("1, 2, 5") << "1,2,5" << -1 << "1,2,5,6"
                                 << "Class # 6";
        QTest::newRow("delete 3 of 1, 2, 3") << "1,2,3" << 2 << "1,2,3"
                                             << "Class # 3";
        QTest::newRow("delete 1 of 1, 2, 3") << "1,2,3" << 0 << "2,3,4"
                                             << "Class # 4";
        QTest::newRow("delete 2 of 1, 2, 3") << "1,2,3" << 1 << "1,3,4"
                                             << "Class # 4";
        QTest::newRow("negative numbers") << "-9,-5" << -1 << "-9,-5,-4"
                                          << "Class #-4";
        QTest::newRow("up to the highest number") << "32766" << -1 << "32766,32767"
                                                  << "Class # 32767";
    }

    void addClassNumbersAfterTheHighest()
    {
        QFETCH(QString, numbers);
        QFETCH(int, deleteAt);
        QFETCH(QString, expected);
        QFETCH(QString, name);
        f->addConfig(Config, numbersOf(numbers));
        f->addConfig("Other", {40});
        f->open(Config);
        if (deleteAt >= 0) {
            for (int i = 0; i < deleteAt; ++i)
                QVERIFY(f->nav().moveNext());
            clickDelete();
        }
        clickAdd();
        const QList<int> want = numbersOf(expected);
        QCOMPARE(f->classNumbers(Config), want);
        QCOMPARE(f->classNumbers("Other"), QList<int>{40});
        const int added = *std::max_element(want.begin(), want.end());
        QCOMPARE(f->column(Config, added, "class_name").toString(), name);
        QCOMPARE(f->box("Text1")->text(), QString::number(added)); // the new class is on show
        QCOMPARE(f->box("fldClassName")->text(), name);
        QCOMPARE(f->picker("w9")->currentIndex(), 0);
        QCOMPARE(f->box("dw9")->text(), QStringLiteral("0"));
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(!f->dialogs.busy);
    }

    void addClassCountsANumberJustTyped()
    {
        f->addConfig(Config, {1, 2});
        f->open(Config);
        f->type("Text1", "9");
        clickAdd();
        QCOMPARE(f->classNumbers(Config), QList<int>({2, 9, 10}));
    }

    void addClassAtTheHighestNumberAddsNothing()
    {
        f->addConfig(Config, {1, 32767});
        f->open(Config);
        clickAdd();
        QCOMPARE(f->classNumbers(Config), QList<int>({1, 32767}));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY(f->dialogs.messages[0].contains("32767"));
        QVERIFY(!f->dialogs.busy);
    }

    void aConfigurationWithNoClassGetsItsFirstOnOpening()
    {
        f->addConfig(Config);
        f->open(Config);
        QCOMPARE(f->classNumbers(Config), QList<int>{1});
        QCOMPARE(f->column(Config, 1, "class_name").toString(), QStringLiteral("Class # 1"));
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Class # 1"));
        QCOMPARE(f->control<QLabel>("Label31")->text(), Config);
        QVERIFY(f->box("fldModel")->isEnabled());
        QVERIFY(!f->dialogs.busy);
    }

    void deleteClassShowsTheFirstClassAfterwards_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("shown");
        QTest::newRow("first") << 0 << "2,3"
                               << "C2";
        QTest::newRow("middle") << 1 << "1,3"
                                << "C1";
        QTest::newRow("last") << 2 << "1,2"
                              << "C1";
    }

    void deleteClassShowsTheFirstClassAfterwards()
    {
        QFETCH(int, position);
        QFETCH(QString, left);
        QFETCH(QString, shown);
        f->addConfig(Config, {1, 2, 3});
        f->open(Config);
        for (int i = 0; i < position; ++i)
            QVERIFY(f->nav().moveNext());
        clickDelete();
        QCOMPARE(f->classNumbers(Config), numbersOf(left));
        QCOMPARE(f->box("fldClassName")->text(), shown);
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(f->dialogs.prompts.isEmpty()); // no question before a delete
        QVERIFY(f->nav().moveNext());
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("C%1").arg(numbersOf(left).last()));
    }

    void deletingTheOnlyClassLeavesAnEmptySetUntilAddClass()
    {
        f->addConfig(Config, {7});
        f->open(Config);
        clickDelete();
        QCOMPARE(f->dialogs.messages, QStringList{NoClassLeft});
        QVERIFY(f->classNumbers(Config).isEmpty());
        QVERIFY(!f->box("fldClassName")->isEnabled());
        QVERIFY(!f->picker("w2")->isEnabled());
        clickDelete(); // nothing left to delete: the advice again, and no harm
        QCOMPARE(f->dialogs.messages, QStringList({NoClassLeft, NoClassLeft}));

        clickAdd();
        QCOMPARE(f->classNumbers(Config), QList<int>{1});
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Class # 1"));
        QVERIFY(f->box("fldClassName")->isEnabled());
        QVERIFY(f->picker("w2")->isEnabled());
        f->type("fldModel", "after");
        clickDelete();
        QVERIFY(f->editor->close()); // an empty configuration is kept, and gets a class at the next opening
        QCOMPARE(f->data.classDb().scalar("select count(*) from package where package_name = ?", {Config}).toInt(), 1);
        f->open(Config);
        QCOMPARE(f->classNumbers(Config), QList<int>{1});
        QVERIFY(f->column(Config, 1, "model_name").isNull());
    }

    void aNameWithApostrophesReachesOnlyItsOwnClasses()
    {
        const QString name = QStringLiteral("O'Brien's'; delete from classdef; --");
        f->addConfig(name, {2});
        f->addConfig("O", {8});
        f->open(name);
        QCOMPARE(f->control<QLabel>("Label31")->text(), name);
        QCOMPARE(f->nav().recordCount(), 1);
        clickAdd();
        f->type("fldModel", "quoted");
        clickDelete();
        QCOMPARE(f->classNumbers(name), QList<int>{2});
        QCOMPARE(f->classNumbers("O"), QList<int>{8});
        QVERIFY(f->dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(ClassEditorEditTest)
#include "tst_classes_edit.moc"
