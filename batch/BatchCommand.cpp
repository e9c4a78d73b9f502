#include "batch/BatchCommand.h"

#include "batch/JobRunner.h"
#include "batch/OutputPaths.h"
#include "batch/ParallelJobs.h"
#include "batch/Verify.h"

#include <QDir>
#include <QFileInfo>
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
        job.job.lenient = job.job.lenient || options.lenient;
        jobs.append(job);
    }
    return jobs;
}

int runOne(const JobOrErrors &job, const BatchOptions &options, QTextStream *out, QTextStream *err, bool isTerminal)
{
    const JobResult result = runJob(job, {options.check, options.hash, err, isTerminal});
    if (options.jobs.size() > 1)
        *out << "== " << job.job.fileName << '\n';
    *out << result.messages;
    if (options.check && result.outcome == JobOutcome::Done)
        *out << job.job.fileName << ": no mistakes\n";
    out->flush();
    for (const QString &warning : result.warnings)
        *err << "flokluk-batch: warning: " << warning << '\n';
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
    if (!options.verify.isEmpty())
        return static_cast<int>(verifyReport(options.verify, out, err));
    QVector<JobOrErrors> jobs = readJobs(options);
    findOutputMistakes(&jobs);
    int code = 0;
    if (options.processes > 1 && jobs.size() > 1) {
        code = runInParallel(jobs, options, out, err);
    } else {
        for (const JobOrErrors &job : qAsConst(jobs))
            code = qMax(code, runOne(job, options, out, err, isTerminal));
    }
    if (out->status() == QTextStream::Ok)
        return code;
    *err << "flokluk-batch: cannot write to standard output\n";
    return qMax(code, static_cast<int>(JobOutcome::CannotWrite));
}
