// What the checks find in the class editor: the problems of the class on show in the
// status bar, and those of the whole configuration in View > Problems, a double-click
// going to the class.
#include "frmClasses.h"

#include "Panels.h"
#include "classfile/Checks.h"
#include "core/AppState.h"
#include "toolkit/Guarded.h"
#include "ui_frmClasses.h"

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QStatusBar>

namespace tarn
{

namespace
{

constexpr int RowIdRole = Qt::UserRole;
// Enough to work through; a list of every stale slot of 30,000 classes helps nobody.
constexpr std::size_t ListedProblems = 1000;

} // namespace

void frmClasses::setUpProblems()
{
    lblProblems = new QLabel(this);
    lblProblems->setObjectName(QStringLiteral("lblProblems"));
    lblProblems->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(lblProblems);

    lstProblems = new QListWidget(this);
    lstProblems->setObjectName(QStringLiteral("lstProblems"));
    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    view->setObjectName(QStringLiteral("mnuView"));
    dockProblems = addPanel(*this, *view,
                            {QStringLiteral("Problems"), QStringLiteral("dockProblems"), QStringLiteral("&Problems"),
                             QStringLiteral("mnuViewProblems"), false},
                            lstProblems, [this] { guarded(m_dialogs, this, [this] { refreshProblemsPanel(); }); });
    connect(lstProblems, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        if (const QVariant rowId = item->data(RowIdRole); rowId.isValid())
            goToRow(rowId.toLongLong());
    });
}

// Told without a dialog: how many, which fields, and every line at hand as the tooltip.
void frmClasses::showClassProblems()
{
    const std::optional<qint64> rowId = ui->dbClassDef->currentRowId();
    const std::vector<Problem> problems =
        rowId ? checkClass(m_state.classDb(), m_lists, m_state.currentConfig, *rowId, true) : std::vector<Problem>{};
    QStringList fields;
    QStringList lines;
    for (const Problem& problem : problems) {
        if (!fields.contains(problem.field))
            fields << problem.field;
        lines << describe(problem);
    }
    lblProblems->setText(
        problems.empty() ? QString()
        : problems.size() == 1
            ? QStringLiteral("1 problem: %1").arg(fields.join(QStringLiteral(", ")))
            : QStringLiteral("%1 problems: %2").arg(problems.size()).arg(fields.join(QStringLiteral(", "))));
    lblProblems->setToolTip(lines.join(u'\n'));
}

void frmClasses::refreshProblemsPanel()
{
    if (!dockProblems->isVisible())
        return;
    lstProblems->clear();
    for (const Problem& problem : checkConfiguration(m_state.classDb(), m_state.refDb(), m_state.currentConfig, true)) {
        auto* item = new QListWidgetItem(describe(problem), lstProblems);
        if (problem.rowId)
            item->setData(RowIdRole, *problem.rowId);
    }
    if (lstProblems->count() == 0)
        lstProblems->addItem(QStringLiteral("No problems: every class reads back as it is."));
}

// Through the navigator, so that the edits on show are stored or refused first.
void frmClasses::goToRow(qint64 rowId)
{
    if (const std::optional<int> position = ui->dbClassDef->positionOf(rowId))
        ui->dbClassDef->moveTo(*position);
}

} // namespace tarn
