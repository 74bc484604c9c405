#include "tst_reference_fixture.h"

#include "config/frmConfig.h"

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
        else if (leave == QLatin1String("Add Record"))
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

    // Delete lands on the lowest id; on a new row not yet stored it stores nothing.
    void deleteLandsOnTheLowestId_data() { allWindows(); }
    void deleteLandsOnTheLowestId()
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
        f.click("Command1");
        f.type("Text1", QStringLiteral("16"));
        f.click("Command2");
        QCOMPARE(f.text("Text1"), QStringLiteral("1"));
        QVERIFY(f.window->close());
        QCOMPARE(f.ids(), QList<qint64>({1, 2, 8}));
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

    // The bounds of each kind of column are the store's own test; here, what the window does.
    void textTheColumnCannotHoldIsRefused_data()
    {
        QTest::addColumn<int>("window");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("field");
        using enum ReferenceTable;
        const QList<std::tuple<ReferenceTable, const char*, const char*, const char*>> rows{
            {Weapons, "Text1", "two", "Weapon ID"},
            {Weapons, "Text5", "yes", "Enabled? (1=yes)"},
            {Grenades, "Text1", "2.5", "Grenade ID"},
            {Items, "Text1", "2147483648", "Item ID"},
            {Special, "Text1", "bit", "Special ID"}};
        for (const auto& [window, box, typed, field] : rows)
            QTest::addRow("%s \"%s\"", field, typed) << int(window) << QString(box) << QString(typed) << QString(field);
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
            // The starting rows begin at id 0 for the armoury and at bit 0 for the others.
            const QString lowest = shown.findChild<QLineEdit*>(QStringLiteral("Text1"))->text();
            QVERIFY2(lowest == QLatin1String("0") || lowest == QLatin1String("1"), qPrintable(lowest));
        };
        main.findChild<QAction*>(action)->trigger();
        QCOMPARE(seen.join(u'|'), expected);
        QCOMPARE(dialogs.modalWindows, QStringList{seen.value(0)});
        QVERIFY(dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(TestReferenceEditors)
#include "tst_reference_editors.moc"
