#include "ScriptedDialogs.h"

#include <QTest>

namespace tarn::test
{

void ScriptedDialogs::message(QWidget*, const QString& text)
{
    messages << text;
    if (busy)
        QTest::qFail(qPrintable("message shown under the busy cursor: " + text), __FILE__, __LINE__);
}

template <typename T> T ScriptedDialogs::take(QQueue<T>& queue, const char* what)
{
    if (queue.isEmpty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected %1: no answer queued").arg(QLatin1String(what))), __FILE__,
                     __LINE__);
        return T();
    }
    return queue.dequeue();
}

template QString ScriptedDialogs::take(QQueue<QString>&, const char*);
template bool ScriptedDialogs::take(QQueue<bool>&, const char*);

} // namespace tarn::test
