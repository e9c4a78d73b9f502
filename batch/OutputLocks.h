#pragma once

#include "numeric/TemporaryName.h"

#include <QLockFile>
#include <QStringList>

#include <memory>
#include <vector>

/// Keeps other runs from writing the same files for as long as it lives. A lock whose process is gone is taken over; of
/// a process on another machine that cannot be known, and its lock stays.
class OutputLocks
{
public:
    ~OutputLocks();

    /// Takes these lock files, but for those that it has; see lockFiles(). Where one cannot be made, nothing can be
    /// written either, and that is left to be found. One sentence when another run has one of them, else empty.
    QString take(const QStringList &files);

private:
    struct Lock {
        std::unique_ptr<QLockFile> file;
        std::unique_ptr<numeric::TemporaryName> name; ///< that goes with a signal
    };
    std::vector<Lock> m_locks;
};
