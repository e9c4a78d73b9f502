#include "series/JobsCommand.h"

#include "analysis/job/JobPaths.h"
#include "analysis/job/OwnJob.h"
#include "numeric/FileSet.h"
#include "series/JobTemplate.h"
#include "version/Version.h"

#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

namespace
{

enum ExitCode { Done = 0, Refused = 1, Wrong = 2, CannotWrite = 3 };

int fail(int code, const QStringList &problems, QTextStream *err)
{
    for (const QString &problem : problems)
        *err << "flokluk-jobs: " << problem << '\n';
    err->flush();
    return code;
}

int writeJobs(const QVector<FolderJob> &jobs, const QString &out, QTextStream *err)
{
    QStringList problems;
    for (const FolderJob &job : jobs) {
        const JobPlace place = placeForJob(job.file, job.job);
        if (place == JobPlace::Foreign)
            problems << QStringLiteral("%1 is there and no job that this program has written").arg(job.file);
        else if (place == JobPlace::Edited)
            problems << QStringLiteral("%1 has been edited since it was written, or an early version wrote it: rename "
                                       "or delete it, or name another folder with --out")
                            .arg(job.file);
    }
    if (!problems.isEmpty())
        return fail(Refused, problems, err);
    if (!QDir().mkpath(out))
        return fail(CannotWrite, {QStringLiteral("cannot make the folder %1").arg(out)}, err);
    numeric::FileSet set;
    for (const FolderJob &job : jobs) {
        if (!writeOwnJob(job.job, job.file, &set))
            return fail(CannotWrite, {QStringLiteral("cannot write %1").arg(job.file)}, err);
    }
    return set.publish() ? Done : fail(CannotWrite, {set.problem()}, err);
}

/// `words`: the template and folders.
int makeJobs(QStringList words, const QString &into, bool isRelative, QTextStream *out, QTextStream *err)
{
    const QString templateFile = words.takeFirst();
    QStringList problems;
    const QStringList folders = foldersOf(words, &problems);
    if (!problems.isEmpty())
        return fail(Refused, problems, err);
    FolderJobs made = jobsFromTemplate(templateFile, folders, into);
    for (const QString &problem : made.problems)
        problems << (made.isTemplateBad ? templateFile + QLatin1String(": ") : QString()) + problem;
    if (!problems.isEmpty())
        return fail(made.isTemplateBad ? Wrong : Refused, problems, err);
    for (FolderJob &job : made.jobs) {
        if (isRelative)
            job.job = withPathsFrom(into, job.job);
    }
    const int code = writeJobs(made.jobs, into, err);
    for (const FolderJob &job : made.jobs) {
        if (code == Done)
            *out << job.file << '\n';
    }
    return code;
}

} // namespace

int runJobsCommand(const QStringList &arguments, QTextStream *out, QTextStream *err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes one job for flokluk-batch per folder. In the template an input whose name holds * or ? "
                       "is looked for in each folder, where exactly one file must match; {folder}, {path} and "
                       "{number} stand for the folder's name, its path and the last number in its name. All jobs are "
                       "written or none. Exit code: 0 done, 1 a folder does not hold what the template wants, 2 the "
                       "template or the command line is wrong, 3 a job could not be written."));
    parser.addPositionalArgument(QStringLiteral("TEMPLATE.json"), QStringLiteral("A job with placeholders."));
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Folders; * and ? may stand in quotes."),
                                 QStringLiteral("FOLDER ..."));
    const QCommandLineOption into(QStringLiteral("out"), QStringLiteral("Write FOLDER.json into DIR (jobs)."),
                                  QStringLiteral("DIR"), QStringLiteral("jobs"));
    const QCommandLineOption relative(QStringLiteral("relative"),
                                      QStringLiteral("Paths in the jobs start from DIR instead of being absolute."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    parser.addOptions({into, relative, help});
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show version and commit."));
    parser.addOption(version);
    if (!parser.parse(arguments))
        return fail(Wrong, {parser.errorText() + QLatin1String("; flokluk-jobs --help says more")}, err);
    const QStringList words = parser.positionalArguments();
    int code = Done;
    if (parser.isSet(help) || parser.isSet(version))
        *out << (parser.isSet(help) ? parser.helpText()
                                    : versionLine(QStringLiteral("flokluk-jobs")) + QLatin1Char('\n'));
    else if (words.size() < 2)
        return fail(Wrong, {QStringLiteral("a template and a folder are needed; flokluk-jobs --help says more")}, err);
    else if (parser.value(into).isEmpty())
        return fail(Wrong, {QStringLiteral("--out wants a value; flokluk-jobs --help says more")}, err);
    else
        code = makeJobs(words, parser.value(into), parser.isSet(relative), out, err);
    out->flush();
    return out->status() == QTextStream::Ok
               ? code
               : fail(CannotWrite, {QStringLiteral("cannot write to standard output")}, err);
}
