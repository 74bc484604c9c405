#include "ReferenceEditor.h"

#include "ReferenceLayouts.h"
#include "classfile/Checks.h"
#include "core/AppState.h"
#include "toolkit/AppIcon.h"
#include "toolkit/DataControl.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Guarded.h"
#include "toolkit/WindowKeys.h"
#include "toolkit/WindowMemory.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

namespace tarn
{

namespace
{

// "Weapon &ID:" names its field "Weapon ID" in messages.
QString fieldName(const QString& label)
{
    QString name = label;
    name.remove(u'&');
    while (name.endsWith(u':'))
        name.chop(1);
    return name;
}

} // namespace

ReferenceEditor::ReferenceEditor(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent, Qt::Window), m_layout(layout), m_state(state), m_dialogs(dialogs)
{
}

ReferenceEditor::~ReferenceEditor() = default;

void ReferenceEditor::attach(const Controls& controls)
{
    setObjectName(m_layout.windowName);
    setWindowTitle(m_layout.caption);
    setWindowIcon(appIcon());
    addCloseKeys(*this);
    m_data = controls.data;
    m_data->setObjectName(m_layout.dataName);
    m_data->setCaption(m_layout.dataCaption);
    m_data->setDialogs(m_dialogs);
    for (qsizetype i = 0; i < m_layout.fields.size(); ++i) {
        const auto [label, box] = controls.fields.at(size_t(i));
        label->setText(m_layout.fields[i].label);
        m_data->bindText(box, m_layout.fields[i].column, fieldName(m_layout.fields[i].label));
    }
    connect(controls.addRecord, &QPushButton::clicked, this, &ReferenceEditor::Command1_Click);
    connect(controls.deleteRecord, &QPushButton::clicked, this, &ReferenceEditor::Command2_Click);
    addProblemLine(*controls.fields.at(1).second);
    WindowMemory(m_state.windowSettingsFile).restore(*this);
}

// Below the form, like a status bar: the problem of the row on show, if it has one.
void ReferenceEditor::addProblemLine(const QLineEdit& nameBox)
{
    m_problem = new QLabel(this);
    m_problem->setObjectName(QStringLiteral("lblProblem"));
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    m_problem->hide();
    layout()->addWidget(m_problem);
    connect(m_data, &DataControl::reposition, this, [this, &nameBox] {
        const QString field = m_layout.recordSource.noun + QStringLiteral(" id");
        QStringList told;
        for (const Problem& problem : checkReferenceTables(m_state.refDb())) {
            if (problem.field == field && problem.className == nameBox.text())
                told << problem.what;
        }
        m_problem->setText(QStringLiteral("Problem: ") + told.join(QStringLiteral("; ")));
        m_problem->setVisible(!told.isEmpty());
    });
}

void ReferenceEditor::Form_Load()
{
    m_data->open(m_state.refDb(), m_layout.recordSource);
}

void ReferenceEditor::Command1_Click()
{
    m_data->addNew();
}

void ReferenceEditor::Command2_Click()
{
    guarded(m_dialogs, this, [this] {
        m_data->deleteCurrent();
        m_data->refresh();
    });
}

void ReferenceEditor::closeEvent(QCloseEvent* event)
{
    m_data->acceptCloseIfStored(*event);
    if (event->isAccepted())
        WindowMemory(m_state.windowSettingsFile).remember(*this);
}

} // namespace tarn
