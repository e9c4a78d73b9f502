#include "import/OutputFolder.h"

#include "import/ImportText.h"
#include "numeric/FileIdentity.h"
#include "numeric/TemporaryName.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace
{

constexpr char asideName[] = ".before"; // for the files whose places are taken

/// Over a file that has the name, which QFile::rename() does not do.
bool moved(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

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
    m_path = numeric::realPath(path);
    for (QFileInfo folder(m_path); !folder.exists() && !folder.isRoot(); folder = QFileInfo(folder.path()))
        m_made << folder.filePath();
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
        if (!numeric::isPlaceForFile(target(name)))
            return refuse(name, error);
    }
    if (!QDir().mkpath(pathOf(QLatin1String(asideName))))
        return refuse(QLatin1String(asideName), error);
    const numeric::HeldSignals held;
    for (int i = 0; i < names.size(); ++i) {
        if (replace(names[i]))
            continue;
        for (int before = i - 1; before >= 0; --before)
            restore(names[before]);
        return refuse(names[i], error);
    }
    m_isPublished = true;
    return true;
}

QString OutputFolder::target(const QString &name) const
{
    return m_path + QLatin1Char('/') + name;
}

bool OutputFolder::refuse(const QString &name, QString *error) const
{
    *error = ImportText::tr("cannot write %1").arg(QDir::toNativeSeparators(target(name)));
    return false;
}

QString OutputFolder::aside(const QString &name) const
{
    return pathOf(QLatin1String(asideName) + QLatin1Char('/') + name);
}

/// What stands there goes aside, and comes back when the new file cannot take its place.
bool OutputFolder::replace(const QString &name) const
{
    const QFileInfo there(target(name));
    const bool isThere = there.exists() || there.isSymLink();
    if (isThere && !moved(target(name), aside(name)))
        return false;
    if (moved(pathOf(name), target(name)))
        return true;
    if (isThere)
        moved(aside(name), target(name));
    return false;
}

void OutputFolder::restore(const QString &name) const
{
    const QFileInfo before(aside(name));
    if (before.exists() || before.isSymLink())
        moved(aside(name), target(name));
    else
        QFile::remove(target(name));
}
