#include "WindowKeys.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QWidget>

namespace tarn
{

namespace
{

// Esc that no control of the window took for itself closes the window. A shortcut would
// also take the Esc that closes a picker's open list, and the window with it.
class EscapeCloses : public QObject
{
public:
    explicit EscapeCloses(QWidget& window) : QObject(&window), m_window(window) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &m_window && event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
            m_window.close();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget& m_window;
};

} // namespace

void addCloseKeys(QWidget& window)
{
    window.installEventFilter(new EscapeCloses(window));
    QObject::connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), &window), &QShortcut::activated, &window,
                     &QWidget::close);
}

} // namespace tarn
