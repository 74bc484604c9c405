#pragma once

#include <QString>

class QWidget;

namespace tarn
{

// What the windows remember between runs: each window's geometry by its object name,
// and the last folder of each file dialog. It lives in its own settings file, never in
// tarn.ini, whose format is fixed. With no file named nothing is remembered; a file
// that cannot be read, or a folder that is gone, gives the defaults without a word.
class WindowMemory
{
public:
    explicit WindowMemory(QString settingsFile);

    // The saved geometry, kept on the available screens; without one, a size that
    // fits the available screen.
    void restore(QWidget& window) const;
    void remember(const QWidget& window) const;

    QString lastFolder(const QString& dialog) const;
    void rememberFolderOf(const QString& dialog, const QString& file) const;

private:
    QString m_file;
};

} // namespace tarn
