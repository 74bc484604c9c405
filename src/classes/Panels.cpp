#include "Panels.h"

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace tarn
{

namespace
{

void widenFor(QMainWindow& window, QDockWidget& dock)
{
    const auto docks = window.findChildren<QDockWidget*>();
    const bool alone = std::none_of(docks.begin(), docks.end(), [&](QDockWidget* other) {
        return other != &dock && other->isVisible() && !other->isFloating() &&
               window.dockWidgetArea(other) == Qt::RightDockWidgetArea;
    });
    if (dock.isFloating() || !alone)
        return;
    const int width = std::max(dock.sizeHint().width(), dock.fontMetrics().averageCharWidth() * 50);
    const int separator = window.style()->pixelMetric(QStyle::PM_DockWidgetSeparatorExtent, nullptr, &window);
    const int room = window.screen()->availableGeometry().width() - window.frameGeometry().width();
    window.resize(window.width() + std::clamp(room, 0, width + separator), window.height());
    window.resizeDocks({&dock}, {width}, Qt::Horizontal);
}

} // namespace

QDockWidget* addPanel(QMainWindow& window, QMenu& view, const PanelInfo& info, QWidget* content,
                      const std::function<void()>& refresh)
{
    auto* dock = new QDockWidget(info.title, &window);
    dock->setObjectName(info.name);
    dock->setWidget(content);
    window.addDockWidget(info.beside ? Qt::RightDockWidgetArea : Qt::BottomDockWidgetArea, dock);
    dock->hide();
    QAction* toggle = dock->toggleViewAction();
    toggle->setText(info.menuEntry);
    toggle->setObjectName(info.menuName);
    view.addAction(toggle);
    if (info.beside) {
        QObject::connect(toggle, &QAction::triggered, &window, [&window, dock](bool shown) {
            if (shown)
                widenFor(window, *dock);
        });
    }
    QObject::connect(dock, &QDockWidget::visibilityChanged, &window, [refresh](bool visible) {
        if (visible)
            refresh();
    });
    return dock;
}

} // namespace tarn
