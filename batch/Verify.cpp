#include "batch/Verify.h"

#include "batch/BatchMessages.h"
#include "batch/MovedInputs.h"
#include "batch/ReportFile.h"

#include <QJsonArray>
#include <QTextStream>

Verification verifyReport(const QString &path, QTextStream *out, BatchMessages *messages)
{
    ReportFile report = readReport(path);
    if (!report.isReport()) {
        messages->errorIn(path, {QStringLiteral("this is no report of a run that names its files")});
        return Verification::NoReport;
    }
    const QStringList problems = problemsOf(report);
    messages->errorIn(path, problems);
    messages->warningIn(path, followMovedInputs(&report));
    messages->warningIn(path, changedInputs(report));
    if (!report.content.contains("sum"))
        messages->warningIn(path, {QStringLiteral("the report has no sum: its numbers may have been changed")});
    if (problems.isEmpty())
        *out << path << ": " << report.content.value("files").toArray().size() << " files are those of the run "
             << report.id() << '\n';
    return problems.isEmpty() ? Verification::Good : Verification::NotThatRun;
}
