#include "QtDialogs.h"

#include "ModalWindow.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace tarn
{

QString qtFileFilter(const QString& filter)
{
    // Every second piece is a pattern the description already shows.
    const QStringList pieces = filter.split(u'|');
    QStringList descriptions;
    for (qsizetype i = 0; i < pieces.size(); i += 2)
        descriptions << pieces[i];
    return descriptions.join(QStringLiteral(";;"));
}

QString QtDialogs::inputBox(QWidget* parent, const QString& prompt, const QString& title)
{
    bool ok = false;
    const QString answer = QInputDialog::getText(parent, title, prompt, QLineEdit::Normal, QString(), &ok);
    return ok ? answer : QString();
}

void QtDialogs::message(QWidget* parent, const QString& text)
{
    QMessageBox box(QMessageBox::NoIcon, MessageTitle, text, QMessageBox::Ok, parent);
    box.exec();
}

bool QtDialogs::confirm(QWidget* parent, const QString& text, const QString& title)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setDefaultButton(QMessageBox::No);
    box.button(QMessageBox::Yes)->setText(QStringLiteral("&Yes"));
    box.button(QMessageBox::No)->setText(QStringLiteral("&No"));
    return box.exec() == QMessageBox::Yes;
}

QString QtDialogs::openFileName(QWidget* parent, const QString& filter)
{
    return QFileDialog::getOpenFileName(parent, QStringLiteral("Open Class File"), QString(), qtFileFilter(filter));
}

QString QtDialogs::saveFileName(QWidget* parent, const QString& filter)
{
    // The name is taken as typed: no extension is added, and an existing file is replaced.
    return QFileDialog::getSaveFileName(parent, QStringLiteral("Save Class File"), QString(), qtFileFilter(filter),
                                        nullptr, QFileDialog::DontConfirmOverwrite);
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
