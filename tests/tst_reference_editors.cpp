#include "config/frmConfig.h"
#include "reference/BitNumbers.h"
#include "reference/ReferenceWindows.h"
#include "store/Database.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <optional>

using namespace tarn;
using namespace tarn::test;

namespace
{

// A reference table as the tests see it: its window, its name and its first two columns.
struct TableInfo {
    ReferenceTable window;
    QString table;
    QString id;
    QString name;
};

TableInfo tableInfo(ReferenceTable window)
{
    using enum ReferenceTable;
    const QString table = window == Weapons    ? "weapon"
                          : window == Grenades ? "grenade"
                          : window == Items    ? "item"
                                               : "special";
    return {window, table, table.left(1) + "_id", table.left(1) + "_name"};
}

// A "window" column with one row for each of the given windows.
void windowRows(const QList<ReferenceTable>& windows)
{
    QTest::addColumn<int>("window");
    for (ReferenceTable window : windows)
        QTest::newRow(qPrintable(tableInfo(window).table)) << int(window);
}
void allWindows()
{
    windowRows({ReferenceTable::Weapons, ReferenceTable::Grenades, ReferenceTable::Items, ReferenceTable::Special});
}
ReferenceTable fetchWindow()
{
    QFETCH(int, window);
    return ReferenceTable(window);
}

// Replaces the rows of a table by enabled rows of the given ids, stored in that order
// and named "Row <id>".
void resetRows(Database& db, const TableInfo& t, const QList<qint64>& ids)
{
    QList<RefRow> rows;
    for (qint64 id : ids)
        rows.append({id, QStringLiteral("Row %1").arg(id)});
    setReferenceRows(db, t.table, rows);
}

// One reference window, open on a fresh data directory, driven as the author would.
struct ReferenceFixture {
    TempData data;
    ScriptedDialogs dialogs;
    TableInfo t;
    std::unique_ptr<QWidget> window;

    // Opens the window on the starting rows, or on rows of the given ids.
    void open(ReferenceTable table, const std::optional<QList<qint64>>& ids = std::nullopt)
    {
        t = tableInfo(table);
        if (ids)
            resetRows(data.refDb(), t, *ids);
        window = createReferenceWindow(table, *data.state, dialogs, nullptr);
        window->show();
    }
    // The stored ids, lowest first.
    QList<qint64> ids()
    {
        QList<qint64> ids;
        for (const QString& id :
             rowsOf(data.refDb(), QStringLiteral("select %1 from %2 order by %1").arg(t.id, t.table)))
            ids << id.toLongLong();
        return ids;
    }
    QString stored(const QString& column, qint64 id)
    {
        return rowsOf(data.refDb(), QStringLiteral("select %1 from %2 where %3 = ?").arg(column, t.table, t.id), {id})
            .value(0);
    }
    QLineEdit* box(const char* name) const { return window->findChild<QLineEdit*>(QLatin1String(name)); }
    QString text(const char* name) const { return box(name)->text(); }
    DataControl& navigator() const { return *window->findChild<DataControl*>(); }

    // Replaces the text of a box by typing, as the author would.
    void type(const char* name, const QString& text) const
    {
        QLineEdit* target = box(name);
        target->selectAll();
        QTest::keyClick(target, Qt::Key_Backspace);
        QTest::keyClicks(target, text);
    }
    void click(const char* buttonName) const
    {
        QTest::mouseClick(window->findChild<QPushButton*>(QLatin1String(buttonName)), Qt::LeftButton);
    }
    // The navigator's buttons: "First record", "Previous record", "Next record", "Last record".
    void navigate(const QString& accessibleName) const
    {
        for (QToolButton* button : navigator().findChildren<QToolButton*>()) {
            if (button->accessibleName() == accessibleName) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no navigator button \"%1\"").arg(accessibleName)));
    }
};

const QList<ReferenceTable> BitWindows{ReferenceTable::Items, ReferenceTable::Special};

} // namespace

// What the four reference editors share: opening, navigation, storing, Add Record,
// Delete Record and the refusal of text a column cannot hold. Then the item and
// ability editors' own parts, the bit number of the current row and the bit
// calculator: their arithmetic first, then the windows.
class TestReferenceEditors : public QObject
{
    Q_OBJECT

private slots:
    // The window opens on the lowest id and moves in id order, stopping at the ends.
    // Delete lands on the lowest id; on a new row not yet stored it stores nothing.
    void movesInIdOrderAndDeletes_data() { allWindows(); }
    void movesInIdOrderAndDeletes()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{16, 2, 8, 4}});
        QCOMPARE(f.text("Text1") + u'|' + f.text("Text2"), QStringLiteral("2|Row 2"));
        const QList<std::pair<QString, QString>> moves{
            {"Next record", "4"},     {"Next record", "8"},     {"Next record", "16"},    {"Next record", "16"},
            {"Previous record", "8"}, {"Previous record", "4"}, {"Previous record", "2"}, {"Previous record", "2"},
            {"Last record", "16"},    {"First record", "2"},    {"Next record", "4"}};
        for (const auto& [button, id] : moves) {
            f.navigate(button);
            QCOMPARE(f.text("Text1"), id);
        }
        f.click("Command2");
        QCOMPARE(f.ids(), QList<qint64>({2, 8, 16}));
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        f.navigate(QStringLiteral("Last record"));
        QCOMPARE(f.text("Text1"), QStringLiteral("16"));
        f.click("Command1");
        f.type("Text1", QStringLiteral("32"));
        f.click("Command2");
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), QList<qint64>({2, 8, 16}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    // A delete the store refuses is told, naming the store, and the row stays, on show.
    void refusedDeleteKeepsTheRow()
    {
        ReferenceFixture f;
        f.open(ReferenceTable::Weapons, {{2, 4}});
        f.data.refDb().exec(QStringLiteral("create trigger keep before delete on weapon "
                                           "begin select raise(abort, 'weapon is in use'); end"));
        f.click("Command2");
        QCOMPARE(f.dialogs.messages, QStringList{f.data.path("tarn_ref.db") + ": weapon is in use"});
        QCOMPARE(f.ids(), QList<qint64>({2, 4}));
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(f.text("Text1"), QStringLiteral("4"));
    }

    // The problem of the row on show is told below the form, without a dialog.
    void theProblemOfTheRowOnShowIsTold()
    {
        ReferenceFixture f;
        f.open(ReferenceTable::Items, {{1, 3}});
        auto* line = f.window->findChild<QLabel*>("lblProblem");
        QVERIFY(line->isHidden());
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(line->text(), "Problem: id 3 is not a power of two: its bit runs into others in the sums, and classes "
                               "read back with other items");
        QVERIFY(!line->isHidden());
    }

    // An edit and a new row are stored when their row is left, an untouched new row is
    // not; ids need not be unique, and a row taken out of the pickers stays here.
    void rowsAreStoredWhenLeft_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("leave");
        QTest::newRow("weapons, next") << int(ReferenceTable::Weapons) << "Next record";
        QTest::newRow("grenades, Add Record") << int(ReferenceTable::Grenades) << "Add Record";
        QTest::newRow("items, close") << int(ReferenceTable::Items) << "close";
        QTest::newRow("special, first") << int(ReferenceTable::Special) << "First record";
        QTest::newRow("weapons, Esc") << int(ReferenceTable::Weapons) << "Esc";
    }
    void rowsAreStoredWhenLeft()
    {
        QFETCH(QString, leave);
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2}});
        f.type("Text2", QStringLiteral("Renamed"));
        f.type("Text5", QString()); // a blank box stores a missing value
        f.click("Command1");
        f.navigate(QStringLiteral("Previous record"));
        f.click("Command1");
        f.click("Command1");
        for (const char* name : {"Text1", "Text2", "Text5"})
            QVERIFY2(f.text(name).isEmpty(), name);
        f.type("Text1", QStringLiteral("2"));
        f.type("Text2", QStringLiteral("Mine's new"));
        f.type("Text5", QStringLiteral("0"));
        if (leave == QLatin1String("close"))
            QVERIFY(f.window->close());
        else if (leave == QLatin1String("Esc")) {
            f.window->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
            QTest::keyClick(f.window.get(), Qt::Key_Escape);
            QVERIFY(!f.window->isVisible());
        } else if (leave == QLatin1String("Add Record"))
            f.click("Command1");
        else
            f.navigate(leave);
        QCOMPARE(
            rowsOf(f.data.refDb(),
                   QStringLiteral("select %1, %2, kd_enabled from %3 order by rowid").arg(f.t.id, f.t.name, f.t.table)),
            (QStringList{"1|Renamed|<null>", "2|Row 2|1", "2|Mine's new|0"}));
        f.open(fetchWindow());
        QCOMPARE(f.navigator().recordCount(), 3);
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    // Deleting the only row leaves an empty set, and so does opening on an empty table;
    // either takes a new row.
    void emptyTable_data() { allWindows(); }
    void emptyTable()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{4}});
        for (int opened = 0; opened < 2; ++opened) {
            if (opened)
                f.open(fetchWindow());
            else
                f.click("Command2");
            QVERIFY(f.ids().isEmpty());
            for (const char* name : {"Text1", "Text2", "Text5"})
                QVERIFY2(f.text(name).isEmpty(), name);
        }
        f.click("Command2"); // nothing is left to delete
        f.navigate(QStringLiteral("Next record"));
        f.click("Command1");
        f.type("Text1", QStringLiteral("32"));
        f.type("Text2", QStringLiteral("Only one"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), QList<qint64>({32}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    // The bounds of each kind of column are the store's own test; here, what the window does.
    void textTheColumnCannotHoldIsRefused_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("message");
        using enum ReferenceTable;
        const QString small = QStringLiteral("a whole number from -32768 to 32767.");
        const QString large = QStringLiteral("a whole number from -2147483648 to 2147483647.");
        const QList<std::tuple<ReferenceTable, const char*, const char*, const char*, QString>> rows{
            {Weapons, "Text1", "two", "Weapon ID", small},
            {Weapons, "Text5", "yes", "Enabled? (1=yes)", small},
            {Grenades, "Text1", "2.5", "Grenade ID", small},
            {Items, "Text1", "2147483648", "Item ID", large},
            {Special, "Text1", "bit", "Special ID", large}};
        for (const auto& [window, box, typed, field, rule] : rows)
            QTest::addRow("%s \"%s\"", field, typed)
                << int(window) << QString(box) << QString(typed)
                << QStringLiteral("%1 cannot be \"%2\": it must be %3").arg(field, typed, rule);
    }
    void textTheColumnCannotHoldIsRefused()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, message);
        const QByteArray name = box.toLatin1();
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2}});
        f.type("Text2", QStringLiteral("Kept"));
        f.type(name, typed);
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(f.dialogs.messages, QStringList{message});
        QCOMPARE(f.text(name), typed);
        QVERIFY(!f.window->close());
        QCOMPARE(f.dialogs.messages.size(), 2);
        QCOMPARE(f.stored(f.t.name, 1), QStringLiteral("Row 1"));
        // Corrected, the same row is stored whole, and nothing else was touched.
        f.type(name, QStringLiteral("1"));
        QVERIFY(f.window->close());
        QCOMPARE(f.stored(f.t.name, 1), QStringLiteral("Kept"));
        QCOMPARE(f.ids(), QList<qint64>({1, 2}));
    }

    // Each shows its window, title, navigator and caption, and first label.
    void openedFromTheUpdateMenu_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("expected");
        for (const auto& [action, expected] : QList<std::pair<const char*, const char*>>{
                 {"mnuUpdateWeapons", "frmWeapons|Edit Weapons|dbWeapons|Weapons|Weapon ID:"},
                 {"mnuUpdateGrenades", "frmGrenades|Edit Grenades|dbGrenades|Grenades|Grenade ID:"},
                 {"mnuEditSpecial", "frmSpecial|Edit Special|dbSpecial|Special|Special ID:"},
                 {"mnuEditItems", "frmItems|Edit Items|dbItems|Items|Item ID:"}})
            QTest::newRow(action) << QString(action) << QString(expected);
    }
    void openedFromTheUpdateMenu()
    {
        QFETCH(QString, action);
        QFETCH(QString, expected);
        TempData data;
        ScriptedDialogs dialogs;
        frmConfig main(*data.state, dialogs);
        QStringList seen;
        dialogs.onModal = [&](QWidget& shown) {
            const auto* navigator = shown.findChild<DataControl*>();
            seen << shown.objectName() << shown.windowTitle() << navigator->objectName() << navigator->caption()
                 << plain(shown.findChild<QLabel*>(QStringLiteral("Label1"))->text());
            QVERIFY(shown.isWindow() && shown.isVisible());
        };
        main.findChild<QAction*>(action)->trigger();
        QCOMPARE(seen.join(u'|'), expected);
        QCOMPARE(dialogs.modalWindows, QStringList{seen.value(0)});
        QVERIFY(dialogs.messages.isEmpty());
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

    void calculatorArithmetic_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QVariant>("bit"); // the whole number the text stands for; none when null
        QTest::addColumn<bool>("inRange");
        const QList<std::tuple<const char*, int, bool>> numbers{
            {"0", 0, true},      {"30", 30, true},   {"2.4", 2, true},    {"-0.4", 0, true},      {"2.5", 2, true},
            {"3.5", 4, true},    {"30.5", 30, true}, {"-0.5", 0, true},   {" 5 ", 5, true},       {"31", 31, false},
            {"30.6", 31, false}, {"-1", -1, false},  {"-0.6", -1, false}, {"32767", 32767, false}};
        for (const auto& [typed, bit, inRange] : numbers)
            QTest::addRow("\"%s\"", typed) << QString::fromLatin1(typed) << QVariant(bit) << inRange;
        for (const char* none : {"", "ten", "32768", "-32769", "32767.5", "1,000"})
            QTest::addRow("\"%s\"", none) << QString::fromLatin1(none) << QVariant() << false;
    }
    void calculatorArithmetic()
    {
        QFETCH(QString, typed);
        QFETCH(QVariant, bit);
        QFETCH(bool, inRange);
        const std::optional<qint16> number = bits::bitNumberFromText(typed);
        QCOMPARE(number ? QVariant(int(*number)) : QVariant(), bit);
        if (!number)
            return;
        const std::optional<qint32> value = bits::bitValue(*number);
        QCOMPARE(value.has_value(), inRange);
        qint64 expected = 1; // doubling 1 n times, as the author would by hand
        for (int i = 0; inRange && i < *number; ++i)
            expected *= 2;
        QCOMPARE(qint64(value.value_or(1)), expected);
    }

    // The display follows each move to a row, and only moves: typing and Add Record leave it.
    void bitNumberFollowsTheCurrentRow_data() { windowRows(BitWindows); }
    void bitNumberFollowsTheCurrentRow()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{8, -4, 3, 1, 6, 0}});
        QCOMPARE(f.text("Text1"), QStringLiteral("-4"));
        QCOMPARE(f.text("fldCalcBit"), QString()); // a negative id leaves the display as it was
        const QStringList moves{"Next record", "Next record",     "Next record",  "Next record",
                                "Next record", "Previous record", "First record", "Last record"};
        QStringList seen; // id=bit number after each move
        for (const QString& button : moves) {
            f.navigate(button);
            seen << f.text("Text1") + u'=' + f.text("fldCalcBit");
        }
        QCOMPARE(seen, QStringList({"0=0", "1=0", "3=2", "6=3", "8=3", "6=3", "-4=3", "8=3"}));
        QVERIFY(f.box("fldCalcBit")->isReadOnly());

        f.type("Text1", QStringLiteral("1024"));
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));
        f.click("Command1");
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));
        f.type("Text1", QStringLiteral("5")); // no power of 2, and stored all the same
        f.type("Text2", QStringLiteral("Odd one"));
        f.navigate(QStringLiteral("Previous record"));
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("10"));
        f.navigate(QStringLiteral("Last record"));
        QCOMPARE(f.text("Text1") + u'=' + f.text("fldCalcBit"), QStringLiteral("5=2"));
        QCOMPARE(f.ids(), QList<qint64>({-4, 0, 1, 3, 5, 6, 1024}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    void calculator_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("answer"); // empty: refused, the earlier answer stays
        using enum ReferenceTable;
        for (const auto& [window, typed, answer] :
             QList<std::tuple<ReferenceTable, const char*, const char*>>{{Items, "0", "1"},
                                                                         {Special, "30", "1073741824"},
                                                                         {Special, "31", ""},
                                                                         {Items, "", ""},
                                                                         {Special, "six", ""}})
            QTest::addRow("\"%s\"", typed) << int(window) << QString(typed) << QString(answer);
    }
    void calculator()
    {
        QFETCH(QString, typed);
        QFETCH(QString, answer);
        ReferenceFixture f;
        f.open(fetchWindow());
        f.box("fldResult")->setText(QStringLiteral("earlier"));
        f.type("fldBitNum", typed);
        f.click("btnCalc");
        QCOMPARE(f.dialogs.messages,
                 answer.isEmpty() ? QStringList{QStringLiteral("Number must be between 0 and 30")} : QStringList{});
        // Moves leave the calculator alone, and its answer goes nowhere by itself.
        f.navigate(QStringLiteral("Next record"));
        f.click("Command1");
        QVERIFY(f.text("Text1").isEmpty());
        QCOMPARE(f.text("fldResult"), answer.isEmpty() ? QStringLiteral("earlier") : answer);
        QCOMPARE(f.text("fldBitNum"), typed);
    }
};

QTEST_MAIN(TestReferenceEditors)
#include "tst_reference_editors.moc"
