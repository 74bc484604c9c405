#include "QtDialogs.h"

#include "LiteralText.h"
#include "ModalWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>

namespace tarn
{

QString qtFileFilter(const QString& filter)
{
    // Each description is followed by its own patterns, which the dialog hides, so the
    // caption stays as written while "*.*" matches names without a dot too.
    const QStringList pieces = filter.split(u'|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        QStringList patterns = pieces[i + 1].split(u';');
        patterns.replaceInStrings(QRegularExpression(QStringLiteral("^\\*\\.\\*$")), QStringLiteral("*"));
        entries << pieces[i] + QStringLiteral(" (") + patterns.join(u' ') + u')';
    }
    return entries.join(QStringLiteral(";;"));
}

namespace
{

constexpr auto FileDialogOptions = QFileDialog::HideNameFilterDetails;
const QString ImportDialog = QStringLiteral("import");
const QString ExportDialog = QStringLiteral("export");

} // namespace

QString QtDialogs::inputBox(QWidget* parent, const QString& prompt, const QString& title)
{
    QInputDialog box(parent);
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.sizeHint(); // lays the box out, which makes the prompt the buddy of the answer box
    showLiteral(*box.findChild<QLabel*>(), prompt);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

QString QtDialogs::chooseItem(QWidget* parent, const QString& prompt, const QString& title, const QStringList& items)
{
    QInputDialog box(parent);
    box.setWindowTitle(title);
    box.setComboBoxItems(items);
    box.setComboBoxEditable(false);
    box.setLabelText(prompt);
    box.sizeHint(); // lays the box out, which makes the prompt the buddy of the choice
    showLiteral(*box.findChild<QLabel*>(), prompt);
    return box.exec() == QDialog::Accepted ? box.textValue() : QString();
}

void QtDialogs::message(QWidget* parent, const QString& text)
{
    QMessageBox box(QMessageBox::NoIcon, MessageTitle, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool QtDialogs::confirm(QWidget* parent, const QString& text, const QString& title)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.button(QMessageBox::Yes)->setText(QStringLiteral("&Yes"));
    box.button(QMessageBox::No)->setText(QStringLiteral("&No"));
    return box.exec() == QMessageBox::Yes;
}

QString QtDialogs::openFileName(QWidget* parent, const QString& filter)
{
    QString file =
        QFileDialog::getOpenFileName(parent, QStringLiteral("Open Class File"), m_memory.lastFolder(ImportDialog),
                                     qtFileFilter(filter), nullptr, FileDialogOptions);
    m_memory.rememberFolderOf(ImportDialog, file);
    return file;
}

QString QtDialogs::saveFileName(QWidget* parent, const QString& filter)
{
    // The name is taken as typed: no extension is added, and an existing file is replaced.
    QString file = QFileDialog::getSaveFileName(parent, QStringLiteral("Save Class File"),
                                                m_memory.lastFolder(ExportDialog), qtFileFilter(filter), nullptr,
                                                FileDialogOptions | QFileDialog::DontConfirmOverwrite);
    m_memory.rememberFolderOf(ExportDialog, file);
    return file;
}

void QtDialogs::setBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void QtDialogs::showModal(QWidget& window)
{
    runModal(window);
}

} // namespace tarn
