#pragma once

#include <QBuffer>
#include <QSaveFile>
#include <QString>
#include <chrono>
#include <memory>
#include <optional>

class QIODevice;

namespace tarn
{

// A file being written whole, or left as it was where that can be had.
// - A missing file, or a regular file with one link, is replaced atomically: the bytes
//   go to a temporary file as they are made, and it takes the name only once every
//   write succeeded. A refused export, a full disk or a size limit leaves the old file.
// - A regular file with several links (or a /dev or /proc path naming one) is rewritten
//   in place, so that its links stay: the room for the whole new content is reserved
//   before its first byte changes, so a full disk or a size limit leaves it as it was.
// - A named pipe or a device is opened at open(), waiting a bounded time for a pipe's
//   reader, and written at commit. Neither can be reserved: a write that fails there
//   has already passed on what went before.
// What goes into a file in place is gathered first and written at commit, so a refused
// export never touches it. Every write and the commit are checked: a full disk is never
// success.
class OutputFile
{
public:
    // readerWait: how long open() waits for a program to read a named pipe.
    explicit OutputFile(const QString& path, std::chrono::milliseconds readerWait = {});
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
    enum class Way { Replace, Rewrite, Stream };
    class Spool;

    bool openInPlace();
    bool fail(const QString& reason);

    QString m_path;
    std::chrono::milliseconds m_readerWait;
    Way m_way = Way::Replace;
    int m_fd = -1;
    QSaveFile m_atomic;
    std::unique_ptr<Spool> m_spool;
    QBuffer m_gathered;
    QString m_error;
};

// Makes a write past the file size limit (ulimit -f) fail with "File too large", to be
// told like any failed write, instead of ending the program without a word (SIGXFSZ).
// Called once at the start of each program.
void reportFileSizeLimit();

// The contents of a file written through OutputFile; the error text on failure.
std::optional<QString> writeWholeFile(const QString& path, const QByteArray& bytes);

// True when both paths name the same existing file (device and inode), whatever their text.
bool isSameFile(const QString& a, const QString& b);

// The contents of a small settings file: only a regular file of at most maxBytes is
// read, so that a pipe or a device in its place can neither hang nor flood the program.
std::optional<QByteArray> readSmallFile(const QString& path, qint64 maxBytes);

} // namespace tarn
