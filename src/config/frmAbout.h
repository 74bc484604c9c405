#pragma once

#include <QDialog>
#include <memory>

namespace Ui
{
class frmAbout;
}

namespace tarn
{

// The about box: a fixed-size dialog whose OK answers both Enter and Escape.
class frmAbout : public QDialog
{
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr);
    ~frmAbout() override;

    void cmdOK_Click();

private:
    std::unique_ptr<Ui::frmAbout> ui;
};

} // namespace tarn
