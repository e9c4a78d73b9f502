#include "numeric/StagedFile.h"

#include "numeric/FileIdentity.h"
#include "numeric/FileSet.h"
#include "numeric/Sha256.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace numeric
{

namespace
{

/// The system's words for the last failure.
QString systemProblem()
{
    return QString::fromStdString(std::system_category().message(errno));
}

QString words(std::errc problem)
{
    return QString::fromStdString(std::make_error_code(problem).message());
}

/// Puts what was written on the disk. A file system that cannot do this is no failure.
bool isSynced(const QFile &file)
{
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0 || errno == EINVAL || errno == ENOTSUP;
#else
    return file.isOpen();
#endif
}

bool replaceFile(const QString &from, const QString &to)
{
#ifdef Q_OS_UNIX
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
#else
    return (!QFile::exists(to) || QFile::remove(to)) && QFile::rename(from, to);
#endif
}

} // namespace

bool StagedFile::fail(const QString &problem)
{
    if (m_problem.isEmpty())
        m_problem = problem;
    return false;
}

QString StagedFile::problem() const
{
    if (!m_problem.isEmpty() || !m_file || m_file->error() == QFileDevice::NoError)
        return m_problem;
    const QString words = m_file->errorString();
    return words == QIODevice::tr("Unknown error") ? QString() : words;
}

QString StagedFile::newTemporaryPath() const
{
    static const char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    QString path = m_place + QLatin1Char('.');
    for (int i = 0; i < 6; ++i)
        path += QLatin1Char(letters[QRandomGenerator::system()->bounded(int(sizeof letters) - 1)]);
    return path;
}

bool StagedFile::open(QIODevice::OpenMode mode)
{
    m_place = realPath(m_path);
    const QFileInfo before(m_place);
    if (m_path.isEmpty() || before.isDir())
        return fail(words(std::errc::is_a_directory));
    if (before.exists() && !(before.isFile() && before.isWritable()))
        return fail(words(std::errc::permission_denied));
    if (!openUnnamed(mode) && !openNamed(mode))
        return false;
    if (before.exists())
        m_file->setPermissions(before.permissions());
    return true;
}

bool StagedFile::openNamed(QIODevice::OpenMode mode)
{
    m_name = std::make_unique<TemporaryName>(newTemporaryPath());
    m_file = std::make_unique<QFile>(m_name->path());
    if (m_file->open(QIODevice::ReadWrite | QIODevice::NewOnly | mode))
        return true;
    m_name->keep();
    return fail(m_file->errorString());
}

#ifdef O_TMPFILE

bool StagedFile::openUnnamed(QIODevice::OpenMode mode)
{
    constexpr mode_t permissions = 0666;
    const QByteArray folder = QFile::encodeName(QFileInfo(m_place).path());
    if (::access("/proc/self/fd", X_OK) != 0) // by which it gets a name
        return false;
    const int handle = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, permissions);
    if (handle < 0)
        return false;
    m_file = std::make_unique<QFile>();
    if (m_file->open(handle, QIODevice::ReadWrite | mode, QFile::AutoCloseHandle))
        return true;
    ::close(handle);
    return false;
}

bool StagedFile::takeTemporaryName()
{
    if (m_name)
        return true;
    auto name = std::make_unique<TemporaryName>(newTemporaryPath());
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(m_file->handle());
    const QByteArray path = QFile::encodeName(name->path());
    if (::linkat(AT_FDCWD, handle.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW) != 0) {
        name->keep();
        return fail(systemProblem());
    }
    m_name = std::move(name);
    return true;
}

#else

bool StagedFile::openUnnamed(QIODevice::OpenMode)
{
    return false;
}

bool StagedFile::takeTemporaryName()
{
    return true;
}

#endif

QByteArray StagedFile::sha256() const
{
    const QString unnamed = QStringLiteral("/proc/self/fd/%1").arg(m_file->handle());
    return sha256OfFile(m_name ? m_name->path() : unnamed);
}

bool StagedFile::flush()
{
    // A short write is what a full disk gives at first; the file has no words for it.
    const bool isWritten = m_file->flush() && m_file->error() == QFileDevice::NoError;
    return isWritten && (isSynced(*m_file) || fail(systemProblem()));
}

bool StagedFile::takePlace()
{
    m_file->close();
    if (!replaceFile(m_name->path(), m_place))
        return fail(systemProblem());
    m_name->keep();
    return true;
}

bool StagedFile::commit(FileSet *set)
{
    if (!flush())
        return false;
    if (!set)
        return takeTemporaryName() && takePlace();
    return set->add(std::move(*this));
}

} // namespace numeric
