#include "ReferenceWindows.h"

#include "ReferenceLayouts.h"
#include "frmArmoury.h"
#include "frmBitTable.h"

namespace tarn
{

std::unique_ptr<QWidget> createReferenceWindow(ReferenceTable table, AppState& state, Dialogs& dialogs, QWidget* parent)
{
    switch (table) {
    case ReferenceTable::Weapons:
        return std::make_unique<frmArmoury>(layouts::weapons(), state, dialogs, parent);
    case ReferenceTable::Grenades:
        return std::make_unique<frmArmoury>(layouts::grenades(), state, dialogs, parent);
    case ReferenceTable::Special:
        return std::make_unique<frmBitTable>(layouts::special(), state, dialogs, parent);
    case ReferenceTable::Items:
        break;
    }
    return std::make_unique<frmBitTable>(layouts::items(), state, dialogs, parent);
}

} // namespace tarn
