#pragma once

#include "Dialogs.h"
#include "WindowMemory.h"

namespace tarn
{

// The real dialogs, from Qt Widgets.
class QtDialogs final : public Dialogs
{
public:
    // The file dialogs start in the folder last chosen, kept in the given settings file.
    explicit QtDialogs(QString windowSettingsFile = {}) : m_memory(std::move(windowSettingsFile)) {}

    QString inputBox(QWidget* parent, const QString& prompt, const QString& title) override;
    void message(QWidget* parent, const QString& text) override;
    QString chooseItem(QWidget* parent, const QString& prompt, const QString& title, const QStringList& items) override;
    bool confirm(QWidget* parent, const QString& text, const QString& title) override;
    QString openFileName(QWidget* parent, const QString& filter) override;
    QString saveFileName(QWidget* parent, const QString& filter) override;
    void setBusy(bool busy) override;
    void showModal(QWidget& window) override;

private:
    WindowMemory m_memory;
    bool m_busy = false;
};

// Turns "Name (*.x)|*.x|All Files (*.*)|*.*" into the filter list of a Qt file dialog
// that hides the patterns behind each name: "Name (*.x) (*.x);;All Files (*.*) (*)".
QString qtFileFilter(const QString& filter);

} // namespace tarn
