#include "config/frmConfig.h"
#include "core/ModId.h"
#include "store/Configurations.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

class ConfigWindowTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TempData> m_data;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<frmConfig> m_window;

    QListWidget* list() { return m_window->findChild<QListWidget*>("classlist"); }
    void click(const char* button) { QTest::mouseClick(m_window->findChild<QPushButton*>(button), Qt::LeftButton); }
    void trigger(const char* action) { m_window->findChild<QAction*>(action)->trigger(); }
    void select(const QString& name)
    {
        const int row = m_window->configNames().indexOf(name);
        QVERIFY(row >= 0);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
    }
    void openWindow()
    {
        m_window = std::make_unique<frmConfig>(*m_data->state, *m_dialogs);
        m_window->show();
    }
    int classCount(const QString& name)
    {
        return m_data->classDb().scalar("select count(*) from classdef where package_name = ?", {name}).toInt();
    }

private slots:
    void init()
    {
        m_data = std::make_unique<TempData>();
        m_dialogs = std::make_unique<ScriptedDialogs>();
        for (const char* name : {"zulu", "alpha", "Mike"})
            addConfiguration(m_data->classDb(), QString::fromLatin1(name));
        openWindow();
    }
    void cleanup() { m_window.reset(); }

    void listsConfigurationsInTheStoresOrderWithNothingSelected()
    {
        QCOMPARE(m_window->configNames(), (QStringList{"Example", "Mike", "alpha", "zulu"}));
        QCOMPARE(list()->count(), 4);
        QCOMPARE(list()->currentRow(), -1);
        QVERIFY(m_data->state->currentConfig.isEmpty());
        QCOMPARE(m_window->windowTitle(), QStringLiteral("KD Tarn Workbench (TARN) - Version 1.4"));
    }

    void clickSelectsByPosition()
    {
        select(QStringLiteral("alpha"));
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("alpha"));
    }

    void manyConfigurationsAreAllListed()
    {
        for (int i = 0; i < 60; ++i)
            addConfiguration(m_data->classDb(), QStringLiteral("cfg %1").arg(i, 2, 10, QLatin1Char('0')));
        m_window->RefreshList();
        QCOMPARE(list()->count(), 64);
        select(QStringLiteral("zulu"));
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("zulu"));
    }

    void newAddsTheNameAsTypedAndClearsTheSelection_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QStringLiteral("bravo");
        QTest::newRow("blanks kept") << QStringLiteral("  bravo ");
        QTest::newRow("apostrophe") << QStringLiteral("Bob's");
        QTest::newRow("statement text") << QStringLiteral("x' OR '1'='1");
        QTest::newRow("one character") << QStringLiteral("b");
        QTest::newRow("existing name") << QStringLiteral("alpha");
    }
    void newAddsTheNameAsTypedAndClearsTheSelection()
    {
        QFETCH(QString, name);
        select(QStringLiteral("zulu"));
        m_dialogs->inputAnswers << name;
        click("btNew");
        QCOMPARE(m_dialogs->prompts, QStringList{"Enter Config Name|Enter the Configuration Name"});
        QCOMPARE(m_window->configNames(), listConfigurations(m_data->classDb()));
        QCOMPARE(m_window->configNames().count(name), name == "alpha" ? 2 : 1);
        QVERIFY(m_data->state->currentConfig.isEmpty());
        click("btEdit");
        QCOMPARE(m_dialogs->messages, QStringList{"You must select a class configuration"});
    }

    void newWithAnEmptyAnswerDoesNothing()
    {
        select(QStringLiteral("zulu"));
        m_dialogs->inputAnswers << QString();
        click("btNew");
        QCOMPARE(m_window->configNames().size(), 4);
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("zulu"));
    }

    void deleteAsksAndRemovesOnlyThatConfiguration_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QStringLiteral("bravo");
        QTest::newRow("apostrophe") << QStringLiteral("it's");
        QTest::newRow("statement text") << QStringLiteral("x' OR '1'='1");
    }
    void deleteAsksAndRemovesOnlyThatConfiguration()
    {
        QFETCH(QString, name);
        addConfiguration(m_data->classDb(), name);
        m_data->classDb().prepare("insert into classdef (package_name, class_num) values (?, 1)").run({name});
        m_window->RefreshList();
        select(name);
        m_dialogs->confirmAnswers << true;
        click("btDelete");
        QCOMPARE(m_dialogs->prompts.value(0),
                 QStringLiteral("Delete Confirmation|Are you sure you want to delete the '%1' Config?").arg(name));
        QVERIFY(!m_window->configNames().contains(name));
        QCOMPARE(classCount(name), 0);
        QCOMPARE(classCount(QStringLiteral("Example")), 2);
        QCOMPARE(m_window->configNames().size(), 4);
        QVERIFY(m_data->state->currentConfig.isEmpty());
    }

    void deleteOfASharedNameRemovesOneRowAndAllItsClasses()
    {
        addConfiguration(m_data->classDb(), QStringLiteral("alpha"));
        m_data->classDb().exec("insert into classdef (package_name, class_num) values ('alpha', 1)");
        m_window->RefreshList();
        select(QStringLiteral("alpha"));
        m_dialogs->confirmAnswers << true;
        click("btDelete");
        QCOMPARE(m_window->configNames().count(QStringLiteral("alpha")), 1);
        QCOMPARE(classCount(QStringLiteral("alpha")), 0);
    }

    void declinedDeleteChangesNothing()
    {
        select(QStringLiteral("Example"));
        m_dialogs->confirmAnswers << false;
        click("btDelete");
        QCOMPARE(m_window->configNames().size(), 4);
        QCOMPARE(classCount(QStringLiteral("Example")), 2);
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("Example"));
        QCOMPARE(list()->currentRow(), 0);
    }

    void commandsNeedingASelectionSaySo_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("delete") << "btDelete";
        QTest::newRow("edit") << "btEdit";
        QTest::newRow("make copy") << "btCopy";
    }
    void commandsNeedingASelectionSaySo()
    {
        QFETCH(QString, button);
        click(qPrintable(button));
        QCOMPARE(m_dialogs->messages, QStringList{"You must select a class configuration"});
        QVERIFY(m_dialogs->prompts.isEmpty());
        QCOMPARE(m_window->configNames().size(), 4);
    }

    void deletingEveryConfigurationLeavesAWorkingEmptyList()
    {
        for (int i = 0; i < 4; ++i) {
            select(m_window->configNames().first());
            m_dialogs->confirmAnswers << true;
            click("btDelete");
        }
        QCOMPARE(list()->count(), 0);
        m_dialogs->inputAnswers << QStringLiteral("fresh");
        click("btNew");
        QCOMPARE(m_window->configNames(), QStringList{"fresh"});
    }

    void setModIdWritesTheFileAndShowsTheCurrentValue()
    {
        m_dialogs->inputAnswers << QStringLiteral("12") << QString() << QStringLiteral(" 9 ");
        trigger("mnuSetModID");
        QCOMPARE(m_dialogs->prompts.value(0),
                 QStringLiteral("Mod ID|Enter Your Mod ID (not required). Current ID = 0"));
        QCOMPARE(m_data->state->modId, QStringLiteral("12"));
        trigger("mnuSetModID"); // an empty answer never empties a Mod ID
        QCOMPARE(m_data->state->modId, QStringLiteral("12"));
        QCOMPARE(readModId(m_data->state->settingsPath()), QStringLiteral("12"));
        trigger("mnuSetModID");
        QCOMPARE(m_dialogs->prompts.value(2),
                 QStringLiteral("Mod ID|Enter Your Mod ID (not required). Current ID = 12"));
        QCOMPARE(m_data->state->modId, QStringLiteral(" 9 ")); // as typed for this run
        openWindow();
        QCOMPARE(m_data->state->modId, QStringLiteral("9")); // trimmed after the next start
    }

    void noSettingsFileUntilAModIdIsEntered()
    {
        QCOMPARE(m_data->state->modId, QStringLiteral("0"));
        QVERIFY(!QFile::exists(m_data->state->settingsPath()));
    }

    void failedModIdWriteIsToldAndTheValueKept()
    {
        QDir(m_data->state->dataDirectory).mkdir(QStringLiteral("tarn.ini")); // a folder where the file should go
        m_dialogs->inputAnswers << QStringLiteral("5");
        trigger("mnuSetModID");
        QCOMPARE(m_dialogs->messages.size(), 1);
        QVERIFY(m_dialogs->messages[0].contains(QStringLiteral("tarn.ini")));
        QCOMPARE(m_data->state->modId, QStringLiteral("5"));
    }

    void aboutBoxShowsItsTexts()
    {
        QString title;
        QString description;
        m_dialogs->onModal = [&](QWidget& about) {
            title = about.windowTitle();
            description = about.findChild<QLabel*>("lblDescription")->text();
            QTest::keyClick(&about, Qt::Key_Escape);
            QVERIFY(!about.isVisible());
        };
        trigger("mnuAbout");
        QCOMPARE(m_dialogs->modalWindows, QStringList{"frmAbout"});
        QCOMPARE(title, QStringLiteral("About MyApp"));
        QVERIFY(description.startsWith(QStringLiteral("The Tarn Workbench is a tool")));
    }

    void everyControlCarriesItsSystemName()
    {
        for (const char* name : {"classlist", "btNew", "btDelete", "btEdit", "btCopy", "btImport", "Label1"}) {
            auto* control = m_window->findChild<QWidget*>(name);
            QVERIFY2(control, name);
            QCOMPARE(control->accessibleDescription(), QString::fromLatin1(name));
        }
        QCOMPARE(plain(m_window->findChild<QPushButton*>("btImport")->text()),
                 QStringLiteral("Import from Class File..."));
        QCOMPARE(m_window->findChild<QLabel*>("Label1")->buddy(), list());
    }
};

QTEST_MAIN(ConfigWindowTest)
#include "tst_config.moc"
