#pragma once

#include "ReferenceEditor.h"

#include <memory>

namespace Ui
{
class frmBitTable;
}

namespace tarn
{

// The editor of a table of bit ids, items or special abilities: frmItems or frmSpecial,
// by its layout. Beside the record it shows the current id's bit number and offers a
// calculator from a bit number to the id to type.
class frmBitTable : public ReferenceEditor
{
    Q_OBJECT
public:
    frmBitTable(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmBitTable() override;

    void btnCalc_Click();
    // Runs once a row has become current and the bound boxes show it.
    void dataControl_Reposition();

private:
    std::unique_ptr<Ui::frmBitTable> ui;
};

} // namespace tarn
