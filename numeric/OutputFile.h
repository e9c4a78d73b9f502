#pragma once

#include "numeric/StagedFile.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <memory>

namespace numeric
{

class FileSet;

/// A text file that appears as a whole or not at all: until commit() succeeds a file that was there before stays as
/// it was. Where no second file can stand beside it (a device, a pipe, a directory that is not writable) it is written
/// directly. Line ends are the platform's.
class OutputFile
{
public:
    /// With a set the file takes its place with the others of the set, and nothing is ever written directly.
    explicit OutputFile(const QString &path, FileSet *set = nullptr);

    /// False when the file cannot be made or written; nothing has changed then.
    bool open();
    /// Between open() and commit(). The disk is set to work on large amounts at once, so that commit() has less to wait
    /// for. False when not all of it could be written; commit() knows.
    bool write(const char *data, qint64 size);
    bool write(const QByteArray &text) { return write(text.constData(), text.size()); }
    /// False when anything could not be written.
    [[nodiscard]] bool commit();

private:
    bool openDirectly();

    FileSet *m_set;
    StagedFile m_staged;
    std::unique_ptr<QFile> m_direct;
    QFile *m_device = nullptr; ///< of the two the one that is written to
    qint64 m_handedToDisk = 0;
    bool m_failed = false;
};

/// A whole file at once, as an OutputFile of the set. False when it could not be written.
[[nodiscard]] bool writeFile(const QString &path, const QByteArray &text, FileSet *set = nullptr);

} // namespace numeric
