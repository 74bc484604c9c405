#pragma once

#include "ReferenceEditor.h"

#include <memory>

namespace Ui
{
class frmArmoury;
}

namespace tarn
{

// The editor of a table of weapons or grenades: frmWeapons or frmGrenades, by its layout.
class frmArmoury : public ReferenceEditor
{
    Q_OBJECT
public:
    frmArmoury(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent = nullptr);
    ~frmArmoury() override;

private:
    std::unique_ptr<Ui::frmArmoury> ui;
};

} // namespace tarn
