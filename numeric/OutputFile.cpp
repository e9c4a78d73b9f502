#include "numeric/OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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

bool OutputFile::commit()
{
    if (auto *const file = qobject_cast<QSaveFile *>(m_device.get()))
        return file->commit();
    auto *const file = static_cast<QFile *>(m_device.get());
    file->close(); // writes what is left, so that an error shows
    return file->error() == QFileDevice::NoError;
}

} // namespace numeric
