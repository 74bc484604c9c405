#include "frmClasses.h"

#include "ClassBindings.h"
#include "core/AppState.h"
#include "store/Classes.h"
#include "store/Statements.h"
#include "toolkit/AppIcon.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Emphasis.h"
#include "toolkit/Guarded.h"
#include "toolkit/LiteralText.h"
#include "toolkit/StatusBar.h"
#include "toolkit/SystemNames.h"
#include "toolkit/TextSizes.h"
#include "toolkit/WindowKeys.h"
#include "toolkit/WindowMemory.h"
#include "ui_frmClasses.h"

#include <QCloseEvent>
#include <QStatusBar>

namespace tarn
{

namespace
{

const QString NoClassLeft = QStringLiteral("You should add a new class before changing any fields");
// class_num is a 16-bit column.
constexpr int HighestClassNum = 32767;

// "Class # 12": the blank is the sign place of a number that isn't negative.
QString defaultClassName(int number)
{
    return QStringLiteral("Class #") + (number < 0 ? QString() : QStringLiteral(" ")) + QString::number(number);
}

} // namespace

frmClasses::frmClasses(AppState& state, Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::frmClasses>()), m_state(state), m_dialogs(dialogs)
{
    ui->setupUi(this);
    setWindowFlag(Qt::Window);
    setWindowIcon(appIcon());
    setStatusBar(new QStatusBar(this));
    addCloseKeys(*this);
    ui->mnuSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    auto* goTo = new QAction(QStringLiteral("&Go to Class..."), this);
    goTo->setObjectName(QStringLiteral("actGoToClass"));
    goTo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
    addAction(goTo);
    clearStatusOnEveryCommand(*this);
    connect(goTo, &QAction::triggered, this, [this] { guarded(m_dialogs, this, [this] { goToClass(); }); });
    gatherControls();
    makeCaptionsBold();
    showInBlue(*ui->Label31);
    showInBlue(*ui->Label32);
    ui->dbClassDef->setCaption(QStringLiteral("Class Def"));
    ui->dbClassDef->setDialogs(dialogs);
    bindClassControls(*this, *ui->dbClassDef);
    connectHandlers();
    setUpEditMenu();
    setUpProblems();
    setUpPanels();
    publishSystemNames(*this);
    sizeBoxes();
    Form_Load();
    WindowMemory(m_state.windowSettingsFile).restore(*this); // at the size of the loaded captions
}

// Every caption of the form is bold, but for the navigator's own. Set label by label: a
// style sheet on the form would make Qt restyle every control as the form is built.
void frmClasses::makeCaptionsBold()
{
    for (QLabel* label : ui->centralwidget->findChildren<QLabel*>()) {
        if (!ui->dbClassDef->isAncestorOf(label))
            makeBold(*label);
    }
}

void frmClasses::sizeBoxes()
{
    for (QLineEdit* box : {ui->fldClassName, ui->fldModel, ui->fldSkin1, ui->fldSkin2})
        setWidthInCharacters(*box, 20);
    for (QLineEdit* box : {ui->Text1, ui->fldArmor, ui->fldSpeed, ui->fldHealth, ui->fldDecoySkin, ui->maxbullets,
                           ui->maxshells, ui->maxrockets, ui->maxgrenades, ui->maxcells, ui->maxslugs})
        setWidthInCharacters(*box, 6);
}

frmClasses::~frmClasses() = default;

void frmClasses::gatherControls()
{
    for (int i = 0; i < ItemBoxes; ++i)
        Check1[i] = findChild<QCheckBox*>(QStringLiteral("Check1_%1").arg(i));
    for (int i = 0; i < SpecialBoxes; ++i)
        special[i] = findChild<QCheckBox*>(QStringLiteral("special_%1").arg(i));
    for (int n = 2; n <= 10; ++n) {
        m_slots[n - 2] = {findChild<QComboBox*>(QStringLiteral("w%1").arg(n)),
                          findChild<QLineEdit*>(QStringLiteral("dw%1").arg(n)), true};
    }
    for (int n = 1; n <= 3; ++n) {
        m_slots[8 + n] = {findChild<QComboBox*>(QStringLiteral("g%1").arg(n)),
                          findChild<QLineEdit*>(QStringLiteral("dg%1").arg(n)), false};
    }
}

void frmClasses::connectHandlers()
{
    connect(ui->dbClassDef, &DataControl::reposition, this, &frmClasses::dbClassDef_Reposition);
    connect(ui->AddClass, &QPushButton::clicked, this, &frmClasses::AddClass_Click);
    connect(ui->Command1, &QPushButton::clicked, this, &frmClasses::Command1_Click);
    connect(ui->mnuSaveAs, &QAction::triggered, this, &frmClasses::mnuSaveAs_Click);
    connect(ui->mnuSaveUnprotected, &QAction::triggered, this, &frmClasses::mnuSaveUnprotected_Click);
    for (const Slot& slot : m_slots)
        connect(slot.picker, &QComboBox::activated, this, [this, &slot] { Picker_Click(slot); });
}

void frmClasses::Form_Load()
{
    m_lists = loadReferenceLists(m_state.refDb());
    fillPickers(m_lists);
    fillBoxes(m_lists.items, Check1);
    fillBoxes(m_lists.specials, special);
    ui->dbClassDef->open(m_state.classDb(), sql::OrderedClassesOfConfig, {m_state.currentConfig});
    if (ui->dbClassDef->recordCount() == 0)
        AddClass_Click();
    m_dialogs.setBusy(false);
}

// The k-th reference row fills the box at k-1; a box no row fills is hidden, Tag "0".
void frmClasses::fillBoxes(const std::vector<BoxEntry>& entries, std::span<QCheckBox* const> boxes)
{
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        QCheckBox* box = boxes[i];
        const bool filled = i < entries.size();
        box->setVisible(filled);
        box->setProperty("Tag", filled ? QString::number(entries[i].id) : QStringLiteral("0"));
        if (filled) {
            showLiteral(*box, entries[i].name);
            ui->dbClassDef->setBoundEnabled(box, entries[i].enabled);
        }
    }
}

void frmClasses::AddClass_Click()
{
    m_dialogs.setBusy(true);
    guarded(m_dialogs, this, [this] { addClass(); });
    m_dialogs.setBusy(false);
}

void frmClasses::addClass()
{
    DataControl& data = *ui->dbClassDef;
    // The highest number is read before the move below stores the edits on show, so a
    // number just typed into Class Num is stored but does not count.
    const int maximum = int(highestClassNumber(m_state.classDb(), m_state.currentConfig).value_or(0));
    if (maximum >= HighestClassNum) {
        m_dialogs.setBusy(false);
        m_dialogs.message(this, QStringLiteral("No class can be added: class number %1 is the highest a class can "
                                               "have, and this configuration already uses it.")
                                    .arg(HighestClassNum));
        return;
    }
    const int number = maximum + 1;
    if (data.recordCount() != 0 && !data.moveLast())
        return;
    data.addRow({{QStringLiteral("package_name"), m_state.currentConfig},
                 {QStringLiteral("class_num"), number},
                 {QStringLiteral("class_name"), defaultClassName(number)}});
    data.moveLast();
}

void frmClasses::Command1_Click()
{
    guarded(m_dialogs, this, [this] { deleteClass(); });
}

// No question is asked; edits waiting on the class go with it. The neighbouring class
// is made current first, so its slots are tracked, and the move to the first class
// stores what the tracking changed. A failed move is told and the delete goes on. Once the
// last class is gone no control is cleared: they keep what they showed, disabled.
void frmClasses::deleteClass()
{
    DataControl& data = *ui->dbClassDef;
    if (data.hasCurrent()) { // kept for Undo Delete Class, as stored
        m_deleted.push_back(data.currentValues());
        mnuUndoDeleteClass->setEnabled(true);
    }
    data.deleteCurrent(); // a second click on an empty set deletes nothing and repeats the advice
    if (data.recordCount() != 0) {
        if (data.moveNext()) // past the end this is the last class
            data.moveFirst();
        return;
    }
    setPickersEnabled(false);
    showPosition();
    m_dialogs.message(this, NoClassLeft);
}

// Jumps to a class by its number through the navigator, so that the edits on show
// are stored, or refused, as on any move. A number the set lacks moves nothing.
void frmClasses::goToClass()
{
    const QString answer =
        m_dialogs.inputBox(this, QStringLiteral("Class number to go to:"), QStringLiteral("Go to Class"));
    if (answer.trimmed().isEmpty())
        return;
    bool ok = false;
    const int number = answer.trimmed().toInt(&ok);
    DataControl& data = *ui->dbClassDef;
    std::optional<int> position;
    if (ok) {
        for (const qint64 rowId : classRowIds(m_state.classDb(), m_state.currentConfig, number)) {
            const std::optional<int> found = data.positionOf(rowId);
            if (found && (!position || *found < *position))
                position = found;
        }
    }
    if (!position) {
        m_dialogs.message(
            this, QStringLiteral("There is no class number \"%1\" in this configuration.").arg(answer.trimmed()));
        return;
    }
    data.moveTo(*position);
}

void frmClasses::closeEvent(QCloseEvent* event)
{
    ui->dbClassDef->acceptCloseIfStored(*event);
    if (event->isAccepted())
        WindowMemory(m_state.windowSettingsFile).remember(*this);
}

} // namespace tarn
