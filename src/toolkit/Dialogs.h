#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace tarn
{

// Every question, message, file dialog, busy cursor and modal window goes through
// this seam. The workbench uses QtDialogs; tests install a scripted double.
class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // An input box with an empty default; Cancel answers the empty string.
    virtual QString inputBox(QWidget* parent, const QString& prompt, const QString& title) = 0;
    // A message with an OK button, titled by the toolkit.
    virtual void message(QWidget* parent, const QString& text) = 0;
    // A choice of one of the items, the first offered; Cancel answers the empty string.
    virtual QString chooseItem(QWidget* parent, const QString& prompt, const QString& title,
                               const QStringList& items) = 0;
    // Yes and No with a stop icon, No the default; true only for Yes.
    virtual bool confirm(QWidget* parent, const QString& text, const QString& title) = 0;
    // File dialogs with a filter such as "Class Config (*.class)|*.class|All Files (*.*)|*.*";
    // the empty string after Cancel.
    virtual QString openFileName(QWidget* parent, const QString& filter) = 0;
    virtual QString saveFileName(QWidget* parent, const QString& filter) = 0;
    // The hourglass over the whole program, until it is set back.
    virtual void setBusy(bool busy) = 0;
    // Shows a window modally; returns when it has closed.
    virtual void showModal(QWidget& window) = 0;
};

// The title the toolkit gives a message that has none of its own.
inline const QString MessageTitle = QStringLiteral("Tarn Workbench");

// The filter of every class file dialog.
inline const QString ClassFileFilter = QStringLiteral("Class Config (*.class)|*.class|All Files (*.*)|*.*");

} // namespace tarn
