#include "DataControl.h"

#include "Dialogs.h"
#include "LiteralText.h"
#include "store/Schema.h"
#include "store/StoreError.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
#include <array>
#include <utility>

namespace tarn
{

struct DataControl::Binding {
    enum class Type { Text, Check, Label };
    QPointer<QWidget> control;
    QString column;
    QString fieldName;
    Type type;
    bool changed = false;
    bool enabled = true;

    // Runs the function that fits the kind of control, given the control as what it is.
    template <typename OnText, typename OnCheck, typename OnLabel>
    void dispatch(OnText onText, OnCheck onCheck, OnLabel onLabel) const
    {
        if (!control)
            return;
        switch (type) {
        case Type::Text:
            onText(static_cast<QLineEdit*>(control.data()));
            break;
        case Type::Check:
            onCheck(static_cast<QCheckBox*>(control.data()));
            break;
        case Type::Label:
            onLabel(static_cast<QLabel*>(control.data()));
            break;
        }
    }
};

namespace
{

// A bound label shows its column as stored; the whole of it is its tooltip and accessible
// name too, for a label too narrow to show it all.
void showLabelValue(QLabel& label, const QString& value)
{
    showLiteral(label, value);
    label.setToolTip(value);
    label.setAccessibleName(value);
}

// Ctrl+Home and Ctrl+End, which a text box would otherwise take for itself.
bool isBoxNavigatorKey(const QEvent& event)
{
    if (event.type() != QEvent::ShortcutOverride)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.modifiers() == Qt::ControlModifier && (key.key() == Qt::Key_Home || key.key() == Qt::Key_End);
}

QToolButton* navigatorButton(QWidget* parent, const QString& text, const QString& name, const QKeySequence& key)
{
    auto* button = new QToolButton(parent);
    button->setText(text);
    button->setAccessibleName(name);
    button->setToolTip(QStringLiteral("%1 (%2)").arg(name, key.toString(QKeySequence::NativeText)));
    button->setFocusPolicy(Qt::NoFocus); // the window's Tab order ends at its own buttons; the keys move
    button->setAutoRaise(false);
    return button;
}

} // namespace

DataControl::DataControl(QWidget* parent) : QWidget(parent), m_caption(new QLabel(this))
{
    struct Button {
        QString text, name;
        QKeySequence key;
        Move move;
    };
    const std::array<Button, 4> buttons{
        {{QStringLiteral("|◀"), QStringLiteral("First record"), QKeySequence(Qt::CTRL | Qt::Key_Home), Move::First},
         {QStringLiteral("◀"), QStringLiteral("Previous record"), QKeySequence(Qt::CTRL | Qt::Key_PageUp),
          Move::Previous},
         {QStringLiteral("▶"), QStringLiteral("Next record"), QKeySequence(Qt::CTRL | Qt::Key_PageDown), Move::Next},
         {QStringLiteral("▶|"), QStringLiteral("Last record"), QKeySequence(Qt::CTRL | Qt::Key_End), Move::Last}}};
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_caption->setFrameShape(QFrame::StyledPanel);
    m_caption->setMinimumWidth(80);
    m_caption->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
    for (int i = 0; i < 4; ++i) {
        QToolButton* button = navigatorButton(this, buttons[i].text, buttons[i].name, buttons[i].key);
        const Move where = buttons[i].move;
        connect(button, &QToolButton::clicked, this, [this, where] { move(where); });
        auto* shortcut = new QShortcut(buttons[i].key, this);
        shortcut->setContext(Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, where] { move(where); });
        if (i == 2)
            layout->addWidget(m_caption, 1);
        layout->addWidget(button);
    }
}

DataControl::~DataControl() = default;

void DataControl::setCaption(const QString& caption)
{
    m_caption->setText(caption);
    setAccessibleName(caption);
}

QString DataControl::caption() const
{
    return m_caption->text();
}

void DataControl::bindText(QLineEdit* box, const QString& column, const QString& fieldName)
{
    m_bindings.push_back(std::make_unique<Binding>(Binding{box, column, fieldName, Binding::Type::Text}));
    connect(box, &QLineEdit::textChanged, this, [this, box] { noteChange(box); });
}

void DataControl::bindCheck(QCheckBox* box, const QString& column, const QString& fieldName)
{
    m_bindings.push_back(std::make_unique<Binding>(Binding{box, column, fieldName, Binding::Type::Check}));
    connect(box, &QCheckBox::toggled, this, [this, box] { noteChange(box); });
}

void DataControl::bindLabel(QLabel* label, const QString& column)
{
    m_bindings.push_back(std::make_unique<Binding>(Binding{label, column, column, Binding::Type::Label}));
}

void DataControl::setBoundEnabled(QWidget* control, bool enabled)
{
    for (auto& binding : m_bindings) {
        if (binding->control == control)
            binding->enabled = enabled;
    }
    applyEnabledState();
}

QStringList DataControl::boundColumns() const
{
    QStringList columns;
    for (const auto& binding : m_bindings)
        columns << binding->column;
    return columns;
}

void DataControl::open(Database& db, const RecordSource& source, const QVariantList& params)
{
    // Without them a refused edit would go unsaid: a window that forgets them fails at once.
    if (!m_dialogs)
        qFatal("DataControl %s was opened before its window gave it Dialogs", qPrintable(objectName()));
    m_recordset = std::make_unique<Recordset>(db, source, params);
    m_pendingNew = false;
    const auto boxes = window()->findChildren<QLineEdit*>();
    for (QLineEdit* box : boxes)
        box->installEventFilter(this);
    showCurrentRow();
}

// The navigator's keys move it from anywhere in the window, a text box included.
bool DataControl::eventFilter(QObject* watched, QEvent* event)
{
    if (isBoxNavigatorKey(*event)) {
        event->ignore(); // not taken by the box, so the window's shortcut runs
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void DataControl::addRow(const QVariantMap& values)
{
    m_recordset->addNew(values);
}

std::optional<int> DataControl::positionOf(qint64 rowId) const
{
    return m_recordset ? m_recordset->positionOf(rowId) : std::nullopt;
}

void DataControl::refresh()
{
    m_recordset->requery();
    m_pendingNew = false;
    showCurrentRow();
}

bool DataControl::moveFirst()
{
    return move(Move::First);
}
bool DataControl::movePrevious()
{
    return move(Move::Previous);
}
bool DataControl::moveNext()
{
    return move(Move::Next);
}
bool DataControl::moveLast()
{
    return move(Move::Last);
}

bool DataControl::moveTo(int position)
{
    m_target = position;
    return move(Move::To);
}

// Every move, by the navigator, its keys or code, comes here: a store that cannot be read
// now (another program holds it) refuses the move with its reason, and the row on show
// stays current, so the same move works once the store is free. A row another program
// deleted is told, and the set is read afresh.
bool DataControl::move(Move where)
{
    if (!m_recordset || !storeChanges())
        return false;
    if (std::exchange(m_rowLost, false)) {
        showWhatIsLeft();
        return false;
    }
    Recordset& rs = *m_recordset;
    const Recordset::Place before = rs.place();
    try {
        step(where);
        showCurrentRow();
    } catch (const StoreError& error) {
        rs.moveBack(before);
        refuse(error.message(), nullptr);
        if (error.gone())
            showWhatIsLeft();
        return false;
    }
    return true;
}

// After rows were deleted behind the window's back: the set as the store has it now,
// from its first row, or no row at all.
void DataControl::showWhatIsLeft()
{
    try {
        m_recordset->requery();
    } catch (const StoreError& error) {
        refuse(error.message(), nullptr);
        return;
    }
    if (m_recordset->isEmpty()) {
        showBlank();
        emit reposition();
        refuse(QStringLiteral("No %1 is left here: another program has deleted them all.").arg(m_recordset->noun()),
               nullptr);
        return;
    }
    move(Move::First);
}

void DataControl::step(Move where)
{
    Recordset& rs = *m_recordset;
    if (rs.isEmpty())
        return;
    const bool lost = !rs.hasCurrent();
    switch (where) {
    case Move::First:
        rs.moveFirst();
        break;
    case Move::Last:
        rs.moveLast();
        break;
    case Move::Next:
        if (lost || rs.position() < rs.recordCount() - 1)
            rs.moveNext();
        break;
    case Move::Previous:
        if (rs.position() > 0)
            rs.movePrevious();
        break;
    case Move::To:
        rs.moveTo(m_target);
        break;
    }
    if (!rs.hasCurrent())
        rs.moveLast();
}

bool DataControl::addNew()
{
    if (!m_recordset || !storeChanges())
        return false;
    m_pendingNew = true;
    showBlank();
    return true;
}

bool DataControl::storeChanges()
{
    if (!m_recordset)
        return true;
    const std::optional<QVariantMap> changes = collectChanges();
    if (!changes)
        return false;
    if (changes->isEmpty()) {
        // A new row in which nothing was typed stores nothing.
        if (m_pendingNew) {
            m_pendingNew = false;
            m_recordset->moveLast();
        }
        return true;
    }
    if (!writeChanges(*changes))
        return false;
    clearChanges();
    return true;
}

void DataControl::acceptCloseIfStored(QCloseEvent& event)
{
    event.setAccepted(storeChanges());
}

void DataControl::deleteCurrent()
{
    if (m_pendingNew) {
        m_pendingNew = false;
        clearChanges();
        showCurrentRow();
        return;
    }
    if (!hasCurrent())
        return;
    m_recordset->deleteCurrent();
    clearChanges();
    applyEnabledState(); // the controls keep what they showed until the next move
}

std::optional<QVariantMap> DataControl::collectChanges()
{
    QVariantMap changes;
    const bool canWrite = m_pendingNew || hasCurrent();
    for (const auto& binding : m_bindings) {
        if (!binding->changed)
            continue;
        bool refused = false;
        binding->dispatch(
            [&](const QLineEdit* box) {
                const ColumnKind kind = schema::kindOf(m_recordset->table(), binding->column);
                if (const std::optional<QVariant> value = columnValueFromText(kind, box->text())) {
                    changes.insert(binding->column, *value);
                    return;
                }
                refuse(QStringLiteral("%1 cannot be \"%2\": it must be %3.")
                           .arg(binding->fieldName, box->text(), describeKind(kind)),
                       binding->control);
                refused = true;
            },
            [&](const QCheckBox* box) { changes.insert(binding->column, box->isChecked() ? 1 : 0); },
            [](const QLabel*) {}); // a label shows its column and never writes it
        if (refused)
            return std::nullopt;
    }
    if (!canWrite)
        changes.clear(); // nothing to write to: the controls are locked while no row is shown
    return changes;
}

bool DataControl::writeChanges(const QVariantMap& changes)
{
    try {
        if (m_pendingNew) {
            m_recordset->addNew(changes);
            m_recordset->moveLast();
            m_pendingNew = false;
        } else {
            m_recordset->update(changes);
        }
    } catch (const StoreError& error) {
        if (error.gone()) { // nothing is left to store them in: the author is told, and may go on
            refuse(error.message() + QStringLiteral(" The edits on show were not stored."), nullptr);
            clearChanges();
            m_rowLost = true;
            return true;
        }
        refuse(QStringLiteral("The row could not be stored: %1").arg(error.message()), nullptr);
        return false;
    }
    return true;
}

void DataControl::clearChanges()
{
    for (auto& binding : m_bindings)
        binding->changed = false;
}

void DataControl::refuse(const QString& text, QWidget* focus)
{
    m_dialogs->setBusy(false); // a refusal can come in the middle of a command
    m_dialogs->message(window(), text);
    if (auto* box = qobject_cast<QLineEdit*>(focus)) {
        box->setFocus();
        box->selectAll();
    }
}

void DataControl::noteChange(QWidget* control)
{
    if (m_loading)
        return;
    for (auto& binding : m_bindings) {
        if (binding->control == control)
            binding->changed = true;
    }
}

void DataControl::showCurrentRow()
{
    if (!hasCurrent()) {
        showBlank();
        return;
    }
    const QVariantMap row = m_recordset->currentRow();
    m_loading = true;
    for (const auto& binding : m_bindings) {
        const QVariant value = row.value(binding->column.toLower());
        binding->dispatch([&](QLineEdit* box) { box->setText(textFromColumnValue(value)); },
                          [&](QCheckBox* box) { box->setChecked(!value.isNull() && value.toLongLong() == 1); },
                          [&](QLabel* label) { showLabelValue(*label, textFromColumnValue(value)); });
    }
    m_loading = false;
    clearChanges();
    applyEnabledState();
    emit reposition();
}

void DataControl::showBlank()
{
    m_loading = true;
    for (const auto& binding : m_bindings) {
        binding->dispatch([](QLineEdit* box) { box->clear(); }, [](QCheckBox* box) { box->setChecked(false); },
                          [this](QLabel* label) {
                              if (!m_pendingNew) // a new row keeps the label of the rows it joins
                                  showLabelValue(*label, {});
                          });
    }
    m_loading = false;
    clearChanges();
    applyEnabledState();
}

void DataControl::applyEnabledState()
{
    const bool rowShown = m_pendingNew || hasCurrent();
    for (const auto& binding : m_bindings) {
        if (binding->control && binding->type != Binding::Type::Label)
            binding->control->setEnabled(rowShown && binding->enabled);
    }
}

} // namespace tarn
