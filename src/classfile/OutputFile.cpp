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

// Room for the whole new content at the start of a file rewritten in place, asked of the
// disk and of the size limit (ulimit -f) before any byte of the file changes.
std::optional<QString> reserve(int fd, qint64 size)
{
    const int refused = size > 0 ? ::posix_fallocate(fd, 0, off_t(size)) : 0;
    if (refused == 0 || refused == EINVAL ||
        refused == EOPNOTSUPP) // a file system that cannot reserve is written as is
        return std::nullopt;
    return QStringLiteral("%1; the file is as it was").arg(reasonOf(refused));
}

bool writeAll(int fd, const char* at, qsizetype left)
{
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

// The bytes of a replacement go to its temporary file a piece at a time as they are
// made, so that memory holds one piece rather than the whole file. A write the disk or
// the size limit refuses fails the file, whose name still holds the old one.
class OutputFile::Spool final : public QIODevice
{
public:
    explicit Spool(OutputFile& file) : m_file(file) { m_piece.reserve(PieceBytes); }
    // Writes the piece in hand; false, with the file failed, when it is refused.
    bool drain()
    {
        if (!writeAll(m_file.m_atomic.handle(), m_piece.constData(), m_piece.size()))
            return m_file.fail(QStringLiteral("%1; the file is as it was").arg(reasonOf(errno)));
        m_piece.resize(0); // keeps its room for the next piece
        return true;
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        m_piece.append(data, size);
        if (m_piece.size() >= PieceBytes && !drain()) {
            setErrorString(m_file.m_error);
            return -1;
        }
        return size;
    }

private:
    static constexpr qsizetype PieceBytes = qsizetype(64) * 1024;
    OutputFile& m_file;
    QByteArray m_piece;
};

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
    if (m_way != Way::Replace)
        return openInPlace() && m_gathered.open(QIODevice::WriteOnly);
    if (!m_atomic.open(QIODevice::WriteOnly))
        return fail(m_atomic.errorString());
    m_spool = std::make_unique<Spool>(*this);
    return m_spool->open(QIODevice::WriteOnly | QIODevice::Unbuffered);
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
    return m_spool ? static_cast<QIODevice&>(*m_spool) : m_gathered;
}

// A replacement writes its last piece and takes the name. Gathered bytes go out in one
// piece into the file itself, a regular file having its room reserved first.
bool OutputFile::commit()
{
    if (m_way == Way::Replace)
        return m_spool->drain() && (m_atomic.commit() || fail(m_atomic.errorString()));
    const QByteArray& bytes = m_gathered.data();
    if (m_way == Way::Rewrite) {
        if (const std::optional<QString> refused = reserve(m_fd, bytes.size()))
            return fail(*refused);
    }
    if (!writeAll(m_fd, bytes.constData(), bytes.size()))
        return fail(reasonOf(errno));
    if (m_way == Way::Rewrite && (::ftruncate(m_fd, off_t(bytes.size())) != 0 || ::fdatasync(m_fd) != 0))
        return fail(reasonOf(errno));
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
