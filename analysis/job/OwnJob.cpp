#include "analysis/job/OwnJob.h"

#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"
#include "version/Version.h"

bool isOwnJob(const QString &path)
{
    const JobOrErrors read = readJob(path);
    return read.errors.isEmpty() && read.job.program.startsWith(QLatin1String("flokluk "));
}

bool writeOwnJob(Job job, const QString &path, numeric::FileSet *set)
{
    job.program = versionLine(QStringLiteral("flokluk"));
    numeric::OutputFile file(path, set);
    return file.open() && file.write(job.toJson()) && file.commit();
}
