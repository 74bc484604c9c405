#include "config/frmConfig.h"
#include "store/Configurations.h"
#include "store/Database.h"
#include "store/Schema.h"
#include "store/StoreError.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

namespace
{

// A value of every kind for each column, now and then a missing one, never the same twice.
QVariant sampleValue(ColumnKind kind, int row, int column)
{
    if ((row + column) % 5 == 0)
        return {};
    switch (kind) {
    case ColumnKind::Integer:
        return qlonglong((row * 7919 + column * 104729) % 65536 - 32768);
    case ColumnKind::Flag:
        return qlonglong((row + column) % 2);
    default:
        return QStringLiteral("r%1 c%2 O'Brien ü").arg(row).arg(column);
    }
}

// Stores classes under a name, with the given class numbers and every other column filled.
void addClasses(Database& db, const QString& config, const QList<int>& classNums)
{
    const QStringList columns = schema::classColumnNames();
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    Statement insert =
        db.prepare(QStringLiteral("insert into classdef (%1) values (%2)").arg(columns.join(u','), marks.join(u',')));
    for (int row : classNums) {
        QVariantList values{config};
        for (qsizetype c = 1; c < columns.size(); ++c)
            values << sampleValue(schema::kindOf(QStringLiteral("classdef"), columns[c]), row, int(c));
        values[2] = row; // class_num
        insert.run(values);
    }
}

// Each row as "type:value" cells, so a number and its text, or NULL and "", differ.
QList<QStringList> rows(Database& db, const QString& sql, const QVariantList& params = {}, int firstColumn = 0)
{
    Statement query = db.prepare(sql);
    query.bindAll(params);
    QList<QStringList> result;
    while (query.step()) {
        QStringList cells;
        for (int i = firstColumn; i < query.columnCount(); ++i) {
            const QVariant v = query.value(i);
            cells << (v.isNull() ? QStringLiteral("null") : QStringLiteral("%1:%2").arg(v.typeName(), v.toString()));
        }
        result << cells;
    }
    return result;
}

QList<QStringList> classesOf(Database& db, const QString& config)
{
    // package_name left out: it is the one column that differs.
    return rows(db, QStringLiteral("select * from classdef where package_name = ? order by class_num"), {config}, 1);
}

QList<QStringList> everything(Database& db)
{
    return rows(db, QStringLiteral("select * from package order by rowid")) +
           rows(db, QStringLiteral("select * from classdef order by rowid"));
}

} // namespace

class TestCopy : public QObject
{
    Q_OBJECT
private slots:
    void copiesEveryColumnOfEveryClass_data();
    void copiesEveryColumnOfEveryClass();
    void sourceWithoutClassesGivesAnEmptyConfiguration();
    void nameInUseIsRefused_data();
    void nameInUseIsRefused();

    void init();
    void cleanup();
    void afterACopyTheListHoldsTheNewNameAndNothingIsSelected();
    void cancelChangesNothing();
    void nameInUseIsToldAndTheSelectionStays();

private:
    void select(const QString& name);
    void pressCopy() { QTest::mouseClick(m_window->findChild<QPushButton*>("btCopy"), Qt::LeftButton); }

    std::unique_ptr<TempData> m_data;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<frmConfig> m_window;
};

void TestCopy::copiesEveryColumnOfEveryClass_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("copy");
    const auto row = [](const char* name, const QString& source, const QString& copy) {
        QTest::newRow(name) << source << copy;
    };
    row("plain", "Source", "Target");
    row("apostrophe in the new name", "Source", "Bob's set");
    row("statement text as the new name", "Source", "x' OR '1'='1");
    row("blanks kept", "Source", "  padded ");
    row("apostrophe in the source", "O'Neil's", "Copy");
    row("statement text as the source", "x' OR '1'='1", "Copy");
}

void TestCopy::copiesEveryColumnOfEveryClass()
{
    QFETCH(QString, source);
    QFETCH(QString, copy);
    TempData data;
    Database& db = data.classDb();
    addConfiguration(db, source);
    addClasses(db, source, {7, 1, 3}); // gaps and storage order out of number order
    addConfiguration(db, QStringLiteral("Other"));
    addClasses(db, QStringLiteral("Other"), {1, 2});
    const QString packageRows = QStringLiteral("select * from package order by rowid");
    const QString classRows = QStringLiteral("select * from classdef order by rowid");
    const QList<QStringList> packagesBefore = rows(db, packageRows);
    const QList<QStringList> classesBefore = rows(db, classRows);

    copyConfiguration(db, source, copy);

    const QList<QStringList> copied = classesOf(db, copy);
    QCOMPARE(copied.size(), 3);
    QCOMPARE(copied.first().size(), 58);
    QCOMPARE(copied, classesOf(db, source));
    QVERIFY(copied.first().contains(QStringLiteral("null"))); // missing values stayed missing
    // Every earlier row is as it was, and only the copy was added.
    QCOMPARE(rows(db, packageRows), packagesBefore + QList<QStringList>{{QStringLiteral("QString:") + copy}});
    const QList<QStringList> classesAfter = rows(db, classRows);
    QCOMPARE(classesAfter.mid(0, classesBefore.size()), classesBefore);
    QCOMPARE(classesAfter.size(), classesBefore.size() + 3);
}

void TestCopy::sourceWithoutClassesGivesAnEmptyConfiguration()
{
    TempData data;
    Database& db = data.classDb();
    addConfiguration(db, QStringLiteral("Fresh"));
    copyConfiguration(db, QStringLiteral("Fresh"), QStringLiteral("Fresh too"));
    QVERIFY(configurationExists(db, QStringLiteral("Fresh too")));
    QVERIFY(classesOf(db, QStringLiteral("Fresh too")).isEmpty());
    QVERIFY(listConfigurations(db).contains(QStringLiteral("Fresh")));
}

void TestCopy::nameInUseIsRefused_data()
{
    QTest::addColumn<QString>("copy");
    QTest::newRow("another configuration") << "Other";
    QTest::newRow("the source itself") << "Source";
}

void TestCopy::nameInUseIsRefused()
{
    QFETCH(QString, copy);
    TempData data;
    Database& db = data.classDb();
    for (const QString name : {"Source", "Other"}) {
        addConfiguration(db, name);
        addClasses(db, name, {1, 2});
    }
    const QList<QStringList> before = everything(db);
    try {
        copyConfiguration(db, QStringLiteral("Source"), copy);
        QFAIL("a copy into a name in use was made");
    } catch (const StoreError& error) {
        QVERIFY2(error.message().contains(QLatin1Char('"') + copy + QLatin1Char('"')), qPrintable(error.message()));
    }
    QCOMPARE(everything(db), before);
}

void TestCopy::init()
{
    m_data = std::make_unique<TempData>();
    m_dialogs = std::make_unique<ScriptedDialogs>();
    for (const char* name : {"zulu", "Mike", "alpha"})
        addConfiguration(m_data->classDb(), QString::fromLatin1(name));
    addClasses(m_data->classDb(), QStringLiteral("Mike"), {2, 5});
    m_window = std::make_unique<frmConfig>(*m_data->state, *m_dialogs);
    m_window->show();
}

void TestCopy::cleanup()
{
    m_window.reset();
}

void TestCopy::select(const QString& name)
{
    auto* list = m_window->findChild<QListWidget*>("classlist");
    const int row = m_window->configNames().indexOf(name);
    QVERIFY(row >= 0);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    QCOMPARE(m_data->state->currentConfig, name);
}

void TestCopy::afterACopyTheListHoldsTheNewNameAndNothingIsSelected()
{
    select(QStringLiteral("Mike"));
    m_dialogs->inputAnswers << QStringLiteral("Kilo");
    pressCopy();
    QCOMPARE(m_dialogs->prompts, QStringList{"Copy Config|Enter the name of the config you wish to copy to"});
    QCOMPARE(m_window->configNames(), (QStringList{"Example", "Kilo", "Mike", "alpha", "zulu"}));
    auto* list = m_window->findChild<QListWidget*>("classlist");
    QCOMPARE(list->item(1)->text(), QStringLiteral("Kilo"));
    QVERIFY(list->selectedItems().isEmpty());
    QVERIFY(m_data->state->currentConfig.isEmpty());
    QCOMPARE(classesOf(m_data->classDb(), QStringLiteral("Kilo")),
             classesOf(m_data->classDb(), QStringLiteral("Mike")));
    QVERIFY(!m_dialogs->busy);
    QCOMPARE(m_dialogs->busyChanges, 2);
    QVERIFY(m_dialogs->messages.isEmpty());

    pressCopy(); // nothing is selected any more
    QCOMPARE(m_dialogs->messages, QStringList{"You must select a class configuration"});
    QCOMPARE(m_dialogs->prompts.size(), 1);
}

void TestCopy::cancelChangesNothing()
{
    select(QStringLiteral("Mike"));
    const QList<QStringList> before = everything(m_data->classDb());
    m_dialogs->inputAnswers << QString(); // Cancel and OK on an empty box answer alike
    pressCopy();
    QCOMPARE(everything(m_data->classDb()), before);
    QCOMPARE(m_data->state->currentConfig, QStringLiteral("Mike"));
    QCOMPARE(m_window->findChild<QListWidget*>("classlist")->currentItem()->text(), QStringLiteral("Mike"));
    QCOMPARE(m_dialogs->busyChanges, 0);
    QVERIFY(m_dialogs->messages.isEmpty());
}

void TestCopy::nameInUseIsToldAndTheSelectionStays()
{
    select(QStringLiteral("Mike"));
    const QList<QStringList> before = everything(m_data->classDb());
    m_dialogs->inputAnswers << QStringLiteral("alpha");
    pressCopy();
    QCOMPARE(m_dialogs->messages.size(), 1);
    QVERIFY2(m_dialogs->messages[0].contains(QStringLiteral("\"alpha\"")), qPrintable(m_dialogs->messages[0]));
    QCOMPARE(everything(m_data->classDb()), before);
    QVERIFY(!m_dialogs->busy);
    QCOMPARE(m_data->state->currentConfig, QStringLiteral("Mike"));
    QCOMPARE(m_window->configNames().count(QStringLiteral("alpha")), 1);
}

QTEST_MAIN(TestCopy)
#include "tst_copy.moc"
