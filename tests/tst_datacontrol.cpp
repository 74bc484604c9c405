#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace tarn;
using namespace tarn::test;

// A small form over the item table: id and name boxes, and a check box on kd_enabled.
struct ItemForm {
    QWidget window;
    QLineEdit* id = new QLineEdit(&window);
    QLineEdit* name = new QLineEdit(&window);
    QCheckBox* enabled = new QCheckBox(&window);
    DataControl* control = new DataControl(&window);

    ItemForm(Database& db, Dialogs& dialogs)
    {
        control->setDialogs(dialogs);
        control->bindText(id, QStringLiteral("i_id"), QStringLiteral("Item ID"));
        control->bindText(name, QStringLiteral("i_name"), QStringLiteral("Items Name"));
        control->bindCheck(enabled, QStringLiteral("kd_enabled"), QStringLiteral("Enabled"));
        control->open(db, QStringLiteral("select * from item order by i_id"));
    }
};

class DataControlTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TempData> m_data;
    ScriptedDialogs m_dialogs;

    QVariant stored(const QString& sql) { return m_data->refDb().scalar(sql); }

private slots:
    void init()
    {
        m_data = std::make_unique<TempData>();
        m_dialogs = {};
    }

    void showsTheFirstRowAndRaisesRepositionOnEveryMove()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        QSignalSpy reposition(form.control, &DataControl::reposition);
        QCOMPARE(form.id->text(), QStringLiteral("1"));
        form.control->moveNext();
        QCOMPARE(form.id->text(), QStringLiteral("2"));
        form.control->moveLast();
        QCOMPARE(form.id->text(), QStringLiteral("128"));
        form.control->moveNext(); // past the end stays on the last row
        QCOMPARE(form.id->text(), QStringLiteral("128"));
        form.control->moveFirst();
        form.control->movePrevious();
        QCOMPARE(form.id->text(), QStringLiteral("1"));
        QCOMPARE(reposition.count(), 5);
    }

    void storesOnlyChangedControlsWhenTheRowIsLeft()
    {
        m_data->refDb().exec(QStringLiteral("update item set kd_enabled = null where i_id = 1"));
        ItemForm form(m_data->refDb(), m_dialogs);
        form.name->setText(QStringLiteral("Renamed by code"));
        QCOMPARE(stored("select i_name from item where i_id = 1").toString(), QStringLiteral("Power Screen"));
        QVERIFY(form.control->moveNext());
        QCOMPARE(stored("select i_name from item where i_id = 1").toString(), QStringLiteral("Renamed by code"));
        // the untouched check box did not turn the missing value into 0
        QVERIFY(stored("select kd_enabled from item where i_id = 1").isNull());
    }

    void refusedTextStaysInItsBoxAndTheMoveDoesNotHappen()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        form.id->setFocus();
        form.id->selectAll();
        QTest::keyClicks(form.id, QStringLiteral("4294967296"));
        QVERIFY(!form.control->moveNext());
        QCOMPARE(m_dialogs.messages.size(), 1);
        QVERIFY(m_dialogs.messages[0].contains(QStringLiteral("Item ID")));
        QVERIFY(m_dialogs.messages[0].contains(QStringLiteral("\"4294967296\"")));
        QCOMPARE(form.id->text(), QStringLiteral("4294967296"));
        QCOMPARE(stored("select count(*) from item where i_id = 1").toInt(), 1);
        form.id->setText(QStringLiteral("512"));
        QVERIFY(form.control->moveNext());
        QCOMPARE(stored("select i_name from item where i_id = 512").toString(), QStringLiteral("Power Screen"));
    }

    void pendingNewRowIsStoredOnlyWhenSomethingWasTyped()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        const int before = stored("select count(*) from item").toInt();
        QVERIFY(form.control->addNew());
        QVERIFY(form.id->text().isEmpty());
        QVERIFY(form.control->moveFirst());
        QCOMPARE(stored("select count(*) from item").toInt(), before);

        QVERIFY(form.control->addNew());
        form.id->setText(QStringLiteral("256"));
        form.name->setText(QStringLiteral("Ninth"));
        QVERIFY(form.control->storeChanges());
        QCOMPARE(stored("select i_name from item where i_id = 256").toString(), QStringLiteral("Ninth"));
        QCOMPARE(form.control->recordCount(), before + 1);
    }

    void deletingLeavesNoRowAndLocksTheControls()
    {
        m_data->refDb().exec(QStringLiteral("delete from item where i_id > 1"));
        ItemForm form(m_data->refDb(), m_dialogs);
        form.control->deleteCurrent();
        QCOMPARE(stored("select count(*) from item").toInt(), 0);
        QVERIFY(!form.control->hasCurrent());
        QVERIFY(form.id->text().isEmpty());
        QVERIFY(!form.id->isEnabled());
        form.control->deleteCurrent(); // nothing left to delete: nothing happens
        QVERIFY(form.control->moveNext());
        QVERIFY(form.control->addNew());
        QVERIFY(form.id->isEnabled());
    }

    void ownerCanGreyABoundControl()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        form.control->setBoundEnabled(form.enabled, false);
        QVERIFY(!form.enabled->isEnabled());
        form.control->moveNext();
        QVERIFY(!form.enabled->isEnabled());
        QVERIFY(form.name->isEnabled());
    }

    void storeRefusalIsShownAndTheRowKept()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        m_data->refDb().exec(QStringLiteral("create trigger refuse before update on item "
                                            "begin select raise(abort, 'item is locked'); end"));
        form.name->setText(QStringLiteral("Changed"));
        QVERIFY(!form.control->moveNext());
        QCOMPARE(m_dialogs.messages.size(), 1);
        QVERIFY(m_dialogs.messages[0].contains(QStringLiteral("item is locked")));
        QCOMPARE(form.name->text(), QStringLiteral("Changed"));
    }
};

QTEST_MAIN(DataControlTest)
#include "tst_datacontrol.moc"
