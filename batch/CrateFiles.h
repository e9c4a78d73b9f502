#pragma once

#include "numeric/FileSet.h"

#include <QSet>
#include <QString>
#include <QStringList>

/// Where the files of a crate stand, and the copies that are made of those from elsewhere.
class CrateFiles
{
public:
    /// `copies`: the paths within the crate that an earlier crate in this folder has copied there. What else lies in
    /// the folder is the user's, and stays.
    CrateFiles(const QString &folder, const QSet<QString> &copies);

    /// The path within the crate of a file that lies in it; empty for any other.
    QString inside(const QString &file) const;
    /// Keeps a file that lies in the crate, if it does, from being taken for a copy.
    void keep(const QString &file);

    struct Places {
        QStringList files;
        QString record;
    };
    /// The paths within the crate of files that refer to each other, and of one that only belongs to them (empty: there
    /// is none). Files that all lie in the crate stay where they are; else all are copied, to lie to each other as they
    /// did, into a folder `name`, with a number where that is taken.
    Places take(const QStringList &files, const QString &record, const QString &name);

    /// A file of the crate's own, together with which the copies take their places.
    bool publish(const QString &name, const QByteArray &contents);
    const QStringList &problems() const { return m_problems; }

private:
    bool isFree(const QString &part, const QStringList &names) const;
    QString freePart(const QString &name, const QStringList &names);
    void copy(const QString &from, const QString &to);

    QString m_folder;
    QString m_root; ///< the same without links
    QSet<QString> m_copies;
    QSet<QString> m_parts; ///< folders that have been given away
    numeric::FileSet m_files;
    QStringList m_problems;
};
