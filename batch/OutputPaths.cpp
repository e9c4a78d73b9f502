#include "batch/OutputPaths.h"

#include "analysis/job/JobPaths.h"
#include "batch/PanelPictures.h"
#include "numeric/FileIdentity.h"

#include <QFileInfo>
#include <QHash>

namespace
{

QString stemOf(const Job &job)
{
    return QFileInfo(job.fileName).completeBaseName();
}

QString lockOf(const QString &file)
{
    return file.isEmpty() ? QString() : numeric::realPath(file) + QLatin1String(".lock");
}

QString lockOfPictures(const Job &job)
{
    return job.pictures.isEmpty() ? QString()
                                  : lockOf(numeric::realPath(job.pictures) + QLatin1Char('.') + stemOf(job));
}

/// In groups, of which one file is enough to be told that it is taken.
QVector<QStringList> outputFiles(const Job &job)
{
    QStringList pictures = {lockOfPictures(job)};
    if (!job.pictures.isEmpty())
        pictures += pictureFiles(job.pictures, stemOf(job));
    QVector<QStringList> groups = {resultFiles(job.resultFile) << lockOf(job.resultFile),
                                   {job.qualityFile, lockOf(job.qualityFile)},
                                   {job.report, lockOf(job.report)},
                                   pictures};
    for (QStringList &group : groups)
        group.removeAll(QString());
    return groups;
}

class TakenPaths
{
public:
    void take(const QString &path, const QString &by) { m_users.insert(numeric::fileIdentity(path), by); }

    /// Why the first file of a group that cannot be written cannot; empty when all can, and are taken from now on.
    QString takeGroup(const QStringList &group, const QString &by)
    {
        for (const QString &path : group) {
            const QString user = numeric::isPlaceForFile(path) ? m_users.value(numeric::fileIdentity(path))
                                                               : QStringLiteral("no plain file");
            if (!user.isEmpty())
                return QStringLiteral("%1 cannot be written: it is %2").arg(path, user);
            take(path, by);
        }
        return QString();
    }

private:
    QHash<QString, QString> m_users;
};

TakenPaths pathsOfInputs(const QVector<JobOrErrors> &jobs)
{
    TakenPaths paths;
    for (const JobOrErrors &job : jobs) {
        for (const QString &file : inputFiles(job.job))
            paths.take(file, QStringLiteral("an input of %1").arg(job.job.fileName));
    }
    return paths;
}

} // namespace

QStringList inputFiles(const Job &job)
{
    QStringList files = {job.fileName, job.target.file};
    for (const Job::Reference &reference : job.references)
        files << reference.file;
    for (const Job::Energy &energy : job.energies)
        files << energy.map;
    files.removeAll(QString());
    return files;
}

QStringList lockFiles(const Job &job)
{
    QStringList files = {lockOf(job.resultFile), lockOf(job.qualityFile), lockOf(job.report), lockOfPictures(job)};
    files.removeAll(QString());
    return files;
}

void findOutputMistakes(QVector<JobOrErrors> *jobs)
{
    TakenPaths paths = pathsOfInputs(*jobs);
    for (JobOrErrors &job : *jobs) {
        for (const QStringList &group : outputFiles(job.job))
            job.errors << paths.takeGroup(group, QStringLiteral("an output of %1").arg(job.job.fileName));
        job.errors.removeAll(QString());
    }
}

QString outputMistake(const QVector<JobOrErrors> &jobs, const QStringList &files)
{
    TakenPaths paths = pathsOfInputs(jobs);
    for (const JobOrErrors &job : jobs) {
        for (const QStringList &group : outputFiles(job.job))
            paths.takeGroup(group, QStringLiteral("an output of %1").arg(job.job.fileName));
    }
    return paths.takeGroup(files, QStringLiteral("another output"));
}
