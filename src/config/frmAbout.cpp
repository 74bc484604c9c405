#include "frmAbout.h"

#include "toolkit/AppIcon.h"
#include "toolkit/SystemNames.h"
#include "ui_frmAbout.h"

namespace tarn
{

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmAbout>())
{
    ui->setupUi(this);
    setWindowFlags(Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    ui->picIcon->setPixmap(appIcon().pixmap(32));
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    publishSystemNames(*this);
}

frmAbout::~frmAbout() = default;

void frmAbout::cmdOK_Click()
{
    close();
}

} // namespace tarn
