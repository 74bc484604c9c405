#pragma once

#include "classfile/ClassFileWriter.h"
#include "classfile/SlotSearch.h"
#include "store/ReferenceLists.h"

#include <QMainWindow>
#include <QVariantMap>
#include <array>
#include <memory>
#include <span>
#include <vector>

class QCheckBox;
class QComboBox;
class QDockWidget;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QSortFilterProxyModel;
class QTableView;
class QToolBar;
class QLineEdit;
class QStandardItemModel;

namespace Ui
{
class frmClasses;
}

namespace tarn
{

struct AppState;
class ClassListModel;
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

    void makeCaptionsBold();
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
    void goToRow(qint64 rowId);
    void setUpEditMenu();
    void setUpPanels();
    void findNext();
    void undoDeleteClass();
    void refreshClassList();
    void refreshPreview();
    // The class as the controls show it now, typed and not yet stored included; the
    // text of a number box that holds no number, if one does.
    ExportedClass classOnShow(QString& notANumber) const;
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
    SlotLookup m_weaponSlots{{}};
    SlotLookup m_grenadeSlots{{}};
    ReferenceLists m_lists;
    QLabel* lblProblems = nullptr;       // the problems of the class on show, in the status bar
    QDockWidget* dockProblems = nullptr; // View > Problems: those of the whole configuration
    QListWidget* lstProblems = nullptr;
    QToolBar* findBar = nullptr; // Edit > Find Class
    QLineEdit* findBox = nullptr;
    QLabel* lblFind = nullptr;
    QAction* mnuUndoDeleteClass = nullptr;
    std::vector<QVariantMap> m_deleted; // the classes deleted in this window, the last one last
    QDockWidget* dockClassList = nullptr;
    QTableView* tblClasses = nullptr;
    ClassListModel* m_classList = nullptr;
    QSortFilterProxyModel* m_sortedClasses = nullptr;
    QDockWidget* dockPreview = nullptr;
    QPlainTextEdit* txtPreview = nullptr;
    QCheckBox* chkPreviewProtected = nullptr;
};

} // namespace tarn
