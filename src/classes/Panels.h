#pragma once

#include <QString>
#include <functional>

class QDockWidget;
class QMainWindow;
class QMenu;
class QWidget;

namespace tarn
{

// What a panel of the class editor is called, and where it stands.
struct PanelInfo {
    QString title;     // the dock's title
    QString name;      // the dock's system name
    QString menuEntry; // its entry in the View menu, with its access key
    QString menuName;  // that entry's system name
    bool beside;       // beside the form, else below it
};

// A dock hidden until its View entry is chosen. Shown, it runs `refresh`; the first one
// shown beside the form widens the window by its own width as far as the screen allows,
// so that the form keeps its room.
QDockWidget* addPanel(QMainWindow& window, QMenu& view, const PanelInfo& info, QWidget* content,
                      const std::function<void()>& refresh);

} // namespace tarn
