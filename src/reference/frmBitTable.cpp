#include "frmBitTable.h"

#include "BitNumbers.h"
#include "toolkit/DataControl.h"
#include "toolkit/Dialogs.h"
#include "toolkit/Emphasis.h"
#include "toolkit/SystemNames.h"
#include "toolkit/TextSizes.h"
#include "ui_frmBitTable.h"

namespace tarn
{

frmBitTable::frmBitTable(const ReferenceLayout& layout, AppState& state, Dialogs& dialogs, QWidget* parent)
    : ReferenceEditor(layout, state, dialogs, parent), ui(std::make_unique<Ui::frmBitTable>())
{
    ui->setupUi(this);
    // The id box is twice as wide as the enabled mark, the name box the widest.
    setWidthInCharacters(*ui->Text1, 12);
    setWidthInCharacters(*ui->Text2, 34);
    for (QLineEdit* box : {ui->Text5, ui->fldCalcBit, ui->fldBitNum})
        setWidthInCharacters(*box, 6);
    setWidthInCharacters(*ui->fldResult, 12);
    makeLargerHeading(*ui->Label4);
    attach({ui->dataControl,
            ui->Command1,
            ui->Command2,
            {{ui->Label1, ui->Text1}, {ui->Label2, ui->Text2}, {ui->Label5, ui->Text5}}});
    connect(ui->btnCalc, &QPushButton::clicked, this, &frmBitTable::btnCalc_Click);
    connect(ui->dataControl, &DataControl::reposition, this, &frmBitTable::dataControl_Reposition);
    Form_Load();
    publishSystemNames(*this);
}

frmBitTable::~frmBitTable() = default;

void frmBitTable::btnCalc_Click()
{
    // Text that is no number in 16 bits gets the same hint as a number out of range.
    const std::optional<qint16> n = bits::bitNumberFromText(ui->fldBitNum->text());
    const std::optional<qint32> id = n ? bits::bitValue(*n) : std::nullopt;
    if (!id) {
        dialogs().message(this, QStringLiteral("Number must be between 0 and 30"));
        return;
    }
    ui->fldResult->setText(QString::number(*id));
}

void frmBitTable::dataControl_Reposition()
{
    if (const std::optional<int> bit = bits::bitNumberOfId(ui->Text1->text()))
        ui->fldCalcBit->setText(QString::number(*bit));
}

} // namespace tarn
