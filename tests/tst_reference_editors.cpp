// The bound forms (the reference editors and the class editor), then what the four
// reference editors share: their captions, navigation, Add Record and Delete Record. Then
// the item and ability editors' own parts: the bit number of the current row and the bit
// calculator.
#include "reference/BitNumbers.h"
#include "store/Database.h"
#include "support/WindowFixture.h"
#include "toolkit/DataControl.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <cmath>
#include <optional>

using namespace tarn;
using namespace tarn::test;

namespace
{

// The reference table a window edits.
QString tableOf(Window window)
{
    using enum Window;
    return window == Weapons ? "weapon" : window == Grenades ? "grenade" : window == Items ? "item" : "special";
}

// A reference editor on enabled rows of the given ids, stored in that order and named "Row <id>".
struct ReferenceEditor : WindowFixture {
    QString table;

    void open(Window window, const std::optional<QList<qint64>>& ids = std::nullopt)
    {
        table = tableOf(window);
        if (ids) {
            QList<RefRow> rows;
            for (qint64 id : *ids)
                rows.append({id, QStringLiteral("Row %1").arg(id)});
            setReferenceRows(data.refDb(), table, rows);
        }
        WindowFixture::open(window);
    }
    // The stored ids, lowest first, joined by spaces.
    QString ids()
    {
        return rowsOf(data.refDb(), QStringLiteral("select %1_id from %2 order by 1").arg(table.left(1), table))
            .join(u' ');
    }
};

void windowRows(const QList<Window>& windows = {Window::Weapons, Window::Grenades, Window::Items, Window::Special})
{
    QTest::addColumn<Window>("window");
    for (Window window : windows)
        QTest::newRow(qPrintable(tableOf(window))) << window;
}
Window fetchWindow()
{
    QFETCH(Window, window);
    return window;
}
const QList<Window> BitWindows{Window::Items, Window::Special};

// A row of the bound-form table: in the window, text typed into the box (a picker's entry
// by position; "tick" clicks a box), the row left by how, and the column's outcome: the
// value stored, or the refusal.
struct Typed {
    Window window;
    QString box, typed, how, column, outcome;
};

QString refusal(const char* field, const char* typed, bool large)
{
    return QStringLiteral("%1 cannot be \"%2\": it must be a whole number from %3.")
        .arg(QLatin1String(field), QLatin1String(typed),
             large ? QStringLiteral("-2147483648 to 2147483647") : QStringLiteral("-32768 to 32767"));
}

} // namespace

Q_DECLARE_METATYPE(Typed)

class TestReferenceEditors : public QObject
{
    Q_OBJECT

private slots:
    // A bound form stores what was typed when its row is left, by any road, and only the
    // box typed into: a column another program changed meanwhile keeps its value. A blanked
    // box stores a missing value. Text its column cannot hold is refused, naming the field,
    // and the row is not left until it is corrected.
    void boundFormStoresWhatWasTyped_data()
    {
        QTest::addColumn<Typed>("row");
        using enum Window;
        const QList<Typed> rows{
            {Classes, "fldClassName", "Sniper", "Next record", "class_name", "Sniper"},
            {Classes, "maxshells", "", "close", "maxshells", "<null>"},
            {Classes, "fldDecoySkin", "-3", "Esc", "decoyskin", "-3"},
            {Classes, "special_4", "tick", "Ctrl+W", "s5", "1"},
            {Classes, "w4", "3", "add", "w4", "4"}, // the default weapons' ids are 0, 2, 3, 4, ...
            {Classes, "Text1", "two", "Next record", "class_num", refusal("Class Num", "two", false)},
            {Classes, "fldSpeed", "40000", "Esc", "max_speed", refusal("Max Speed", "40000", false)},
            {Classes, "fldDecoySkin", "1.5", "add", "decoyskin", refusal("Decoy Skin # (blue)", "1.5", false)},
            {Weapons, "Text2", "Mine's new", "Next record", "w_name", "Mine's new"},
            {Grenades, "Text4", "-5", "add", "g_speed", "-5"},
            {Items, "Text5", "", "close", "kd_enabled", "<null>"},
            {Special, "Text1", "2", "Last record", "s_id", "2"}, // ids need not be unique
            {Weapons, "Text5", "0", "Esc", "kd_enabled", "0"},
            {Weapons, "Text1", "two", "Next record", "w_id", refusal("Weapon ID", "two", false)},
            {Weapons, "Text5", "yes", "close", "kd_enabled", refusal("Enabled? (1=yes)", "yes", false)},
            {Grenades, "Text1", "2.5", "Next record", "g_id", refusal("Grenade ID", "2.5", false)},
            {Items, "Text1", "2147483648", "add", "i_id", refusal("Item ID", "2147483648", true)},
            {Special, "Text1", "bit", "Esc", "s_id", refusal("Special ID", "bit", true)}};
        for (const Typed& row : rows)
            QTest::addRow("%s %s \"%s\", %s", qPrintable(row.window == Classes ? "classdef" : tableOf(row.window)),
                          qPrintable(row.box), qPrintable(row.typed), qPrintable(row.how))
                << row;
    }
    void boundFormStoresWhatWasTyped()
    {
        QFETCH(Typed, row);
        const auto& [window, box, typed, how, column, outcome] = row;
        ReferenceEditor f;
        const bool classes = window == Window::Classes;
        if (classes) {
            f.data.classDb().exec(QStringLiteral("delete from classdef")); // class 1 is row 1
            for (int number : {1, 2})
                insertClass(f.data.classDb(), "Set", number, {{"class_name", QStringLiteral("C%1").arg(number)}});
            f.WindowFixture::open(window, "Set");
        } else {
            f.open(window, {{1, 2}});
        }
        Database& db = classes ? f.data.classDb() : f.data.refDb();
        const QString table = classes ? QStringLiteral("classdef") : f.table;
        const bool twins = window == Window::Weapons || window == Window::Grenades;
        const QString other = classes ? QStringLiteral("model_name") : table.left(1) + (twins ? "_damage" : "_name");
        const auto stored = [&](const QString& name) {
            return rowsOf(db, QStringLiteral("select %1 from %2 where rowid = 1").arg(name, table)).value(0);
        };
        const QString before = stored(column);
        if (typed == "tick")
            QTest::mouseClick(f.control<QCheckBox>(box), Qt::LeftButton, {}, QPoint(6, 9));
        else if (f.window->findChild<QComboBox*>(box))
            f.choose(box, typed.toInt());
        else
            f.type(box, typed);
        db.exec(QStringLiteral("update %1 set %2 = 7 where rowid = 1").arg(table, other)); // another program
        if (!outcome.contains(QStringLiteral(" cannot be "))) {
            QVERIFY(f.leave(how));
            QCOMPARE(stored(column) + u'|' + stored(other), outcome + "|7");
            return;
        }
        QVERIFY(!f.leave(how));
        QCOMPARE(f.dialogs.messages, QStringList{outcome});
        QCOMPARE(f.text(box) + u'|' + stored(column), typed + u'|' + before);
        f.type(box, QStringLiteral("12"));
        QVERIFY(f.leave(how));
        QCOMPARE(stored(column) + u'|' + stored(other), "12|7");
    }

    // Every caption of the twin windows, opened from the Update menu: the menu entry, the
    // window, its title, its navigator and the navigator's caption, then by name.
    void captions_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("captions");
        const QString records = "|Command1=Add Record|Command2=Delete Record|Label1=";
        const QString armoury = " Name:|Label3=Damage:|Label4=Speed:|Label5=Enabled? (1=yes):";
        const QString calculator =
            "|Label10=(Must be between 0 and 30)|Label2=%1 Name:|Label3=(Must be a power of 2)|"
            "Label4=Bit Calculator:|Label5=Enabled? (1=yes):|Label6=Bit Number::|Label7=Answer::|"
            "Label8=Bit Number:|Label9=(Max of 30)|btnCalc=Calculate";
        QTest::newRow("weapons") << "mnuUpdateWeapons"
                                 << "Weapons...|frmWeapons|Edit Weapons|dbWeapons|Weapons" + records +
                                        "Weapon ID:|Label2=Weapon" + armoury;
        QTest::newRow("grenades") << "mnuUpdateGrenades"
                                  << "Grenades...|frmGrenades|Edit Grenades|dbGrenades|Grenades" + records +
                                         "Grenade ID:|Label2=Grenade" + armoury;
        QTest::newRow("items") << "mnuEditItems"
                               << "Items...|frmItems|Edit Items|dbItems|Items" + records +
                                      "Item ID:" + calculator.arg("Items");
        QTest::newRow("special") << "mnuEditSpecial"
                                 << "Special Abilities...|frmSpecial|Edit Special|dbSpecial|Special" + records +
                                        "Special ID:" + calculator.arg("Special");
    }
    void captions()
    {
        QFETCH(QString, action);
        QFETCH(QString, captions);
        WindowFixture f;
        f.open(Window::Config);
        QAction* entry = f.control<QAction>(action);
        QStringList seen{plain(entry->text())};
        f.dialogs.onModal = [&](QWidget& shown) {
            const auto* navigator = shown.findChild<DataControl*>();
            seen << shown.objectName() << shown.windowTitle() << navigator->objectName() << navigator->caption();
            QMap<QString, QString> texts;
            for (const QLabel* label : shown.findChildren<QLabel*>()) {
                if (label->isVisibleTo(&shown) && label->parent() != navigator)
                    texts.insert(label->objectName(), plain(label->text()));
            }
            for (const QPushButton* button : shown.findChildren<QPushButton*>())
                texts.insert(button->objectName(), plain(button->text()));
            for (auto [name, text] : texts.asKeyValueRange())
                seen << name + u'=' + text;
        };
        entry->trigger();
        QCOMPARE(seen.join(u'|'), captions);
        QCOMPARE(f.dialogs.modalWindows, QStringList{seen.value(1)});
    }

    // The window opens on the lowest id and moves in id order, stopping at the ends.
    // Delete lands on the lowest id; on a new row not yet stored it stores nothing. A delete
    // the store refuses is told, naming the store, and the row stays, on show.
    void movesInIdOrderAndDeletes_data() { windowRows(); }
    void movesInIdOrderAndDeletes()
    {
        ReferenceEditor f;
        f.open(fetchWindow(), {{16, 2, 8, 4}});
        QCOMPARE(f.text("Text1") + u'|' + f.text("Text2"), QStringLiteral("2|Row 2"));
        QStringList seen; // the id after each move
        for (const char* button : {"Next", "Next", "Next", "Next", "Previous", "Previous", "Previous", "Previous",
                                   "Last", "First", "Next"}) {
            f.navigate(button + QStringLiteral(" record"));
            seen << f.text("Text1");
        }
        QCOMPARE(seen.join(u' '), "4 8 16 16 8 4 2 2 16 2 4");
        f.press("Command2");
        QCOMPARE(f.ids(), "2 8 16");
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        f.navigate(QStringLiteral("Last record"));
        QCOMPARE(f.text("Text1"), QStringLiteral("16"));
        f.press("Command1");
        f.type("Text1", QStringLiteral("32"));
        f.press("Command2");
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), "2 8 16");
        QVERIFY(f.dialogs.messages.isEmpty());

        f.open(fetchWindow());
        f.data.refDb().exec(QStringLiteral("create trigger keep before delete on %1 "
                                           "begin select raise(abort, 'in use'); end")
                                .arg(f.table));
        f.press("Command2");
        QCOMPARE(f.dialogs.messages, QStringList{f.data.path("tarn_ref.db") + ": in use"});
        QCOMPARE(f.ids(), "2 8 16");
        const QString shown = f.text("Text1");
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(shown + u'|' + f.text("Text1"), QStringLiteral("2|8"));
    }

    // Deleting the only row leaves an empty set, and so does opening on an empty table;
    // either takes a new row, stored when left, unless nothing was typed in it.
    void emptyTable_data() { windowRows(); }
    void emptyTable()
    {
        ReferenceEditor f;
        f.open(fetchWindow(), {{4}});
        for (int opened = 0; opened < 2; ++opened) {
            if (opened)
                f.open(fetchWindow());
            else
                f.press("Command2");
            QCOMPARE(f.ids() + f.text("Text1") + f.text("Text2") + f.text("Text5"), QString());
        }
        f.press("Command2"); // nothing is left to delete
        f.navigate(QStringLiteral("Next record"));
        f.press("Command1");
        f.press("Command1"); // leaves an untouched new row
        f.type("Text1", QStringLiteral("32"));
        f.type("Text2", QStringLiteral("Only one"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), "32");
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    void bitNumberOfId_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<int>("bit"); // -1: no bit number
        // Every id the display is known to show, non-powers included.
        const QList<std::pair<qint64, int>> table{
            {0, 0},  {1, 0},  {2, 1},   {3, 2},     {4, 2},           {5, 2},           {6, 3},
            {7, 3},  {8, 3},  {9, 3},   {10, 3},    {11, 4},          {12, 4},          {16, 4},
            {21, 4}, {22, 5}, {100, 7}, {1000, 10}, {1073741824, 30}, {1073741825, 30}, {2147483647, 31}};
        for (const auto& [id, bit] : table)
            QTest::addRow("%lld", id) << QString::number(id) << bit;
        QTest::newRow("blanks around") << QStringLiteral(" 8 ") << 3;
        for (const char* none : {"", "-4", "-2147483648", "eight", "8.5", "2147483648"})
            QTest::addRow("no bit number for \"%s\"", none) << QString::fromLatin1(none) << -1;
    }
    void bitNumberOfId()
    {
        QFETCH(QString, id);
        QFETCH(int, bit);
        QCOMPARE(bits::bitNumberOfId(id), bit < 0 ? std::nullopt : std::optional<int>(bit));
    }

    // The display follows each move to a row, and only moves: typing and Add Record leave it.
    // The problem of the row on show is told below the form, without a dialog.
    void bitNumberFollowsTheCurrentRow_data() { windowRows(BitWindows); }
    void bitNumberFollowsTheCurrentRow()
    {
        ReferenceEditor f;
        f.open(fetchWindow(), {{8, -4, 3, 1, 6, 0}});
        QCOMPARE(f.text("Text1"), QStringLiteral("-4"));
        QCOMPARE(f.text("fldCalcBit"), QString()); // a negative id leaves the display as it was
        const QStringList moves{"Next record", "Next record",     "Next record",  "Next record",
                                "Next record", "Previous record", "First record", "Last record"};
        const auto* problem = f.control<QLabel>("lblProblem");
        QStringList seen; // id=bit number after each move, and the problem's start
        for (const QString& button : moves) {
            f.navigate(button);
            seen << f.text("Text1") + u'=' + f.text("fldCalcBit") +
                        (problem->isHidden() ? QString() : u' ' + problem->text().section(" is ", 0, 0));
        }
        QCOMPARE(seen, QStringList({"0=0 Problem: id 0", "1=0", "3=2 Problem: id 3", "6=3 Problem: id 6", "8=3",
                                    "6=3 Problem: id 6", "-4=3 Problem: id -4", "8=3"}));
        QVERIFY(f.box("fldCalcBit")->isReadOnly());

        f.type("Text1", QStringLiteral("1024"));
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));
        f.press("Command1");
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));
        f.type("Text1", QStringLiteral("5")); // no power of 2, and stored all the same
        f.type("Text2", QStringLiteral("Odd one"));
        f.navigate(QStringLiteral("Previous record"));
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("10"));
        f.navigate(QStringLiteral("Last record"));
        QCOMPARE(f.text("Text1") + u'=' + f.text("fldCalcBit"), QStringLiteral("5=2"));
        QCOMPARE(f.ids(), "-4 0 1 3 5 6 1024");
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    // Calculate doubles 1 as many times as the number typed says, rounded half to even, from 0
    // to 30; any other text is refused and the earlier answer stays. Moves leave the
    // calculator alone, and its answer goes nowhere by itself.
    void calculator_data()
    {
        QTest::addColumn<Window>("window");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("bit"); // -1: refused
        const QList<std::pair<const char*, int>> numbers{
            {"0", 0},    {"30", 30},  {"2.4", 2},    {"-0.4", 0},    {"2.5", 2},      {"3.5", 4},   {"30.5", 30},
            {"-0.5", 0}, {" 5 ", 5},  {"31", -1},    {"30.6", -1},   {"-1", -1},      {"-0.6", -1}, {"32767", -1},
            {"", -1},    {"ten", -1}, {"32768", -1}, {"-32769", -1}, {"32767.5", -1}, {"1,000", -1}};
        for (qsizetype i = 0; i < numbers.size(); ++i)
            QTest::addRow("\"%s\"", numbers[i].first)
                << BitWindows[i % 2] << QString::fromLatin1(numbers[i].first) << numbers[i].second;
    }
    void calculator()
    {
        QFETCH(QString, typed);
        QFETCH(int, bit);
        ReferenceEditor f;
        f.open(fetchWindow());
        f.box("fldResult")->setText(QStringLiteral("earlier"));
        f.type("fldBitNum", typed);
        f.press("btnCalc");
        QCOMPARE(f.dialogs.messages,
                 bit < 0 ? QStringList{QStringLiteral("Number must be between 0 and 30")} : QStringList{});
        f.navigate(QStringLiteral("Next record"));
        f.press("Command1");
        QVERIFY(f.text("Text1").isEmpty());
        QCOMPARE(f.text("fldResult"),
                 bit < 0 ? QStringLiteral("earlier") : QString::number(std::ldexp(1.0, bit), 'f', 0));
        QCOMPARE(f.text("fldBitNum"), typed);
    }
};

QTEST_MAIN(TestReferenceEditors)
#include "tst_reference_editors.moc"
