#pragma once

#include "store/Recordset.h"

#include <QPointer>
#include <QVariantMap>
#include <QWidget>
#include <memory>
#include <vector>

class QCheckBox;
class QCloseEvent;
class QLabel;
class QLineEdit;
class QToolButton;

namespace tarn
{

class Database;
class Dialogs;

// The record navigator of a window, and the owner of its bound controls. It shows
// the current row in the bound controls, notes what the author (or code) changes,
// writes the changed controls to the row before any move, any new row and the
// window's close, and raises reposition() once the controls show a new row.
// A text its column cannot hold is not written and not lost: the author is told,
// the move does not happen, and the text stays in its box.
class DataControl : public QWidget
{
    Q_OBJECT
public:
    explicit DataControl(QWidget* parent = nullptr);
    ~DataControl() override;

    void setCaption(const QString& caption);
    QString caption() const;
    // Where refusals are told; a control opened without them stops the program.
    void setDialogs(Dialogs& dialogs) { m_dialogs = &dialogs; }

    // Binds a control to a column; the field name is what messages call it.
    void bindText(QLineEdit* box, const QString& column, const QString& fieldName);
    void bindCheck(QCheckBox* box, const QString& column, const QString& fieldName);
    void bindLabel(QLabel* label, const QString& column);
    // Whether a bound control takes input while a row is shown.
    void setBoundEnabled(QWidget* control, bool enabled);
    QStringList boundColumns() const;

    // Sets the record source and runs it; the first row becomes current.
    void open(Database& db, const RecordSource& source, const QVariantList& params = {});
    // Runs the record source afresh; the first row becomes current.
    void refresh();
    // Stores a new row at the end of the set, as its values say; the row on show stays.
    void addRow(const QVariantMap& values);
    // The position in the set of a row of the table, by its rowid.
    std::optional<int> positionOf(qint64 rowId) const;
    int recordCount() const { return m_recordset ? m_recordset->recordCount() : 0; }
    bool hasCurrent() const { return m_recordset && m_recordset->hasCurrent(); }
    // The place of the row on show in the set, from 0; -1 when none is.
    int currentPosition() const { return hasCurrent() ? m_recordset->position() : -1; }
    // Every column of the row on show, as stored.
    QVariantMap currentValues() const { return m_recordset->currentRow(); }
    std::optional<qint64> currentRowId() const
    {
        return hasCurrent() ? std::optional(m_recordset->currentRowId()) : std::nullopt;
    }

    // Moves store the changed controls first; false when the store refused them.
    // Moving past either end stays on the first or the last row. A row another program
    // deleted is told and the set read afresh; reposition() follows even when no row is left.
    bool moveFirst();
    bool movePrevious();
    bool moveNext();
    bool moveLast();
    // Moves to the row of the given position, from 0, storing the edits on show first.
    bool moveTo(int position);
    // Starts a pending new row with blank controls; it is stored when left, if anything was typed.
    bool addNew();
    // Writes the changed controls to the row now.
    bool storeChanges();
    // Lets the window close only when its changed controls are stored; a text its
    // column cannot hold keeps the window open to be corrected.
    void acceptCloseIfStored(QCloseEvent& event);
    // Removes the current row; a pending new row is dropped and no stored row goes.
    void deleteCurrent();

signals:
    void reposition();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Binding;
    enum class Move { First, Previous, Next, Last, To };

    bool move(Move where);
    void step(Move where);
    void showWhatIsLeft();
    void showCurrentRow();
    void showBlank();
    void applyEnabledState();
    void noteChange(QWidget* control);
    std::optional<QVariantMap> collectChanges();
    bool writeChanges(const QVariantMap& changes);
    void clearChanges();
    void refuse(const QString& text, QWidget* focus);

    std::vector<std::unique_ptr<Binding>> m_bindings;
    std::unique_ptr<Recordset> m_recordset;
    Dialogs* m_dialogs = nullptr;
    QLabel* m_caption = nullptr;
    bool m_loading = false;
    bool m_pendingNew = false;
    bool m_rowLost = false; // the edits on show were dropped: their row is gone
    int m_target = 0;       // the position of a Move::To
};

} // namespace tarn
