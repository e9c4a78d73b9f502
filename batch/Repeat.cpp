#include "batch/Repeat.h"

#include "analysis/job/JobPaths.h"
#include "batch/BatchMessages.h"
#include "batch/BatchOptions.h"
#include "batch/JobRunner.h"
#include "batch/MovedInputs.h"
#include "batch/ReportFile.h"
#include "numeric/TemporaryName.h"
#include "version/Version.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QTextStream>

namespace
{

/// A written file and its sum.
struct Written {
    QString path;
    QString sha256;
};

QVector<Written> filesOf(const QJsonObject &report)
{
    QVector<Written> files;
    for (const QJsonValue &value : report.value("files").toArray())
        files.append({value.toObject().value("path").toString(), value.toObject().value("sha256").toString()});
    return files;
}

/// The job with its outputs in another folder, under their own names: one folder each, as several may have one name.
Job writingInto(const Job &job, const QString &folder)
{
    const auto moved = [&folder](const QString &path, const char *part) {
        return path.isEmpty()
                   ? path
                   : QDir(folder).filePath(QLatin1String(part) + QLatin1Char('/') + QFileInfo(path).fileName());
    };
    Job other = job;
    other.resultFile = moved(job.resultFile, "result");
    other.qualityFile = moved(job.qualityFile, "quality");
    other.report = moved(job.report, "report");
    if (!job.pictures.isEmpty())
        other.pictures = QDir(folder).filePath(QStringLiteral("pictures"));
    return other;
}

JobResult runElsewhere(const JobOrErrors &job, bool isJapanese, const BatchOptions &options, QTextStream *err)
{
    const numeric::TemporaryFolder folder;
    JobResult result;
    if (!folder.isValid()) {
        result.outcome = JobOutcome::CannotWrite;
        result.errors << QStringLiteral("no temporary folder can be made");
        return result;
    }
    RunOptions run;
    run.isReported = true;
    run.isJapanese = isJapanese;
    run.progress = err;
    run.form = options.form;
    return runJob({writingInto(job.job, folder.path()), job.errors}, run);
}

/// The job that a report describes, with all settings as they were, whatever the program starts with today.
JobOrErrors jobOf(const ReportFile &report)
{
    JobOrErrors job;
    job.job = jobFromJson(report.content.value("asRun").toObject(), QDir(), &job.errors);
    job.job.settings = report.content.value("settings").toObject();
    job.job.fileName = report.content.value("job").toString();
    return job;
}

/// A sentence for each file that differs. Both runs write in the same order; where they have written another number of
/// files the names tell which belong together.
QStringList differences(const QVector<Written> &before, QVector<Written> now)
{
    QStringList found;
    const bool areAsMany = before.size() == now.size();
    for (int i = 0; i < before.size(); ++i) {
        const QString name = QFileInfo(before[i].path).fileName();
        int other = areAsMany ? i : 0;
        while (!areAsMany && other < now.size() && QFileInfo(now[other].path).fileName() != name)
            ++other;
        if (other >= now.size())
            found << QStringLiteral("%1 was not written this time").arg(before[i].path);
        else if (now[other].sha256 != before[i].sha256)
            found << QStringLiteral("%1 has other contents this time").arg(before[i].path);
        if (!areAsMany && other < now.size())
            now.remove(other);
    }
    for (int i = 0; !areAsMany && i < now.size(); ++i)
        found << QStringLiteral("%1 was not written by the run").arg(QFileInfo(now[i].path).fileName());
    return found;
}

/// What a report says of the analysis, without the paths of files and the job's own path, which a repetition has
/// written otherwise.
QJsonObject findingsOf(const QJsonObject &report)
{
    QJsonObject found;
    for (const char *const key :
         {"edge", "references", "target", "map", "regions", "energyShift", "warnings", "errors"})
        found.insert(QLatin1String(key), report.value(QLatin1String(key)));
    QJsonObject target = found.value("target").toObject();
    target.remove(QStringLiteral("file"));
    found.insert("target", target);
    QJsonArray references, errors;
    for (const QJsonValue &value : found.value("references").toArray()) {
        QJsonObject reference = value.toObject();
        reference.remove(QStringLiteral("file"));
        references.append(reference);
    }
    found.insert("references", references);
    const QString job = QFileInfo(report.value("job").toString()).fileName() + QLatin1String(": ");
    for (const QJsonValue &value : found.value("errors").toArray()) {
        const QString error = value.toString();
        const int name = error.indexOf(job);
        errors.append(name < 0 ? error : error.mid(name + job.size()));
    }
    found.insert("errors", errors);
    return found;
}

/// The keys of two reports under which they say other things.
QStringList differentFindings(const QJsonObject &before, const QJsonObject &now)
{
    const QJsonObject then = findingsOf(before), today = findingsOf(now);
    QStringList keys;
    for (const QString &key : then.keys()) {
        if (then.value(key) != today.value(key))
            keys << key;
    }
    return keys;
}

/// The files that a job writes, without those that only its run knows.
QStringList knownOutputs(const Job &job)
{
    QStringList files;
    const QString folder = QFileInfo(job.resultFile).path();
    for (const QString &file : job.resultFile.isEmpty() ? QStringList() : resultFiles(job.resultFile)) {
        const QString name = QFileInfo(file).fileName();
        files << (folder == QLatin1String(".") ? name : QDir(folder).filePath(name)); // as the job has it
    }
    for (const QString &file : {job.qualityFile, job.report}) {
        if (!file.isEmpty())
            files << file;
    }
    return files;
}

} // namespace

Verification repeatReport(const QString &path, const BatchOptions &options, QTextStream *out, QTextStream *err)
{
    BatchMessages messages(err, options.form == ProgressForm::Json);
    ReportFile report = readReport(path);
    if (!report.content.value("asRun").isObject()) {
        messages.errorIn(path, {QStringLiteral("this is no report of a run that could be repeated")});
        return Verification::NoReport;
    }
    const QString version = report.content.value("program").toString();
    const QString here = versionLine(QStringLiteral("flokluk-batch"));
    if (version != here)
        messages.warningIn(path, {QStringLiteral("the run was one of %1, this is %2").arg(version, here)});
    messages.warningIn(path, followMovedInputs(&report));
    const QStringList changed = changedInputs(report);
    messages.errorIn(path, changed);

    const bool isJapanese = report.content.value("language") == QJsonValue("ja");
    const JobResult result = runElsewhere(jobOf(report), isJapanese, options, err);
    QStringList different = differences(filesOf(report.content), filesOf(result.report));
    const QStringList keys = differentFindings(report.content, result.report);
    if (!keys.isEmpty())
        different
            << QStringLiteral("the report says something else this time under %1").arg(keys.join(QLatin1String(", ")));
    if (result.report.isEmpty())
        different = QStringList(QStringLiteral("the run cannot be repeated"));
    const bool isRefusal = !report.content.value("errors").toArray().isEmpty();
    messages.error(path, isRefusal ? QStringList() : result.errors);
    messages.errorIn(path, different);
    const auto verdict = [&](const char *what, bool isSame, int count, const char *more) {
        *out << path << ": the " << what << (isSame ? " are the same" : " are not the same");
        if (isSame)
            *out << " (" << count << " files" << more << ')';
        *out << '\n';
    };
    verdict("inputs", changed.isEmpty(), report.content.value("inputs").toArray().size(), "");
    verdict("results", different.isEmpty(), filesOf(report.content).size(), " and what the report says");
    return changed.isEmpty() && different.isEmpty() ? Verification::Good : Verification::NotThatRun;
}

bool isReportJapanese(const QString &path)
{
    return readReport(path).content.value("language") == QJsonValue("ja");
}

int listOutputs(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out, QTextStream *err)
{
    int code = 0;
    BatchMessages messages(err, options.form == ProgressForm::Json);
    for (const JobOrErrors &job : jobs) {
        QStringList files = knownOutputs(job.job);
        QStringList errors = job.errors;
        errors.replaceInStrings(QRegularExpression(QStringLiteral("^")), job.job.fileName + QLatin1String(": "));
        auto outcome = errors.isEmpty() ? JobOutcome::Done : JobOutcome::WrongJob;
        if (outcome == JobOutcome::Done && !job.job.pictures.isEmpty()) {
            const JobResult result = runElsewhere(job, options.japanese, options, err);
            errors = result.errors;
            outcome = result.outcome;
            for (const Written &file : filesOf(result.report)) {
                const QFileInfo info(file.path);
                if (info.suffix() == QLatin1String("png") && info.dir().dirName() == QLatin1String("pictures"))
                    files << QDir(job.job.pictures).filePath(info.fileName());
            }
        }
        messages.error(job.job.fileName, errors);
        code = qMax(code, static_cast<int>(outcome));
        for (const QString &file : qAsConst(files)) {
            if (outcome != JobOutcome::WrongJob)
                *out << file << '\n';
        }
    }
    return code;
}
