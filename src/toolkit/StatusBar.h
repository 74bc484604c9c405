#pragma once

#include <QString>

class QMainWindow;

namespace tarn
{

// What the status bars say after a class file was written or read.
QString exportedStatus(int classes, const QString& file);
QString importedStatus(int classes, const QString& file, const QString& configName);

// A status text tells of the last command only: every button and menu command of the
// window clears it as it starts. Called before the window connects its own handlers.
void clearStatusOnEveryCommand(QMainWindow& window);

} // namespace tarn
