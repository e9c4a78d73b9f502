#pragma once

#include "numeric/StagedFile.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <vector>

namespace numeric
{

/// Files that belong together: each is written beside the one whose place it takes, and when all of them are on the
/// disk they take their places one right after the other.
class FileSet
{
public:
    struct Member {
        QString place; ///< the path without links
        qint64 size = 0;
        QByteArray sha256; ///< hexadecimal; empty unless asked for
    };

    /// `isHashed`: what is written is also summed up.
    explicit FileSet(bool isHashed = false)
        : m_isHashed(isHashed)
    {
    }

    /// Takes a file that was flushed. False when it cannot be read again.
    bool add(StagedFile file);
    /// What was added, in that order; stays when the files have taken their places.
    const QVector<Member> &members() const { return m_members; }
    bool isEmpty() const { return m_members.isEmpty(); }
    /// None of the files that wait takes its place.
    void clear();

    /// In the order in which they were added; the folders of all others are on the disk before the last file follows.
    /// A signal waits until it is done. False when one of them could not: those after it are dropped and the files in
    /// their places are as they were. See problem().
    [[nodiscard]] bool publish();
    /// One sentence.
    const QString &problem() const { return m_problem; }

private:
    bool take(StagedFile *file, bool (StagedFile::*step)());
    void syncFolders(std::size_t begin, std::size_t end) const;

    bool m_isHashed;
    std::vector<StagedFile> m_files;
    QVector<Member> m_members;
    QString m_problem;
};

} // namespace numeric
