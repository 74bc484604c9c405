#pragma once

#include <QMainWindow>

class QAction;
#include <QStringList>
#include <memory>

namespace Ui
{
class frmConfig;
}

namespace tarn
{

struct AppState;
class Dialogs;
enum class ReferenceTable;

// The main window: the list of configurations and every command of the program.
class frmConfig : public QMainWindow
{
    Q_OBJECT
public:
    frmConfig(AppState& state, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmConfig() override;

    // Fills the list from the store, in name order, and leaves nothing selected.
    void RefreshList();
    const QStringList& configNames() const { return ConfigNames; }

    void classlist_Click();
    void btNew_Click();
    void btDelete_Click();
    void btEdit_Click();
    void btCopy_Click();
    void btImport_Click();
    // Imports the file as Import from Class File... does, without asking which file: a
    // class file opened from the desktop or dropped on the window.
    void openClassFile(const QString& file);
    void mnuSetModID_Click();
    void mnuRestoreBackup_Click();
    void mnuExit_Click();
    void mnuUpdateWeapons_Click();
    void mnuUpdateGrenades_Click();
    void mnuEditSpecial_Click();
    void mnuEditItems_Click();
    void mnuAbout_Click();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void Form_Load();
    void importClassFile(QString file);
    void connectHandlers();
    void addRestoreBackup();
    bool requireCurrentConfig();
    void showReferenceWindow(ReferenceTable table);

    std::unique_ptr<Ui::frmConfig> ui;
    AppState& m_state;
    Dialogs& m_dialogs;
    QStringList ConfigNames;
    QAction* mnuRestoreBackup = nullptr;
};

} // namespace tarn
