#include "tst_reference_fixture.h"

#include "config/frmConfig.h"
#include "store/ReferenceLists.h"

#include <QAction>
#include <QLabel>

using namespace tarn;
using namespace tarn::test;

namespace
{

ReferenceTable fetchWindow()
{
    QFETCH(int, window);
    return ReferenceTable(window);
}

} // namespace

// What the four reference editors share: opening, navigation, storing, Add Record,
// Delete Record and the refusal of text a column cannot hold.
class TestReferenceEditors : public QObject
{
    Q_OBJECT

private slots:
    void opensOnLowestIdAndMovesInIdOrder_data() { allWindows(); }
    void opensOnLowestIdAndMovesInIdOrder()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{16, 2, 8}});
        QCOMPARE(f.text("Text1"), QStringLiteral("2"));
        QCOMPARE(f.text("Text2"), QStringLiteral("Row 2"));
        const QList<std::pair<QString, QString>> moves{
            {"Next record", "8"},     {"Next record", "16"},    {"Next record", "16"}, {"Previous record", "8"},
            {"Previous record", "2"}, {"Previous record", "2"}, {"Last record", "16"}, {"First record", "2"}};
        for (const auto& [button, id] : moves) {
            f.navigate(button);
            QCOMPARE(f.text("Text1"), id);
        }
        QCOMPARE(f.ids(), QList<qint64>({2, 8, 16}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    // An untouched new row stores nothing, however it is left.
    void newRowIsStoredWhenLeft_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("leave");
        QTest::newRow("weapons, next") << int(ReferenceTable::Weapons) << "Next record";
        QTest::newRow("grenades, Add Record") << int(ReferenceTable::Grenades) << "Add Record";
        QTest::newRow("items, close") << int(ReferenceTable::Items) << "close";
        QTest::newRow("special, first") << int(ReferenceTable::Special) << "First record";
    }
    void newRowIsStoredWhenLeft()
    {
        QFETCH(QString, leave);
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2}});
        f.click("Command1");
        f.navigate(QStringLiteral("Previous record"));
        f.click("Command1");
        f.click("Command1");
        for (const char* name : {"Text1", "Text2", "Text5"})
            QVERIFY2(f.text(name).isEmpty(), name);
        QCOMPARE(f.ids(), QList<qint64>({1, 2}));

        f.type("Text1", QStringLiteral("64"));
        f.type("Text2", QStringLiteral("Mine's new"));
        f.type("Text5", QStringLiteral("0"));
        if (leave == QLatin1String("close"))
            QVERIFY(f.window->close());
        else if (leave == QLatin1String("Add Record"))
            f.click("Command1");
        else
            f.navigate(leave);
        QCOMPARE(f.ids(), QList<qint64>({1, 2, 64}));
        QCOMPARE(f.stored(f.t.name, 64), QStringLiteral("Mine's new"));
        QCOMPARE(f.stored("kd_enabled", 64), QStringLiteral("0"));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    void editIsStoredWhenLeft_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<bool>("byClosing");
        QTest::newRow("weapons, moving") << int(ReferenceTable::Weapons) << false;
        QTest::newRow("special, closing") << int(ReferenceTable::Special) << true;
    }
    void editIsStoredWhenLeft()
    {
        QFETCH(bool, byClosing);
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2, 4}});
        f.navigate(QStringLiteral("Next record"));
        f.type("Text2", QStringLiteral("Renamed"));
        f.type("Text5", QString()); // a blank box stores a missing value
        if (byClosing)
            QVERIFY(f.window->close());
        else
            f.navigate(QStringLiteral("Next record"));
        QCOMPARE(f.stored(f.t.name, 2), QStringLiteral("Renamed"));
        QCOMPARE(f.stored("kd_enabled", 2), QStringLiteral("<null>"));
        QCOMPARE(f.stored(f.t.name, 4), QStringLiteral("Row 4"));
    }

    void deleteInTheMiddleLandsOnLowestId_data() { allWindows(); }
    void deleteInTheMiddleLandsOnLowestId()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2, 4, 8}});
        f.navigate(QStringLiteral("Last record"));
        f.navigate(QStringLiteral("Previous record"));
        f.click("Command2");
        QCOMPARE(f.ids(), QList<qint64>({1, 2, 8}));
        QCOMPARE(f.text("Text1"), QStringLiteral("1"));
        f.navigate(QStringLiteral("Last record"));
        QCOMPARE(f.text("Text1"), QStringLiteral("8"));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    void deleteOfTheOnlyRowLeavesAnEmptySet_data() { allWindows(); }
    void deleteOfTheOnlyRowLeavesAnEmptySet()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{4}});
        f.click("Command2");
        QVERIFY(f.ids().isEmpty());
        for (const char* name : {"Text1", "Text2", "Text5"})
            QVERIFY2(f.text(name).isEmpty(), name);
        f.click("Command2"); // nothing is left to delete
        f.navigate(QStringLiteral("Next record"));
        f.click("Command1");
        f.type("Text1", QStringLiteral("32"));
        f.type("Text2", QStringLiteral("Only one"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), QList<qint64>({32}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }

    void deleteOnPendingNewRowKeepsStoredRows_data() { allWindows(); }
    void deleteOnPendingNewRowKeepsStoredRows()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2, 4}});
        f.navigate(QStringLiteral("Last record"));
        f.click("Command1");
        f.type("Text1", QStringLiteral("8"));
        f.click("Command2");
        QCOMPARE(f.ids(), QList<qint64>({1, 2, 4}));
        QCOMPARE(f.text("Text1"), QStringLiteral("1"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), QList<qint64>({1, 2, 4}));
    }

    void textTheColumnCannotHoldIsRefused_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("field");
        QTest::newRow("weapon id letters") << int(ReferenceTable::Weapons) << "Text1"
                                           << "two"
                                           << "Weapon ID";
        QTest::newRow("weapon id beyond 16 bits") << int(ReferenceTable::Weapons) << "Text1"
                                                  << "40000"
                                                  << "Weapon ID";
        QTest::newRow("weapon enabled mark") << int(ReferenceTable::Weapons) << "Text5"
                                             << "yes"
                                             << "Enabled? (1=yes)";
        QTest::newRow("grenade id fraction") << int(ReferenceTable::Grenades) << "Text1"
                                             << "2.5"
                                             << "Grenade ID";
        QTest::newRow("item id beyond 32 bits") << int(ReferenceTable::Items) << "Text1"
                                                << "2147483648"
                                                << "Item ID";
        QTest::newRow("special id letters") << int(ReferenceTable::Special) << "Text1"
                                            << "bit"
                                            << "Special ID";
    }
    void textTheColumnCannotHoldIsRefused()
    {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, field);
        const QByteArray name = box.toLatin1();
        ReferenceFixture f;
        f.open(fetchWindow(), {{1, 2}});
        f.type("Text2", QStringLiteral("Kept"));
        f.type(name, typed);
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(f.dialogs.messages.size(), 1);
        QVERIFY2(f.dialogs.messages[0].startsWith(field + " cannot be \"" + typed + "\": it must be "),
                 qPrintable(f.dialogs.messages[0]));
        QCOMPARE(f.text(name), typed);
        QCOMPARE(f.text("Text2"), QStringLiteral("Kept"));
        QVERIFY(!f.window->close());
        QVERIFY(f.window->isVisible());
        QCOMPARE(f.dialogs.messages.size(), 2);
        QCOMPARE(f.stored(f.t.name, 1), QStringLiteral("Row 1"));

        // Corrected, the same row is stored whole, and nothing else was touched.
        f.type(name, QStringLiteral("1"));
        QVERIFY(f.window->close());
        QCOMPARE(f.stored(f.t.name, 1), QStringLiteral("Kept"));
        QCOMPARE(f.ids(), QList<qint64>({1, 2}));
    }

    void tabOrder_data()
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
    void tabOrder()
    {
        QFETCH(QStringList, order);
        ReferenceFixture f;
        f.open(fetchWindow());
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

    void openedFromTheUpdateMenu_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QStringList>("expected"); // window, title, navigator caption, first label
        QTest::newRow("weapons") << "mnuUpdateWeapons"
                                 << QStringList{"frmWeapons", "Edit Weapons", "dbWeapons", "Weapons", "Weapon ID:"};
        QTest::newRow("grenades") << "mnuUpdateGrenades"
                                  << QStringList{"frmGrenades", "Edit Grenades", "dbGrenades", "Grenades",
                                                 "Grenade ID:"};
        QTest::newRow("special") << "mnuEditSpecial"
                                 << QStringList{"frmSpecial", "Edit Special", "dbSpecial", "Special", "Special ID:"};
        QTest::newRow("items") << "mnuEditItems"
                               << QStringList{"frmItems", "Edit Items", "dbItems", "Items", "Item ID:"};
    }
    void openedFromTheUpdateMenu()
    {
        QFETCH(QString, action);
        QFETCH(QStringList, expected);
        TempData data;
        ScriptedDialogs dialogs;
        frmConfig main(*data.state, dialogs);
        QStringList seen;
        dialogs.onModal = [&](QWidget& shown) {
            const auto* navigator = shown.findChild<DataControl*>();
            seen << shown.objectName() << shown.windowTitle() << navigator->objectName() << navigator->caption()
                 << plain(shown.findChild<QLabel*>(QStringLiteral("Label1"))->text());
            QVERIFY(shown.isWindow() && shown.isVisible());
            // The starting rows begin at id 0 for the armoury and at bit 0 for the others.
            const QString lowest = shown.findChild<QLineEdit*>(QStringLiteral("Text1"))->text();
            QVERIFY2(lowest == QLatin1String("0") || lowest == QLatin1String("1"), qPrintable(lowest));
        };
        main.findChild<QAction*>(action)->trigger();
        QCOMPARE(seen, expected);
        QCOMPARE(dialogs.modalWindows, QStringList{expected.first()});
        QVERIFY(dialogs.messages.isEmpty());
    }

    // Ids need not be unique; a disabled weapon leaves the pickers but not this window,
    // and for items a blank mark counts as enabled.
    void classEditorListsFollowTheStoredRows()
    {
        ReferenceFixture f;
        resetRows(f.data.refDb(), tableInfo(ReferenceTable::Items), {1, 2, 4});
        f.open(ReferenceTable::Weapons, {{2, 3}});
        f.type("Text2", QStringLiteral("Nailgun"));
        f.navigate(QStringLiteral("Next record"));
        f.type("Text5", QStringLiteral("0"));
        f.click("Command1");
        f.type("Text1", QStringLiteral("3"));
        f.type("Text2", QStringLiteral("Flamer"));
        f.type("Text5", QStringLiteral("1"));
        QVERIFY(f.window->close());
        QCOMPARE(rowsOf(f.data.refDb(), "select w_id, w_name, kd_enabled from weapon order by rowid"),
                 (QStringList{"2|Nailgun|1", "3|Row 3|0", "3|Flamer|1"}));
        f.open(ReferenceTable::Weapons);
        QCOMPARE(f.navigator().recordCount(), 3);
        QVERIFY(f.window->close());

        f.open(ReferenceTable::Items);
        f.type("Text5", QString());
        f.navigate(QStringLiteral("Next record"));
        f.type("Text5", QStringLiteral("2"));
        QVERIFY(f.window->close());

        const ReferenceLists lists = loadReferenceLists(f.data.refDb());
        QStringList offered;
        for (const PickerEntry& entry : lists.weapons)
            offered << QStringLiteral("%1=%2").arg(entry.id).arg(entry.name);
        QCOMPARE(offered, QStringList({"2=Nailgun", "3=Flamer"}));
        QStringList boxes;
        for (const BoxEntry& entry : lists.items)
            boxes << QStringLiteral("%1:%2").arg(entry.id).arg(entry.enabled ? "on" : "greyed");
        QCOMPARE(boxes, QStringList({"1:on", "2:greyed", "4:on"}));
    }
};

QTEST_MAIN(TestReferenceEditors)
#include "tst_reference_editors.moc"
