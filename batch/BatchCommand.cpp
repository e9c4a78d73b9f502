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
        job.job.lenient = job.job.lenient || options.lenient;
        jobs.append(job);
    }
    return jobs;
}

QStringList inputsOf(const Job &job)
{
    QStringList files = {job.fileName, job.target.file};
    for (const Job::Reference &reference : job.references)
        files << reference.file;
    for (const Job::Energy &energy : job.energies)
        files << energy.map;
    files.removeAll(QString());
    return files;
}

/// The pictures as one pattern, without the histograms: they are named after the result file.
QStringList outputsOf(const Job &job)
{
    QStringList files = {job.resultFile, job.report};
    if (!job.pictures.isEmpty())
        files << QDir(job.pictures).filePath(QFileInfo(job.fileName).completeBaseName() + QLatin1String("_*.png"));
    files.removeAll(QString());
    return files;
}

/// The same text for every name of a file.
QString identity(const QString &file)
{
    const QFileInfo info(file);
    const QString canonical = info.canonicalFilePath(); // empty when there is no such file
    return canonical.isEmpty() ? QDir::cleanPath(info.absoluteFilePath()) : canonical;
}

/// A job that would overwrite what any of the jobs reads, or what it or an earlier one writes, is wrong.
void findCollisions(QVector<JobOrErrors> *jobs)
{
    QHash<QString, QString> taken;
    for (const JobOrErrors &job : qAsConst(*jobs)) {
        for (const QString &file : inputsOf(job.job))
            taken.insert(identity(file), QStringLiteral("an input of %1").arg(job.job.fileName));
    }
    for (JobOrErrors &job : *jobs) {
        for (const QString &file : outputsOf(job.job)) {
            const QFileInfo info(file);
            if (info.exists() && !info.isFile()) // a device takes everything
                continue;
            const QString path = identity(file);
            if (taken.contains(path))
                job.errors << QStringLiteral("%1 cannot be written: it is %2").arg(file, taken.value(path));
            else
                taken.insert(path, QStringLiteral("an output of %1").arg(job.job.fileName));
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
    QVector<JobOrErrors> jobs = readJobs(options);
    findCollisions(&jobs);
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
