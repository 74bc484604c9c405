#include "store/Database.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/StoreError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace tarn;

class StoreTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<Database> m_db;

    void addWeapon(int id, const QString& name)
    {
        m_db->prepare(QStringLiteral("insert into weapon (w_id, w_name, kd_enabled) values (?, ?, 1)")).run({id, name});
    }
    QStringList names(Recordset& rs)
    {
        QStringList seen;
        for (rs.moveFirst(); !rs.eof(); rs.moveNext())
            seen << rs.value(QStringLiteral("w_name")).toString();
        return seen;
    }

private slots:
    void init()
    {
        QFile::remove(m_dir.filePath("ref.db"));
        m_db = std::make_unique<Database>(m_dir.filePath("ref.db"), Database::Open::CreateNew);
        schema::create(*m_db, schema::referenceTables());
        addWeapon(30, QStringLiteral("c"));
        addWeapon(10, QStringLiteral("a"));
        addWeapon(20, QStringLiteral("b"));
    }

    // The set is the statement's, fixed when opened; values are read fresh at each look.
    void recordsetKeepsItsSetAndReadsFresh()
    {
        Recordset rs(*m_db, QStringLiteral("select * from weapon where kd_enabled = 1 order by w_id"));
        QCOMPARE(names(rs), (QStringList{"a", "b", "c"}));
        QVERIFY(rs.eof());
        rs.moveLast();
        QCOMPARE(rs.value("w_id").toInt(), 30);
        rs.moveFirst();
        rs.movePrevious();
        QVERIFY(rs.bof() && !rs.hasCurrent());
        rs.moveFirst();
        m_db->exec(QStringLiteral("update weapon set w_name = 'renamed', kd_enabled = 0 where w_id = 10"));
        addWeapon(5, QStringLiteral("later"));
        QCOMPARE(rs.recordCount(), 3);
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("renamed"));
        rs.requery();
        QCOMPARE(names(rs), (QStringList{"later", "b", "c"}));
    }

    void addNewStandsAtTheEndUntilRequery()
    {
        Recordset rs(*m_db, QStringLiteral("select * from weapon order by w_id"));
        rs.addNew({{"w_id", 1}, {"w_name", "first by id"}});
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("a")); // the current row stays
        rs.moveLast();
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("first by id"));
        QVERIFY(rs.value("w_damage").isNull()); // unset columns are missing values
        rs.requery();
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("first by id"));

        Recordset none(*m_db, QStringLiteral("select * from weapon where w_id > 100"));
        QVERIFY(none.isEmpty() && none.eof());
        none.addNew({{"w_id", 200}});
        QVERIFY(!none.hasCurrent());
        none.moveLast();
        QCOMPARE(none.value("w_id").toInt(), 200);
    }

    void deleteLeavesNoCurrentRowUntilTheNextMove()
    {
        Recordset rs(*m_db, QStringLiteral("select * from weapon order by w_id"));
        rs.moveNext();
        rs.deleteCurrent();
        QVERIFY(!rs.hasCurrent());
        QVERIFY_THROWS_EXCEPTION(StoreError, rs.value("w_name"));
        rs.moveNext();
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("c"));
        rs.deleteCurrent();
        rs.moveNext();
        QVERIFY(rs.eof());
        rs.moveLast();
        QCOMPARE(rs.value("w_name").toString(), QStringLiteral("a"));
        rs.deleteCurrent();
        rs.moveLast();
        QVERIFY(rs.isEmpty() && !rs.hasCurrent());
    }

    void storeRefusesWhatAColumnCannotHold_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::newRow("16-bit overflow") << "insert into weapon (w_id) values (32768)";
        QTest::newRow("text in a number") << "insert into weapon (w_id) values ('abc')";
        QTest::newRow("32-bit overflow") << "insert into item (i_id) values (2147483648)";
        QTest::newRow("flag other than 0 or 1") << "insert into special (s_id, kd_enabled) values (1, 40000)";
    }
    void storeRefusesWhatAColumnCannotHold()
    {
        QFETCH(QString, statement);
        QVERIFY_THROWS_EXCEPTION(StoreError, m_db->exec(statement));
    }

    void textFromBoxesBecomesColumnValues_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QVariant>("value");
        const int integer = int(ColumnKind::Integer);
        QTest::newRow("empty is missing") << integer << "" << true << QVariant();
        QTest::newRow("lowest") << integer << "-32768" << true << QVariant(qlonglong(-32768));
        QTest::newRow("too high") << integer << "32768" << false << QVariant();
        QTest::newRow("fraction") << integer << "1.5" << false << QVariant();
        QTest::newRow("long top") << int(ColumnKind::Long) << "2147483647" << true << QVariant(qlonglong(2147483647));
        QTest::newRow("long over") << int(ColumnKind::Long) << "2147483648" << false << QVariant();
        QTest::newRow("text kept as typed") << int(ColumnKind::Text) << " a b " << true << QVariant(" a b ");
    }
    void textFromBoxesBecomesColumnValues()
    {
        QFETCH(int, kind);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(QVariant, value);
        const auto result = columnValueFromText(ColumnKind(kind), text);
        QCOMPARE(result.has_value(), accepted);
        if (accepted)
            QCOMPARE(*result, value);
    }
};

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
