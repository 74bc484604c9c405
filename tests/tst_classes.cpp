// The class editor: its window and load, the pickers following the rows, Add Class and
// Delete Class, moving through the classes, its panels, and its class file export.
#include "classes/frmClasses.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "support/WindowFixture.h"
#include "toolkit/DataControl.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTableView>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

const QString Config = QStringLiteral("Class Test");
const QString NoClassLeft = QStringLiteral("You should add a new class before changing any fields");

// The class editor on a fresh data directory, and the class rows it is tested on.
struct ClassEditor : WindowFixture {
    Database& db() { return data.classDb(); }
    // A new configuration holding classes of the given numbers, named "C<number>".
    void addConfig(const QString& name, const QList<int>& numbers)
    {
        for (int number : numbers)
            insertClass(db(), name, number, {{QStringLiteral("class_name"), QStringLiteral("C%1").arg(number)}});
    }
    // The editor on Config, holding classes of the given numbers.
    frmClasses& openOn(const QList<int>& numbers)
    {
        addConfig(Config, numbers);
        return open(Config);
    }
    frmClasses& open(const QString& config)
    {
        return static_cast<frmClasses&>(WindowFixture::open(Window::Classes, config));
    }
    QVariant column(const QString& config, int number, const QString& column)
    {
        return db().scalar(
            QStringLiteral("select %1 from classdef where package_name = ? and class_num = ?").arg(column),
            {config, number});
    }
    QList<int> classNumbers(const QString& config)
    {
        QList<int> numbers;
        for (const QString& number :
             rowsOf(db(), "select class_num from classdef where package_name = ? order by class_num", {config}))
            numbers << number.toInt();
        return numbers;
    }
    QString shown() { return text("fldClassName") + u'|' + control<QLabel>("lblPosition")->text(); }
    // The editor on "Test Set", whose class file is in tests/data, with Mod ID 12.
    void openTestSet()
    {
        insertTestSet(db());
        data.state->modId = QStringLiteral("12");
        open(QStringLiteral("Test Set"));
    }
};

} // namespace

class ClassEditorTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditor> f;

    QString target() { return f->data.path(QStringLiteral("out.class")); }
    void save(const QString& action, const QString& file)
    {
        f->dialogs.fileAnswers << file;
        f->trigger(action);
    }

private slots:
    void init() { f = std::make_unique<ClassEditor>(); }

    // Each box shows its own column: a class whose every column holds a value of its own,
    // and a pattern of ticks no shift repeats.
    void eachControlShowsItsOwnColumn()
    {
        const QList<std::pair<QString, QString>> shownBy{
            {"fldClassName", "class_name"}, {"fldModel", "model_name"},  {"fldSkin1", "skin_name1"},
            {"fldSkin2", "skin_name2"},     {"Text1", "class_num"},      {"fldArmor", "max_armor"},
            {"fldSpeed", "max_speed"},      {"fldHealth", "max_health"}, {"fldDecoySkin", "decoyskin"},
            {"maxbullets", "maxbullets"},   {"maxshells", "maxshells"},  {"maxrockets", "maxrockets"},
            {"maxgrenades", "maxgrenades"}, {"maxcells", "maxcells"},    {"maxslugs", "maxslugs"}};
        const QStringList ticked{"i1", "i2", "i4", "i7", "s1", "s3", "s4", "s8", "s13", "s20"};
        QVariantMap row;
        QStringList expected;
        for (const auto& [box, column] : shownBy) {
            row.insert(column, 11 + row.size());
            expected << box + u'=' + row.value(column).toString();
        }
        for (const QString& column : ticked)
            row.insert(column, 1);
        insertClass(f->db(), Config, row.value("class_num").toInt(), row);
        f->open(Config);
        QStringList seen;
        for (const auto& [box, column] : shownBy)
            seen << box + u'=' + f->text(box);
        for (const auto& [box, column, count] : {std::tuple{"Check1_", "i", 8}, std::tuple{"special_", "s", 21}}) {
            for (int k = 1; k <= count; ++k) { // box k - 1 shows column k
                const QString name = box + QString::number(k - 1);
                expected << name + u'=' + QString::number(ticked.contains(column + QString::number(k)));
                seen << name + u'=' + QString::number(f->control<QCheckBox>(name)->isChecked());
            }
        }
        QCOMPARE(seen, expected);
    }

    // Every command stands in its menu, and Undo Delete Class waits for a delete.
    void menus()
    {
        frmClasses& editor = f->openOn({1});
        QStringList entries;
        for (QAction* menu : editor.menuBar()->actions()) {
            for (QAction* entry : menu->menu()->actions())
                entries << plain(menu->text()) + u'/' + plain(entry->text()) + (entry->isEnabled() ? "" : " off");
        }
        QCOMPARE(entries, QStringList({"File/Save As...", "File/Save Unprotected...", "Edit/Find Class...",
                                       "Edit/Undo Delete Class off", "View/Problems", "View/Class List",
                                       "View/Class File Preview"}));
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
        setReferenceRows(f->data.refDb(), table, refRows);
        const QString lastColumn = table.left(1) + QString::number(boxes);
        insertClass(f->db(), Config, 1, {{lastColumn, 1}, {table.left(1) + "2", 1}});
        insertClass(f->db(), Config, 2);
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
        QVERIFY(f->window->close());
        QCOMPARE(f->column(Config, 1, lastColumn).toInt(), 1);
    }

    // The pickers offer the enabled rows in id order: 0, 3, 3, 7. An id the list lacks, a
    // disabled one among them, shows the first entry and takes its id when the row is left;
    // with no row enabled the pickers are empty and the slots keep their ids.
    void pickersFollowTheRowAndWriteTheHiddenBox_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<bool>("noneEnabled");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("hidden");
        QTest::newRow("duplicated id: the last match") << QVariant(3) << false << 2 << "3";
        QTest::newRow("disabled id") << QVariant(9) << false << 0 << "0";
        QTest::newRow("missing value") << QVariant() << false << 0 << "0";
        QTest::newRow("no row enabled") << QVariant(9) << true << -1 << "9";
    }
    void pickersFollowTheRowAndWriteTheHiddenBox()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, noneEnabled);
        QFETCH(int, position);
        QFETCH(QString, hidden);
        for (const QString table : {"weapon", "grenade"})
            setReferenceRows(f->data.refDb(), table,
                             noneEnabled ? QList<RefRow>{{9, "Off", 0}}
                                         : QList<RefRow>{{7, "Seven"},
                                                         {9, "Off", 0},
                                                         {0, "Zero"},
                                                         {3, "Three a"},
                                                         {6, "Unset", QVariant()},
                                                         {3, "Three b"}});
        insertClass(f->db(), Config, 1, {{"w5", stored}, {"g2", stored}, {"w1", 7}});
        insertClass(f->db(), Config, 2, {{"w5", 7}, {"g2", 7}});
        f->open(Config);
        for (const QString name : {"w2", "w10", "g1", "g3"}) {
            QStringList entries;
            for (int i = 0; i < f->picker(name)->count(); ++i)
                entries << f->picker(name)->itemText(i) + u'=' + f->picker(name)->itemData(i).toString();
            QCOMPARE(entries,
                     noneEnabled ? QStringList() : QStringList({"Zero=0", "Three a=3", "Three b=3", "Seven=7"}));
        }
        QVERIFY(f->picker("w2")->isEditable());
        QCOMPARE(f->picker("w5")->currentIndex(), position);
        QCOMPARE(f->picker("g2")->currentIndex(), position);
        QCOMPARE(f->text("dw5"), hidden);
        QCOMPARE(f->text("dg2"), hidden);
        QCOMPARE(f->column(Config, 1, "w5").toString(), stored.toString()); // looking alone stores nothing
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->picker("w5")->currentIndex(), noneEnabled ? -1 : 3);
        QCOMPARE(f->column(Config, 1, "w5").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "g2").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "w1").toInt(), 7);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    // With another program holding the store, a move is refused with the reason and the
    // editor stays on its class; once the store is free the same move works.
    void aMoveTheStoreCannotServeIsRefusedAndWorksLater()
    {
        f->data.state = AppState::open(f->data.dir.path(), std::chrono::milliseconds(50));
        f->openOn({1, 2, 3});
        QVERIFY(f->nav().storeChanges()); // the slots the pickers tracked: the move has nothing to store
        Database other(f->data.path("tarn_dat.db"), Database::Open::Existing);
        other.exec("BEGIN EXCLUSIVE");
        QVERIFY(f->activate());
        QTest::keySequence(f->window.get(), QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY2(f->dialogs.messages.first().contains("is busy"), qPrintable(f->dialogs.messages.first()));
        QVERIFY(f->window->isVisible());
        QCOMPARE(f->shown(), "C1|Class 1 of 3");
        other.exec("COMMIT");
        QTest::keySequence(f->window.get(), QKeySequence(Qt::CTRL | Qt::Key_PageDown));
        QCOMPARE(f->shown(), "C2|Class 2 of 3");
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
        f->openOn({1, 2, 3});
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
        QVERIFY(f->window->close());
    }

    // The problems of the class on show stand in the status bar, those of the whole
    // configuration in View > Problems, where a double-click goes to the class; Save As
    // tells how many warnings the file carries.
    void problemsAreToldWithoutADialog()
    {
        insertTestSet(f->db());
        f->db().exec("update classdef set maxcells = null where class_num = 5");
        f->open(QStringLiteral("Test Set"));
        auto* line = f->control<QLabel>("lblProblems");
        QCOMPARE(line->text(), QString());
        f->trigger("mnuViewProblems");
        auto* list = f->control<QListWidget>("lstProblems");
        const QString problem = "warning: \"Test Set\", class 5 \"Gunner\", cells limit: empty: the class file gets "
                                "an empty field here, and will not read back";
        QCOMPARE(list->count(), 1);
        QCOMPARE(list->item(0)->text(), problem);
        emit list->itemActivated(list->item(0));
        QCOMPARE(f->text("fldClassName"), QStringLiteral("Gunner"));
        QCOMPARE(line->text() + u'|' + line->toolTip(), "1 problem: cells limit|" + problem);
        save("mnuSaveAs", target());
        QCOMPARE(f->as<frmClasses>().statusBar()->currentMessage(),
                 "Wrote 2 classes to " + target() + ", with 1 warning (View > Problems)");
    }

    // Ctrl+G goes to a class by number, and Find to the next class whose name holds the text
    // or whose number it is, from the top again past the last, through the navigator: the
    // edit on show is stored on the way. A class not found is told and moves nothing.
    void goingToAClass_data()
    {
        QTest::addColumn<QStringList>("command"); // Ctrl+G and its answer, or Find and its searches
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("told"); // Ctrl+G's message, or Find's bar
        const QString noNumber = QStringLiteral("There is no class number \"%1\" in this configuration.");
        QTest::newRow("a number of the set") << QStringList{"Ctrl+G", " 5 "} << "Gunner|Class 3 of 3" << QString();
        QTest::newRow("a number the set lacks")
            << QStringList{"Ctrl+G", "4"} << "edited|Class 1 of 3" << noNumber.arg(4);
        QTest::newRow("not a number") << QStringList{"Ctrl+G", "five"} << "edited|Class 1 of 3" << noNumber.arg("five");
        QTest::newRow("part of a name, case ignored")
            << QStringList{"Find", "UNN"} << "Gunner|Class 3 of 3" << QString();
        QTest::newRow("the next match, then the first again")
            << QStringList{"Find", "er", "er", "er"} << "Sniper|Class 2 of 3" << QString();
        QTest::newRow("a class number") << QStringList{"Find", "2"} << "Sniper|Class 2 of 3" << QString();
        QTest::newRow("no match") << QStringList{"Find", "zz"} << "edited|Class 1 of 3"
                                  << QString("No class matches \"zz\".");
    }
    void goingToAClass()
    {
        QFETCH(QStringList, command);
        QFETCH(QString, shown);
        QFETCH(QString, told);
        for (const auto& [number, name] : {std::pair{1, "Scout"}, {2, "Sniper"}, {5, "Gunner"}})
            insertClass(f->db(), Config, number, {{"class_name", name}});
        f->open(Config);
        f->type("fldClassName", "edited");
        if (command.takeFirst() == "Ctrl+G") {
            QVERIFY(f->activate());
            f->dialogs.inputAnswers << command;
            QTest::keySequence(f->window.get(), QKeySequence(Qt::CTRL | Qt::Key_G));
            QCOMPARE(f->dialogs.prompts, QStringList{"Go to Class|Class number to go to:"});
            QCOMPARE(f->dialogs.messages.value(0), told);
        } else {
            f->trigger("mnuFindClass");
            for (const QString& search : command) {
                f->box("findBox")->setText(search);
                QTest::keyClick(f->box("findBox"), Qt::Key_Return);
            }
            QCOMPARE(f->control<QLabel>("lblFind")->text(), told);
        }
        QCOMPARE(f->shown(), shown);
        QCOMPARE(f->column(Config, 1, "class_name").toString(), told.isEmpty() ? "edited" : "Scout");
    }

    // Undo Delete Class brings back the classes deleted in this window, the last first,
    // with every column as it was stored.
    void undoDeleteClassBringsBackEveryColumn()
    {
        f->openTestSet();
        const QString rows = "select * from classdef where package_name = 'Test Set' order by class_num";
        const QStringList before = rowsOf(f->db(), rows);
        QVERIFY(f->nav().moveLast());
        f->press("Command1");
        f->press("Command1");
        QCOMPARE(classCount(f->db(), "Test Set"), 0);
        QAction* undo = f->window->findChild<QAction*>("mnuUndoDeleteClass");
        undo->trigger();
        QCOMPARE(f->text("fldClassName"), QStringLiteral("Light Scout"));
        undo->trigger();
        QVERIFY(!undo->isEnabled());
        QCOMPARE(rowsOf(f->db(), rows), before);
    }

    // The class list shows every class; a click goes there through the navigator, storing
    // the edit on show, and the list follows the edit.
    void aClickInTheClassListMovesAndStores()
    {
        f->openTestSet();
        f->trigger("mnuViewClassList");
        auto* list = f->control<QTableView>("tblClasses");
        QCOMPARE(list->model()->rowCount(), 2);
        QCOMPARE(list->model()->index(1, 1).data().toString() + u'|' + list->model()->index(1, 6).data().toString(),
                 "Gunner|Super Shotgun, Machinegun, None, None, None, None, None, None, None");
        f->type("fldClassName", "Scout");
        list->sortByColumn(1, Qt::AscendingOrder); // the view's own order, by name: Gunner first
        emit list->clicked(list->model()->index(0, 1));
        QCOMPARE(f->text("fldClassName"), QStringLiteral("Gunner"));
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
        f->trigger("mnuViewClassList");
        QVERIFY(f->window->close());
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
        f->openTestSet();
        f->trigger("mnuViewPreview");
        f->control<QCheckBox>("chkPreviewProtected")->setChecked(protect);
        const QString file = testDataPath(protect ? "test_set_protected.class" : "test_set_unprotected.class");
        QStringList expected; // the first class, its carriage returns shown in the protected form only
        for (const QByteArray& line : readFile(file).split('\n').mid(2, 7))
            expected << QString::fromLatin1(protect ? line.toHex(' ') : line.chopped(1));
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
        f->openOn({1, 2, 3});
        QVERIFY(f->activate());
        QWidget* target = f->control(focus);
        target->setFocus();
        if (auto* picker = qobject_cast<QComboBox*>(target)) {
            picker->showPopup();
            QTRY_VERIFY(QApplication::activePopupWidget());
        }
        for (const QString& key : keys) { // as the window system delivers them: to an open list first
            QWidget* popup = QApplication::activePopupWidget();
            QTest::keySequence(popup ? popup->windowHandle() : f->window->windowHandle(), QKeySequence(key));
        }
        QCOMPARE(f->window->isVisible() ? f->control<QLabel>("lblPosition")->text() : "closed", shown);
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
        QCOMPARE(f->text("Text1") + u'|' + f->text("fldClassName"), QString::number(added) + u'|' + name);
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
        for (int number : {1, 2, 3})
            insertClass(f->db(), Config, number, {{"class_name", QStringLiteral("C%1").arg(number)}, {"w4", 99}});
        f->open(Config);
        if (!move.isEmpty())
            QVERIFY(move == "next" ? f->nav().moveNext() : f->nav().moveLast());
        f->choose("w3", 2);
        const QVariant chosen = f->picker("w3")->currentData();
        f->type("fldModel", "lost");
        f->press("Command1");
        QCOMPARE(f->classNumbers(Config), left);
        QCOMPARE(f->text("fldClassName"), QStringLiteral("C%1").arg(left.first()));
        QVERIFY(f->dialogs.messages.isEmpty());
        QVERIFY(f->dialogs.prompts.isEmpty());
        QCOMPARE(rowsOf(f->db(), "select 1 from classdef where package_name = ? and (w3 = ? or model_name = 'lost')",
                        {Config, chosen}),
                 QStringList());
        QCOMPARE(rowsOf(f->db(), "select w4, w5 from classdef where package_name = ? order by class_num", {Config}),
                 slotIds);
        QVERIFY(f->nav().moveNext());
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->text("fldClassName"), QStringLiteral("C%1").arg(left.last()));
    }

    // An emptied configuration is kept, and gets its first class at the next opening.
    void deletingTheOnlyClassLeavesAnEmptySetUntilAddClass()
    {
        const QString name = QStringLiteral("Emptied");
        f->addConfig(name, {7});
        f->open(name);
        f->press("Command1");
        QCOMPARE(f->dialogs.messages, QStringList{NoClassLeft});
        QVERIFY(f->classNumbers(name).isEmpty());
        QCOMPARE(f->control<QLabel>("Label31")->text() + u'|' + f->text("fldClassName"), name + "|C7");
        QVERIFY(!f->box("fldClassName")->isEnabled() && !f->picker("w2")->isEnabled());
        QCOMPARE(f->control<QLabel>("lblPosition")->text(), QString());
        f->press("Command1"); // nothing left to delete: the advice again, and no harm
        QCOMPARE(f->dialogs.messages, QStringList({NoClassLeft, NoClassLeft}));

        f->press("AddClass");
        QCOMPARE(f->classNumbers(name), QList<int>{1});
        QCOMPARE(f->text("fldClassName"), QStringLiteral("Class # 1"));
        QVERIFY(f->box("fldClassName")->isEnabled() && f->picker("w2")->isEnabled());
        f->type("fldModel", "after");
        f->press("Command1");
        QVERIFY(f->window->close());
        QCOMPARE(f->db().scalar("select count(*) from package where package_name = ?", {name}).toInt(), 1);
        f->open(name);
        QCOMPARE(
            rowsOf(f->db(), "select class_num, class_name, model_name from classdef where package_name = ?", {name}),
            QStringList{"1|Class # 1|<null>"});
        QVERIFY(!f->dialogs.busy);
    }

    // Save As and Save Unprotected store the edit on show first, write the file in their
    // form over whatever stood there, and show the first class; the status tells how many
    // classes went. Cancel, an edit the store refuses, or a text a protected file cannot
    // carry leaves the old file and the class on show, and is told.
    void saveWritesTheClassFile_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("edit");   // box=text typed into Gunner, or a button pressed there
        QTest::addColumn<QString>("answer"); // to the file dialog: "target" or nothing (Cancel)
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("told"); // the status after a write, else the message
        const QByteArray protectedFile = readFile(testDataPath("test_set_protected.class"));
        const QByteArray plainFile = readFile(testDataPath("test_set_unprotected.class"));
        const QString wrote = QStringLiteral("Wrote 2 classes to %1");
        QTest::newRow("Save As") << "mnuSaveAs" << QString() << "target" << protectedFile << wrote;
        QTest::newRow("Save Unprotected") << "mnuSaveUnprotected" << QString() << "target" << plainFile << wrote;
        QTest::newRow("the edit on show goes first")
            << "mnuSaveUnprotected" << QString("fldClassName=Heavy Gunner") << "target"
            << QByteArray(plainFile).replace("[Gunner]", "[Heavy Gunner]") << wrote;
        QTest::newRow("one class") << "mnuSaveUnprotected" << QString("Command1") << "target"
                                   << plainFile.left(plainFile.indexOf("[Gunner]") - 2)
                                   << QString("Wrote 1 class to %1");
        QTest::newRow("Cancel") << "mnuSaveAs" << QString() << QString() << QByteArray("old") << QString();
        QTest::newRow("an edit the store refuses")
            << "mnuSaveUnprotected" << QString("fldArmor=lots") << "target" << QByteArray("old")
            << "Max Armor cannot be \"lots\": it must be a whole number from -32768 to 32767.";
        QTest::newRow("a text a protected file cannot carry")
            << "mnuSaveAs" << QString("fldModel=gunnér") << "target" << QByteArray("old")
            << "Class \"Gunner\": the model name \"gunnér\" holds \"é\", which a protected class file cannot carry.";
    }
    void saveWritesTheClassFile()
    {
        QFETCH(QString, action);
        QFETCH(QString, edit);
        QFETCH(QString, answer);
        QFETCH(QByteArray, written);
        QFETCH(QString, told);
        f->openTestSet();
        QVERIFY(writeFile(target(), "old"));
        QVERIFY(f->nav().moveLast());
        if (edit.contains(u'='))
            f->type(edit.section(u'=', 0, 0), edit.section(u'=', 1));
        else if (!edit.isEmpty())
            f->press(edit);
        const QString shownBefore = f->shown();
        save(action, answer.isEmpty() ? QString() : target());
        QCOMPARE(f->dialogs.fileFilters, QStringList{"Class Config (*.class)|*.class|All Files (*.*)|*.*"});
        QCOMPARE(readFile(target()), written);
        QCOMPARE(f->data.state->protectOutput, action == "mnuSaveAs"); // Cancel too sets the form
        const bool wrote = written != "old";
        QCOMPARE(f->as<frmClasses>().statusBar()->currentMessage(), wrote ? told.arg(target()) : QString());
        QCOMPARE(f->dialogs.messages, wrote || told.isEmpty() ? QStringList() : QStringList{told});
        QCOMPARE(f->shown(), wrote ? "Light Scout|Class 1 of " + QString::number(f->nav().recordCount()) : shownBefore);
        QVERIFY(!f->dialogs.busy);
    }
};

QTEST_MAIN(ClassEditorTest)
#include "tst_classes.moc"
