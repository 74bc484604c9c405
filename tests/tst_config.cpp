#include "classes/frmClasses.h"
#include "classfile/Protection.h"
#include "config/frmConfig.h"
#include "core/Backups.h"
#include "core/ModId.h"
#include "store/Configurations.h"
#include "store/Schema.h"
#include "store/StoreError.h"
#include "support/WindowFixture.h"
#include "toolkit/QtDialogs.h"
#include "toolkit/WindowMemory.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QListView>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <sys/stat.h>
#include <utility>

using namespace tarn;
using namespace tarn::test;

namespace
{

// The main window on a fresh data directory holding "Example" and three configurations more.
struct MainWindow : WindowFixture {
    MainWindow()
    {
        for (const char* name : {"zulu", "alpha", "Mike"})
            addConfiguration(data.classDb(), name);
        open(Window::Config);
    }
    frmConfig& main() const { return as<frmConfig>(); }
    QListWidget* list() const { return control<QListWidget>("classlist"); }
    // Clicks a name in the list, as the author does.
    void select(const QString& name) const
    {
        const int row = int(main().configNames().indexOf(name));
        QVERIFY(row >= 0);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
        QCOMPARE(data.state->currentConfig, name);
    }
};

const QString NothingSelected = QStringLiteral("You must select a class configuration");
const QStringList Listed{"Example", "Mike", "alpha", "zulu"}; // the store's order

} // namespace

class ConfigWindowTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<MainWindow> f;

    // The three roads into an import: the button and its file dialog, a file opened from
    // the desktop (tarn FILE), and a file dropped on the window.
    void import(const QString& name, const QString& file, const QString& road = QStringLiteral("button"))
    {
        f->dialogs.inputAnswers << name;
        if (road == "button") {
            if (!name.isEmpty())
                f->dialogs.fileAnswers << file;
            f->press("btImport");
        } else if (road == "opened") {
            f->main().openClassFile(file);
        } else {
            drop(QList<QUrl>{QUrl::fromLocalFile(file)});
        }
    }
    // Returns whether the window took the drop.
    bool drop(const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        const QPoint at = f->list()->geometry().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(f->window.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(f->window.get(), &drop);
        QApplication::processEvents(); // the import starts once the drop is over
        return true;
    }
    void copyExample(const QString& answer)
    {
        f->select(QStringLiteral("Example"));
        f->dialogs.inputAnswers << answer;
        f->press("btCopy");
    }
    QStringList everything()
    {
        return rowsOf(f->data.classDb(), "select * from package order by rowid") +
               rowsOf(f->data.classDb(), "select * from classdef order by rowid");
    }

private slots:
    void init() { f = std::make_unique<MainWindow>(); }

    // The real dialogs behind the seam. The open dialog shows the captions as written, and
    // "All Files (*.*)" lists a name without a dot. Save As replaces an existing file without a
    // question: the author named it on purpose. The delete question carries the stop icon, and
    // Enter takes its default, which is No.
    void realDialogs()
    {
        QTemporaryDir dir;
        for (const char* name : {"set.class", "noext", "notes.txt"})
            QVERIFY(writeFile(dir.filePath(name), "x"));
        const QString previous = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        QStringList captions;
        QStringList listed;
        onModalDialog([] { QtDialogs().openFileName(nullptr, ClassFileFilter); },
                      [&](QWidget& shown) {
                          auto& dialog = dynamic_cast<QFileDialog&>(shown);
                          const auto* types = dialog.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
                          for (int i = 0; i < types->count(); ++i)
                              captions << types->itemText(i);
                          dialog.selectNameFilter(dialog.nameFilters().value(1));
                          const auto* view = dialog.findChild<QListView*>(QStringLiteral("listView"));
                          const auto names = [&] {
                              QStringList names;
                              for (int row = 0; row < view->model()->rowCount(view->rootIndex()); ++row)
                                  names << view->model()->index(row, 0, view->rootIndex()).data().toString();
                              return names;
                          };
                          (void)QTest::qWaitFor([&] { return names().size() == 3; }); // compared below
                          listed = names();
                          dialog.reject();
                      });
        QDir::setCurrent(previous);
        QCOMPARE(captions, (QStringList{"Class Config (*.class)", "All Files (*.*)"}));
        listed.sort();
        QCOMPARE(listed, (QStringList{"noext", "notes.txt", "set.class"}));
        bool asks = true;
        onModalDialog([] { QtDialogs().saveFileName(nullptr, ClassFileFilter); },
                      [&](QWidget& shown) {
                          asks = !dynamic_cast<QFileDialog&>(shown).testOption(QFileDialog::DontConfirmOverwrite);
                          shown.close();
                      });
        QVERIFY(!asks);
        QString seen;
        onModalDialog([&] { seen += QtDialogs().confirm(nullptr, "Delete it?", "Delete") ? "Yes" : "No"; },
                      [&](QWidget& shown) {
                          auto& box = dynamic_cast<QMessageBox&>(shown);
                          seen = box.windowTitle() + (box.icon() == QMessageBox::Critical ? "|stop|" : "|no stop|");
                          QTest::keyClick(&box, Qt::Key_Return);
                      });
        QCOMPARE(seen, QStringLiteral("Delete|stop|No"));
    }

    // The class editor opens modally from the main window, which takes no click meanwhile;
    // the busy cursor of its loading is gone by then.
    void theEditorIsModal()
    {
        QtDialogs real;
        frmConfig main(*f->data.state, real);
        main.show();
        auto* list = main.findChild<QListWidget*>("classlist");
        const auto click = [&](int row) { // through the window system, which knows what is modal
            const QPoint at = list->viewport()->mapTo(&main, list->visualItemRect(list->item(row)).center());
            QTest::mouseClick(main.windowHandle(), Qt::LeftButton, {}, at);
        };
        click(0);
        QString seen;
        QTimer::singleShot(0, [&] {
            auto* editor = main.findChild<frmClasses*>();
            click(3);
            seen = editor->windowTitle() + u'|' + editor->findChild<QLabel*>("Label31")->text() + u'|' +
                   f->data.state->currentConfig +
                   (QApplication::activeModalWidget() == editor ? "|modal" : "|not modal") +
                   (QApplication::overrideCursor() ? "|busy" : "|idle");
            editor->close();
        });
        QTest::mouseClick(main.findChild<QPushButton*>("btEdit"), Qt::LeftButton);
        QCOMPARE(seen, QStringLiteral("KD TARN 1 - Class Configuration|Example|Example|modal|idle"));
    }
    void cleanup() { f.reset(); }

    void listsConfigurationsInTheStoresOrderWithNothingSelected()
    {
        QCOMPARE(f->main().configNames(), Listed);
        QCOMPARE(f->list()->count(), 4);
        QCOMPARE(f->list()->currentRow(), -1);
        for (int i = 0; i < 60; ++i)
            addConfiguration(f->data.classDb(), QStringLiteral("cfg %1").arg(i, 2, 10, QLatin1Char('0')));
        f->main().RefreshList();
        QCOMPARE(f->list()->count(), 64);
        f->select(QStringLiteral("zulu")); // a click selects by position
        // The import's caption stands on two lines, with room on either side.
        const QPushButton* import = f->control<QPushButton>("btImport");
        QCOMPARE(plain(import->text()).replace(u'\n', u' '), QStringLiteral("Import from Class File..."));
        QCOMPARE(import->text().count(u'\n'), 1);
        QCOMPARE(import->accessibleName(), QStringLiteral("Import from Class File..."));
        const QSize caption = import->fontMetrics().size(Qt::TextShowMnemonic, import->text());
        QVERIFY(caption.width() < import->width() - 16 && caption.height() < import->height());
        QCOMPARE(f->list()->accessibleDescription(), QStringLiteral("classlist")); // its system name
    }

    // Geometry and folders come back from the settings file; a damaged file, a pipe in
    // its place, or a folder that is gone, gives the defaults without a word.
    void windowsRememberTheirPlaceAndFolders()
    {
        QTemporaryDir dir;
        const QString settingsFile = dir.filePath("windows.ini");
        const WindowMemory memory(settingsFile);
        QWidget first, again, fresh;
        for (QWidget* window : {&first, &again, &fresh})
            window->setObjectName("frmTest");
        first.setGeometry(40, 50, 321, 123);
        memory.remember(first);
        QVERIFY(QDir().mkpath(dir.filePath("exports")));
        memory.rememberFolderOf("export", dir.filePath("exports/a.class"));

        memory.restore(again);
        QCOMPARE(again.size(), QSize(321, 123));
        QCOMPARE(memory.lastFolder("export"), dir.filePath("exports"));
        QVERIFY(QDir(dir.filePath("exports")).removeRecursively());
        QCOMPARE(memory.lastFolder("export"), QString());

        QVERIFY(writeFile(settingsFile, QByteArray("\xFF\x00[windows\n=\x01garbage", 20)));
        fresh.resize(100000, 100000); // larger than any screen
        WindowMemory(settingsFile).restore(fresh);
        QVERIFY(fresh.screen()->availableGeometry().size().expandedTo(fresh.size()) ==
                fresh.screen()->availableGeometry().size());
        QCOMPARE(WindowMemory(settingsFile).lastFolder("export"), QString());

        // A pipe in the file's place is neither read (it would hang) nor replaced.
        const QString pipe = dir.filePath("pipe.ini");
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        WindowMemory(pipe).restore(fresh);
        WindowMemory(pipe).remember(fresh);
        WindowMemory(pipe).rememberFolderOf("export", settingsFile);
        QCOMPARE(WindowMemory(pipe).lastFolder("export"), QString());
        QVERIFY(!QFileInfo(pipe).isFile());
    }

    // Focus alone chooses nothing, and the commands that need a choice say so; an arrow
    // key chooses as a click does; a Ctrl+click
    // on the chosen entry leaves nothing chosen. CurrentConfig names what is highlighted.
    void onlyTheAuthorsChoiceSetsCurrentConfig()
    {
        QListWidget* list = f->list();
        const auto chosen = [&] {
            const QList<QListWidgetItem*> items = list->selectedItems();
            return (items.isEmpty() ? QString() : items.first()->text()) + u'|' + f->data.state->currentConfig;
        };
        QVERIFY(f->activate());
        QTest::keyClick(f->window.get(), Qt::Key_C, Qt::AltModifier);
        QVERIFY(list->hasFocus());
        QCOMPARE(chosen(), QStringLiteral("|"));
        for (const char* command : {"btDelete", "btEdit", "btCopy"})
            f->press(command);
        QCOMPARE(f->dialogs.messages, QStringList(3, NothingSelected));
        QVERIFY(f->dialogs.prompts.isEmpty());
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(chosen(), list->currentItem()->text() + u'|' + list->currentItem()->text());
        f->select(QStringLiteral("Mike"));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          list->visualItemRect(list->item(1)).center());
        QCOMPARE(chosen(), QStringLiteral("|"));
        f->select(QStringLiteral("alpha"));
        f->main().RefreshList();
        QCOMPARE(chosen(), QStringLiteral("|"));
    }

    // Enter on the entry the focus is on, even unselected, and a double-click on one edit
    // it; F1 opens About.
    void keysRunTheirCommands_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("Enter") << "Enter" << QStringList{"frmClasses"};
        QTest::newRow("double-click") << "double-click" << QStringList{"frmClasses"};
        QTest::newRow("F1") << "F1" << QStringList{"frmAbout"};
    }
    void keysRunTheirCommands()
    {
        QFETCH(QString, key);
        QFETCH(QStringList, shown);
        QVERIFY(f->activate());
        QListWidget* list = f->list();
        list->setFocus(Qt::TabFocusReason);
        QVERIFY(list->selectedItems().isEmpty());
        if (key == "double-click") {
            // As the window system delivers it: a click, then the second press as a double-click.
            const QPoint entry = list->visualItemRect(list->item(0)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, entry);
        } else
            QTest::keySequence(list, QKeySequence(key));
        QCOMPARE(f->dialogs.modalWindows, shown);
    }

    void newAddsTheNameAsTypedAndClearsTheSelection_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("blanks kept") << QStringLiteral("  bravo ");
        QTest::newRow("existing name") << QStringLiteral("alpha");
    }
    void newAddsTheNameAsTypedAndClearsTheSelection()
    {
        QFETCH(QString, name);
        f->select(QStringLiteral("zulu"));
        f->dialogs.inputAnswers << name;
        f->press("btNew");
        QCOMPARE(f->dialogs.prompts, QStringList{"Enter Config Name|Enter the Configuration Name"});
        QCOMPARE(f->main().configNames(), listConfigurations(f->data.classDb()));
        QCOMPARE(f->main().configNames().count(name), name == "alpha" ? 2 : 1);
        QVERIFY(f->data.state->currentConfig.isEmpty());
        f->press("btEdit");
        QCOMPARE(f->dialogs.messages, QStringList{NothingSelected});
    }

    // An empty answer to New or to the import's name, a cancelled file dialog and a
    // declined delete change nothing, the selection included.
    void cancelledCommandsChangeNothing()
    {
        const QStringList before = everything();
        f->select(QStringLiteral("Example"));
        f->dialogs.inputAnswers << QString();
        f->press("btNew");
        f->dialogs.confirmAnswers << false;
        f->press("btDelete");
        import(QStringLiteral("never"), QString());
        QCOMPARE(everything(), before);
        QCOMPARE(f->main().configNames(), Listed);
        QCOMPARE(f->data.state->currentConfig, QStringLiteral("Example"));
        QCOMPARE(f->list()->currentRow(), 0);
        QVERIFY(f->dialogs.messages.isEmpty());
    }

    // Of a name two rows share, one row goes, and all its classes.
    void deleteAsksAndRemovesOnlyThatConfiguration()
    {
        const QString name = QStringLiteral("alpha");
        addConfiguration(f->data.classDb(), name);
        f->data.classDb().prepare("insert into classdef (package_name, class_num) values (?, 1)").run({name});
        f->main().RefreshList();
        f->select(name);
        f->dialogs.confirmAnswers << true;
        f->press("btDelete");
        QCOMPARE(f->dialogs.prompts,
                 QStringList{"Delete Confirmation|Are you sure you want to delete the 'alpha' Config?"});
        QCOMPARE(classCount(f->data.classDb(), name), 0);
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("Example")), 2);
        QCOMPARE(f->main().configNames(), Listed);
        QVERIFY(f->data.state->currentConfig.isEmpty());
    }

    void setModIdWritesTheFileAndShowsTheCurrentValue()
    {
        QCOMPARE(f->data.state->modId, QStringLiteral("0"));
        QVERIFY(!QFile::exists(f->data.state->settingsPath())); // none until a Mod ID is entered
        f->dialogs.inputAnswers << QStringLiteral("12") << QString() << QStringLiteral(" 9 ");
        f->trigger("mnuSetModID");
        QCOMPARE(f->dialogs.prompts.value(0),
                 QStringLiteral("Mod ID|Enter Your Mod ID (not required). Current ID = 0"));
        QCOMPARE(f->data.state->modId, QStringLiteral("12"));
        f->trigger("mnuSetModID"); // an empty answer never empties a Mod ID
        QCOMPARE(f->data.state->modId, QStringLiteral("12"));
        QCOMPARE(readModId(f->data.state->settingsPath()), QStringLiteral("12"));
        f->trigger("mnuSetModID");
        QCOMPARE(f->dialogs.prompts.value(2),
                 QStringLiteral("Mod ID|Enter Your Mod ID (not required). Current ID = 12"));
        QCOMPARE(f->data.state->modId, QStringLiteral(" 9 ")); // as typed for this run
        f->open(Window::Config);
        QCOMPARE(f->data.state->modId, QStringLiteral("9")); // trimmed after the next start
        // Blanks are an answer: only an empty one is none. A Mod ID the file cannot take is
        // told, and holds for this run.
        QVERIFY(QFile::remove(f->data.state->settingsPath()) && QDir().mkdir(f->data.state->settingsPath()));
        f->dialogs.inputAnswers << QStringLiteral("  ");
        f->trigger("mnuSetModID");
        QCOMPARE(f->data.state->modId, QStringLiteral("  "));
        QCOMPARE(f->dialogs.messages.size(), 1);
        QVERIFY(f->dialogs.messages[0].contains(QStringLiteral("tarn.ini")));
        QVERIFY(f->dialogs.messages[0].endsWith(QStringLiteral("\nThe Mod ID holds for this session only.")));
    }

    // File > Restore Backup offers the backups, newest first, and puts back the chosen one
    // once the author says yes; no says nothing and changes nothing.
    void restoreBackupPutsBackTheChosenOne()
    {
        f->trigger("mnuRestoreBackup");
        QCOMPARE(f->dialogs.messages, QStringList{"There is no backup of the stores yet."});
        QCOMPARE(backUpStores(f->data.dir.path(), f->data.state->stores, QDateTime::currentDateTime()), std::nullopt);
        const QString when = listBackups(f->data.dir.path()).first();
        deleteConfiguration(f->data.classDb(), "Mike");
        f->dialogs.inputAnswers << when << when;
        f->dialogs.confirmAnswers << false << true;
        f->trigger("mnuRestoreBackup");
        QVERIFY(!f->data.state->classDb().scalar("select count(*) from package where package_name = 'Mike'").toInt());
        f->trigger("mnuRestoreBackup");
        QCOMPARE(f->dialogs.offered, listBackups(f->data.dir.path()).mid(1)); // this restore's own backup came first
        QCOMPARE(f->dialogs.prompts.last(),
                 "Restore Backup|Put back the configurations and reference tables as they were at " + when +
                     "? The stores as they are now are kept as a backup first.");
        QCOMPARE(f->main().configNames(), Listed);
        QCOMPARE(f->main().statusBar()->currentMessage(), "Restored the backup of " + when);
    }

    // Make Copy: Cancel changes nothing; a copy of every column of the classes of that name
    // alone is listed, and nothing is selected afterwards.
    void copyFromTheWindow()
    {
        insertClass(f->data.classDb(), "EXAMPLE", 1);
        const QStringList before = everything();
        copyExample(QString()); // Cancel and OK on an empty box answer alike
        QCOMPARE(everything(), before);
        QCOMPARE(f->list()->currentItem()->text(), QStringLiteral("Example"));
        QCOMPARE(f->dialogs.busyChanges, 0);

        copyExample(QStringLiteral("Kilo"));
        QCOMPARE(f->dialogs.prompts, QStringList(2, "Copy Config|Enter the name of the config you wish to copy to"));
        QCOMPARE(f->main().configNames(), (QStringList{"EXAMPLE", "Example", "Kilo", "Mike", "alpha", "zulu"}));
        QCOMPARE(f->list()->item(2)->text(), QStringLiteral("Kilo"));
        QVERIFY(f->list()->selectedItems().isEmpty());
        QVERIFY(f->data.state->currentConfig.isEmpty());
        const QString classes = "select " + schema::classColumnNames().mid(1).join(u',') +
                                " from classdef where package_name = ? order by class_num";
        QCOMPARE(rowsOf(f->data.classDb(), classes, {"Kilo"}), rowsOf(f->data.classDb(), classes, {"Example"}));
        QCOMPARE(classCount(f->data.classDb(), QStringLiteral("Kilo")), 2);
        // The copy skipped the table's checks for its own rows only.
        QVERIFY_THROWS_EXCEPTION(StoreError, f->data.classDb().exec("update classdef set class_num = 40000"));
        QVERIFY(!f->dialogs.busy);
        QCOMPARE(f->dialogs.busyChanges, 2);
        QVERIFY(f->dialogs.messages.isEmpty());

        // A name in use, another's or the source's own, is told, and the selection stays.
        const QStringList after = everything();
        const QStringList listed = f->main().configNames();
        for (const QString name : {"alpha", "Example"}) {
            copyExample(name);
            QCOMPARE(std::exchange(f->dialogs.messages, {}),
                     QStringList{"There is already a configuration named \"" + name +
                                 "\". The copy needs a name of its own."});
            QCOMPARE(everything(), after);
            QVERIFY(!f->dialogs.busy);
            QCOMPARE(f->data.state->currentConfig + u'|' + f->main().configNames().join(u','),
                     "Example|" + listed.join(u','));
        }
    }

    // An import by the button and its file dialog, by a file opened from the desktop or
    // dropped on the window, asks for the new name and makes that configuration, listed,
    // with nothing selected. Cancel imports nothing; a file that cannot be read or holds a
    // bad line is told and lists nothing, a bad record keeping the rows before it.
    void importMakesANewConfiguration_data()
    {
        QTest::addColumn<QString>("road");
        QTest::addColumn<QString>("answer");     // the new name; none: Cancel
        QTest::addColumn<QByteArray>("content"); // none: no file
        QTest::addColumn<QString>("message");    // %1 is the file; a text ending ": " starts the message
        QTest::addColumn<int>("classes");
        const QByteArray good = readFile(testDataPath("test_set_protected.class"));
        const QByteArray malformed =
            classFile(ClassFileHeader + classRecord("A]", 4, "1 2 99999  0  0") + QByteArrayList{""});
        const QByteArray badRecord =
            classFile(ClassFileHeader + classRecord("A]") + QByteArrayList{protectLine("stray", true), "[B]", "x"});
        const QString complete = QStringLiteral("Import Complete");
        QTest::newRow("button") << "button" << QString("Copy One") << good << complete << 2;
        QTest::newRow("opened") << "opened" << QString("Desktop") << good << complete << 2;
        QTest::newRow("dropped") << "dropped" << QString("Desktop") << good << complete << 2;
        QTest::newRow("button, cancelled") << "button" << QString() << good << QString() << 0;
        QTest::newRow("opened, cancelled") << "opened" << QString() << good << QString() << 0;
        QTest::newRow("malformed")
            << "button" << QString("broken") << malformed
            << "Cannot import %1: line 7: max health \"99999\" is not a whole number from -32768 to 32767." << 0;
        QTest::newRow("a bad record, read unprotected as every line")
            << "button" << QString("half") << badRecord << "Bad Class Record: stray" << 1;
        QTest::newRow("unreadable") << "button" << QString("broken") << QByteArray() << "Cannot open %1: " << 0;
    }
    void importMakesANewConfiguration()
    {
        QFETCH(QString, road);
        QFETCH(QString, answer);
        QFETCH(QByteArray, content);
        QFETCH(QString, message);
        QFETCH(int, classes);
        const QString file = f->data.path(QStringLiteral("in.class"));
        QVERIFY(content.isEmpty() || writeFile(file, content));
        f->select(QStringLiteral("Example"));
        import(answer, file, road);
        QCOMPARE(f->dialogs.prompts, QStringList{"Copy Config|Enter the name of the config you wish to copy to"});
        QCOMPARE(f->dialogs.fileFilters,
                 road == "button" && !answer.isEmpty() ? QStringList{ClassFileFilter} : QStringList());
        const QString told = f->dialogs.messages.value(0);
        QVERIFY2(message.endsWith(": ") ? told.startsWith(message.arg(file)) : told == message.arg(file),
                 qPrintable(told));
        QCOMPARE(f->dialogs.messages.size(), message.isEmpty() ? 0 : 1);
        QCOMPARE(classCount(f->data.classDb(), answer), classes);
        QVERIFY(!f->dialogs.busy);
        if (message != "Import Complete") {
            QCOMPARE(f->main().configNames(), Listed);
            QCOMPARE(f->data.state->currentConfig, QStringLiteral("Example"));
            return;
        }
        QCOMPARE(f->main().configNames(), QStringList{answer} + Listed);
        QVERIFY(f->data.state->currentConfig.isEmpty());
        QCOMPARE(f->main().statusBar()->currentMessage(), "Read 2 classes from " + file + " into \"" + answer + u'"');
        // The status tells of the last command only: the next one clears it as it starts.
        f->select(answer);
        f->dialogs.confirmAnswers << false;
        f->press("btDelete");
        QCOMPARE(f->main().statusBar()->currentMessage(), QString());
    }

    // Only one file of this machine is taken at a time.
    void dropOfAnythingButOneLocalFileIsRefused()
    {
        const QUrl file = QUrl::fromLocalFile(testDataPath("test_set_protected.class"));
        QVERIFY(!drop({file, file}));
        QVERIFY(!drop({QUrl(QStringLiteral("https://example.org/x.class"))}));
        QVERIFY(!drop({}));
        QVERIFY(f->dialogs.prompts.isEmpty());
    }
};

QTEST_MAIN(ConfigWindowTest)
#include "tst_config.moc"
