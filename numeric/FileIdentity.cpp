#include "numeric/FileIdentity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#endif

namespace numeric
{

namespace
{

/// What a symbolic link says, as it stands there; empty for anything else.
QString linkText(const QString &path)
{
#ifdef Q_OS_UNIX
    std::array<char, 4096> text;
    const ssize_t length = ::readlink(QFile::encodeName(path).constData(), text.data(), text.size());
    return length > 0 ? QFile::decodeName(QByteArray(text.data(), static_cast<int>(length))) : QString();
#else
    return QFile::symLinkTarget(path);
#endif
}

/// The path of a folder without links; of one that is missing from its nearest one that exists.
QString realFolder(const QString &path)
{
    QString canonical = QDir(path).canonicalPath();
    if (!canonical.isEmpty())
        return canonical;
    const QFileInfo info(path);
    if (info.path() == path)
        return path;
    // A folder that is missing is no link: ".." leads back out of it once it is made.
    return QDir::cleanPath(QDir(realFolder(info.path())).filePath(info.fileName()));
}

} // namespace

QString realPath(const QString &path)
{
    constexpr int mostLinks = 40; // as many as Linux follows
    QString real = path;
    for (int i = 0; i < mostLinks; ++i) {
        const QFileInfo info(real);
        const QString name = info.fileName();
        if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
            return realFolder(real);
        const QDir folder(realFolder(info.path()));
        real = folder.filePath(name);
        const QString target = linkText(real);
        if (target.isEmpty())
            break;
        real = folder.filePath(target);
    }
    return real;
}

QString fileIdentity(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return QStringLiteral("%1:%2").arg(status.st_dev).arg(status.st_ino);
#endif
    return realPath(path);
}

QString pathBeside(const QString &path, const QString &tag)
{
    if (path.isEmpty())
        return QString();
    const QFileInfo beside(path);
    return QStringLiteral("%1/%2_%3.%4")
        .arg(realFolder(beside.path()), beside.completeBaseName(), tag, beside.suffix());
}

bool isPlaceForFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return false;
#ifdef Q_OS_UNIX
    const QString folder = realFolder(info.path());
    return folder != QLatin1String("/dev") && folder != QLatin1String("/proc") &&
           !folder.startsWith(QLatin1String("/proc/"));
#else
    return true;
#endif
}

} // namespace numeric
