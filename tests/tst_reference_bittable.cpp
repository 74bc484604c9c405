#include "reference/BitNumbers.h"
#include "tst_reference_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace
{

const QList<ReferenceTable> BitWindows{ReferenceTable::Items, ReferenceTable::Special};

ReferenceTable fetchWindow()
{
    QFETCH(int, window);
    return ReferenceTable(window);
}

} // namespace

// The item and ability editors' own parts, the bit number of the current row and the
// bit calculator: their arithmetic first, then the windows.
class TestReferenceBitTable : public QObject
{
    Q_OBJECT

private slots:
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

    void powersOfTwoShowTheirExponent()
    {
        for (int k = 0; k <= 30; ++k)
            QCOMPARE(bits::halvingCount(qint32(1) << k), k);
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
        QCOMPARE(f.text("fldResult"), answer.isEmpty() ? QStringLiteral("earlier") : answer);
        QCOMPARE(f.text("fldBitNum"), typed);
    }

    // On an empty table too the calculator works; its answer goes nowhere by itself,
    // and moves leave it alone.
    void emptyTable_data() { windowRows(BitWindows); }
    void emptyTable()
    {
        ReferenceFixture f;
        f.open(fetchWindow(), {{}});
        for (const char* name : {"Text1", "Text2", "Text5", "fldCalcBit"})
            QVERIFY2(f.text(name).isEmpty(), name);
        f.type("fldBitNum", QStringLiteral("4"));
        f.click("btnCalc");
        QCOMPARE(f.text("fldResult"), QStringLiteral("16"));
        f.click("Command1");
        QVERIFY(f.text("Text1").isEmpty());
        f.type("Text1", QStringLiteral("16"));
        f.type("Text2", QStringLiteral("First"));
        f.navigate(QStringLiteral("Next record"));
        QCOMPARE(f.text("fldCalcBit"), QStringLiteral("4"));
        QCOMPARE(f.text("fldBitNum") + u'=' + f.text("fldResult"), QStringLiteral("4=16"));
        QCOMPARE(f.ids(), QList<qint64>({16}));
        QVERIFY(f.dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(TestReferenceBitTable)
#include "tst_reference_bittable.moc"
