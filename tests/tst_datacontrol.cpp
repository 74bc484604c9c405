#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"
#include "toolkit/DataControl.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

// A small form over the item table: id and name boxes, and a check box on kd_enabled.
// Navigation, delete and greying are tested through the real windows.
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

    QString stored(const QString& sql) { return rowsOf(m_data->refDb(), sql).value(0); }

private slots:
    void init()
    {
        m_data = std::make_unique<TempData>();
        m_dialogs = {};
    }

    // An untouched check box leaves a missing value missing; an untouched new row stores nothing.
    void storesOnlyChangedControls()
    {
        m_data->refDb().exec(QStringLiteral("update item set kd_enabled = null where i_id = 1"));
        ItemForm form(m_data->refDb(), m_dialogs);
        const QString count = QStringLiteral("select count(*) from item");
        const QString before = stored(count);
        form.name->setText(QStringLiteral("Renamed by code"));
        QCOMPARE(stored("select i_name from item where i_id = 1"), QStringLiteral("Power Screen"));
        QVERIFY(form.control->addNew());
        QCOMPARE(stored("select i_name, kd_enabled from item where i_id = 1"),
                 QStringLiteral("Renamed by code|<null>"));
        QVERIFY(form.id->text().isEmpty());
        QVERIFY(form.control->moveFirst());
        QCOMPARE(stored(count), before);
    }

    void refusedTextIsNamedAndStaysInItsBox()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        form.id->setFocus();
        form.id->selectAll();
        QTest::keyClicks(form.id, QStringLiteral("4294967296"));
        QVERIFY(!form.control->moveNext());
        QCOMPARE(m_dialogs.messages, QStringList{"Item ID cannot be \"4294967296\": it must be a whole number from "
                                                 "-2147483648 to 2147483647."});
        QCOMPARE(form.id->text(), QStringLiteral("4294967296"));
        QCOMPARE(stored("select count(*) from item where i_id = 1"), QStringLiteral("1"));
        form.id->setText(QStringLiteral("512"));
        QVERIFY(form.control->moveNext());
        QCOMPARE(stored("select i_name from item where i_id = 512"), QStringLiteral("Power Screen"));
    }

    void storeRefusalIsShownAndTheRowKept()
    {
        ItemForm form(m_data->refDb(), m_dialogs);
        m_data->refDb().exec(QStringLiteral("create trigger refuse before update on item "
                                            "begin select raise(abort, 'item is locked'); end"));
        form.name->setText(QStringLiteral("Changed"));
        QVERIFY(!form.control->moveNext());
        QCOMPARE(m_dialogs.messages.size(), 1);
        QVERIFY2(m_dialogs.messages[0].startsWith(QStringLiteral("The row could not be stored: ")) &&
                     m_dialogs.messages[0].contains(QStringLiteral("item is locked")),
                 qPrintable(m_dialogs.messages[0]));
        QCOMPARE(form.name->text(), QStringLiteral("Changed"));
    }
};

QTEST_MAIN(DataControlTest)
#include "tst_datacontrol.moc"
