#include "batch/JobRunner.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList files = QCoreApplication::arguments().mid(1);
    if (files.isEmpty()) {
        err << "usage: flokluk-batch JOB.json ...\n";
        return static_cast<int>(JobOutcome::WrongJob);
    }

    int code = 0;
    for (const QString &file : files) {
        const JobOrError job = readJob(file);
        QString error = job.error;
        const JobOutcome outcome = error.isEmpty() ? runJob(job.job, &out, &error) : JobOutcome::WrongJob;
        out.flush();
        if (outcome != JobOutcome::Done)
            err << "flokluk-batch: " << error << '\n';
        err.flush();
        code = qMax(code, static_cast<int>(outcome));
    }
    return code;
}
