#pragma once

#include <QString>

class QMainWindow;

namespace tarn
{

// Gives the window its status bar, growing the window by the bar's height so that
// the controls keep their room.
void addStatusBar(QMainWindow& window);

// What the status bars say after a class file was written or read.
QString exportedStatus(int classes, const QString& file);
QString importedStatus(int classes, const QString& file, const QString& configName);

} // namespace tarn
