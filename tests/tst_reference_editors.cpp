#include "tst_reference_fixture.h"

#include "config/frmConfig.h"
#include "store/ReferenceLists.h"

#include <QAction>
#include <QLabel>

using namespace tarn;
using namespace tarn::test;

// What the four reference editors share: opening, navigation, storing, Add Record,
// Delete Record and the refusal of text a column cannot hold.
class TestReferenceEditors : public QObject
{
    Q_OBJECT
private slots:
    void opensOnLowestIdAndMovesInIdOrder_data() { windows(); }
    void opensOnLowestIdAndMovesInIdOrder();
    void newRowIsStoredWhenLeft_data();
    void newRowIsStoredWhenLeft();
    void untouchedNewRowStoresNothing_data() { windows(); }
    void untouchedNewRowStoresNothing();
    void editIsStoredWhenLeft_data();
    void editIsStoredWhenLeft();
    void deleteInTheMiddleLandsOnLowestId_data() { windows(); }
    void deleteInTheMiddleLandsOnLowestId();
    void deleteOfTheOnlyRowLeavesAnEmptySet_data() { windows(); }
    void deleteOfTheOnlyRowLeavesAnEmptySet();
    void deleteOnPendingNewRowKeepsStoredRows_data() { windows(); }
    void deleteOnPendingNewRowKeepsStoredRows();
    void duplicateIdIsStored_data() { windows(); }
    void duplicateIdIsStored();
    void textTheColumnCannotHoldIsRefused_data();
    void textTheColumnCannotHoldIsRefused();
    void tabOrder_data();
    void tabOrder();
    void openedFromTheUpdateMenu_data();
    void openedFromTheUpdateMenu();
    void classEditorListsFollowTheStoredRows();

private:
    static void windows();
    static TableInfo fetchTable();
};

void TestReferenceEditors::windows()
{
    QTest::addColumn<int>("window");
    QTest::newRow("weapons") << int(ReferenceTable::Weapons);
    QTest::newRow("grenades") << int(ReferenceTable::Grenades);
    QTest::newRow("items") << int(ReferenceTable::Items);
    QTest::newRow("special") << int(ReferenceTable::Special);
}

TableInfo TestReferenceEditors::fetchTable()
{
    QFETCH(int, window);
    return tableInfo(ReferenceTable(window));
}

void TestReferenceEditors::opensOnLowestIdAndMovesInIdOrder()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {16, 2, 8});
    f.open(t.window);
    QCOMPARE(f.text("Text1"), QStringLiteral("2"));
    QCOMPARE(f.text("Text2"), QStringLiteral("Row 2"));

    const QList<std::pair<QString, QString>> moves{
        {"Next record", "8"},     {"Next record", "16"},    {"Next record", "16"}, {"Previous record", "8"},
        {"Previous record", "2"}, {"Previous record", "2"}, {"Last record", "16"}, {"First record", "2"}};
    for (const auto& [button, id] : moves) {
        f.navigate(button);
        QCOMPARE(f.text("Text1"), id);
    }
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({2, 8, 16}));
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceEditors::newRowIsStoredWhenLeft_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<QString>("leave");
    for (const QString leave : {"Next record", "First record", "close", "Add Record"}) {
        QTest::addRow("weapons, %s", qPrintable(leave)) << int(ReferenceTable::Weapons) << leave;
        QTest::addRow("special, %s", qPrintable(leave)) << int(ReferenceTable::Special) << leave;
    }
    QTest::newRow("grenades, close") << int(ReferenceTable::Grenades) << QStringLiteral("close");
    QTest::newRow("items, close") << int(ReferenceTable::Items) << QStringLiteral("close");
}

void TestReferenceEditors::newRowIsStoredWhenLeft()
{
    const TableInfo t = fetchTable();
    QFETCH(QString, leave);
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2});
    f.open(t.window);
    f.click("Command1");
    for (const char* name : {"Text1", "Text2", "Text5"})
        QVERIFY2(f.text(name).isEmpty(), name);
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2})); // nothing written yet

    f.type("Text1", QStringLiteral("64"));
    f.type("Text2", QStringLiteral("Mine's new"));
    f.type("Text5", QStringLiteral("0"));
    if (leave == QLatin1String("close"))
        QVERIFY(f.window->close());
    else if (leave == QLatin1String("Add Record"))
        f.click("Command1");
    else
        f.navigate(leave);

    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2, 64}));
    QCOMPARE(storedValue(f.data.refDb(), t, t.name, 64).toString(), QStringLiteral("Mine's new"));
    QCOMPARE(storedValue(f.data.refDb(), t, QStringLiteral("kd_enabled"), 64).toInt(), 0);
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceEditors::untouchedNewRowStoresNothing()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2});
    f.open(t.window);
    f.click("Command1");
    f.navigate(QStringLiteral("Previous record"));
    f.click("Command1");
    f.click("Command1");
    QVERIFY(f.window->close());
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2}));
}

void TestReferenceEditors::editIsStoredWhenLeft_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<bool>("byClosing");
    QTest::newRow("weapons, moving") << int(ReferenceTable::Weapons) << false;
    QTest::newRow("weapons, closing") << int(ReferenceTable::Weapons) << true;
    QTest::newRow("grenades, closing") << int(ReferenceTable::Grenades) << true;
    QTest::newRow("items, moving") << int(ReferenceTable::Items) << false;
    QTest::newRow("special, closing") << int(ReferenceTable::Special) << true;
}

void TestReferenceEditors::editIsStoredWhenLeft()
{
    const TableInfo t = fetchTable();
    QFETCH(bool, byClosing);
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2, 4});
    f.open(t.window);
    f.navigate(QStringLiteral("Next record"));
    f.type("Text2", QStringLiteral("Renamed"));
    f.type("Text5", QString()); // a blank box stores a missing value
    if (byClosing)
        QVERIFY(f.window->close());
    else
        f.navigate(QStringLiteral("Next record"));
    QCOMPARE(storedValue(f.data.refDb(), t, t.name, 2).toString(), QStringLiteral("Renamed"));
    QVERIFY(storedValue(f.data.refDb(), t, QStringLiteral("kd_enabled"), 2).isNull());
    QCOMPARE(storedValue(f.data.refDb(), t, t.name, 4).toString(), QStringLiteral("Row 4"));
}

void TestReferenceEditors::deleteInTheMiddleLandsOnLowestId()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2, 4, 8});
    f.open(t.window);
    f.navigate(QStringLiteral("Last record"));
    f.navigate(QStringLiteral("Previous record"));
    f.click("Command2");
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2, 8}));
    QCOMPARE(f.text("Text1"), QStringLiteral("1"));
    f.navigate(QStringLiteral("Last record"));
    QCOMPARE(f.text("Text1"), QStringLiteral("8"));
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceEditors::deleteOfTheOnlyRowLeavesAnEmptySet()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {4});
    f.open(t.window);
    f.click("Command2");
    QVERIFY(storedIds(f.data.refDb(), t).isEmpty());
    for (const char* name : {"Text1", "Text2", "Text5"})
        QVERIFY2(f.text(name).isEmpty(), name);

    f.click("Command2"); // nothing is left to delete
    f.navigate(QStringLiteral("Next record"));
    f.click("Command1");
    f.type("Text1", QStringLiteral("32"));
    f.type("Text2", QStringLiteral("Only one"));
    QVERIFY(f.window->close());
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({32}));
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceEditors::deleteOnPendingNewRowKeepsStoredRows()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2, 4});
    f.open(t.window);
    f.navigate(QStringLiteral("Last record"));
    f.click("Command1");
    f.type("Text1", QStringLiteral("8"));
    f.click("Command2");
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2, 4}));
    QCOMPARE(f.text("Text1"), QStringLiteral("1"));
    QVERIFY(f.window->close());
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2, 4}));
}

void TestReferenceEditors::duplicateIdIsStored()
{
    const TableInfo t = fetchTable();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2});
    f.open(t.window);
    f.click("Command1");
    f.type("Text1", QStringLiteral("2"));
    f.type("Text2", QStringLiteral("Twin"));
    QVERIFY(f.window->close());
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2, 2}));
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceEditors::textTheColumnCannotHoldIsRefused_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("field");
    const auto row = [](const char* name, ReferenceTable window, const char* box, const char* typed,
                        const char* field) {
        QTest::newRow(name) << int(window) << QString::fromLatin1(box) << QString::fromLatin1(typed)
                            << QString::fromLatin1(field);
    };
    row("weapon id letters", ReferenceTable::Weapons, "Text1", "two", "Weapon ID");
    row("weapon id beyond 16 bits", ReferenceTable::Weapons, "Text1", "40000", "Weapon ID");
    row("weapon enabled mark", ReferenceTable::Weapons, "Text5", "yes", "Enabled? (1=yes)");
    row("grenade id fraction", ReferenceTable::Grenades, "Text1", "2.5", "Grenade ID");
    row("item id beyond 32 bits", ReferenceTable::Items, "Text1", "2147483648", "Item ID");
    row("special id letters", ReferenceTable::Special, "Text1", "bit", "Special ID");
}

void TestReferenceEditors::textTheColumnCannotHoldIsRefused()
{
    const TableInfo t = fetchTable();
    QFETCH(QString, box);
    QFETCH(QString, typed);
    QFETCH(QString, field);
    const QByteArray name = box.toLatin1();
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {1, 2});
    f.open(t.window);
    f.type("Text2", QStringLiteral("Kept"));
    f.type(name, typed);

    f.navigate(QStringLiteral("Next record"));
    QCOMPARE(f.dialogs.messages.size(), 1);
    QVERIFY2(f.dialogs.messages[0].contains(field) && f.dialogs.messages[0].contains(typed),
             qPrintable(f.dialogs.messages[0]));
    QCOMPARE(f.text(name), typed);
    QCOMPARE(f.text("Text2"), QStringLiteral("Kept"));
    QVERIFY(!f.window->close());
    QVERIFY(f.window->isVisible());
    QCOMPARE(f.dialogs.messages.size(), 2);
    QCOMPARE(storedValue(f.data.refDb(), t, t.name, 1).toString(), QStringLiteral("Row 1"));

    // Corrected, the same row is stored whole, and nothing else was touched.
    f.type(name, QStringLiteral("1"));
    QVERIFY(f.window->close());
    QCOMPARE(storedValue(f.data.refDb(), t, t.name, 1).toString(), QStringLiteral("Kept"));
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2}));
}

void TestReferenceEditors::tabOrder_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<QStringList>("order");
    const QStringList armoury{"Text1", "Text2", "Text3", "Text4", "Text5", "Command1", "Command2"};
    const QStringList bits{"Text1", "Text2", "Text5", "Command1", "Command2", "fldBitNum", "btnCalc", "fldResult"};
    QTest::newRow("weapons") << int(ReferenceTable::Weapons) << armoury;
    QTest::newRow("grenades") << int(ReferenceTable::Grenades) << armoury;
    QTest::newRow("items") << int(ReferenceTable::Items) << bits;
    QTest::newRow("special") << int(ReferenceTable::Special) << bits;
}

void TestReferenceEditors::tabOrder()
{
    const TableInfo t = fetchTable();
    QFETCH(QStringList, order);
    ReferenceFixture f;
    f.open(t.window);
    // The named controls come in this order in the focus chain; the navigator's own
    // buttons may follow them.
    QStringList chain;
    QWidget* widget = f.window->findChild<QWidget*>(order.first());
    for (int i = 0; i < 40 && chain.size() < order.size(); ++i, widget = widget->nextInFocusChain()) {
        if (order.contains(widget->objectName()) && !chain.contains(widget->objectName()))
            chain << widget->objectName();
    }
    QCOMPARE(chain, order);
}

void TestReferenceEditors::openedFromTheUpdateMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("navigator");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("firstLabel");
    const auto row = [](const char* action, const char* window, const char* title, const char* navigator,
                        const char* caption, const char* firstLabel) {
        QTest::newRow(window) << QString::fromLatin1(action) << QString::fromLatin1(window)
                              << QString::fromLatin1(title) << QString::fromLatin1(navigator)
                              << QString::fromLatin1(caption) << QString::fromLatin1(firstLabel);
    };
    row("mnuUpdateWeapons", "frmWeapons", "Edit Weapons", "dbWeapons", "Weapons", "Weapon ID:");
    row("mnuUpdateGrenades", "frmGrenades", "Edit Grenades", "dbGrenades", "Grenades", "Grenade ID:");
    row("mnuEditSpecial", "frmSpecial", "Edit Special", "dbSpecial", "Special", "Special ID:");
    row("mnuEditItems", "frmItems", "Edit Items", "dbItems", "Items", "Item ID:");
}

void TestReferenceEditors::openedFromTheUpdateMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, window);
    QFETCH(QString, title);
    QFETCH(QString, navigator);
    QFETCH(QString, caption);
    QFETCH(QString, firstLabel);
    TempData data;
    ScriptedDialogs dialogs;
    frmConfig main(*data.state, dialogs);
    bool inspected = false;
    dialogs.onModal = [&](QWidget& shown) {
        inspected = true;
        QCOMPARE(shown.windowTitle(), title);
        QVERIFY(shown.isWindow() && shown.isVisible());
        const auto* data = shown.findChild<DataControl*>(navigator);
        QVERIFY(data);
        QCOMPARE(data->caption(), caption);
        QCOMPARE(plain(shown.findChild<QLabel*>(QStringLiteral("Label1"))->text()), firstLabel);
        // The starting rows begin at id 0 for the armoury and at bit 0 for the others.
        const QString lowest = shown.findChild<QLineEdit*>(QStringLiteral("Text1"))->text();
        QVERIFY2(lowest == QLatin1String("0") || lowest == QLatin1String("1"), qPrintable(lowest));
    };
    main.findChild<QAction*>(action)->trigger();
    QVERIFY(inspected);
    QCOMPARE(dialogs.modalWindows, QStringList{window});
    QVERIFY(dialogs.messages.isEmpty());
}

void TestReferenceEditors::classEditorListsFollowTheStoredRows()
{
    ReferenceFixture f;
    resetRows(f.data.refDb(), tableInfo(ReferenceTable::Weapons), {2, 3});
    resetRows(f.data.refDb(), tableInfo(ReferenceTable::Items), {1, 2, 4});
    f.open(ReferenceTable::Weapons);
    f.type("Text2", QStringLiteral("Nailgun"));
    f.navigate(QStringLiteral("Next record"));
    f.type("Text5", QStringLiteral("0"));
    f.click("Command1");
    f.type("Text1", QStringLiteral("5"));
    f.type("Text2", QStringLiteral("Flamer"));
    f.type("Text5", QStringLiteral("1"));
    QVERIFY(f.window->close());
    f.open(ReferenceTable::Weapons); // a weapon taken out of the pickers stays here
    f.navigate(QStringLiteral("Next record"));
    QCOMPARE(f.text("Text2"), QStringLiteral("Row 3"));
    QVERIFY(f.window->close());

    f.open(ReferenceTable::Items); // for items a blank mark counts as enabled
    f.type("Text5", QString());
    f.navigate(QStringLiteral("Next record"));
    f.type("Text5", QStringLiteral("2"));
    QVERIFY(f.window->close());

    const ReferenceLists lists = loadReferenceLists(f.data.refDb());
    QStringList offered;
    for (const PickerEntry& entry : lists.weapons)
        offered << QStringLiteral("%1=%2").arg(entry.id).arg(entry.name);
    QCOMPARE(offered, QStringList({"2=Nailgun", "5=Flamer"}));
    QStringList boxes;
    for (const BoxEntry& entry : lists.items)
        boxes << QStringLiteral("%1:%2").arg(entry.id).arg(entry.enabled ? "on" : "greyed");
    QCOMPARE(boxes, QStringList({"1:on", "2:greyed", "4:on"}));
}

QTEST_MAIN(TestReferenceEditors)
#include "tst_reference_editors.moc"
