#include "batch/BatchCommand.h"

#include "batch/JobRunner.h"

#include <QTextStream>

int runBatchCommand(const QStringList &jobFiles, QTextStream *out, QTextStream *err)
{
    if (jobFiles.isEmpty()) {
        *err << "usage: flokluk-batch JOB.json ...\n";
        return static_cast<int>(JobOutcome::WrongJob);
    }
    int code = 0;
    for (const QString &file : jobFiles) {
        const JobOrError job = readJob(file);
        QString error = job.error;
        const JobOutcome outcome = error.isEmpty() ? runJob(job.job, out, &error) : JobOutcome::WrongJob;
        out->flush();
        if (outcome != JobOutcome::Done)
            *err << "flokluk-batch: " << error << '\n';
        err->flush();
        code = qMax(code, static_cast<int>(outcome));
    }
    return code;
}
