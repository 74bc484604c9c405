#include "ScriptedDialogs.h"

#include <QTest>
#include <QWidget>

namespace tarn::test
{

namespace
{

template <typename T> T take(QQueue<T>& queue, const char* what)
{
    if (queue.isEmpty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected %1: no answer queued").arg(QLatin1String(what))), __FILE__,
                     __LINE__);
        return T();
    }
    return queue.dequeue();
}

} // namespace

QString ScriptedDialogs::inputBox(QWidget*, const QString& prompt, const QString& title)
{
    prompts << title + u'|' + prompt;
    return take(inputAnswers, "input box");
}

void ScriptedDialogs::message(QWidget*, const QString& text)
{
    messages << text;
}

bool ScriptedDialogs::confirm(QWidget*, const QString& text, const QString& title)
{
    prompts << title + u'|' + text;
    return take(confirmAnswers, "confirmation");
}

QString ScriptedDialogs::openFileName(QWidget*, const QString& filter)
{
    fileFilters << filter;
    return take(fileAnswers, "open file dialog");
}

QString ScriptedDialogs::saveFileName(QWidget*, const QString& filter)
{
    fileFilters << filter;
    return take(fileAnswers, "save file dialog");
}

void ScriptedDialogs::setBusy(bool value)
{
    if (value != busy)
        ++busyChanges;
    busy = value;
}

void ScriptedDialogs::showModal(QWidget& window)
{
    modalWindows << window.objectName();
    window.show();
    if (onModal)
        onModal(window);
    window.close();
}

} // namespace tarn::test
