#include "ModalWindow.h"

#include <QEvent>
#include <QEventLoop>
#include <QWidget>

namespace tarn
{

namespace
{

// Ends the local event loop when the watched window is hidden by its close.
class CloseWatcher : public QObject
{
public:
    explicit CloseWatcher(QEventLoop& loop) : m_loop(loop) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Hide)
            m_loop.quit();
        return QObject::eventFilter(watched, event);
    }

private:
    QEventLoop& m_loop;
};

} // namespace

void runModal(QWidget& window)
{
    QEventLoop loop;
    CloseWatcher watcher(loop);
    window.installEventFilter(&watcher);
    window.setWindowModality(Qt::ApplicationModal);
    window.show();
    if (window.isVisible())
        loop.exec();
    window.removeEventFilter(&watcher);
}

} // namespace tarn
