#include "OutputFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn
{

namespace
{

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds ReaderPoll{50};

std::optional<struct stat> statOf(const QString& path)
{
    struct stat info {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return info;
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// /dev and /proc paths name another file's open descriptor, whose reader would never
// see a replacement.
bool namesADescriptor(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    return absolute.startsWith(QLatin1String("/dev/")) || absolute.startsWith(QLatin1String("/proc/"));
}

// Room for the whole new content at the start of the file, asked of the disk and of the
// size limit (ulimit -f) before any byte of the file changes.
std::optional<QString> reserve(int fd, qint64 size)
{
    const int refused = size > 0 ? ::posix_fallocate(fd, 0, off_t(size)) : 0;
    if (refused == 0 || refused == EINVAL ||
        refused == EOPNOTSUPP) // a file system that cannot reserve is written as is
        return std::nullopt;
    return QStringLiteral("%1; the file is as it was").arg(reasonOf(refused));
}

bool writeAll(int fd, const QByteArray& bytes)
{
    const char* at = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, at, size_t(left));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        at += written;
        left -= written;
    }
    return true;
}

} // namespace

OutputFile::OutputFile(const QString& path, std::chrono::milliseconds readerWait)
    : m_path(path), m_readerWait(readerWait), m_atomic(path)
{
}

OutputFile::~OutputFile()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

bool OutputFile::open()
{
    if (const std::optional<struct stat> info = statOf(m_path)) {
        if (S_ISFIFO(info->st_mode) || S_ISCHR(info->st_mode) || S_ISBLK(info->st_mode))
            m_way = Way::Stream;
        else if (!S_ISREG(info->st_mode))
            return fail(QStringLiteral("it is neither a file nor a device that can be written"));
        else if (info->st_nlink > 1 || namesADescriptor(m_path))
            m_way = Way::Rewrite;
    }
    const bool opened =
        m_way == Way::Replace ? m_atomic.open(QIODevice::WriteOnly) || fail(m_atomic.errorString()) : openInPlace();
    return opened && m_gathered.open(QIODevice::WriteOnly);
}

// A pipe opened without blocking fails at once while nobody reads it; it is tried again
// until the wait is over, so that no command hangs on a pipe nobody will read.
bool OutputFile::openInPlace()
{
    const QByteArray native = QFile::encodeName(m_path);
    const Clock::time_point deadline = Clock::now() + m_readerWait;
    while ((m_fd = ::open(native.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)) < 0) {
        if (errno == EINTR)
            continue;
        if (errno != ENXIO)
            return fail(reasonOf(errno));
        if (Clock::now() >= deadline)
            return fail(QStringLiteral("it is a named pipe that no program is reading"));
        QThread::msleep(ReaderPoll.count());
    }
    ::fcntl(m_fd, F_SETFL, ::fcntl(m_fd, F_GETFL) & ~O_NONBLOCK);
    return true;
}

QIODevice& OutputFile::device()
{
    return m_gathered;
}

// The gathered bytes go out in one piece: into the temporary file that then takes the
// name, or into the file itself. Either file has its room reserved first.
bool OutputFile::commit()
{
    const QByteArray& bytes = m_gathered.data();
    const int fd = m_way == Way::Replace ? m_atomic.handle() : m_fd;
    if (m_way != Way::Stream) {
        if (const std::optional<QString> refused = reserve(fd, bytes.size()))
            return fail(*refused);
    }
    if (!writeAll(fd, bytes))
        return fail(reasonOf(errno));
    if (m_way == Way::Rewrite && (::ftruncate(fd, off_t(bytes.size())) != 0 || ::fdatasync(fd) != 0))
        return fail(reasonOf(errno));
    if (m_way == Way::Replace && !m_atomic.commit())
        return fail(m_atomic.errorString());
    return true;
}

bool OutputFile::fail(const QString& reason)
{
    m_error = reason;
    if (m_way == Way::Replace)
        m_atomic.cancelWriting();
    return false;
}

bool OutputFile::failed() const
{
    return !m_error.isEmpty();
}

QString OutputFile::errorText() const
{
    return QStringLiteral("Cannot write %1: %2").arg(QDir::toNativeSeparators(m_path), m_error);
}

void reportFileSizeLimit()
{
    std::signal(SIGXFSZ, SIG_IGN);
}

std::optional<QString> writeWholeFile(const QString& path, const QByteArray& bytes)
{
    OutputFile file(path);
    if (file.open() && file.device().write(bytes) == bytes.size() && file.commit())
        return std::nullopt;
    return file.errorText();
}

bool isSameFile(const QString& a, const QString& b)
{
    const std::optional<struct stat> first = statOf(a);
    const std::optional<struct stat> second = statOf(b);
    return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

std::optional<QByteArray> readSmallFile(const QString& path, qint64 maxBytes)
{
    const std::optional<struct stat> info = statOf(path);
    if (!info || !S_ISREG(info->st_mode) || info->st_size > maxBytes)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.read(maxBytes);
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

} // namespace tarn
