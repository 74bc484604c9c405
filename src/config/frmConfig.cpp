#include "frmConfig.h"

#include "classes/frmClasses.h"
#include "classfile/ImportCommand.h"
#include "core/AppState.h"
#include "core/Backups.h"
#include "core/ModId.h"
#include "frmAbout.h"
#include "reference/ReferenceWindows.h"
#include "store/Configurations.h"
#include "toolkit/AppIcon.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Emphasis.h"
#include "toolkit/Guarded.h"
#include "toolkit/StatusBar.h"
#include "toolkit/SystemNames.h"
#include "toolkit/TextSizes.h"
#include "toolkit/WindowMemory.h"
#include "ui_frmConfig.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDropEvent>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>

namespace tarn
{

namespace
{

const QString NothingSelected = QStringLiteral("You must select a class configuration");

std::optional<QString> droppedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return std::nullopt;
    return urls.first().toLocalFile();
}

} // namespace

frmConfig::frmConfig(AppState& state, Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::frmConfig>()), m_state(state), m_dialogs(dialogs)
{
    ui->setupUi(this);
    setWindowIcon(appIcon());
    setStatusBar(new QStatusBar(this));
    setSizeInCharacters(*ui->classlist, 38, 13);
    for (QPushButton* button : {ui->btNew, ui->btDelete, ui->btEdit, ui->btCopy, ui->btImport})
        setWidthInCharacters(*button, 19);
    showInBlue(*ui->Label1);
    setAcceptDrops(true);
    addRestoreBackup();
    clearStatusOnEveryCommand(*this);
    connectHandlers();
    publishSystemNames(*this);
    WindowMemory(m_state.windowSettingsFile).restore(*this);
    Form_Load();
}

// Exit ends the program without a close event, so the geometry is kept here.
frmConfig::~frmConfig()
{
    WindowMemory(m_state.windowSettingsFile).remember(*this);
}

// The File menu's way back to an earlier state of the stores, below Set Mod ID.
void frmConfig::addRestoreBackup()
{
    mnuRestoreBackup = new QAction(QStringLiteral("&Restore Backup..."), this);
    mnuRestoreBackup->setObjectName(QStringLiteral("mnuRestoreBackup"));
    ui->mnuFile->insertAction(ui->mnuFile->actions().value(1), mnuRestoreBackup);
}

void frmConfig::connectHandlers()
{
    // The selection, not the current row: focus alone makes a row current but selects
    // nothing, while a click or an arrow key selects.
    connect(ui->classlist, &QListWidget::itemSelectionChanged, this, &frmConfig::classlist_Click);
    connect(ui->btNew, &QPushButton::clicked, this, &frmConfig::btNew_Click);
    connect(ui->btDelete, &QPushButton::clicked, this, &frmConfig::btDelete_Click);
    connect(ui->btEdit, &QPushButton::clicked, this, &frmConfig::btEdit_Click);
    // Enter or a double-click on a configuration edits it, also the one the focus is on
    // before anything is selected.
    connect(ui->classlist, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        item->setSelected(true);
        btEdit_Click();
    });
    ui->mnuExit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    ui->mnuAbout->setShortcut(QKeySequence(Qt::Key_F1));
    connect(ui->btCopy, &QPushButton::clicked, this, &frmConfig::btCopy_Click);
    connect(ui->btImport, &QPushButton::clicked, this, &frmConfig::btImport_Click);
    connect(ui->mnuSetModID, &QAction::triggered, this, &frmConfig::mnuSetModID_Click);
    connect(mnuRestoreBackup, &QAction::triggered, this, &frmConfig::mnuRestoreBackup_Click);
    connect(ui->mnuExit, &QAction::triggered, this, &frmConfig::mnuExit_Click);
    connect(ui->mnuUpdateWeapons, &QAction::triggered, this, &frmConfig::mnuUpdateWeapons_Click);
    connect(ui->mnuUpdateGrenades, &QAction::triggered, this, &frmConfig::mnuUpdateGrenades_Click);
    connect(ui->mnuEditSpecial, &QAction::triggered, this, &frmConfig::mnuEditSpecial_Click);
    connect(ui->mnuEditItems, &QAction::triggered, this, &frmConfig::mnuEditItems_Click);
    connect(ui->mnuAbout, &QAction::triggered, this, &frmConfig::mnuAbout_Click);
}

void frmConfig::Form_Load()
{
    m_state.modId = readModId(m_state.settingsPath()); // "0" when the file can't be read
    m_state.currentConfig.clear();
    guarded(m_dialogs, this, [this] { RefreshList(); });
}

void frmConfig::RefreshList()
{
    m_state.currentConfig.clear();
    ConfigNames = listConfigurations(m_state.classDb());
    const QSignalBlocker quiet(ui->classlist);
    ui->classlist->clear();
    ui->classlist->addItems(ConfigNames);
    ui->classlist->setCurrentRow(-1);
}

// CurrentConfig always names what is highlighted, and nothing when nothing is.
void frmConfig::classlist_Click()
{
    const QList<QListWidgetItem*> chosen = ui->classlist->selectedItems();
    const int index = chosen.isEmpty() ? -1 : ui->classlist->row(chosen.first());
    m_state.currentConfig = index >= 0 && index < ConfigNames.size() ? ConfigNames[index] : QString();
}

void frmConfig::btNew_Click()
{
    const QString name =
        m_dialogs.inputBox(this, QStringLiteral("Enter the Configuration Name"), QStringLiteral("Enter Config Name"));
    if (name.isEmpty())
        return;
    guarded(m_dialogs, this, [&] {
        addConfiguration(m_state.classDb(), name);
        RefreshList();
    });
}

void frmConfig::btDelete_Click()
{
    if (!requireCurrentConfig())
        return;
    const QString question =
        QStringLiteral("Are you sure you want to delete the '") + m_state.currentConfig + QStringLiteral("' Config?");
    if (!m_dialogs.confirm(this, question, QStringLiteral("Delete Confirmation")))
        return;
    guarded(m_dialogs, this, [this] {
        deleteConfiguration(m_state.classDb(), m_state.currentConfig);
        RefreshList();
    });
}

void frmConfig::btEdit_Click()
{
    if (!requireCurrentConfig())
        return;
    m_dialogs.setBusy(true);
    guarded(m_dialogs, this, [this] {
        frmClasses editor(m_state, m_dialogs, this);
        m_dialogs.showModal(editor);
    });
    m_dialogs.setBusy(false);
}

void frmConfig::btCopy_Click()
{
    if (!requireCurrentConfig())
        return;
    const QString name = m_dialogs.inputBox(this, QStringLiteral("Enter the name of the config you wish to copy to"),
                                            QStringLiteral("Copy Config"));
    if (name.isEmpty())
        return;
    m_dialogs.setBusy(true);
    guarded(m_dialogs, this, [&] {
        copyConfiguration(m_state.classDb(), m_state.currentConfig, name);
        RefreshList();
    });
    m_dialogs.setBusy(false);
}

void frmConfig::btImport_Click()
{
    importClassFile({});
}

void frmConfig::openClassFile(const QString& file)
{
    importClassFile(file);
}

// A class file dragged onto the window: one file of this machine at a time.
void frmConfig::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedFile(*event->mimeData()))
        event->acceptProposedAction();
}

// The import asks its questions once the drop is over, so that the desktop's drag never
// waits on them.
void frmConfig::dropEvent(QDropEvent* event)
{
    const std::optional<QString> file = droppedFile(*event->mimeData());
    if (!file)
        return;
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [this, path = *file] { openClassFile(path); });
}

// Asks for the new configuration's name, then for the file unless one is given.
void frmConfig::importClassFile(QString file)
{
    const QString name = m_dialogs.inputBox(this, QStringLiteral("Enter the name of the config you wish to copy to"),
                                            QStringLiteral("Copy Config"));
    if (name.isEmpty())
        return;
    if (file.isEmpty())
        file = m_dialogs.openFileName(this, ClassFileFilter);
    if (file.isEmpty())
        return;
    m_dialogs.setBusy(true);
    const ImportResult result = tarn::importClassFile(m_state.classDb(), {.file = file, .newName = name});
    if (result.status == ImportResult::Status::Complete) {
        guarded(m_dialogs, this, [this] { RefreshList(); });
        statusBar()->showMessage(importedStatus(result.classes, file, name));
    }
    m_dialogs.setBusy(false);
    m_dialogs.message(this, result.status == ImportResult::Status::Complete ? QStringLiteral("Import Complete")
                                                                            : result.message);
}

void frmConfig::mnuSetModID_Click()
{
    const QString answer =
        m_dialogs.inputBox(this, QStringLiteral("Enter Your Mod ID (not required). Current ID = ") + m_state.modId,
                           QStringLiteral("Mod ID"));
    if (answer.isEmpty())
        return;
    m_state.modId = answer;
    if (const auto error = writeModId(m_state.settingsPath(), m_state.modId))
        m_dialogs.message(this, *error + QStringLiteral("\nThe Mod ID holds for this session only."));
}

// Puts back the stores of a backup, after a backup of them as they are, once the author
// has chosen one and said yes.
void frmConfig::mnuRestoreBackup_Click()
{
    const QStringList backups = listBackups(m_state.dataDirectory);
    if (backups.isEmpty()) {
        m_dialogs.message(this, QStringLiteral("There is no backup of the stores yet."));
        return;
    }
    const QString when =
        m_dialogs.chooseItem(this, QStringLiteral("Backup to put back:"), QStringLiteral("Restore Backup"), backups);
    if (when.isEmpty())
        return;
    const QString question = QStringLiteral("Put back the configurations and reference tables as they were at %1? "
                                            "The stores as they are now are kept as a backup first.")
                                 .arg(when);
    if (!m_dialogs.confirm(this, question, QStringLiteral("Restore Backup")))
        return;
    guarded(m_dialogs, this, [&] {
        restoreBackup(m_state.dataDirectory, m_state.stores, when, QDateTime::currentDateTime());
        RefreshList();
        statusBar()->showMessage(QStringLiteral("Restored the backup of %1").arg(when));
    });
}

void frmConfig::mnuExit_Click()
{
    QApplication::exit(0);
}

void frmConfig::mnuUpdateWeapons_Click()
{
    showReferenceWindow(ReferenceTable::Weapons);
}
void frmConfig::mnuUpdateGrenades_Click()
{
    showReferenceWindow(ReferenceTable::Grenades);
}
void frmConfig::mnuEditSpecial_Click()
{
    showReferenceWindow(ReferenceTable::Special);
}
void frmConfig::mnuEditItems_Click()
{
    showReferenceWindow(ReferenceTable::Items);
}

void frmConfig::mnuAbout_Click()
{
    frmAbout about(this);
    m_dialogs.showModal(about);
}

void frmConfig::showReferenceWindow(ReferenceTable table)
{
    guarded(m_dialogs, this, [&] {
        const std::unique_ptr<QWidget> window = createReferenceWindow(table, m_state, m_dialogs, this);
        m_dialogs.showModal(*window);
    });
}

bool frmConfig::requireCurrentConfig()
{
    if (!m_state.currentConfig.isEmpty())
        return true;
    m_dialogs.message(this, NothingSelected);
    return false;
}

} // namespace tarn
