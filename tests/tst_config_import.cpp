#include "classfile/Protection.h"
#include "tst_config_fixture.h"

using namespace tarn;
using namespace tarn::test;

class ImportButtonTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<ConfigWindowFixture> f;

    void import(const QString& name, const QString& file)
    {
        f->dialogs.inputAnswers << name;
        if (!name.isEmpty())
            f->dialogs.fileAnswers << file;
        f->click("btImport");
    }
    QString classFileOf(const QByteArrayList& lines)
    {
        const QString path = f->data.path(QStringLiteral("in.class"));
        return writeFile(path, classFile(lines)) ? path : QString();
    }

private slots:
    void init() { f = std::make_unique<ConfigWindowFixture>(); }
    void cleanup() { f.reset(); }

    void importsAsANewConfigurationAndSaysSo()
    {
        f->select(QStringLiteral("Example"));
        import(QStringLiteral("Copy One"), testDataPath("test_set_protected.class"));
        QCOMPARE(f->dialogs.prompts, QStringList{"Copy Config|Enter the name of the config you wish to copy to"});
        QCOMPARE(f->dialogs.fileFilters, QStringList{"Class Config (*.class)|*.class|All Files (*.*)|*.*"});
        QCOMPARE(f->dialogs.messages, QStringList{"Import Complete"});
        QCOMPARE(f->window->configNames(), (QStringList{"Copy One", "Example"}));
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("Copy One")), 2);
        QVERIFY(f->data.state->currentConfig.isEmpty());
        QVERIFY(!f->dialogs.busy);
    }

    void cancelledPromptOrDialogChangesNothing()
    {
        import(QString(), QString());
        import(QStringLiteral("never"), QString());
        QVERIFY(f->dialogs.messages.isEmpty());
        QCOMPARE(f->window->configNames(), QStringList{"Example"});
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("never")), 0);
    }

    // The bad line is read unprotected, as every line is.
    void badRecordKeepsEarlierRowsButMakesNoConfiguration()
    {
        f->select(QStringLiteral("Example"));
        import(QStringLiteral("half"), classFileOf(ClassFileHeader + classRecord("A]") +
                                                   QByteArrayList{protectLine("stray", true), "[B]", "x"}));
        QCOMPARE(f->dialogs.messages, QStringList{"Bad Class Record: stray"});
        QCOMPARE(f->window->configNames(), QStringList{"Example"});
        QCOMPARE(f->data.state->currentConfig, QStringLiteral("Example"));
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("half")), 1);
        QVERIFY(!f->dialogs.busy);
    }

    void malformedFileIsToldWithItsLineNumber()
    {
        const QString file =
            classFileOf(ClassFileHeader + classRecord("A]", 4, "1 2 99999  0  0") + QByteArrayList{""});
        import(QStringLiteral("broken"), file);
        QCOMPARE(f->dialogs.messages,
                 QStringList{"Cannot import " + file +
                             ": line 7: max health \"99999\" is not a whole number from -32768 to 32767."});
        QCOMPARE(f->window->configNames(), QStringList{"Example"});
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("broken")), 0);
    }

    void unreadableFileIsToldByName()
    {
        const QString missing = f->data.path(QStringLiteral("missing.class"));
        import(QStringLiteral("ghost"), missing);
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY(f->dialogs.messages[0].startsWith("Cannot open " + missing + ": "));
        QCOMPARE(f->window->configNames(), QStringList{"Example"});
    }
};

QTEST_MAIN(ImportButtonTest)
#include "tst_config_import.moc"
