#include "analysis/job/OwnJob.h"

#include "analysis/job/JsonSum.h"
#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"
#include "version/Version.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace
{

QJsonObject ownJob(Job job)
{
    job.program = versionLine(QStringLiteral("flokluk"));
    return withSum(QJsonDocument::fromJson(job.toJson()).object());
}

/// What a job says, whoever wrote it.
QJsonObject contentsOf(QJsonObject job)
{
    job.remove(QStringLiteral("program"));
    job.remove(QStringLiteral("sum"));
    return job;
}

} // namespace

JobPlace placeForJob(const QString &path, const Job &job)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return JobPlace::Free;
    QStringList mistakes;
    const QJsonObject there = readJsonObject(path, QStringLiteral("job"), &mistakes);
    if (!mistakes.isEmpty() || !there.value("program").toString().startsWith(QLatin1String("flokluk ")))
        return JobPlace::Foreign;
    const bool isAsWritten = there.value("sum").toString() == sumOf(there);
    return isAsWritten || contentsOf(there) == contentsOf(ownJob(job)) ? JobPlace::Free : JobPlace::Edited;
}

bool writeOwnJob(const Job &job, const QString &path, numeric::FileSet *set)
{
    return numeric::writeFile(path, QJsonDocument(ownJob(job)).toJson(), set);
}
