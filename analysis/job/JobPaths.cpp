#include "analysis/job/JobPaths.h"

#include "numeric/FileIdentity.h"

#include <QDir>

namespace
{

template <class Change>
Job withPaths(Job job, Change change)
{
    const auto apply = [&change](QString *path) {
        if (!path->isEmpty())
            *path = change(*path);
    };
    for (Job::Reference &reference : job.references)
        apply(&reference.file);
    apply(&job.target.file);
    for (Job::Energy &energy : job.energies)
        apply(&energy.map);
    for (QString *const path : {&job.resultFile, &job.qualityFile, &job.pictures, &job.report})
        apply(path);
    return job;
}

} // namespace

Job withAbsolutePaths(const Job &job)
{
    // Which keeps "..": it may stand behind a link.
    return withPaths(job, [](const QString &path) { return QDir::current().absoluteFilePath(path); });
}

Job withPathsFrom(const QString &folder, const Job &job)
{
    const QDir from(numeric::realPath(folder));
    return withPaths(job, [&from](const QString &path) { return from.relativeFilePath(numeric::realPath(path)); });
}

QStringList resultFiles(const QString &result)
{
    return {result, numeric::pathBeside(result, QStringLiteral("HGAlpha")),
            numeric::pathBeside(result, QStringLiteral("HGThick"))};
}
