// The weapon and grenade pickers of the class editor, kept in step with the hidden
// boxes that hold the slot ids.
#include "frmClasses.h"

#include "PickerPosition.h"
#include "ui_frmClasses.h"

#include <QStandardItemModel>

namespace tarn
{

namespace
{

constexpr int IdRole = Qt::UserRole;

QStandardItemModel* pickerModel(const std::vector<PickerEntry>& entries, QObject* parent)
{
    auto* model = new QStandardItemModel(parent);
    for (const PickerEntry& entry : entries) {
        auto* item = new QStandardItem(entry.name);
        item->setData(entry.id, IdRole);
        model->appendRow(item);
    }
    return model;
}

// Typing in a picker's text part chooses nothing: only the list does. Qt would
// otherwise take a typed name that matches an entry, or a completion, as a choice.
void keepTypingOut(QComboBox* picker)
{
    picker->setCompleter(nullptr);
    QObject::disconnect(picker->lineEdit(), &QLineEdit::editingFinished, picker, nullptr);
}

} // namespace

// Every weapon picker shows one list and every grenade picker another.
void frmClasses::fillPickers(const ReferenceLists& lists)
{
    m_weaponModel = pickerModel(lists.weapons, this);
    m_grenadeModel = pickerModel(lists.grenades, this);
    m_weaponSlots = SlotLookup(idsOf(lists.weapons));
    m_grenadeSlots = SlotLookup(idsOf(lists.grenades));
    for (const Slot& slot : m_slots) {
        slot.picker->setModel(slot.weapon ? m_weaponModel : m_grenadeModel);
        keepTypingOut(slot.picker);
        slot.picker->setCurrentIndex(0);
    }
}

int frmClasses::FindWeaponPos(const QString& wno_text) const
{
    return pickerPosition(m_weaponSlots, wno_text);
}

int frmClasses::FindGrenadePos(const QString& gno_text) const
{
    return pickerPosition(m_grenadeSlots, gno_text);
}

// Each picker follows its hidden box. The click runs as for a choice by the author,
// so a slot whose id has no entry takes the first entry's id, stored when the row is left.
void frmClasses::dbClassDef_Reposition()
{
    showPosition();
    showClassProblems();
    refreshProblemsPanel();
    refreshClassList();
    const bool shown = ui->dbClassDef->hasCurrent();
    setPickersEnabled(shown);
    if (!shown) // every class was deleted by another program
        return;
    for (const Slot& slot : m_slots) {
        const QString id = slot.hidden->text();
        slot.picker->setCurrentIndex(slot.weapon ? FindWeaponPos(id) : FindGrenadePos(id));
        Picker_Click(slot);
    }
    refreshPreview();
}

void frmClasses::Picker_Click(const Slot& slot)
{
    if (const std::optional<qint64> id =
            (slot.weapon ? m_weaponSlots : m_grenadeSlots).idAt(slot.picker->currentIndex()))
        slot.hidden->setText(QString::number(*id));
}

// "Class 3 of 120" beside the navigator, whose own caption stays as it is. Its width is
// that of the last class's, so walking through the set moves nothing on the window.
void frmClasses::showPosition()
{
    const DataControl& data = *ui->dbClassDef;
    const auto position = [](int number, int count) { return QStringLiteral("Class %1 of %2").arg(number).arg(count); };
    QLabel& label = *ui->lblPosition;
    label.setMinimumWidth(label.fontMetrics().horizontalAdvance(position(data.recordCount(), data.recordCount())));
    label.setText(data.currentPosition() < 0 ? QString() : position(data.currentPosition() + 1, data.recordCount()));
}

void frmClasses::setPickersEnabled(bool enabled)
{
    for (const Slot& slot : m_slots)
        slot.picker->setEnabled(enabled);
}

} // namespace tarn
