#include "numeric/FileSet.h"

#include <QFileInfo>
#include <QSet>

#include <utility>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace numeric
{

bool FileSet::add(StagedFile file)
{
    const QByteArray sum = m_isHashed ? file.sha256() : QByteArray();
    if (m_isHashed && sum.isEmpty())
        return false;
    m_members.append({file.place(), file.device()->size(), sum});
    m_files.push_back(std::move(file));
    return true;
}

void FileSet::clear()
{
    m_files.clear();
    m_members.clear();
}

bool FileSet::take(StagedFile *file, bool (StagedFile::*step)())
{
    if ((file->*step)())
        return true;
    m_problem = QStringLiteral("cannot write %1: %2").arg(file->path(), file->problem());
    m_files.clear();
    return false;
}

/// The new names are on the disk. A file system that cannot do this keeps them where it can.
void FileSet::syncFolders(std::size_t begin, std::size_t end) const
{
#ifdef Q_OS_UNIX
    QSet<QString> folders;
    for (std::size_t i = begin; i < end; ++i)
        folders.insert(QFileInfo(m_files[i].place()).path());
    for (const QString &folder : qAsConst(folders)) {
        const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (handle < 0)
            continue;
        ::fsync(handle);
        ::close(handle);
    }
#endif
}

bool FileSet::publish()
{
    const HeldSignals held;
    for (StagedFile &file : m_files) {
        if (!take(&file, &StagedFile::takeTemporaryName))
            return false;
    }
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        if (i + 1 == m_files.size())
            syncFolders(0, i);
        if (!take(&m_files[i], &StagedFile::takePlace))
            return false;
    }
    if (!m_files.empty())
        syncFolders(m_files.size() - 1, m_files.size());
    m_files.clear();
    return true;
}

} // namespace numeric
