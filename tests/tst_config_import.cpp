#include "config/frmConfig.h"
#include "support/ScriptedDialogs.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace tarn;
using namespace tarn::test;

class ImportButtonTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<TempData> m_data;
    std::unique_ptr<ScriptedDialogs> m_dialogs;
    std::unique_ptr<frmConfig> m_window;

    void import(const QString& name, const QString& file)
    {
        m_dialogs->inputAnswers << name;
        if (!name.isEmpty())
            m_dialogs->fileAnswers << file;
        QTest::mouseClick(m_window->findChild<QPushButton*>("btImport"), Qt::LeftButton);
    }
    QString writeClassFile(const QByteArray& content)
    {
        const QString path = m_data->dir.filePath(QStringLiteral("in.class"));
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return path;
    }
    int classes(const QString& name)
    {
        return m_data->classDb().scalar("select count(*) from classdef where package_name = ?", {name}).toInt();
    }
    void selectExample()
    {
        auto* list = m_window->findChild<QListWidget*>("classlist");
        list->setCurrentRow(0);
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("Example"));
    }

private slots:
    void init()
    {
        m_data = std::make_unique<TempData>();
        m_dialogs = std::make_unique<ScriptedDialogs>();
        m_window = std::make_unique<frmConfig>(*m_data->state, *m_dialogs);
    }

    void importsAsANewConfigurationAndSaysSo()
    {
        selectExample();
        import(QStringLiteral("Copy One"), QFINDTESTDATA("data/test_set_protected.class"));
        QCOMPARE(m_dialogs->prompts, QStringList{"Copy Config|Enter the name of the config you wish to copy to"});
        QCOMPARE(m_dialogs->fileFilters, QStringList{"Class Config (*.class)|*.class|All Files (*.*)|*.*"});
        QCOMPARE(m_dialogs->messages, QStringList{"Import Complete"});
        QCOMPARE(m_window->configNames(), (QStringList{"Copy One", "Example"}));
        QCOMPARE(classes(QStringLiteral("Copy One")), 2);
        QVERIFY(m_data->state->currentConfig.isEmpty());
        QVERIFY(!m_dialogs->busy);
    }

    void cancelledPromptOrDialogChangesNothing()
    {
        import(QString(), QString());
        import(QStringLiteral("never"), QString());
        QVERIFY(m_dialogs->messages.isEmpty());
        QCOMPARE(m_window->configNames(), QStringList{"Example"});
        QCOMPARE(classes(QStringLiteral("never")), 0);
    }

    void badRecordKeepsEarlierRowsButMakesNoConfiguration()
    {
        selectExample();
        const QString file = writeClassFile("V3 0\r\nx\r\n\r\n[A]\r\nm r b 0\r\n1 0 0 0 0 0 0 0 0 0\r\n0 0 0\r\n"
                                            "1 2 3  0  0\r\n1 2 3 4 5 6\r\n\xf3\xf4\xf2\xe1\xf9\r\n[B]\r\nx\r\n");
        import(QStringLiteral("half"), file);
        QCOMPARE(m_dialogs->messages, QStringList{"Bad Class Record: stray"});
        QCOMPARE(m_window->configNames(), QStringList{"Example"});
        QCOMPARE(m_data->state->currentConfig, QStringLiteral("Example"));
        QCOMPARE(classes(QStringLiteral("half")), 1);
        QVERIFY(!m_dialogs->busy);
    }

    void malformedFileIsToldWithItsLineNumber()
    {
        const QString file = writeClassFile("V3 0\r\nx\r\n\r\n[A]\r\nm r b 0\r\n1 0 0 0 0 0 0 0 0 0\r\n0 0 0\r\n"
                                            "1 2 99999  0  0\r\n1 2 3 4 5 6\r\n\r\n");
        import(QStringLiteral("broken"), file);
        QCOMPARE(m_dialogs->messages.size(), 1);
        QVERIFY2(m_dialogs->messages[0].contains(QStringLiteral("line 8")), qPrintable(m_dialogs->messages[0]));
        QVERIFY(m_dialogs->messages[0].contains(QStringLiteral("99999")));
        QCOMPARE(m_window->configNames(), QStringList{"Example"});
        QCOMPARE(classes(QStringLiteral("broken")), 0);
    }

    void unreadableFileIsToldByName()
    {
        import(QStringLiteral("ghost"), m_data->dir.filePath(QStringLiteral("missing.class")));
        QCOMPARE(m_dialogs->messages.size(), 1);
        QVERIFY(m_dialogs->messages[0].contains(QStringLiteral("missing.class")));
        QCOMPARE(m_window->configNames(), QStringList{"Example"});
    }
};

QTEST_MAIN(ImportButtonTest)
#include "tst_config_import.moc"
