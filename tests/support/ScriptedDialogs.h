#pragma once

#include "toolkit/Dialogs.h"

#include <QQueue>
#include <QStringList>
#include <QWidget>
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
    QStringList offered;      // the items of the last choice
    bool busy = false;
    int busyChanges = 0;

    QString inputBox(QWidget*, const QString& prompt, const QString& title) override
    {
        prompts << title + u'|' + prompt;
        return take(inputAnswers, "input box");
    }
    // A message under the busy cursor fails the test: the author could not read it.
    void message(QWidget*, const QString& text) override;
    // Answers from inputAnswers, like an input box; the items offered are kept.
    QString chooseItem(QWidget*, const QString& prompt, const QString& title, const QStringList& items) override
    {
        prompts << title + u'|' + prompt;
        offered = items;
        return take(inputAnswers, "choice");
    }
    bool confirm(QWidget*, const QString& text, const QString& title) override
    {
        prompts << title + u'|' + text;
        return take(confirmAnswers, "confirmation");
    }
    QString openFileName(QWidget*, const QString& filter) override
    {
        fileFilters << filter;
        return take(fileAnswers, "open file dialog");
    }
    QString saveFileName(QWidget*, const QString& filter) override
    {
        fileFilters << filter;
        return take(fileAnswers, "save file dialog");
    }
    void setBusy(bool value) override
    {
        busyChanges += value != busy;
        busy = value;
    }
    void showModal(QWidget& window) override
    {
        modalWindows << window.objectName();
        window.show();
        if (onModal)
            onModal(window);
        window.close();
    }

private:
    template <typename T> static T take(QQueue<T>& queue, const char* what);
};

} // namespace tarn::test
