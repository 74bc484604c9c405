#include "frmClasses.h"

#include "toolkit/StatusBar.h"

#include <QStatusBar>

#include "classfile/ExportCommand.h"
#include "core/AppState.h"
#include "core/DataDirectory.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Guarded.h"
#include "ui_frmClasses.h"

namespace tarn
{

void frmClasses::mnuSaveAs_Click()
{
    m_state.protectOutput = true;
    DoSave();
}

void frmClasses::mnuSaveUnprotected_Click()
{
    m_state.protectOutput = false;
    DoSave();
}

// Writes the open configuration to the class file the author names. The export walks
// the classes as the navigator would, so the slot tracking it does reaches the rows,
// and the first class is on show afterwards. A refused export changes no row and no file.
void frmClasses::DoSave()
{
    const QString file = m_dialogs.saveFileName(this, ClassFileFilter);
    if (file.isEmpty())
        return;
    if (!ui->dbClassDef->storeChanges())
        return;
    m_dialogs.setBusy(true);
    const ExportResult result =
        exportConfigurationToFile({m_state.classDb(), m_state.refDb()}, {.configName = m_state.currentConfig,
                                                                         .modId = m_state.modId,
                                                                         .protectOutput = m_state.protectOutput,
                                                                         .target = file,
                                                                         .ownFiles = ownFiles(m_state.dataDirectory),
                                                                         .readerWait = Database::DefaultBusyWait});
    if (result.error) {
        m_dialogs.setBusy(false);
        m_dialogs.message(this, *result.error);
        return;
    }
    statusBar()->showMessage(exportedStatus(ui->dbClassDef->recordCount(), file, result.warningCount()));
    guarded(m_dialogs, this, [this] { ui->dbClassDef->refresh(); });
    m_dialogs.setBusy(false);
    if (result.unstoredSlots)
        m_dialogs.message(this, *result.unstoredSlots);
}

} // namespace tarn
