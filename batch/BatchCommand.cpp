#include "batch/BatchCommand.h"

#include "batch/JobRunner.h"
#include "batch/ParallelJobs.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTextStream>

namespace
{

/// The report of one of several jobs: "reports/all.json" and job "a.json" give "reports/all_a.json".
QString reportOf(const BatchOptions &options, const QString &job)
{
    if (options.report.isEmpty() || options.jobs.size() == 1)
        return options.report;
    const QFileInfo info(options.report);
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    return info.dir().filePath(info.completeBaseName() + QLatin1Char('_') + QFileInfo(job).completeBaseName() + suffix);
}

QVector<JobOrErrors> readJobs(const BatchOptions &options)
{
    QVector<JobOrErrors> jobs;
    for (const QString &file : options.jobs) {
        JobOrErrors job = readJob(file);
        if (!options.pictures.isEmpty())
            job.job.pictures = options.pictures;
        if (!options.report.isEmpty())
            job.job.report = reportOf(options, file);
        jobs.append(job);
    }
    return jobs;
}

/// Jobs that would write the same files are wrong, whichever comes first.
void findCollisions(QVector<JobOrErrors> *jobs)
{
    QHash<QString, int> writers;
    for (int i = 0; i < jobs->size(); ++i) {
        const Job &job = jobs->at(i).job;
        QStringList files = {job.resultFile, job.report};
        if (!job.pictures.isEmpty())
            files << QDir(job.pictures).filePath(QFileInfo(job.fileName).completeBaseName() + QLatin1String("_*.png"));
        for (const QString &file : qAsConst(files)) {
            if (file.isEmpty())
                continue;
            const QString path = QDir::cleanPath(QFileInfo(file).absoluteFilePath());
            const int first = writers.value(path, i);
            writers.insert(path, first);
            if (first != i)
                (*jobs)[i].errors << QStringLiteral("%1 would write %2 too").arg(jobs->at(first).job.fileName, file);
        }
    }
}

int runOne(const JobOrErrors &job, const BatchOptions &options, QTextStream *out, QTextStream *err, bool isTerminal)
{
    const JobResult result = runJob(job, {options.check, err, isTerminal});
    if (options.jobs.size() > 1)
        *out << "== " << job.job.fileName << '\n';
    *out << result.messages;
    if (options.check && result.outcome == JobOutcome::Done)
        *out << job.job.fileName << ": no mistakes\n";
    out->flush();
    for (const QString &error : result.errors)
        *err << "flokluk-batch: " << error << '\n';
    err->flush();
    return static_cast<int>(result.outcome);
}

} // namespace

int runBatchCommand(const BatchOptions &options, QTextStream *out, QTextStream *err, bool isTerminal)
{
    *out << options.answer;
    if (!options.answer.isEmpty())
        return static_cast<int>(JobOutcome::Done);
    if (!options.error.isEmpty()) {
        *err << "flokluk-batch: " << options.error << "; flokluk-batch --help says more\n";
        return static_cast<int>(JobOutcome::WrongJob);
    }
    QVector<JobOrErrors> jobs = readJobs(options);
    findCollisions(&jobs);
    if (options.processes > 1 && jobs.size() > 1)
        return runInParallel(jobs, options, out, err);
    int code = 0;
    for (const JobOrErrors &job : qAsConst(jobs))
        code = qMax(code, runOne(job, options, out, err, isTerminal));
    return code;
}
