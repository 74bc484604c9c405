// The class editor's window and load: bindings, reference lists, and the pickers
// following the rows.
#include "tst_classes_fixture.h"

#include "classes/ClassBindings.h"
#include "config/frmConfig.h"
#include "store/Schema.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>

using namespace tarn;
using namespace tarn::test;

namespace
{
const QString Config = QStringLiteral("Load Test");
} // namespace

class ClassEditorLoadTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditorFixture> f;

private slots:
    void init() { f = std::make_unique<ClassEditorFixture>(); }

    // Every column but i9 has one bound control; the captions are the system's own.
    void bindingsAndCaptions()
    {
        f->addConfig(Config, {1});
        frmClasses& editor = f->open(Config);
        for (const ClassBinding& binding : classBindings())
            f->control(binding.control); // fails the test when the control is missing
        QStringList expected = schema::classColumnNames();
        expected.removeAll(QStringLiteral("i9"));
        QStringList bound = f->nav().boundColumns();
        expected.sort();
        bound.sort();
        QCOMPARE(bound, expected);

        QCOMPARE(editor.windowTitle(), QStringLiteral("KD TARN 1 - Class Configuration"));
        QCOMPARE(f->nav().caption(), QStringLiteral("Class Def"));
        QCOMPARE(plain(f->control<QPushButton>("AddClass")->text()), QStringLiteral("Add  Class"));
        QCOMPARE(plain(f->control<QPushButton>("Command1")->text()), QStringLiteral("Delete Class"));
        QCOMPARE(f->control<QLabel>("Label12")->text(), QStringLiteral("Blaster"));
        QStringList entries;
        for (QAction* menu : editor.menuBar()->actions()) {
            for (QAction* entry : menu->menu()->actions())
                entries << plain(menu->text()) + u'/' + plain(entry->text()) + (entry->isEnabled() ? "" : " off");
        }
        QCOMPARE(entries, QStringList({"File/Save As...", "File/Save Unprotected..."}));
        for (int n = 2; n <= 10; ++n)
            QCOMPARE(f->picker(QStringLiteral("w%1").arg(n))->accessibleName(), QStringLiteral("Weapon %1").arg(n));
        for (int n = 1; n <= 3; ++n)
            QCOMPARE(f->picker(QStringLiteral("g%1").arg(n))->accessibleName(), QStringLiteral("Grenade %1").arg(n));
    }

    // The k-th row by id fills box k-1; a box no row fills is hidden, and keeps its column.
    // A row not enabled (0 or 2; a missing value counts as 1) greys its box, which keeps its tick.
    void boxesFollowTheReferenceRows_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QVariant>("secondEnabled");
        QTest::addColumn<bool>("offered");
        QTest::newRow("3 items") << "item" << 3 << QVariant(1) << true;
        QTest::newRow("8 items, the second unset") << "item" << 8 << QVariant() << true;
        QTest::newRow("9 items, the second off") << "item" << 9 << QVariant(0) << false;
        QTest::newRow("5 specials, the second 2") << "special" << 5 << QVariant(2) << false;
        QTest::newRow("21 specials") << "special" << 21 << QVariant(1) << true;
        QTest::newRow("22 specials, the second off") << "special" << 22 << QVariant(0) << false;
    }
    void boxesFollowTheReferenceRows()
    {
        QFETCH(QString, table);
        QFETCH(int, rows);
        QFETCH(QVariant, secondEnabled);
        QFETCH(bool, offered);
        const int boxes = table == "item" ? 8 : 21;
        const QString boxName = table == "item" ? "Check1_" : "special_";
        QList<RefRow> refRows;
        for (int k = rows - 1; k >= 0; --k) // stored out of order
            refRows.append({qint64(1) << k, table + QString::number(k + 1), k == 1 ? secondEnabled : QVariant(1)});
        f->setReference(table, refRows);
        f->addConfig(Config);
        const QString lastColumn = table.left(1) + QString::number(boxes);
        f->addClass(Config, 1, {{lastColumn, 1}, {table.left(1) + "2", 1}});
        f->addClass(Config, 2);
        f->open(Config);
        QVERIFY(f->nav().moveNext()); // greyed stays greyed from row to row
        QVERIFY(f->nav().moveFirst());
        for (int i = 0; i < boxes; ++i) {
            QCheckBox* box = f->control<QCheckBox>(boxName + QString::number(i));
            const bool filled = i < rows;
            QCOMPARE(box->isVisible(), filled);
            QCOMPARE(box->property("Tag").toString(), filled ? QString::number(qint64(1) << i) : QStringLiteral("0"));
            if (filled)
                QCOMPARE(box->text(), table + QString::number(i + 1));
            QCOMPARE(box->isEnabled(), i != 1 || offered);
        }
        QVERIFY(f->control<QCheckBox>(boxName + "1")->isChecked());
        QVERIFY(f->control<QCheckBox>(boxName + QString::number(boxes - 1))->isChecked());
        f->type(QStringLiteral("fldClassName"), QStringLiteral("renamed"));
        QVERIFY(f->editor->close());
        QCOMPARE(f->column(Config, 1, lastColumn).toInt(), 1);
    }

    // The pickers offer the enabled rows in id order: 0, 3, 3, 7. An id the list lacks, a
    // disabled one among them, shows the first entry and takes its id when the row is left.
    void pickersFollowTheRowAndWriteTheHiddenBox_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("hidden");
        QTest::newRow("duplicated id: the last match") << QVariant(3) << 2 << "3";
        QTest::newRow("disabled id") << QVariant(9) << 0 << "0";
        QTest::newRow("missing value") << QVariant() << 0 << "0";
    }
    void pickersFollowTheRowAndWriteTheHiddenBox()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, position);
        QFETCH(QString, hidden);
        for (const QString table : {"weapon", "grenade"})
            f->setReference(
                table,
                {{7, "Seven"}, {9, "Off", 0}, {0, "Zero"}, {3, "Three a"}, {6, "Unset", QVariant()}, {3, "Three b"}});
        f->addConfig(Config);
        f->addClass(Config, 1, {{"w5", stored}, {"g2", stored}, {"w1", 7}});
        f->addClass(Config, 2, {{"w5", 7}, {"g2", 7}});
        f->open(Config);
        for (const QString name : {"w2", "w10", "g1", "g3"}) {
            QStringList entries;
            for (int i = 0; i < f->picker(name)->count(); ++i)
                entries << f->picker(name)->itemText(i) + u'=' + f->picker(name)->itemData(i).toString();
            QCOMPARE(entries, QStringList({"Zero=0", "Three a=3", "Three b=3", "Seven=7"}));
        }
        QVERIFY(f->picker("w2")->isEditable());
        QCOMPARE(f->picker("w5")->currentIndex(), position);
        QCOMPARE(f->picker("g2")->currentIndex(), position);
        QCOMPARE(f->box("dw5")->text(), hidden);
        QCOMPARE(f->box("dg2")->text(), hidden);
        QCOMPARE(f->column(Config, 1, "w5").toString(), stored.toString()); // looking alone stores nothing
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->picker("w5")->currentIndex(), 3);
        QCOMPARE(f->column(Config, 1, "w5").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "g2").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "w1").toInt(), 7);
    }

    void withNoEnabledWeaponTheSlotsKeepTheirIds()
    {
        f->setReference("weapon", {{4, "Off", 0}});
        f->addConfig(Config, {1, 2});
        f->addClass(Config, 3, {{"w2", 4}});
        f->open(Config);
        QVERIFY(f->nav().moveLast());
        QCOMPARE(f->picker("w2")->count(), 0);
        QCOMPARE(f->box("dw2")->text(), QStringLiteral("4"));
        QVERIFY(f->nav().moveFirst());
        QCOMPARE(f->column(Config, 3, "w2").toInt(), 4);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    void openingThroughTheConfigurationWindow()
    {
        f->addConfig(Config, {4});
        frmConfig config(*f->data.state, f->dialogs);
        config.findChild<QListWidget*>("classlist")->setCurrentRow(int(config.configNames().indexOf(Config)));
        QString seen;
        f->dialogs.onModal = [&](QWidget& window) {
            seen = window.objectName() + u'|' + window.windowTitle() + u'|' +
                   window.findChild<QLabel*>("Label31")->text() + u'|' +
                   window.findChild<QLineEdit*>("fldClassName")->text() + u'|' + (f->dialogs.busy ? "busy" : "idle");
        };
        QTest::mouseClick(config.findChild<QPushButton*>("btEdit"), Qt::LeftButton);
        QCOMPARE(seen, "frmClasses|KD TARN 1 - Class Configuration|" + Config + "|C4|idle");
        QCOMPARE(f->dialogs.modalWindows, QStringList{"frmClasses"});
    }
};

QTEST_MAIN(ClassEditorLoadTest)
#include "tst_classes_load.moc"
