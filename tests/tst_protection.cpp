#include "classfile/Cp1252.h"
#include "classfile/Protection.h"

#include <QTest>

using namespace tarn;

namespace
{

QByteArray allCodes()
{
    QByteArray bytes;
    for (int code = 0; code < 256; ++code)
        bytes.append(char(code));
    return bytes;
}

QByteArray words(int count)
{
    QByteArrayList list;
    for (int i = 1; i <= count; ++i)
        list << "t" + QByteArray::number(i);
    return list.join(' ');
}

} // namespace

class TestProtection : public QObject
{
    Q_OBJECT

private slots:
    void everyByteDecodesAndEncodesBack()
    {
        const QString text = decodeCp1252(allCodes());
        QCOMPARE(text.size(), 256);
        QCOMPARE(text.at(0x80), QChar(0x20AC));
        QCOMPARE(text.at(0x81), QChar(0x81));
        QCOMPARE(text.at(0x9F), QChar(0x178));
        QCOMPARE(text.at(0xE9), QChar(0xE9));
        const Cp1252Encoding encoded = encodeCp1252(text);
        QVERIFY(encoded.ok());
        QCOMPARE(encoded.bytes, allCodes());
    }

    void encodingRefusesCharactersWithoutByte_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("refused");
        QTest::newRow("CJK") << QStringLiteral("ab\u4E2Dc\u4E2E") << QStringLiteral("\u4E2D");
        QTest::newRow("outside the BMP") << QStringLiteral("x\U0001F600") << QStringLiteral("\U0001F600");
        QTest::newRow("lone surrogate") << QString(QChar(0xD800)) << QString(QChar(0xD800));
    }
    void encodingRefusesCharactersWithoutByte()
    {
        QFETCH(QString, text);
        QFETCH(QString, refused);
        const Cp1252Encoding encoded = encodeCp1252(text);
        QVERIFY(!encoded.ok());
        QCOMPARE(encoded.refused, refused);
    }

    // One row per band of codes, with the shift that each routine gives it.
    void protectionTable_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<int>("protectShift");
        QTest::addColumn<int>("unprotectShift");
        QTest::newRow("0-30") << 0 << 30 << 0 << 0;
        QTest::newRow("31-127") << 31 << 127 << 128 << 0;
        QTest::newRow("128") << 128 << 128 << 0 << 0;
        QTest::newRow("129-158") << 129 << 158 << 0 << -128;
        QTest::newRow("159-255") << 159 << 255 << 0 << -128;
    }
    void protectionTable()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(int, protectShift);
        QFETCH(int, unprotectShift);
        for (int code = first; code <= last; ++code) {
            const QByteArray line(1, char(code));
            QCOMPARE(uchar(protectLine(line, true).at(0)), code + protectShift);
            QCOMPARE(uchar(unprotectLine(line).at(0)), code + unprotectShift);
            QCOMPARE(protectLine(line, false), line);
        }
    }

    void protectedLinesReadBackForCodesBelow128()
    {
        const QByteArray line = allCodes().left(128);
        const QByteArray shielded = protectLine(line, true);
        QCOMPARE(shielded.size(), line.size());
        QVERIFY(!shielded.contains(' '));
        QCOMPARE(unprotectLine(shielded), line);
        QCOMPARE(protectLine(QByteArray(), true), QByteArray());
    }

    void splitTokens_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArrayList>("tokens"); // empty tokens at the end left out
        QTest::newRow("empty") << QByteArray() << QByteArrayList{};
        QTest::newRow("run of blanks") << QByteArray("a  b") << QByteArrayList{"a", "b"};
        QTest::newRow("leading blank") << QByteArray(" a  b") << QByteArrayList{"", "a", "b"};
        QTest::newRow("trailing blank") << QByteArray("a b ") << QByteArrayList{"a", "b"};
        QTest::newRow("protected") << QByteArray("\xE1\xA0\xE2") << QByteArrayList{"a", "b"};
        QTest::newRow("code 160 read from a plain line") << QByteArray("x\xA0y") << QByteArrayList{"x", "y"};
        QTest::newRow("tab is no separator") << QByteArray("a\tb c") << QByteArrayList{"a\tb", "c"};
        QTest::newRow("sign blank") << QByteArray("100  5  -2") << QByteArrayList{"100", "5", "-2"};
        QTest::newRow("30 and a blank") << words(30) + ' ' << words(30).split(' ');
        QTest::newRow("31 drops the last") << words(31) << words(30).split(' ');
    }
    void splitTokens()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArrayList, tokens);
        const Tokens split = tarn::splitTokens(line);
        QByteArrayList list(split.begin() + 1, split.end());
        while (!list.isEmpty() && list.last().isEmpty())
            list.removeLast();
        QCOMPARE(list, tokens);
    }
};

QTEST_APPLESS_MAIN(TestProtection)
#include "tst_protection.moc"
