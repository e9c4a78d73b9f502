#pragma once

#include "AnalystTools.h"
#include "batch/BatchCommand.h"

#include <QDir>
#include <QTextStream>

/// What the tests of flokluk-batch share: the sample without noise, with its two jobs, and a command line to run.
namespace batchtools
{

/// A job with other texts in the place of some: "'use': true => 'use': false && a => b", in which ' stands for ".
/// Empty when the job does not hold what is to be replaced.
inline QByteArray edited(QByteArray job, const QString &edits)
{
    for (const QString &edit : QString(edits).replace('\'', '"').split(" && ")) {
        const QByteArray before = edit.section(" => ", 0, 0).toUtf8();
        if (!job.contains(before))
            return QByteArray();
        job.replace(before, edit.section(" => ", 1).toUtf8());
    }
    return job;
}

/// The sample and its two jobs in a folder of their own, and what running them there printed.
class SampleJobs : public paneltools::SampleFiles
{
public:
    bool make(int width = 16, int height = 12) { return SampleFiles::make(width, height); }
    /// Pictures take most of the time of such small maps.
    bool makeWithoutPictures()
    {
        bool isMade = make();
        for (const char *const job : {"four-points.json", "non-equivalent.json"})
            isMade = isMade && tables::writeBytes(path(job), edited(text(job), "'pictures': 'pictures',  => "));
        return isMade;
    }
    QByteArray text(const QString &name) const { return tables::bytesOf(path(name)); }

    /// What lies beside the inputs.
    QStringList results() const
    {
        return QDir(dir()).entryList({"*points*.dat", "*equivalent*.dat", "*report.json", "pictures"});
    }
    void removeResults() const
    {
        for (const QString &name : results())
            QFile::remove(path(name));
        QDir(path("pictures")).removeRecursively();
    }

    /// Runs the arguments; what comes out is in `out` and `err`.
    int run(const QStringList &arguments)
    {
        out.clear();
        err.clear();
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        return runBatchCommand(parseBatchOptions(QStringList("flokluk-batch") + arguments), &outStream, &errStream);
    }
    /// Runs a job that stands beside the sample.
    int runJob(const QByteArray &json)
    {
        return !json.isEmpty() && tables::writeBytes(path("job.json"), json) ? run({path("job.json")}) : -1;
    }
    /// The lines on standard error that are no progress.
    QStringList mistakes() const { return err.split('\n').filter(QRegularExpression("^flokluk-batch: ")); }

    QString out;
    QString err;
};

/// A result file and its two histograms; true when they are those of another one, which hold something.
inline bool sameResults(const QString &got, const QString &wanted)
{
    for (const char *const part : {"", "_HGAlpha", "_HGThick"}) {
        const auto file = [part](const QString &base) {
            return tables::bytesOf(base + QLatin1String(part) + ".dat");
        };
        if (file(wanted).size() < 100 || file(got) != file(wanted)) {
            qWarning("%s differs", part);
            return false;
        }
    }
    return true;
}

} // namespace batchtools
