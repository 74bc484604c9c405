// What the class editor adds beside its form, each hidden until asked for: Find Class,
// Undo Delete Class, the class list and the preview of the class file.
#include "frmClasses.h"

#include "ClassListModel.h"
#include "Panels.h"
#include "classfile/ClassFileError.h"
#include "classfile/Cp1252.h"
#include "core/AppState.h"
#include "store/Classes.h"
#include "toolkit/Guarded.h"
#include "ui_frmClasses.h"

#include <QAction>
#include <QCheckBox>
#include <QDockWidget>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

namespace tarn
{

namespace
{

// A number box as the export would write it: empty is a missing value.
std::optional<qint64> numberIn(const QLineEdit& box, QString& notANumber)
{
    if (box.text().isEmpty())
        return std::nullopt;
    bool ok = false;
    const qint64 value = box.text().toLongLong(&ok);
    if (!ok && notANumber.isEmpty())
        notANumber = box.text();
    return ok ? std::optional(value) : std::nullopt;
}

} // namespace

void frmClasses::setUpEditMenu()
{
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("mnuEdit"));

    findBox = new QLineEdit(this);
    findBox->setObjectName(QStringLiteral("findBox"));
    findBox->setAccessibleName(QStringLiteral("Find class"));
    findBox->setPlaceholderText(QStringLiteral("part of a class name, or a class number"));
    lblFind = new QLabel(this);
    lblFind->setObjectName(QStringLiteral("lblFind"));
    lblFind->setTextFormat(Qt::PlainText);
    findBar = new QToolBar(QStringLiteral("Find Class"), this);
    findBar->setObjectName(QStringLiteral("findBar"));
    findBar->addWidget(new QLabel(QStringLiteral("Find:"), this));
    findBar->addWidget(findBox);
    findBar->addWidget(lblFind);
    addToolBar(Qt::BottomToolBarArea, findBar);
    findBar->hide();
    connect(findBox, &QLineEdit::returnPressed, this, [this] { guarded(m_dialogs, this, [this] { findNext(); }); });
    // Esc in the box closes the bar, not the window.
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), findBox, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, findBar, &QToolBar::hide);

    QAction* find = edit->addAction(QStringLiteral("&Find Class..."));
    find->setObjectName(QStringLiteral("mnuFindClass"));
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, this, [this] {
        findBar->show();
        findBox->setFocus();
        findBox->selectAll();
    });
    mnuUndoDeleteClass = edit->addAction(QStringLiteral("&Undo Delete Class"));
    mnuUndoDeleteClass->setObjectName(QStringLiteral("mnuUndoDeleteClass"));
    mnuUndoDeleteClass->setShortcut(QKeySequence::Undo); // a text box takes it first for its own text
    mnuUndoDeleteClass->setEnabled(false);
    connect(mnuUndoDeleteClass, &QAction::triggered, this,
            [this] { guarded(m_dialogs, this, [this] { undoDeleteClass(); }); });
}

// The next class after the one on show whose name holds the text (case ignored) or whose
// number it is, from the top again past the last; through the navigator.
void frmClasses::findNext()
{
    const QString wanted = findBox->text().trimmed();
    if (wanted.isEmpty())
        return;
    bool isNumber = false;
    const qint64 number = wanted.toLongLong(&isNumber);
    const DataControl& data = *ui->dbClassDef;
    const int current = data.currentPosition();
    std::optional<int> after;
    std::optional<int> first;
    for (const ClassListRow& row : classListRows(m_state.classDb(), m_state.currentConfig)) {
        if (!row.name.contains(wanted, Qt::CaseInsensitive) && !(isNumber && row.number == number))
            continue;
        const std::optional<int> position = data.positionOf(row.rowId);
        if (!position)
            continue;
        if (*position > current && (!after || *position < *after))
            after = position;
        if (!first || *position < *first)
            first = position;
    }
    const std::optional<int> found = after ? after : first;
    lblFind->setText(found ? QString() : QStringLiteral("No class matches \"%1\".").arg(wanted));
    if (found && *found != current)
        ui->dbClassDef->moveTo(*found);
}

// The class deleted last comes back with every column as it was stored, and shows.
void frmClasses::undoDeleteClass()
{
    if (m_deleted.empty())
        return;
    DataControl& data = *ui->dbClassDef;
    if (data.hasCurrent() && !data.storeChanges())
        return;
    data.addRow(m_deleted.back());
    m_deleted.pop_back();
    mnuUndoDeleteClass->setEnabled(!m_deleted.empty());
    data.moveLast();
}

void frmClasses::setUpPanels()
{
    auto* view = menuBar()->findChild<QMenu*>(QStringLiteral("mnuView"));

    m_classList = new ClassListModel(this);
    m_sortedClasses = new QSortFilterProxyModel(this);
    m_sortedClasses->setSourceModel(m_classList);
    tblClasses = new QTableView(this);
    tblClasses->setObjectName(QStringLiteral("tblClasses"));
    tblClasses->setModel(m_sortedClasses);
    tblClasses->setSortingEnabled(true);
    tblClasses->sortByColumn(ClassListModel::Number, Qt::AscendingOrder);
    tblClasses->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblClasses->setSelectionMode(QAbstractItemView::SingleSelection);
    tblClasses->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblClasses->verticalHeader()->hide();
    for (int column : {ClassListModel::Armor, ClassListModel::Speed, ClassListModel::Health})
        tblClasses->setItemDelegateForColumn(column, new BarDelegate(tblClasses));
    dockClassList = addPanel(*this, *view,
                             {QStringLiteral("Class List"), QStringLiteral("dockClassList"),
                              QStringLiteral("Class &List"), QStringLiteral("mnuViewClassList"), true},
                             tblClasses, [this] { guarded(m_dialogs, this, [this] { refreshClassList(); }); });
    connect(tblClasses, &QTableView::clicked, this, [this](const QModelIndex& index) {
        const qint64 rowId = index.data(ClassListModel::RowIdRole).toLongLong();
        if (ui->dbClassDef->currentRowId() != rowId)
            goToRow(rowId);
    });

    txtPreview = new QPlainTextEdit(this);
    txtPreview->setObjectName(QStringLiteral("txtPreview"));
    txtPreview->setReadOnly(true);
    txtPreview->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    chkPreviewProtected = new QCheckBox(QStringLiteral("P&rotected form, as bytes"), this);
    chkPreviewProtected->setObjectName(QStringLiteral("chkPreviewProtected"));
    auto* preview = new QWidget(this);
    auto* layout = new QVBoxLayout(preview);
    layout->addWidget(chkPreviewProtected);
    layout->addWidget(txtPreview);
    dockPreview = addPanel(*this, *view,
                           {QStringLiteral("Class File Preview"), QStringLiteral("dockPreview"),
                            QStringLiteral("Class File Pre&view"), QStringLiteral("mnuViewPreview"), true},
                           preview, [this] { refreshPreview(); });
    connect(chkPreviewProtected, &QCheckBox::toggled, this, &frmClasses::refreshPreview);
    const auto boxes = ui->centralwidget->findChildren<QLineEdit*>();
    for (QLineEdit* box : boxes)
        connect(box, &QLineEdit::textChanged, this, &frmClasses::refreshPreview);
    const auto checks = ui->centralwidget->findChildren<QCheckBox*>();
    for (QCheckBox* check : checks)
        connect(check, &QCheckBox::toggled, this, &frmClasses::refreshPreview);
}

// The list as the store holds it now, with the class on show chosen.
void frmClasses::refreshClassList()
{
    if (!dockClassList->isVisible())
        return;
    QHash<qint64, QString> weaponNames;
    for (const PickerEntry& weapon : m_lists.weapons)
        weaponNames.insert(weapon.id, weapon.name);
    m_classList->setRows(classListRows(m_state.classDb(), m_state.currentConfig), std::move(weaponNames));
    const std::optional<qint64> rowId = ui->dbClassDef->currentRowId();
    const int row = rowId ? m_classList->rowOf(*rowId) : -1;
    if (row < 0)
        return;
    const QModelIndex shown = m_sortedClasses->mapFromSource(m_classList->index(row, 0));
    tblClasses->selectRow(shown.row());
    tblClasses->scrollTo(shown);
}

ExportedClass frmClasses::classOnShow(QString& notANumber) const
{
    ExportedClass cls;
    cls.name = ui->fldClassName->text();
    cls.model = ui->fldModel->text();
    cls.redSkin = ui->fldSkin1->text();
    cls.blueSkin = ui->fldSkin2->text();
    cls.decoySkin = numberIn(*ui->fldDecoySkin, notANumber);
    for (std::size_t k = 0; k < cls.weapons.size(); ++k)
        cls.weapons[k] = numberIn(*m_slots[k].hidden, notANumber);
    for (std::size_t k = 0; k < cls.grenades.size(); ++k)
        cls.grenades[k] = numberIn(*m_slots[cls.weapons.size() + k].hidden, notANumber);
    cls.armor = numberIn(*ui->fldArmor, notANumber);
    cls.speed = numberIn(*ui->fldSpeed, notANumber);
    cls.health = numberIn(*ui->fldHealth, notANumber);
    // The sums of the ticked boxes' ids, wrapping as 32-bit numbers; a box that no reference
    // row fills has the id 0.
    const auto sum = [](std::span<QCheckBox* const> boxes) {
        quint32 total = 0;
        for (const QCheckBox* box : boxes) {
            if (box->isChecked())
                total += quint32(box->property("Tag").toString().toLongLong());
        }
        return qint32(total);
    };
    cls.itemSum = sum(Check1);
    cls.abilitySum = sum(special);
    const std::array<QLineEdit*, 6> ammo{ui->maxbullets,  ui->maxshells, ui->maxrockets,
                                         ui->maxgrenades, ui->maxcells,  ui->maxslugs};
    for (std::size_t k = 0; k < ammo.size(); ++k)
        cls.ammo[k] = numberIn(*ammo[k], notANumber);
    return cls;
}

// The lines the export writes for the class on show, through its own writer; nothing is
// stored. The protected form shows as the bytes it is.
void frmClasses::refreshPreview()
{
    if (!dockPreview || !dockPreview->isVisible())
        return;
    QString notANumber;
    const ExportedClass cls = classOnShow(notANumber);
    if (!notANumber.isEmpty()) {
        txtPreview->setPlainText(
            QStringLiteral("\"%1\" is no number: the class cannot be stored or exported as it stands.")
                .arg(notANumber));
        return;
    }
    try {
        const bool protect = chkPreviewProtected->isChecked();
        QStringList lines;
        for (const QByteArray& line : classLines(cls, protect).split('\n'))
            lines << (protect ? QString::fromLatin1(line.toHex(' ')) : decodeCp1252(line).remove(u'\r'));
        lines.removeLast(); // behind the last line end
        txtPreview->setPlainText(lines.join(u'\n'));
    } catch (const ClassFileError& error) {
        txtPreview->setPlainText(error.message());
    }
}

} // namespace tarn
