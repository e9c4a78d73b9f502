#include "numeric/OutputFile.h"

#include <QFileInfo>
#include <QIODevice>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

namespace numeric
{

OutputFile::OutputFile(const QString &path, FileSet *set)
    : m_set(set)
    , m_staged(path)
{
}

bool OutputFile::open()
{
    const QFileInfo info(m_staged.path());
    const bool isFile = !info.exists() || info.isFile();
    if (isFile && m_staged.open(QIODevice::Text))
        m_device = m_staged.device();
    if (m_device != nullptr || m_set != nullptr || !info.exists())
        return m_device != nullptr;
    // Renaming a file over a device would put a plain file in its place.
    const QFileInfo folder(QFileInfo(m_staged.place()).path());
    return (!isFile || !folder.isWritable()) && openDirectly();
}

bool OutputFile::openDirectly()
{
    m_direct = std::make_unique<QFile>(m_staged.path());
    m_device = m_direct.get();
    return m_direct->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
}

bool OutputFile::write(const char *data, qint64 size)
{
    // The first write that meets a full disk may be a short one, which the device does not take for an error.
    m_failed = m_failed || m_device->write(data, size) != size;
    if (m_failed)
        return false;
#ifdef Q_OS_LINUX
    constexpr qint64 piece = qint64(1) << 23;
    const qint64 written = m_device->pos();
    if (written - m_handedToDisk >= piece) {
        // Only starts the transfer, and only advises: what it returns does not matter.
        sync_file_range(m_device->handle(), m_handedToDisk, written - m_handedToDisk, SYNC_FILE_RANGE_WRITE);
        m_handedToDisk = written;
    }
#endif
    return true;
}

bool OutputFile::commit()
{
    if (!m_direct)
        return !m_failed && m_staged.commit(m_set);
    m_failed = !m_direct->flush() || m_failed; // close() forgets what fails here
    m_direct->close();
    return m_direct->error() == QFileDevice::NoError && !m_failed;
}

bool writeFile(const QString &path, const QByteArray &text, FileSet *set)
{
    OutputFile file(path, set);
    return file.open() && file.write(text) && file.commit();
}

} // namespace numeric
