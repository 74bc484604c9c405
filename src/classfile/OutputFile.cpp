#include "OutputFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace tarn
{

namespace
{

std::optional<struct stat> statOf(const QString& path)
{
    struct stat info {
    };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return info;
}

// Replacing a node that is not a plain file of one link would cut its links or turn
// a device or a pipe into a regular file; /dev and /proc paths name another file's
// open descriptor, whose reader would never see a replacement.
bool mustWriteInPlace(const QString& path)
{
    const std::optional<struct stat> info = statOf(path);
    if (!info)
        return false;
    if (!S_ISREG(info->st_mode) || info->st_nlink > 1)
        return true;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    return absolute.startsWith(QLatin1String("/dev/")) || absolute.startsWith(QLatin1String("/proc/"));
}

} // namespace

OutputFile::OutputFile(const QString& path) : m_path(path), m_atomic(path) {}

OutputFile::~OutputFile() = default;

bool OutputFile::open()
{
    m_inPlace = mustWriteInPlace(m_path);
    const bool opened = m_inPlace ? m_gathered.open(QIODevice::WriteOnly) : m_atomic.open(QIODevice::WriteOnly);
    if (!opened)
        m_error = m_atomic.errorString();
    return opened;
}

QIODevice& OutputFile::device()
{
    return m_inPlace ? static_cast<QIODevice&>(m_gathered) : m_atomic;
}

bool OutputFile::commit()
{
    if (m_inPlace)
        return writeInPlace();
    // The last buffered bytes are written by the flush; the commit would not report it.
    if (m_atomic.error() == QFileDevice::NoError && m_atomic.flush() && m_atomic.commit())
        return true;
    m_error = m_atomic.errorString();
    m_atomic.cancelWriting();
    return false;
}

bool OutputFile::writeInPlace()
{
    QFile file(m_path);
    const QByteArray& bytes = m_gathered.data();
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()) {
        file.close();
        if (file.error() == QFileDevice::NoError)
            return true;
    }
    m_error = file.errorString();
    return false;
}

bool OutputFile::failed() const
{
    return !m_error.isEmpty() || (!m_inPlace && m_atomic.error() != QFileDevice::NoError);
}

QString OutputFile::errorText() const
{
    const QString reason = m_error.isEmpty() ? m_atomic.errorString() : m_error;
    return QStringLiteral("Cannot write %1: %2").arg(QDir::toNativeSeparators(m_path), reason);
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

} // namespace tarn
