#include "reference/BitNumbers.h"

#include <QTest>

using namespace tarn;

// The bit arithmetic of the item and ability editors, away from any window.
class TestReferenceBits : public QObject
{
    Q_OBJECT
private slots:
    void halvingCount_data();
    void halvingCount();
    void powersOfTwoShowTheirExponent();
    void idTextWithoutBitNumber_data();
    void idTextWithoutBitNumber();
    void calculator_data();
    void calculator();
    void calculatorTextWithoutNumber_data();
    void calculatorTextWithoutNumber();
};

void TestReferenceBits::halvingCount_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("bit");
    // Every id the display is known to show, non-powers included.
    const QList<std::pair<qint64, int>> table{
        {0, 0},  {1, 0},  {2, 1},   {3, 2},     {4, 2},           {5, 2},           {6, 3},
        {7, 3},  {8, 3},  {9, 3},   {10, 3},    {11, 4},          {12, 4},          {16, 4},
        {21, 4}, {22, 5}, {100, 7}, {1000, 10}, {1073741824, 30}, {1073741825, 30}, {2147483647, 31}};
    for (const auto& [id, bit] : table)
        QTest::addRow("%lld", id) << QString::number(id) << bit;
    QTest::addRow("blanks around") << QStringLiteral(" 8 ") << 3;
}

void TestReferenceBits::halvingCount()
{
    QFETCH(QString, id);
    QFETCH(int, bit);
    QCOMPARE(bits::bitNumberOfId(id), std::optional<int>(bit));
}

void TestReferenceBits::powersOfTwoShowTheirExponent()
{
    for (int k = 0; k <= 30; ++k)
        QCOMPARE(bits::halvingCount(qint32(1) << k), k);
}

void TestReferenceBits::idTextWithoutBitNumber_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("empty") << QString();
    QTest::newRow("negative") << QStringLiteral("-4");
    QTest::newRow("smallest") << QStringLiteral("-2147483648");
    QTest::newRow("letters") << QStringLiteral("eight");
    QTest::newRow("fraction") << QStringLiteral("8.5");
    QTest::newRow("beyond 32 bits") << QStringLiteral("2147483648");
}

void TestReferenceBits::idTextWithoutBitNumber()
{
    QFETCH(QString, id);
    QCOMPARE(bits::bitNumberOfId(id), std::nullopt);
}

void TestReferenceBits::calculator_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("inRange");
    QTest::addColumn<int>("bit"); // the whole number the typed text stands for

    QTest::newRow("0") << QStringLiteral("0") << true << 0;
    QTest::newRow("1") << QStringLiteral("1") << true << 1;
    QTest::newRow("10") << QStringLiteral("10") << true << 10;
    QTest::newRow("30") << QStringLiteral("30") << true << 30;
    QTest::newRow("2.4 rounds down") << QStringLiteral("2.4") << true << 2;
    QTest::newRow("30.4 rounds down") << QStringLiteral("30.4") << true << 30;
    QTest::newRow("-0.4 rounds to 0") << QStringLiteral("-0.4") << true << 0;
    QTest::newRow("2.5 goes to even 2") << QStringLiteral("2.5") << true << 2;
    QTest::newRow("3.5 goes to even 4") << QStringLiteral("3.5") << true << 4;
    QTest::newRow("30.5 goes to even 30") << QStringLiteral("30.5") << true << 30;
    QTest::newRow("-0.5 goes to even 0") << QStringLiteral("-0.5") << true << 0;
    QTest::newRow("blanks around") << QStringLiteral(" 5 ") << true << 5;
    QTest::newRow("31") << QStringLiteral("31") << false << 31;
    QTest::newRow("30.6 rounds up to 31") << QStringLiteral("30.6") << false << 31;
    QTest::newRow("-1") << QStringLiteral("-1") << false << -1;
    QTest::newRow("-0.6 rounds to -1") << QStringLiteral("-0.6") << false << -1;
    QTest::newRow("largest 16-bit") << QStringLiteral("32767") << false << 32767;
}

void TestReferenceBits::calculator()
{
    QFETCH(QString, typed);
    QFETCH(bool, inRange);
    QFETCH(int, bit);
    QCOMPARE(bits::bitNumberFromText(typed), std::optional<qint16>(qint16(bit)));
    const std::optional<qint32> id = bits::bitValue(bit);
    QCOMPARE(id.has_value(), inRange);
    if (inRange) {
        // Doubling 1 n times, as the author would by hand.
        qint64 expected = 1;
        for (int i = 0; i < bit; ++i)
            expected *= 2;
        QCOMPARE(qint64(*id), expected);
    }
}

void TestReferenceBits::calculatorTextWithoutNumber_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty") << QString();
    QTest::newRow("letters") << QStringLiteral("ten");
    QTest::newRow("beyond 16 bits") << QStringLiteral("32768");
    QTest::newRow("below 16 bits") << QStringLiteral("-32769");
    QTest::newRow("rounds beyond 16 bits") << QStringLiteral("32767.5");
    QTest::newRow("thousands separator") << QStringLiteral("1,000");
}

void TestReferenceBits::calculatorTextWithoutNumber()
{
    QFETCH(QString, typed);
    QCOMPARE(bits::bitNumberFromText(typed), std::nullopt);
}

QTEST_APPLESS_MAIN(TestReferenceBits)
#include "tst_reference_bits.moc"
