#include "WindowMemory.h"

#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QMainWindow>
#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QWidget>

namespace tarn
{

namespace
{

// A settings file is read and written only where it is a regular file of a sane size,
// or not there yet: a pipe or a device in its place would hang or flood the program.
bool usable(const QString& file)
{
    constexpr qint64 Limit = qint64(1024) * 1024; // far more than the windows ever write
    const QFileInfo info(file);
    return !file.isEmpty() && (!info.exists() || (info.isFile() && info.size() <= Limit));
}

QString geometryKey(const QWidget& window)
{
    return QStringLiteral("windows/%1/geometry").arg(window.objectName());
}

// Which docks and bars a main window shows, and where.
QString stateKey(const QWidget& window)
{
    return QStringLiteral("windows/%1/state").arg(window.objectName());
}

QString folderKey(const QString& dialog)
{
    return QStringLiteral("folders/%1").arg(dialog);
}

// Captions and widths set before a window's first show don't reach the size hints its
// layouts have cached, since hidden controls don't tell their layouts.
void forgetCachedSizes(QWidget& window)
{
    const auto controls = window.findChildren<QWidget*>();
    for (QWidget* control : controls)
        control->updateGeometry();
    const auto layouts = window.findChildren<QLayout*>();
    for (QLayout* layout : layouts)
        layout->invalidate();
}

// The room on the screen for the inside of a window: the window system's frame and
// title bar aren't known before it is shown, so the style's guess of them is kept free.
QSize roomOnScreen(const QWidget& window)
{
    const QStyle* style = window.style();
    const int frame = 2 * style->pixelMetric(QStyle::PM_DefaultFrameWidth);
    const int titleBar = style->pixelMetric(QStyle::PM_TitleBarHeight);
    return window.screen()->availableGeometry().size().shrunkBy(QMargins(frame, frame + titleBar, frame, frame));
}

// The room the content asks for, as far as the screen has it.
void fitToScreen(QWidget& window)
{
    window.ensurePolished(); // style sheet fonts count in the size hints
    forgetCachedSizes(window);
    const QSize room = roomOnScreen(window);
    QSize wanted = window.sizeHint().expandedTo(window.minimumSizeHint());
    // Content cut to the screen's height scrolls, and its scroll bar takes room beside it
    // (and likewise below, when cut to the width).
    const int scrollBar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    if (wanted.height() > room.height())
        wanted.rwidth() += scrollBar;
    if (wanted.width() > room.width())
        wanted.rheight() += scrollBar;
    window.resize(wanted.boundedTo(room));
}

} // namespace

WindowMemory::WindowMemory(QString settingsFile) : m_file(std::move(settingsFile)) {}

void WindowMemory::restore(QWidget& window) const
{
    if (usable(m_file)) {
        const QSettings settings(m_file, QSettings::IniFormat);
        if (auto* main = qobject_cast<QMainWindow*>(&window))
            main->restoreState(settings.value(stateKey(window)).toByteArray());
        // restoreGeometry moves a window that would lie off every screen onto one.
        if (window.restoreGeometry(settings.value(geometryKey(window)).toByteArray()))
            return;
    }
    fitToScreen(window);
}

void WindowMemory::remember(const QWidget& window) const
{
    if (!usable(m_file))
        return;
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setValue(geometryKey(window), window.saveGeometry());
    if (const auto* main = qobject_cast<const QMainWindow*>(&window))
        settings.setValue(stateKey(window), main->saveState());
}

QString WindowMemory::lastFolder(const QString& dialog) const
{
    if (!usable(m_file))
        return {};
    const QString folder = QSettings(m_file, QSettings::IniFormat).value(folderKey(dialog)).toString();
    return QFileInfo(folder).isDir() ? folder : QString();
}

void WindowMemory::rememberFolderOf(const QString& dialog, const QString& file) const
{
    if (!usable(m_file) || file.isEmpty())
        return;
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setValue(folderKey(dialog), QFileInfo(file).absolutePath());
}

} // namespace tarn
