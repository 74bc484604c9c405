#pragma once

#include <QString>

class QMainWindow;

namespace tarn
{

// What the status bars say after a class file was written or read.
// "Wrote 3 classes to FILE", and how many warnings the file carries.
QString exportedStatus(int classes, const QString& file, qsizetype warnings = 0);
QString importedStatus(int classes, const QString& file, const QString& configName);

// A status text tells of the last command only: every button and menu command of the
// window clears it as it starts. Called before the window connects its own handlers.
void clearStatusOnEveryCommand(QMainWindow& window);

} // namespace tarn
