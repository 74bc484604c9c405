// The class editor: its window and load, the pickers following the rows, storing,
// Add Class and Delete Class, text its columns can't hold, and its class file export.
#include "classes/ClassBindings.h"
#include "classes/frmClasses.h"
#include "config/frmConfig.h"
#include "core/AppState.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "store/Schema.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSet.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTableView>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

const QString Config = QStringLiteral("Class Test");
const QString NoClassLeft = QStringLiteral("You should add a new class before changing any fields");

// A fresh data directory, scripted dialogs and the class editor opened on it.
struct ClassEditorFixture {
    TempData data;
    ScriptedDialogs dialogs;
    std::unique_ptr<frmClasses> editor;

    void setReference(const QString& table, const QList<RefRow>& rows) { setReferenceRows(data.refDb(), table, rows); }
    void addClass(const QString& config, int number, const QVariantMap& columns = {})
    {
        insertClass(data.classDb(), config, number, columns);
    }

    // A new configuration holding classes of the given numbers.
    void addConfig(const QString& name, const QList<int>& numbers = {})
    {
        addConfiguration(data.classDb(), name);
        for (int number : numbers)
            addClass(name, number, {{QStringLiteral("class_name"), QStringLiteral("C%1").arg(number)}});
    }

    frmClasses& open(const QString& config)
    {
        data.state->currentConfig = config;
        editor = std::make_unique<frmClasses>(*data.state, dialogs);
        editor->show();
        return *editor;
    }

    template <typename T = QWidget> T* control(const QString& name)
    {
        T* found = editor->findChild<T*>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }
    QLineEdit* box(const QString& name) { return control<QLineEdit>(name); }
    QComboBox* picker(const QString& name) { return control<QComboBox>(name); }
    DataControl& nav() { return *control<DataControl>(QStringLiteral("dbClassDef")); }
    void press(const char* button) { QTest::mouseClick(control<QPushButton>(button), Qt::LeftButton); }

    // Chooses a picker entry as the author does, through the keyboard.
    void choose(const QString& pickerName, int index)
    {
        QComboBox* combo = picker(pickerName);
        while (combo->currentIndex() != index)
            QTest::keyClick(combo, combo->currentIndex() < index ? Qt::Key_Down : Qt::Key_Up);
    }

    // Replaces the text of a box as the author types it.
    void type(const QString& boxName, const QString& text)
    {
        QLineEdit* edit = box(boxName);
        edit->selectAll();
        QTest::keyClicks(edit, text);
        if (text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
    }

    QVariant column(const QString& config, int number, const QString& column)
    {
        return data.classDb().scalar(
            QStringLiteral("select %1 from classdef where package_name = ? and class_num = ?").arg(column),
            {config, number});
    }

    QList<int> classNumbers(const QString& config)
    {
        QList<int> numbers;
        for (const QString& number : rowsOf(
                 data.classDb(), "select class_num from classdef where package_name = ? order by class_num", {config}))
            numbers << number.toInt();
        return numbers;
    }
};

} // namespace

class ClassEditorTest : public QObject
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
        if (how == "Esc" || how == "Ctrl+W") {
            f->editor->activateWindow();
            if (!QTest::qWaitForWindowActive(f->editor.get()))
                return false;
            QTest::keySequence(f->editor.get(), QKeySequence(how));
            return !f->editor->isVisible();
        }
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

    // Every column but i9 has one bound control; the captions are the system's own.
    void bindingsAndCaptions()
    {
        f->addConfig(Config, {1});
        frmClasses& editor = f->open(Config);
        for (const ClassBinding& binding : classBindings())
            f->control(binding.control); // fails the test when the control is missing
        QStringList expected = schema::classColumnNames();
        expected.removeAll(QStringLiteral("i9"));
        QStringList bound = f->nav().boundColumns();
        expected.sort();
        bound.sort();
        QCOMPARE(bound, expected);

        QCOMPARE(editor.windowTitle(), QStringLiteral("KD TARN 1 - Class Configuration"));
        QCOMPARE(f->nav().caption(), QStringLiteral("Class Def"));
        QCOMPARE(plain(f->control<QPushButton>("AddClass")->text()), QStringLiteral("Add  Class"));
        QCOMPARE(plain(f->control<QPushButton>("Command1")->text()), QStringLiteral("Delete Class"));
        QCOMPARE(f->control<QLabel>("Label12")->text(), QStringLiteral("Blaster"));
        QStringList entries;
        for (QAction* menu : editor.menuBar()->actions()) {
            for (QAction* entry : menu->menu()->actions())
                entries << plain(menu->text()) + u'/' + plain(entry->text()) + (entry->isEnabled() ? "" : " off");
        }
        QCOMPARE(entries, QStringList({"File/Save As...", "File/Save Unprotected...", "Edit/Find Class...",
                                       "Edit/Undo Delete Class off", "View/Problems", "View/Class List",
                                       "View/Class File Preview"}));
        for (int n = 2; n <= 10; ++n)
            QCOMPARE(f->picker(QStringLiteral("w%1").arg(n))->accessibleName(), QStringLiteral("Weapon %1").arg(n));
        for (int n = 1; n <= 3; ++n)
            QCOMPARE(f->picker(QStringLiteral("g%1").arg(n))->accessibleName(), QStringLiteral("Grenade %1").arg(n));
    }

    // The k-th row by id fills box k-1; a box no row fills is hidden, and keeps its column.
    // A row not enabled (0 or 2; a missing value counts as 1) greys its box, which keeps its tick.
    void boxesFollowTheReferenceRows_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QVariant>("secondEnabled");
        QTest::addColumn<bool>("offered");
        QTest::newRow("3 items") << "item" << 3 << QVariant(1) << true;
        QTest::newRow("8 items, the second unset") << "item" << 8 << QVariant() << true;
        QTest::newRow("9 items, the second off") << "item" << 9 << QVariant(0) << false;
        QTest::newRow("5 specials, the second 2") << "special" << 5 << QVariant(2) << false;
        QTest::newRow("21 specials") << "special" << 21 << QVariant(1) << true;
        QTest::newRow("22 specials, the second off") << "special" << 22 << QVariant(0) << false;
    }
    void boxesFollowTheReferenceRows()
    {
        QFETCH(QString, table);
        QFETCH(int, rows);
        QFETCH(QVariant, secondEnabled);
        QFETCH(bool, offered);
        const int boxes = table == "item" ? 8 : 21;
        const QString boxName = table == "item" ? "Check1_" : "special_";
        QList<RefRow> refRows;
        for (int k = rows - 1; k >= 0; --k) // stored out of order
            refRows.append({qint64(1) << k, table + QString::number(k + 1), k == 1 ? secondEnabled : QVariant(1)});
        f->setReference(table, refRows);
        f->addConfig(Config);
        const QString lastColumn = table.left(1) + QString::number(boxes);
        f->addClass(Config, 1, {{lastColumn, 1}, {table.left(1) + "2", 1}});
        f->addClass(Config, 2);
        f->open(Config);
        QVERIFY(f->nav().moveNext()); // greyed stays greyed from row to row
        QVERIFY(f->nav().moveFirst());
        for (int i = 0; i < boxes; ++i) {
            QCheckBox* box = f->control<QCheckBox>(boxName + QString::number(i));
            const bool filled = i < rows;
            QCOMPARE(box->isVisible(), filled);
            QCOMPARE(box->property("Tag").toString(), filled ? QString::number(qint64(1) << i) : QStringLiteral("0"));
            if (filled)
                QCOMPARE(box->text(), table + QString::number(i + 1));
            QCOMPARE(box->isEnabled(), i != 1 || offered);
        }
        QVERIFY(f->control<QCheckBox>(boxName + "1")->isChecked());
        QVERIFY(f->control<QCheckBox>(boxName + QString::number(boxes - 1))->isChecked());
        f->type(QStringLiteral("fldClassName"), QStringLiteral("renamed"));
        QVERIFY(f->editor->close());
        QCOMPARE(f->column(Config, 1, lastColumn).toInt(), 1);
    }

    // The pickers offer the enabled rows in id order: 0, 3, 3, 7. An id the list lacks, a
    // disabled one among them, shows the first entry and takes its id when the row is left.
    void pickersFollowTheRowAndWriteTheHiddenBox_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("hidden");
        QTest::newRow("duplicated id: the last match") << QVariant(3) << 2 << "3";
        QTest::newRow("disabled id") << QVariant(9) << 0 << "0";
        QTest::newRow("missing value") << QVariant() << 0 << "0";
    }
    void pickersFollowTheRowAndWriteTheHiddenBox()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, position);
        QFETCH(QString, hidden);
        for (const QString table : {"weapon", "grenade"})
            f->setReference(
                table,
                {{7, "Seven"}, {9, "Off", 0}, {0, "Zero"}, {3, "Three a"}, {6, "Unset", QVariant()}, {3, "Three b"}});
        f->addConfig(Config);
        f->addClass(Config, 1, {{"w5", stored}, {"g2", stored}, {"w1", 7}});
        f->addClass(Config, 2, {{"w5", 7}, {"g2", 7}});
        f->open(Config);
        for (const QString name : {"w2", "w10", "g1", "g3"}) {
            QStringList entries;
            for (int i = 0; i < f->picker(name)->count(); ++i)
                entries << f->picker(name)->itemText(i) + u'=' + f->picker(name)->itemData(i).toString();
            QCOMPARE(entries, QStringList({"Zero=0", "Three a=3", "Three b=3", "Seven=7"}));
        }
        QVERIFY(f->picker("w2")->isEditable());
        QCOMPARE(f->picker("w5")->currentIndex(), position);
        QCOMPARE(f->picker("g2")->currentIndex(), position);
        QCOMPARE(f->box("dw5")->text(), hidden);
        QCOMPARE(f->box("dg2")->text(), hidden);
        QCOMPARE(f->column(Config, 1, "w5").toString(), stored.toString()); // looking alone stores nothing
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->picker("w5")->currentIndex(), 3);
        QCOMPARE(f->column(Config, 1, "w5").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "g2").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "w1").toInt(), 7);
    }

    void withNoEnabledWeaponTheSlotsKeepTheirIds()
    {
        f->setReference("weapon", {{4, "Off", 0}});
        f->addConfig(Config, {1, 2});
        f->addClass(Config, 3, {{"w2", 4}});
        f->open(Config);
        QVERIFY(f->nav().moveLast());
        QCOMPARE(f->picker("w2")->count(), 0);
        QCOMPARE(f->box("dw2")->text(), QStringLiteral("4"));
        QVERIFY(f->nav().moveFirst());
        QCOMPARE(f->column(Config, 3, "w2").toInt(), 4);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    void openingThroughTheConfigurationWindow()
    {
        f->addConfig(Config, {4});
        frmConfig config(*f->data.state, f->dialogs);
        config.findChild<QListWidget*>("classlist")->setCurrentRow(int(config.configNames().indexOf(Config)));
        QString seen;
        f->dialogs.onModal = [&](QWidget& window) {
            seen = window.objectName() + u'|' + window.windowTitle() + u'|' +
                   window.findChild<QLabel*>("Label31")->text() + u'|' +
                   window.findChild<QLineEdit*>("fldClassName")->text() + u'|' + (f->dialogs.busy ? "busy" : "idle");
        };
        QTest::mouseClick(config.findChild<QPushButton*>("btEdit"), Qt::LeftButton);
        QCOMPARE(seen, "frmClasses|KD TARN 1 - Class Configuration|" + Config + "|C4|idle");
        QCOMPARE(f->dialogs.modalWindows, QStringList{"frmClasses"});
    }
    void editsAreStoredWhenTheClassIsLeft_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("navigator") << "move";
        QTest::newRow("closing the window") << "close";
        QTest::newRow("Esc") << "Esc";
        QTest::newRow("Ctrl+W") << "Ctrl+W";
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

    // Ctrl+G goes to a class by number through the navigator: the edit on show is
    // stored on the way, and a number the set lacks is told and moves nothing.
    void goToClassMovesThroughTheNavigator_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        QTest::newRow("a number of the set") << " 5 "
                                             << "C5|Class 3 of 3"
                                             << "";
        QTest::newRow("a number the set lacks") << "4"
                                                << "edited|Class 1 of 3"
                                                << "There is no class number \"4\" in this configuration.";
        QTest::newRow("not a number") << "five"
                                      << "edited|Class 1 of 3"
                                      << "There is no class number \"five\" in this configuration.";
    }
    void goToClassMovesThroughTheNavigator()
    {
        QFETCH(QString, answer);
        QFETCH(QString, shown);
        QFETCH(QString, message);
        f->addConfig(Config, {1, 2, 5});
        f->open(Config);
        f->type("fldClassName", "edited");
        f->editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f->editor.get()));
        f->dialogs.inputAnswers << answer;
        QTest::keySequence(f->editor.get(), QKeySequence(Qt::CTRL | Qt::Key_G));
        QCOMPARE(f->dialogs.prompts, QStringList{"Go to Class|Class number to go to:"});
        QCOMPARE(f->box("fldClassName")->text() + u'|' + f->control<QLabel>("lblPosition")->text(), shown);
        QCOMPARE(f->dialogs.messages, message.isEmpty() ? QStringList{} : QStringList{message});
        QCOMPARE(f->column(Config, 1, "class_name").toString(), message.isEmpty() ? "edited" : "C1");
    }

    // With another program holding the store, a move is refused with the reason and the
    // editor stays on its class; once the store is free the same move works.
    void aMoveTheStoreCannotServeIsRefusedAndWorksLater()
    {
        f->data.state = AppState::open(f->data.dir.path(), std::chrono::milliseconds(50));
        f->addConfig(Config, {1, 2, 3});
        f->open(Config);
        QVERIFY(f->nav().storeChanges()); // the slots the pickers tracked: the move has nothing to store
        Database other(f->data.path("tarn_dat.db"), Database::Open::Existing);
        other.exec("BEGIN EXCLUSIVE");
        f->editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f->editor.get()));
        QTest::keySequence(f->editor.get(), QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY2(f->dialogs.messages.first().contains("is busy"), qPrintable(f->dialogs.messages.first()));
        QVERIFY(f->editor->isVisible());
        QCOMPARE(f->box("fldClassName")->text() + u'|' + f->control<QLabel>("lblPosition")->text(), "C1|Class 1 of 3");
        other.exec("COMMIT");
        QTest::keySequence(f->editor.get(), QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(f->box("fldClassName")->text() + u'|' + f->control<QLabel>("lblPosition")->text(), "C2|Class 2 of 3");
    }

    // Another program deletes the configuration under the open editor: the edit just typed
    // is told as not stored, the editor shows that no class is left, Save As refuses to
    // write the configuration that is no more, and the window closes.
    void aConfigurationDeletedElsewhereIsTold_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("told");
        QTest::newRow("with an edit on show") << "typed"
                                              << "The class on show is no longer in %1: another program "
                                                 "has deleted it. The edits on show were not stored.";
        QTest::newRow("with nothing typed") << ""
                                            << "The class to show is no longer in %1: another program has deleted it.";
    }
    void aConfigurationDeletedElsewhereIsTold()
    {
        QFETCH(QString, typed);
        QFETCH(QString, told);
        f->addConfig(Config, {1, 2, 3});
        f->open(Config);
        QVERIFY(f->nav().storeChanges()); // the slots the pickers tracked
        if (!typed.isEmpty())
            f->type("fldModel", typed);
        Database other(f->data.path("tarn_dat.db"), Database::Open::Existing);
        deleteConfiguration(other, Config);
        QVERIFY(!f->nav().moveNext());
        QCOMPARE(f->dialogs.messages, QStringList({told.arg(f->data.path("tarn_dat.db")),
                                                   "No class is left here: another program has deleted them all."}));
        QCOMPARE(f->control<QLabel>("lblPosition")->text(), QString());
        QVERIFY(!f->box("fldModel")->isEnabled() && !f->picker("w2")->isEnabled());
        QVERIFY(writeFile(target(), "old"));
        save("mnuSaveAs", target());
        QCOMPARE(f->dialogs.messages.last(), "There is no configuration named \"" + Config +
                                                 "\" (another program may have deleted it); nothing was written.");
        QCOMPARE(readFile(target()), "old");
        QVERIFY(f->editor->close());
    }

    // The problems of the class on show stand in the status bar, those of the whole
    // configuration in View > Problems, where a double-click goes to the class; Save As
    // tells how many warnings the file carries.
    void problemsAreToldWithoutADialog()
    {
        insertTestSet(f->data.classDb());
        f->data.classDb().exec("update classdef set maxcells = null where class_num = 5");
        f->open(QStringLiteral("Test Set"));
        auto* line = f->control<QLabel>("lblProblems");
        QCOMPARE(line->text(), QString());
        f->editor->findChild<QAction*>("mnuViewProblems")->trigger();
        auto* list = f->control<QListWidget>("lstProblems");
        const QString problem = "warning: \"Test Set\", class 5 \"Gunner\", cells limit: empty: the class file gets "
                                "an empty field here, and will not read back";
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->item(0)->text(), problem);
        emit list->itemActivated(list->item(0));
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Gunner"));
        QCOMPARE(line->text() + u'|' + line->toolTip(), "1 problem: cells limit|" + problem);
        save("mnuSaveAs", target());
        QCOMPARE(f->editor->statusBar()->currentMessage(),
                 "Wrote 2 classes to " + target() + ", with 1 warning (View > Problems)");
    }

    // Find goes to the next class whose name holds the text or whose number it is, from
    // the top again past the last, storing the edit on show; no match moves nothing.
    void findGoesToTheNextMatchingClass_data()
    {
        QTest::addColumn<QStringList>("searches");
        QTest::addColumn<QString>("shown"); // name, position and what the bar says
        QTest::newRow("part of a name, case ignored") << QStringList{"UNN"} << "Gunner|Class 3 of 3|";
        QTest::newRow("the next match, then the first again")
            << QStringList{"er", "er", "er"} << "Sniper|Class 2 of 3|";
        QTest::newRow("a class number") << QStringList{"2"} << "Sniper|Class 2 of 3|";
        QTest::newRow("no match") << QStringList{"zz"} << "edited|Class 1 of 3|No class matches \"zz\".";
    }
    void findGoesToTheNextMatchingClass()
    {
        QFETCH(QStringList, searches);
        QFETCH(QString, shown);
        f->addConfig(Config);
        f->addClass(Config, 1, {{"class_name", "Scout"}});
        f->addClass(Config, 2, {{"class_name", "Sniper"}});
        f->addClass(Config, 3, {{"class_name", "Gunner"}});
        f->open(Config);
        f->type("fldClassName", "edited");
        f->editor->findChild<QAction*>("mnuFindClass")->trigger();
        for (const QString& search : searches) {
            QLineEdit* box = f->control<QLineEdit>("findBox");
            box->setText(search);
            QTest::keyClick(box, Qt::Key_Return);
        }
        QCOMPARE(f->box("fldClassName")->text() + u'|' + f->control<QLabel>("lblPosition")->text() + u'|' +
                     f->control<QLabel>("lblFind")->text(),
                 shown);
        QCOMPARE(f->column(Config, 1, "class_name").toString(), shown.contains("No class") ? "Scout" : "edited");
    }

    // Undo Delete Class brings back the classes deleted in this window, the last first,
    // with every column as it was stored.
    void undoDeleteClassBringsBackEveryColumn()
    {
        insertTestSet(f->data.classDb());
        const QString rows = "select * from classdef where package_name = 'Test Set' order by class_num";
        const QStringList before = rowsOf(f->data.classDb(), rows);
        f->open(QStringLiteral("Test Set"));
        QVERIFY(f->nav().moveLast());
        f->press("Command1");
        f->press("Command1");
        QCOMPARE(classCount(f->data.classDb(), "Test Set"), 0);
        QAction* undo = f->editor->findChild<QAction*>("mnuUndoDeleteClass");
        undo->trigger();
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Light Scout"));
        undo->trigger();
        QVERIFY(!undo->isEnabled());
        QCOMPARE(rowsOf(f->data.classDb(), rows), before);
    }

    // The class list shows every class; a click goes there through the navigator, storing
    // the edit on show, and the list follows the edit.
    void aClickInTheClassListMovesAndStores()
    {
        insertTestSet(f->data.classDb());
        f->open(QStringLiteral("Test Set"));
        f->editor->findChild<QAction*>("mnuViewClassList")->trigger();
        auto* list = f->control<QTableView>("tblClasses");
        QCOMPARE(list->model()->rowCount(), 2);
        QCOMPARE(list->model()->index(1, 1).data().toString() + u'|' + list->model()->index(1, 6).data().toString(),
                 "Gunner|Super Shotgun, Machinegun, None, None, None, None, None, None, None");
        f->type("fldClassName", "Scout");
        list->sortByColumn(1, Qt::AscendingOrder); // the view's own order, by name: Gunner first
        emit list->clicked(list->model()->index(0, 1));
        QCOMPARE(f->box("fldClassName")->text(), QStringLiteral("Gunner"));
        QCOMPARE(f->column("Test Set", 1, "class_name").toString(), QStringLiteral("Scout"));
        QCOMPARE(list->model()->index(1, 1).data().toString(), QStringLiteral("Scout"));
        QCOMPARE(list->selectionModel()->selectedRows().value(0).row(), 0); // the class on show
    }

    // The panels open hidden the first time; which are shown is remembered with the window.
    void panelsShownAreRemembered()
    {
        f->addConfig(Config, {1});
        f->data.state->windowSettingsFile = f->data.path("windows.ini");
        f->open(Config);
        const auto shown = [&] {
            QStringList docks;
            for (const char* name : {"dockProblems", "dockClassList", "dockPreview"})
                docks << QString::number(f->control<QDockWidget>(name)->isVisible());
            return docks.join(u' ');
        };
        QCOMPARE(shown(), "0 0 0");
        f->editor->findChild<QAction*>("mnuViewClassList")->trigger();
        QVERIFY(f->editor->close());
        f->open(Config);
        QCOMPARE(shown(), "0 1 0");
    }

    // The preview shows what the export writes for the class on show, typed and not yet
    // stored included, in either form, and stores nothing.
    void thePreviewIsWhatTheExportWrites_data()
    {
        QTest::addColumn<bool>("protect");
        QTest::newRow("plain") << false;
        QTest::newRow("protected") << true;
    }
    void thePreviewIsWhatTheExportWrites()
    {
        QFETCH(bool, protect);
        insertTestSet(f->data.classDb());
        f->data.state->modId = QStringLiteral("12");
        f->open(QStringLiteral("Test Set"));
        f->editor->findChild<QAction*>("mnuViewPreview")->trigger();
        f->control<QCheckBox>("chkPreviewProtected")->setChecked(protect);
        const QString file = testDataPath(protect ? "test_set_protected.class" : "test_set_unprotected.class");
        QByteArrayList lines = readFile(file).split('\n').mid(2, 7); // the first class
        QStringList expected;
        for (QByteArray& line : lines) {
            line.chop(1); // its carriage return
            expected << (protect ? QString::fromLatin1((line + "\r").toHex(' ')) : QString::fromLatin1(line));
        }
        QCOMPARE(f->control<QPlainTextEdit>("txtPreview")->toPlainText(), expected.join(u'\n'));
        f->type("fldModel", "typed");
        QVERIFY(f->control<QPlainTextEdit>("txtPreview")
                    ->toPlainText()
                    .startsWith(protect ? QStringLiteral("0d\n") : QStringLiteral("\n[Light Scout]\ntyped ")));
        QCOMPARE(f->column("Test Set", 1, "model_name").toString(), QStringLiteral("scout"));
    }

    // The navigator's keys work from a text box, where the author's focus is; Esc in an
    // open list closes only the list.
    void keysDoWhatTheySayFromAnywhere_data()
    {
        QTest::addColumn<QString>("focus"); // a box, or a picker whose list is open
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QString>("shown"); // the position afterwards, or "closed"
        QTest::newRow("Ctrl+End in a text box") << "fldModel" << QStringList{"Ctrl+End"} << "Class 3 of 3";
        QTest::newRow("Ctrl+Home in a text box")
            << "fldModel" << QStringList{"Ctrl+End", "Ctrl+Home"} << "Class 1 of 3";
        QTest::newRow("Esc in a text box") << "fldModel" << QStringList{"Esc"} << "closed";
        QTest::newRow("Esc in an open list") << "w3" << QStringList{"Esc"} << "Class 1 of 3";
        QTest::newRow("Esc twice") << "w3" << QStringList{"Esc", "Esc"} << "closed";
    }
    void keysDoWhatTheySayFromAnywhere()
    {
        QFETCH(QString, focus);
        QFETCH(QStringList, keys);
        QFETCH(QString, shown);
        f->addConfig(Config, {1, 2, 3});
        f->open(Config);
        f->editor->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f->editor.get()));
        QWidget* target = f->control(focus);
        target->setFocus();
        if (auto* picker = qobject_cast<QComboBox*>(target)) {
            picker->showPopup();
            QTRY_VERIFY(QApplication::activePopupWidget());
        }
        for (const QString& key : keys) { // as the window system delivers them
            const QKeyCombination combination = QKeySequence(key)[0];
            QTest::keyClick(QApplication::activePopupWidget() ? QApplication::activePopupWidget()->windowHandle()
                                                              : f->editor->windowHandle(),
                            combination.key(), combination.keyboardModifiers());
        }
        QCOMPARE(f->editor->isVisible() ? f->control<QLabel>("lblPosition")->text() : "closed", shown);
    }

    void aNumberBoxRefusesWhatItsColumnCannotHold_data()
    {
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("how");
        const std::array<std::array<const char*, 4>, 3> rows{{{"Text1", "Class Num", "two", "move"},
                                                              {"fldSpeed", "Max Speed", "40000", "Esc"},
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

    // The highest number is read before the edits on show are stored: a number just
    // typed into Class Num is stored, but does not count. No class is added past the
    // highest number a class can have.
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
        QTest::newRow("number just typed")
            << Numbers{1, 2, 5, 6} << -1 << "10" << Numbers{2, 5, 6, 7, 10} << "Class # 7";
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
        const int added = name.sliced(QStringLiteral("Class #").size()).trimmed().toInt();
        QCOMPARE(f->column(Config, added, "class_name").toString(), name);
        QCOMPARE(f->box("Text1")->text() + u'|' + f->box("fldClassName")->text(), QString::number(added) + u'|' + name);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    // No question is asked, and edits waiting on the class go with it. The class after
    // the deleted one (the last one, at the end) is made current on the way, so its
    // slots are tracked and stored: an unknown id in w4 and a NULL in w5 become 0.
    void deleteClassShowsTheFirstClassAfterwards_data()
    {
        QTest::addColumn<QString>("move"); // to the class deleted, from the first
        QTest::addColumn<QList<int>>("left");
        QTest::addColumn<QStringList>("slotIds"); // w4|w5 of the classes left
        QTest::newRow("first") << "" << QList<int>{2, 3} << QStringList{"0|0", "99|<null>"};
        QTest::newRow("middle") << "next" << QList<int>{1, 3} << QStringList{"0|0", "0|0"};
        QTest::newRow("last") << "last" << QList<int>{1, 2} << QStringList{"0|0", "0|0"};
    }
    void deleteClassShowsTheFirstClassAfterwards()
    {
        QFETCH(QString, move);
        QFETCH(QList<int>, left);
        QFETCH(QStringList, slotIds);
        f->addConfig(Config);
        for (int number : {1, 2, 3})
            f->addClass(Config, number, {{"class_name", QStringLiteral("C%1").arg(number)}, {"w4", 99}});
        f->open(Config);
        if (!move.isEmpty())
            QVERIFY(move == "next" ? f->nav().moveNext() : f->nav().moveLast());
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
        QCOMPARE(rowsOf(f->data.classDb(), "select w4, w5 from classdef where package_name = ? order by class_num",
                        {Config}),
                 slotIds);
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
        QLabel* configName = f->control<QLabel>("Label31");
        QCOMPARE(configName->text(), name);
        // The label is read as the name it shows.
        QCOMPARE(QAccessible::queryAccessibleInterface(configName)->text(QAccessible::Name), name);
        f->press("Command1");
        QCOMPARE(f->dialogs.messages, QStringList{NoClassLeft});
        QVERIFY(f->classNumbers(name).isEmpty());
        QCOMPARE(f->control<QLabel>("Label31")->text() + u'|' + f->box("fldClassName")->text(), name + "|C7");
        QVERIFY(!f->box("fldClassName")->isEnabled());
        QVERIFY(f->control<QLabel>("lblPosition")->text().isEmpty());
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
        QCOMPARE(f->control<QLabel>("lblPosition")->text(), QStringLiteral("Class 2 of 2"));
        save(qPrintable(action), target());
        QCOMPARE(f->control<QLabel>("lblPosition")->text(), QStringLiteral("Class 1 of 2"));
        QCOMPARE(f->editor->statusBar()->currentMessage(), "Wrote 2 classes to " + target());
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
};

QTEST_MAIN(ClassEditorTest)
#include "tst_classes.moc"
