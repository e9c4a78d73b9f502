#include "batch/OutputFolders.h"

#include "analysis/job/Job.h"

#include <QDir>
#include <QFileInfo>

namespace
{

/// Of the absolute path of an output; empty for none.
QString folderOf(const QString &file)
{
    return file.isEmpty() ? file : QFileInfo(file).absolutePath();
}

/// Whether the nearest of the folders above that exists takes a new one. A link into nothing does not.
bool canBeMade(const QString &folder)
{
    QFileInfo info(folder);
    while (!info.exists() && !info.isSymLink() && !info.isRoot())
        info.setFile(info.absolutePath());
    return info.isDir() && info.isWritable();
}

} // namespace

QStringList makeOutputFolders(const Job &job, bool checkOnly)
{
    QStringList folders = {folderOf(job.resultFile), folderOf(job.qualityFile), job.pictures, folderOf(job.report)};
    folders.removeAll(QString());
    folders.removeDuplicates();
    QStringList problems;
    for (const QString &folder : qAsConst(folders)) {
        if (!QFileInfo(folder).isDir() && !(checkOnly ? canBeMade(folder) : QDir().mkpath(folder)))
            problems << QStringLiteral("cannot make the folder %1").arg(folder);
    }
    return problems;
}
