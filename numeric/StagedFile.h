#pragma once

#include "numeric/TemporaryName.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>

namespace numeric
{

class FileSet;

/// A file that appears as a whole or not at all: it is written beside the one whose place it takes in the end. Until
/// then nothing is seen of it where the file system can do that; elsewhere it has the name of the other one and six
/// random letters. It gets the permissions of the one before; where that one is a link, the file behind it is replaced.
class StagedFile
{
public:
    explicit StagedFile(const QString &path)
        : m_path(path)
    {
    }

    /// `mode`: Text or nothing. False where something other than a plain file that may be written has the name, or
    /// nothing can be made beside it.
    bool open(QIODevice::OpenMode mode = {});
    /// To be written to, between open() and commit().
    QFile *device() { return m_file.get(); }
    /// Puts all that was written on the disk, then in its place; with a set it waits for FileSet::publish(). False when
    /// not all of it could be written, and then, or without commit(), the file before is as it was.
    [[nodiscard]] bool commit(FileSet *set = nullptr);

    /// Why something failed, in the system's words; empty where it has none: when there was not enough room for all.
    QString problem() const;
    const QString &path() const { return m_path; }
    /// The path of the file whose place it takes, without links.
    const QString &place() const { return m_place; }

    /// What was written, see sha256OfFile(); after flush().
    QByteArray sha256() const;

    /// The steps of commit(): all is written and on the disk; it has a name beside the file's; it has the file's.
    bool flush();
    bool takeTemporaryName();
    bool takePlace();

private:
    bool openUnnamed(QIODevice::OpenMode mode);
    bool openNamed(QIODevice::OpenMode mode);
    QString newTemporaryPath() const;
    bool fail(const QString &problem);

    QString m_path;
    QString m_place;
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<TemporaryName> m_name; ///< none while the file has no name
    QString m_problem;
};

} // namespace numeric
