#include "numeric/OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QSaveFile>

#include <utility>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#endif

namespace numeric
{

OutputFile::OutputFile(const QString &path)
    : m_path(path)
{
}

OutputFile::~OutputFile() = default;

bool OutputFile::open()
{
    if (m_path.isEmpty())
        return false;
    const QFileInfo info(m_path);
    if (info.exists() && !info.isFile()) {
        // Renaming a file over a device would put a plain file in its place.
        m_device = std::make_unique<QFile>(m_path);
    } else {
        auto file = std::make_unique<QSaveFile>(m_path);
        file->setDirectWriteFallback(true);
        m_device = std::move(file);
    }
    return m_device->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
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
    m_failed = !m_device->flush() || m_failed; // close() and QSaveFile::commit() forget what fails here
    if (auto *const file = qobject_cast<QSaveFile *>(m_device.get())) {
        if (m_failed)
            file->cancelWriting();
        return file->commit() && !m_failed;
    }
    m_device->close();
    return m_device->error() == QFileDevice::NoError && !m_failed;
}

} // namespace numeric
