#include "StatusBar.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QMainWindow>
#include <QStatusBar>

namespace tarn
{

namespace
{

QString classCount(int classes)
{
    return classes == 1 ? QStringLiteral("1 class") : QStringLiteral("%1 classes").arg(classes);
}

} // namespace

QString exportedStatus(int classes, const QString& file, qsizetype warnings)
{
    QString wrote = QStringLiteral("Wrote %1 to %2").arg(classCount(classes), QDir::toNativeSeparators(file));
    if (warnings == 0)
        return wrote;
    return wrote + (warnings == 1 ? QStringLiteral(", with 1 warning (View > Problems)")
                                  : QStringLiteral(", with %1 warnings (View > Problems)").arg(warnings));
}

QString importedStatus(int classes, const QString& file, const QString& configName)
{
    return QStringLiteral("Read %1 from %2 into \"%3\"")
        .arg(classCount(classes), QDir::toNativeSeparators(file), configName);
}

void clearStatusOnEveryCommand(QMainWindow& window)
{
    QStatusBar* status = window.statusBar();
    const auto buttons = window.findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (!button->isCheckable()) // a tick is an edit, not a command
            QObject::connect(button, &QAbstractButton::clicked, status, &QStatusBar::clearMessage);
    }
    const auto actions = window.findChildren<QAction*>();
    for (QAction* action : actions)
        QObject::connect(action, &QAction::triggered, status, &QStatusBar::clearMessage);
}

} // namespace tarn
