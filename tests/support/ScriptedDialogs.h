#pragma once

#include "toolkit/Dialogs.h"

#include <QQueue>
#include <QStringList>
#include <QTest>
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
        return take(inputAnswers, "input box", prompts, title + u'|' + prompt);
    }
    // A message under the busy cursor fails the test: the author could not read it.
    void message(QWidget*, const QString& text) override
    {
        messages << text;
        if (busy)
            QTest::qFail(qPrintable("message shown under the busy cursor: " + text), __FILE__, __LINE__);
    }
    // Answers from inputAnswers, like an input box; the items offered are kept.
    QString chooseItem(QWidget*, const QString& prompt, const QString& title, const QStringList& items) override
    {
        offered = items;
        return take(inputAnswers, "choice", prompts, title + u'|' + prompt);
    }
    bool confirm(QWidget*, const QString& text, const QString& title) override
    {
        return take(confirmAnswers, "confirmation", prompts, title + u'|' + text);
    }
    QString openFileName(QWidget*, const QString& filter) override
    {
        return take(fileAnswers, "open file dialog", fileFilters, filter);
    }
    QString saveFileName(QWidget*, const QString& filter) override
    {
        return take(fileAnswers, "save file dialog", fileFilters, filter);
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
    // Records what the dialog showed, then takes its answer.
    template <typename T> static T take(QQueue<T>& queue, const char* what, QStringList& shown, const QString& text)
    {
        shown << text;
        if (!queue.isEmpty())
            return queue.dequeue();
        QTest::qFail(qPrintable(QStringLiteral("unexpected %1: no answer queued").arg(QLatin1String(what))), __FILE__,
                     __LINE__);
        return T();
    }
};

} // namespace tarn::test
