#pragma once

#include "toolkit/Dialogs.h"

#include <QQueue>
#include <QStringList>
#include <functional>

namespace tarn::test
{

// Answers every dialog from queues filled by the test, and records what was shown.
// A dialog asked for with nothing queued fails the test with a clear text.
class ScriptedDialogs final : public Dialogs
{
public:
    QQueue<QString> inputAnswers;
    QQueue<bool> confirmAnswers;
    QQueue<QString> fileAnswers;
    // Runs while a modal window is "open"; by default the window is closed at once.
    std::function<void(QWidget&)> onModal;

    QStringList messages;     // texts of message boxes, in order
    QStringList prompts;      // "title|prompt" of input and confirm boxes
    QStringList fileFilters;  // filter of each file dialog
    QStringList modalWindows; // object names of windows shown modally
    bool busy = false;
    int busyChanges = 0;

    QString inputBox(QWidget* parent, const QString& prompt, const QString& title) override;
    void message(QWidget* parent, const QString& text) override;
    bool confirm(QWidget* parent, const QString& text, const QString& title) override;
    QString openFileName(QWidget* parent, const QString& filter) override;
    QString saveFileName(QWidget* parent, const QString& filter) override;
    void setBusy(bool value) override;
    void showModal(QWidget& window) override;
};

} // namespace tarn::test
