#include "tst_reference_fixture.h"

using namespace tarn;
using namespace tarn::test;

// The item and ability editors' own parts: the bit number of the current row and the
// bit calculator.
class TestReferenceBitTable : public QObject
{
    Q_OBJECT
private slots:
    void bitNumberFollowsTheCurrentRow_data() { windows(); }
    void bitNumberFollowsTheCurrentRow();
    void bitNumberWaitsForTheNextRow_data() { windows(); }
    void bitNumberWaitsForTheNextRow();
    void calculator_data();
    void calculator();
    void calculatorIsLeftAloneByMoves();
    void emptyTable_data() { windows(); }
    void emptyTable();

private:
    static void windows();
};

void TestReferenceBitTable::windows()
{
    QTest::addColumn<int>("window");
    QTest::newRow("items") << int(ReferenceTable::Items);
    QTest::newRow("special") << int(ReferenceTable::Special);
}

void TestReferenceBitTable::bitNumberFollowsTheCurrentRow()
{
    QFETCH(int, window);
    const TableInfo t = tableInfo(ReferenceTable(window));
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {8, -4, 3, 1, 6, 0});
    f.open(t.window);
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
    QVERIFY(f.dialogs.messages.isEmpty());
    QVERIFY(f.box("fldCalcBit")->isReadOnly());
}

void TestReferenceBitTable::bitNumberWaitsForTheNextRow()
{
    QFETCH(int, window);
    const TableInfo t = tableInfo(ReferenceTable(window));
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {2, 8});
    f.open(t.window);
    f.navigate(QStringLiteral("Last record"));
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));

    f.type("Text1", QStringLiteral("1024")); // typing is not a move
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));
    f.click("Command1");
    QCOMPARE(f.text("Text1"), QString());
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("3"));

    f.type("Text1", QStringLiteral("3")); // no power of 2, and stored all the same
    f.type("Text2", QStringLiteral("Odd one"));
    f.navigate(QStringLiteral("First record"));
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("1"));
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({2, 3, 1024}));
    f.navigate(QStringLiteral("Last record"));
    QCOMPARE(f.text("Text1"), QStringLiteral("3"));
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("2"));
    QVERIFY(f.dialogs.messages.isEmpty());
}

void TestReferenceBitTable::calculator_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("answer"); // empty: refused, the earlier answer stays
    const auto row = [](ReferenceTable window, const char* typed, const char* answer) {
        QTest::newRow(typed) << int(window) << QString::fromLatin1(typed) << QString::fromLatin1(answer);
    };
    row(ReferenceTable::Items, "0", "1");
    row(ReferenceTable::Special, "30", "1073741824");
    row(ReferenceTable::Items, "2.4", "4");
    row(ReferenceTable::Special, "31", "");
    row(ReferenceTable::Items, "", "");
    row(ReferenceTable::Special, "six", "");
}

void TestReferenceBitTable::calculator()
{
    QFETCH(int, window);
    QFETCH(QString, typed);
    QFETCH(QString, answer);
    ReferenceFixture f;
    f.open(ReferenceTable(window));
    f.box("fldResult")->setText(QStringLiteral("earlier"));
    f.type("fldBitNum", typed);
    f.click("btnCalc");
    if (answer.isEmpty()) {
        QCOMPARE(f.dialogs.messages, QStringList{QStringLiteral("Number must be between 0 and 30")});
        QCOMPARE(f.text("fldResult"), QStringLiteral("earlier"));
    } else {
        QVERIFY(f.dialogs.messages.isEmpty());
        QCOMPARE(f.text("fldResult"), answer);
    }
    QCOMPARE(f.text("fldBitNum"), typed);
}

void TestReferenceBitTable::calculatorIsLeftAloneByMoves()
{
    ReferenceFixture f;
    const TableInfo t = tableInfo(ReferenceTable::Special);
    resetRows(f.data.refDb(), t, {1, 2});
    f.open(t.window);
    f.type("fldBitNum", QStringLiteral("5"));
    f.click("btnCalc");
    f.navigate(QStringLiteral("Next record"));
    f.click("Command1");
    QCOMPARE(f.text("fldBitNum"), QStringLiteral("5"));
    QCOMPARE(f.text("fldResult"), QStringLiteral("32"));
    QVERIFY(f.text("Text1").isEmpty()); // the answer goes nowhere by itself
    QVERIFY(f.window->close());
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({1, 2}));
}

void TestReferenceBitTable::emptyTable()
{
    QFETCH(int, window);
    const TableInfo t = tableInfo(ReferenceTable(window));
    ReferenceFixture f;
    resetRows(f.data.refDb(), t, {});
    f.open(t.window);
    for (const char* name : {"Text1", "Text2", "Text5", "fldCalcBit"})
        QVERIFY2(f.text(name).isEmpty(), name);
    f.type("fldBitNum", QStringLiteral("4"));
    f.click("btnCalc");
    QCOMPARE(f.text("fldResult"), QStringLiteral("16"));

    f.click("Command1");
    f.type("Text1", QStringLiteral("16"));
    f.type("Text2", QStringLiteral("First"));
    f.navigate(QStringLiteral("Next record"));
    QCOMPARE(f.text("fldCalcBit"), QStringLiteral("4"));
    QCOMPARE(storedIds(f.data.refDb(), t), QList<qint64>({16}));
    QVERIFY(f.dialogs.messages.isEmpty());
}

QTEST_MAIN(TestReferenceBitTable)
#include "tst_reference_bittable.moc"
