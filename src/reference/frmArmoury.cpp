#include "frmArmoury.h"

#include "toolkit/SystemNames.h"
#include "toolkit/TextSizes.h"
#include "ui_frmArmoury.h"

namespace tarn
{

frmArmoury::frmArmoury(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent)
    : ReferenceEditor(layout, state, dialogs, parent), ui(std::make_unique<Ui::frmArmoury>())
{
    ui->setupUi(this);
    // The name box is more than four times as wide as the narrow number boxes.
    for (QLineEdit* box : {ui->Text1, ui->Text3, ui->Text4, ui->Text5})
        setWidthInCharacters(*box, 7);
    setWidthInCharacters(*ui->Text2, 34);
    attach({ui->dataControl,
            ui->Command1,
            ui->Command2,
            {{ui->Label1, ui->Text1},
             {ui->Label2, ui->Text2},
             {ui->Label3, ui->Text3},
             {ui->Label4, ui->Text4},
             {ui->Label5, ui->Text5}}});
    Form_Load();
    publishSystemNames(*this);
}

frmArmoury::~frmArmoury() = default;

} // namespace tarn
