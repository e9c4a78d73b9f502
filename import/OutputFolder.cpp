#include "import/OutputFolder.h"

#include "import/ImportText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

OutputFolder::~OutputFolder()
{
    m_scratch.reset();
    if (m_isPublished)
        return;
    for (const QString &folder : qAsConst(m_made))
        QDir().rmdir(folder); // stays when somebody else has put something there
}

bool OutputFolder::open(const QString &path, QString *error)
{
    m_path = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    for (QFileInfo folder(m_path); !folder.exists() && !folder.isRoot(); folder = QFileInfo(folder.absolutePath()))
        m_made << folder.absoluteFilePath();
    if (QDir().mkpath(m_path)) {
        m_scratch = std::make_unique<QTemporaryDir>(m_path + QStringLiteral("/.import-XXXXXX"));
        if (m_scratch->isValid())
            return true;
    }
    *error = ImportText::tr("cannot write into %1").arg(QDir::toNativeSeparators(path));
    return false;
}

QString OutputFolder::pathOf(const QString &name) const
{
    return m_scratch->filePath(name);
}

bool OutputFolder::publish(const QStringList &names, QString *error)
{
    for (const QString &name : names) {
        const QByteArray from = QFile::encodeName(pathOf(name));
        const QByteArray to = QFile::encodeName(m_path + QLatin1Char('/') + name);
        if (std::rename(from.constData(), to.constData()) != 0) { // QFile::rename() does not write over
            *error = ImportText::tr("cannot write %1").arg(QDir::toNativeSeparators(QFile::decodeName(to)));
            return false;
        }
    }
    m_isPublished = true;
    return true;
}
