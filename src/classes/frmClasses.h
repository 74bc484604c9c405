#pragma once

#include "store/ReferenceLists.h"

#include <QMainWindow>
#include <array>
#include <memory>
#include <span>
#include <vector>

class QCheckBox;
class QComboBox;
class QDockWidget;
class QLabel;
class QListWidget;
class QLineEdit;
class QStandardItemModel;

namespace Ui
{
class frmClasses;
}

namespace tarn
{

struct AppState;
class Dialogs;

// The class editor: the classes of the current configuration, one at a time, bound
// to their row through dbClassDef. Throws StoreError when the stores can't be read.
class frmClasses : public QMainWindow
{
    Q_OBJECT
public:
    frmClasses(AppState& state, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmClasses() override;

    // The picker position of the id a hidden slot box holds; 0 when nothing matches.
    int FindWeaponPos(const QString& wno_text) const;
    int FindGrenadePos(const QString& gno_text) const;

    void AddClass_Click();
    void Command1_Click();
    void dbClassDef_Reposition();
    void mnuSaveAs_Click();
    void mnuSaveUnprotected_Click();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // A weapon or grenade picker and the hidden box bound to its slot column.
    struct Slot {
        QComboBox* picker;
        QLineEdit* hidden;
        bool weapon;
    };

    void sizeBoxes();
    void gatherControls();
    void showPosition();
    void goToClass();
    void connectHandlers();
    void Form_Load();
    void fillPickers(const ReferenceLists& lists);
    void fillBoxes(const std::vector<BoxEntry>& entries, std::span<QCheckBox* const> boxes);
    void Picker_Click(const Slot& slot);
    void DoSave();
    void setPickersEnabled(bool enabled);
    void setUpProblems();
    void showClassProblems();
    void refreshProblemsPanel();
    void goToProblem(qint64 rowId);
    void addClass();
    void deleteClass();

    std::unique_ptr<Ui::frmClasses> ui;
    AppState& m_state;
    Dialogs& m_dialogs;
    std::array<QCheckBox*, ItemBoxes> Check1{};
    std::array<QCheckBox*, SpecialBoxes> special{};
    std::array<Slot, 12> m_slots{}; // w2 to w10, then g1 to g3: the order of the tracking
    QStandardItemModel* m_weaponModel = nullptr;
    QStandardItemModel* m_grenadeModel = nullptr;
    std::vector<qint64> m_weaponIds;
    std::vector<qint64> m_grenadeIds;
    ReferenceLists m_lists;
    QLabel* lblProblems = nullptr;       // the problems of the class on show, in the status bar
    QDockWidget* dockProblems = nullptr; // View > Problems: those of the whole configuration
    QListWidget* lstProblems = nullptr;
};

} // namespace tarn
