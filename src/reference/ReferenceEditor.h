#pragma once

#include <QWidget>
#include <utility>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarn
{

struct AppState;
struct ReferenceLayout;
class DataControl;
class Dialogs;

// What the four reference editors have in common: a navigator over one table of the
// reference store, bound boxes, Add Record and Delete Record, and no save command:
// the navigator stores changed text when it leaves a row and when the window closes.
class ReferenceEditor : public QWidget
{
    Q_OBJECT
public:
    ~ReferenceEditor() override;

    // Add Record: a pending new row, stored only when left with something typed in it.
    void Command1_Click();
    // Delete Record: the current row goes at once, then the set is opened afresh.
    void Command2_Click();

protected:
    // The controls of the derived window's form, in the order of the layout's fields.
    struct Controls {
        DataControl* data;
        QPushButton* addRecord;
        QPushButton* deleteRecord;
        std::vector<std::pair<QLabel*, QLineEdit*>> fields;
    };

    ReferenceEditor(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent);
    // Names, captions and binds the controls after the form's setup.
    void attach(const Controls& controls);
    // Opens the navigator on the table; the row with the lowest id becomes current.
    void Form_Load();
    Dialogs& dialogs() { return m_dialogs; }
    void closeEvent(QCloseEvent* event) override;

private:
    void addProblemLine(const QLineEdit& nameBox);

    const ReferenceLayout& m_layout;
    AppState& m_state;
    Dialogs& m_dialogs;
    DataControl* m_data = nullptr;
    QLabel* m_problem = nullptr;
};

} // namespace tarn
