#pragma once

#include "PanelTools.h"
#include "batch/BatchCommand.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

/// What the tests of flokluk-batch share: the sample without noise, with its two jobs, and a command line to run.
namespace batchtools
{

inline QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// The sample and its two jobs in a folder of their own, and what running them there printed.
class SampleJobs : public paneltools::SampleFiles
{
public:
    bool make(int width = 16, int height = 12) { return SampleFiles::make(width, height); }

    /// What lies beside the inputs.
    void removeResults() const
    {
        for (const QString &name : QDir(dir()).entryList({"*points*.dat", "*equivalent*.dat", "*report.json"}))
            QFile::remove(path(name));
        QDir(path("pictures")).removeRecursively();
    }
    bool hasResults() const
    {
        return !QDir(dir()).entryList({"*points*.dat", "*equivalent*.dat", "*report.json", "pictures"}).isEmpty();
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
    int runJob(const QByteArray &json) { return write(path("job.json"), json) ? run({path("job.json")}) : -1; }
    /// The lines on standard error that are no progress.
    QStringList mistakes() const { return err.split('\n').filter(QRegularExpression("^flokluk-batch: ")); }

    QString out;
    QString err;
};

} // namespace batchtools
