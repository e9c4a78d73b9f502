#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace numeric
{

/// A text file that appears as a whole or not at all: until commit() succeeds a file that was there before stays as
/// it was. Where no second file can stand beside it (a device, a pipe, a directory that is not writable) it is written
/// directly. Line ends are the platform's.
class OutputFile
{
public:
    explicit OutputFile(const QString &path);
    ~OutputFile();

    /// False when the file cannot be made or written; nothing has changed then.
    bool open();
    /// To write to between open() and commit(); failures show in commit().
    QIODevice *device() { return m_device.get(); }
    /// False when anything could not be written.
    [[nodiscard]] bool commit();

private:
    QString m_path;
    std::unique_ptr<QIODevice> m_device;
};

} // namespace numeric
