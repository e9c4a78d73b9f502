#include "batch/BatchCommand.h"

#include "batch/BatchMessages.h"
#include "batch/Crate.h"
#include "batch/JobRunner.h"
#include "batch/OutputPaths.h"
#include "batch/ParallelJobs.h"
#include "batch/Repeat.h"
#include "batch/ReportFile.h"
#include "batch/SeriesTable.h"
#include "batch/SeriesTrend.h"
#include "batch/Verify.h"
#include "numeric/FileIdentity.h"
#include "numeric/OutputFile.h"

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

/// The outcome of one job for whoever started this program.
bool writeOutcome(const SeriesRow &row, const QString &path)
{
    return path.isEmpty() || numeric::writeFile(path, seriesRowToJson(row));
}

SeriesRow runOne(const JobOrErrors &job, const BatchOptions &options, QTextStream *out, QTextStream *err)
{
    SeriesRow row{job.job, 0, {}, {}, {}};
    const QString title = options.jobs.size() > 1 ? QStringLiteral("== %1\n").arg(job.job.fileName) : QString();
    if (options.skipDone && !options.check && job.errors.isEmpty() && isAlreadyDone(job.job, options.japanese)) {
        *out << title << job.job.fileName << ": done already, skipped\n";
        row.report = readReport(job.job.report).content;
        return row;
    }
    const JobResult result =
        runJob(job, {options.check, options.hash, options.isReported(), options.japanese, err, options.form});
    *out << title << result.messages;
    if (options.check && result.outcome == JobOutcome::Done)
        *out << job.job.fileName << ": no mistakes\n";
    out->flush();
    BatchMessages messages(err, options.form == ProgressForm::Json);
    messages.warning(job.job.fileName, result.warnings);
    messages.error(job.job.fileName, result.errors);
    return {job.job, static_cast<int>(result.outcome), result.errors, result.warnings, result.report};
}

QVector<SeriesRow> runAll(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out,
                          QTextStream *err)
{
    if (options.processes > 1 && jobs.size() > 1)
        return runInParallel(jobs, options, out, err);
    QVector<SeriesRow> rows;
    for (const JobOrErrors &job : jobs)
        rows.append(runOne(job, options, out, err));
    return rows;
}

/// What is made of all jobs together; the exit code.
int writeSeries(const QVector<SeriesRow> &rows, const BatchOptions &options, QTextStream *err)
{
    const auto write = [](const QString &path, const QByteArray &bytes) {
        return path.isEmpty() || (!bytes.isEmpty() && numeric::writeFile(path, bytes));
    };
    QStringList problems, warnings, written;
    if (!options.crate.isEmpty())
        QDir().mkpath(options.crate); // in which the table may stand
    for (const SeriesRow &row : rows) {
        if (!writeOutcome(row, options.outcomeFile))
            problems << QStringLiteral("cannot write %1").arg(options.outcomeFile);
    }
    if (!write(options.table, options.table.isEmpty() ? QByteArray() : seriesTable(rows)))
        problems << QStringLiteral("cannot write the table %1").arg(options.table);
    else
        written << options.table;
    if (!options.trend.isEmpty()) {
        const Trend trend = trendOf(rows);
        warnings += trend.warnings;
        if (!write(options.trend, trendPicture(trend, options.trend)))
            problems << QStringLiteral("cannot write the picture %1").arg(options.trend);
        else
            written << options.trend;
    }
    written.removeAll(QString());
    if (!options.crate.isEmpty())
        problems += writeCrate(rows, written, options.crate);
    BatchMessages messages(err, options.form == ProgressForm::Json);
    messages.warning(QString(), warnings);
    messages.error(QString(), problems);
    return static_cast<int>(problems.isEmpty() ? JobOutcome::Done : JobOutcome::CannotWrite);
}

/// A sentence for a file of all jobs together that cannot be made, before time is spent on them; empty: it can. The
/// folder of a crate is made.
QString folderMistake(const QStringList &files, const QString &crate)
{
    for (const QString &file : files) {
        const QString folder = QFileInfo(file).path();
        const bool isMade = !crate.isEmpty() && numeric::realPath(folder) == numeric::realPath(crate);
        if (!isMade && !QFileInfo(folder).isDir())
            return QStringLiteral("%1 cannot be written: there is no folder %2").arg(file, folder);
    }
    return QString();
}

int runJobs(const BatchOptions &options, QTextStream *out, QTextStream *err)
{
    QVector<JobOrErrors> jobs = readJobs(options);
    findOutputMistakes(&jobs);
    QStringList ofAll = {options.table, options.trend, options.outcomeFile, crateMetadata(options.crate)};
    ofAll.removeAll(QString());
    QString problem = outputMistake(jobs, ofAll);
    if (problem.isEmpty())
        problem = folderMistake(ofAll, options.crate);
    if (problem.isEmpty())
        problem = crateMistake(options.crate, ofAll);
    if (!problem.isEmpty()) {
        BatchMessages(err, options.form == ProgressForm::Json).error(QString(), {problem});
        return static_cast<int>(JobOutcome::WrongJob);
    }
    if (options.listOutputs)
        return listOutputs(jobs, options, out, err);
    const QVector<SeriesRow> rows = runAll(jobs, options, out, err);
    int code = options.isReported() ? writeSeries(rows, options, err) : 0;
    for (const SeriesRow &row : rows)
        code = qMax(code, row.code);
    return code;
}

} // namespace

int runBatchCommand(const BatchOptions &given, QTextStream *out, QTextStream *err, bool isTerminal)
{
    BatchOptions options = given;
    if (isTerminal && options.form == ProgressForm::Lines)
        options.form = ProgressForm::Bar;
    BatchMessages messages(err, options.form == ProgressForm::Json);
    if (!options.error.isEmpty()) {
        messages.error(QString(), {options.error + QLatin1String("; flokluk-batch --help says more")});
        return static_cast<int>(JobOutcome::WrongJob);
    }
    int code = 0;
    if (!options.answer.isEmpty())
        *out << options.answer;
    else if (!options.verify.isEmpty())
        code = static_cast<int>(verifyReport(options.verify, out, &messages));
    else if (!options.again.isEmpty())
        code = static_cast<int>(repeatReport(options.again, options, out, err));
    else
        code = runJobs(options, out, err);
    out->flush();
    if (out->status() == QTextStream::Ok)
        return code;
    messages.error(QString(), {QStringLiteral("cannot write to standard output")});
    return qMax(code, static_cast<int>(JobOutcome::CannotWrite));
}
