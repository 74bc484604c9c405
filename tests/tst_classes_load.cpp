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
#include <QPushButton>
#include <QRegularExpression>

using namespace tarn;
using namespace tarn::test;

namespace
{

const QString Config = QStringLiteral("Load Test");

QList<RefRow> numberedRows(const QString& stem, int count)
{
    QList<RefRow> rows;
    for (int k = 0; k < count; ++k)
        rows.append({qint64(1) << k, stem + QString::number(k + 1)});
    return rows;
}

// "w2-4" stands for w2 w3 w4.
QStringList numbered(const QString& names)
{
    QStringList list;
    static const QRegularExpression range(QStringLiteral("^(.*\\D)(\\d+)-(\\d+)$"));
    for (const QString& name : names.split(u' ')) {
        const QRegularExpressionMatch match = range.match(name);
        for (int k = match.hasMatch() ? match.captured(2).toInt() : 0;
             match.hasMatch() && k <= match.captured(3).toInt(); ++k)
            list << match.captured(1) + QString::number(k);
        if (!match.hasMatch())
            list << name;
    }
    return list;
}

} // namespace

class ClassEditorLoadTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ClassEditorFixture> f;

private slots:
    void init() { f = std::make_unique<ClassEditorFixture>(); }

    void everyColumnButI9HasOneBoundControl()
    {
        f->addConfig(Config, {1});
        f->open(Config);
        QStringList tableColumns;
        for (const ClassBinding& binding : classBindings()) {
            QWidget* control = f->control(binding.control);
            QVERIFY2(qobject_cast<QLineEdit*>(control) || qobject_cast<QCheckBox*>(control) ||
                         qobject_cast<QLabel*>(control),
                     qPrintable(binding.control));
            tableColumns << binding.column;
        }
        QStringList expected = schema::classColumnNames();
        expected.removeAll(QStringLiteral("i9"));
        QStringList bound = f->nav().boundColumns();
        for (QStringList* list : {&expected, &bound, &tableColumns})
            list->sort();
        QCOMPARE(bound, expected);
        QCOMPARE(tableColumns, expected);
        QCOMPARE(f->control<QLabel>(QStringLiteral("Label31"))->text(), Config);
    }

    void windowShowsTheSystemsCaptionsNamesAndTabOrder()
    {
        f->addConfig(Config, {1});
        frmClasses& editor = f->open(Config);
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
        const QStringList alone{"Label12", "Label22", "Label31", "Label32"};
        for (QLabel* label : editor.findChildren<QLabel*>(QRegularExpression("^Label")))
            QVERIFY2(alone.contains(label->objectName()) || label->buddy(), qPrintable(label->objectName()));
        for (int n = 2; n <= 10; ++n)
            QCOMPARE(f->picker(QStringLiteral("w%1").arg(n))->accessibleName(), QStringLiteral("Weapon %1").arg(n));
        for (int n = 1; n <= 3; ++n)
            QCOMPARE(f->picker(QStringLiteral("g%1").arg(n))->accessibleName(), QStringLiteral("Grenade %1").arg(n));

        const QStringList expected =
            numbered("fldClassName fldModel fldSkin1 fldSkin2 Text1 fldArmor fldSpeed "
                     "fldHealth fldDecoySkin w2-10 g1-3 Check1_0-7 maxbullets maxshells "
                     "maxrockets maxgrenades maxcells maxslugs special_0-20 Command1 AddClass");
        QStringList chain;
        for (QWidget* widget = f->control(expected.first()); chain.size() < expected.size();
             widget = widget->nextInFocusChain()) {
            if (expected.contains(widget->objectName())) // skips the line edit inside each picker
                chain << widget->objectName();
        }
        QCOMPARE(chain, expected);
    }

    void boxesFollowTheReferenceRows_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<int>("boxes");
        QTest::addColumn<int>("rows");
        QTest::newRow("3 items") << "item"
                                 << "Check1_" << 8 << 3;
        QTest::newRow("8 items") << "item"
                                 << "Check1_" << 8 << 8;
        QTest::newRow("9 items") << "item"
                                 << "Check1_" << 8 << 9;
        QTest::newRow("5 specials") << "special"
                                    << "special_" << 21 << 5;
        QTest::newRow("21 specials") << "special"
                                     << "special_" << 21 << 21;
        QTest::newRow("22 specials") << "special"
                                     << "special_" << 21 << 22;
    }

    void boxesFollowTheReferenceRows()
    {
        QFETCH(QString, table);
        QFETCH(QString, boxName);
        QFETCH(int, boxes);
        QFETCH(int, rows);
        QList<RefRow> refRows = numberedRows(table, rows);
        std::reverse(refRows.begin(), refRows.end()); // stored out of order: the boxes follow the ids
        f->setReference(table, {refRows.begin(), refRows.end()});
        f->addConfig(Config);
        const QString flag = table.left(1);
        QVariantMap ticks; // the last box and the column behind it both ticked
        ticks.insert(flag + QString::number(boxes), 1);
        f->addClass(Config, 1, ticks);
        f->open(Config);
        for (int i = 0; i < boxes; ++i) {
            QCheckBox* box = f->control<QCheckBox>(boxName + QString::number(i));
            const bool filled = i < rows;
            QCOMPARE(box->isVisible(), filled);
            QCOMPARE(box->property("Tag").toString(), filled ? QString::number(qint64(1) << i) : QStringLiteral("0"));
            if (filled)
                QCOMPARE(box->text(), table + QString::number(i + 1));
        }
        QCOMPARE(f->control<QCheckBox>(boxName + QString::number(boxes - 1))->isChecked(), true);
        f->type(QStringLiteral("fldClassName"), QStringLiteral("renamed"));
        QVERIFY(f->editor->close());
        QCOMPARE(f->column(Config, 1, flag + QString::number(boxes)).toInt(), 1); // a hidden box keeps its column
    }

    void anItemNotEnabledIsGreyedAndKeepsItsTick_data()
    {
        QTest::addColumn<QVariant>("enabled");
        QTest::addColumn<bool>("offered");
        QTest::newRow("1") << QVariant(1) << true;
        QTest::newRow("missing") << QVariant() << true;
        QTest::newRow("0") << QVariant(0) << false;
        QTest::newRow("2") << QVariant(2) << false;
    }

    void anItemNotEnabledIsGreyedAndKeepsItsTick()
    {
        QFETCH(QVariant, enabled);
        QFETCH(bool, offered);
        f->setReference("item", {{1, "first"}, {2, "second", enabled}});
        f->setReference("special", {{1, "first"}, {2, "second", enabled}});
        f->addConfig(Config);
        f->addClass(Config, 1, {{"i2", 1}, {"s2", 1}});
        f->open(Config);
        for (const QString name : {"Check1_1", "special_1"}) {
            QCheckBox* box = f->control<QCheckBox>(name);
            QCOMPARE(box->isEnabled(), offered);
            QVERIFY(box->isChecked());
            QVERIFY(f->control<QCheckBox>(name.chopped(1) + "0")->isEnabled());
        }
    }

    void pickersOfferTheEnabledRowsInIdOrder()
    {
        f->setReference("weapon", {{9, "Nine"}, {4, "Four"}, {5, "Off", 0}, {6, "Missing", QVariant()}, {2, "Two"}});
        f->setReference("grenade", {{3, "Three"}, {1, "One"}, {8, "Off", 0}});
        f->addConfig(Config, {1});
        f->open(Config);
        auto entries = [](QComboBox* combo) {
            QStringList list;
            for (int i = 0; i < combo->count(); ++i)
                list << combo->itemText(i) + u'=' + combo->itemData(i).toString();
            return list;
        };
        QAbstractItemModel* weapons = f->picker("w2")->model();
        QAbstractItemModel* grenades = f->picker("g1")->model();
        QVERIFY(weapons != grenades);
        for (int n = 2; n <= 10; ++n)
            QCOMPARE(f->picker(QStringLiteral("w%1").arg(n))->model(), weapons);
        for (int n = 1; n <= 3; ++n)
            QCOMPARE(f->picker(QStringLiteral("g%1").arg(n))->model(), grenades);
        QCOMPARE(entries(f->picker("w7")), QStringList({"Two=2", "Four=4", "Nine=9"}));
        QCOMPARE(entries(f->picker("g3")), QStringList({"One=1", "Three=3"}));
        QVERIFY(f->picker("w2")->isEditable());
    }

    void pickersFollowTheRowAndWriteTheHiddenBox_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("hidden");
        // The list holds the ids 0, 3, 3, 7: position 0 is never compared and the last match wins.
        QTest::newRow("id at the last position") << QVariant(7) << 3 << "7";
        QTest::newRow("duplicated id") << QVariant(3) << 2 << "3";
        QTest::newRow("first entry's id") << QVariant(0) << 0 << "0";
        QTest::newRow("id not in the list") << QVariant(9) << 0 << "0";
        QTest::newRow("missing value") << QVariant() << 0 << "0";
    }

    void pickersFollowTheRowAndWriteTheHiddenBox()
    {
        QFETCH(QVariant, stored);
        QFETCH(int, position);
        QFETCH(QString, hidden);
        f->setReference("weapon", {{0, "Zero"}, {3, "Three a"}, {3, "Three b"}, {7, "Seven"}});
        f->setReference("grenade", {{0, "Zero"}, {3, "Three a"}, {3, "Three b"}, {7, "Seven"}});
        f->addConfig(Config);
        f->addClass(Config, 1, {{"w5", stored}, {"g2", stored}, {"w1", 7}});
        f->addClass(Config, 2, {{"w5", 7}, {"g2", 7}});
        f->open(Config);
        QCOMPARE(f->picker("w5")->currentIndex(), position);
        QCOMPARE(f->picker("g2")->currentIndex(), position);
        QCOMPARE(f->box("dw5")->text(), hidden);
        QCOMPARE(f->box("dg2")->text(), hidden);
        QVERIFY(f->nav().moveNext());
        QCOMPARE(f->picker("w5")->currentIndex(), 3);
        QCOMPARE(f->column(Config, 1, "w5").toString(), hidden); // stored when the row was left
        QCOMPARE(f->column(Config, 1, "g2").toString(), hidden);
        QCOMPARE(f->column(Config, 1, "w1").toInt(), 7);
    }

    void aDisabledWeaponAClassHoldsBecomesTheFirstEntry()
    {
        f->setReference("weapon", {{2, "Two"}, {5, "Five"}, {6, "Retired", 0}, {8, "Unset", QVariant()}});
        f->addConfig(Config);
        f->addClass(Config, 1, {{"w5", 6}, {"w6", 8}, {"w3", 5}});
        f->addClass(Config, 2);
        f->open(Config);
        QCOMPARE(f->picker("w5")->currentText(), QStringLiteral("Two"));
        QCOMPARE(f->picker("w6")->currentText(), QStringLiteral("Two"));
        QCOMPARE(f->picker("w3")->currentText(), QStringLiteral("Five"));
        QCOMPARE(f->column(Config, 1, "w5").toInt(), 6); // looking alone stores nothing yet
        QVERIFY(f->nav().moveNext());
        QVERIFY(f->nav().movePrevious());
        QCOMPARE(f->column(Config, 1, "w5").toInt(), 2);
        QCOMPARE(f->column(Config, 1, "w6").toInt(), 2);
        QCOMPARE(f->column(Config, 1, "w3").toInt(), 5);
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
        auto* list = config.findChild<QListWidget*>("classlist");
        list->setCurrentRow(int(config.configNames().indexOf(Config)));
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
