#include "batch/OutputLocks.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

OutputLocks::~OutputLocks()
{
    const numeric::HeldSignals held;
    for (const Lock &lock : m_locks) {
        lock.name->keep(); // the next run may have it a moment from now
        lock.file->unlock();
    }
}

QString OutputLocks::take(const QStringList &files)
{
    const numeric::HeldSignals held;    // between a lock and its name
    constexpr int momentToFill = 10000; // ms, of which making a lock file and filling it takes next to none
    const auto isHeld = [this](const QString &path) {
        return std::any_of(m_locks.begin(), m_locks.end(),
                           [&path](const Lock &lock) { return lock.name->path() == path; });
    };
    for (const QString &path : files) {
        if (isHeld(path))
            continue;
        Lock lock{std::make_unique<QLockFile>(path), nullptr};
        qint64 process = 0;
        QString host, program;
        // Only the end of its process makes a lock a stale one, however long a run takes. An empty one belongs to a run
        // that was killed before it wrote its number.
        const QFileInfo info(path);
        lock.file->setStaleLockTime(info.exists() && info.size() == 0 ? momentToFill : 0);
        if (lock.file->tryLock(0)) {
            lock.name = std::make_unique<numeric::TemporaryName>(path);
            m_locks.push_back(std::move(lock));
        } else if (lock.file->error() == QLockFile::LockFailedError) {
            const bool isKnown = lock.file->getLockInfo(&process, &host, &program);
            return QStringLiteral("another run writes the same files now: %1 belongs to %2")
                .arg(path, isKnown ? QStringLiteral("process %1 on %2").arg(QString::number(process), host)
                                   : QStringLiteral("an unknown process"));
        }
    }
    return QString();
}
