#pragma once

#include <QBuffer>
#include <QSaveFile>
#include <QString>
#include <memory>
#include <optional>

class QIODevice;

namespace tarn
{

// A file being written whole, or left as it was where that can be had.
// - A missing file, or a regular file with one link, is replaced atomically: the bytes
//   go to a temporary file that takes the name only once every write succeeded.
// - Anything else that exists (a device, a FIFO, a file with several links, a path in
//   /dev or /proc such as /dev/stdout) is written into in place, so that the node and
//   its links stay. The bytes are gathered first and written at commit, so a refused
//   export never touches it.
// Every write, the flush and the commit are checked: a full disk is never success.
class OutputFile
{
public:
    explicit OutputFile(const QString& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    bool open();
    // Where the bytes go between open() and commit().
    QIODevice& device();
    bool commit();
    // "Cannot write PATH: reason", after a failed open(), write or commit().
    QString errorText() const;
    bool failed() const;

private:
    bool writeInPlace();

    QString m_path;
    bool m_inPlace = false;
    QSaveFile m_atomic;
    QBuffer m_gathered;
    QString m_error;
};

// The contents of a file written through OutputFile; the error text on failure.
std::optional<QString> writeWholeFile(const QString& path, const QByteArray& bytes);

// True when both paths name the same existing file (device and inode), whatever their text.
bool isSameFile(const QString& a, const QString& b);

} // namespace tarn
