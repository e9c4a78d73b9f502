#include "batch/Verify.h"

#include "batch/ReportFile.h"

#include <QJsonArray>
#include <QTextStream>

Verification verifyReport(const QString &path, QTextStream *out, QTextStream *err)
{
    const auto say = [&path, err](const char *kind, const QStringList &sentences) {
        for (const QString &sentence : sentences)
            *err << "flokluk-batch: " << kind << path << ": " << sentence << '\n';
    };
    const ReportFile report = readReport(path);
    if (!report.isReport()) {
        say("", {QStringLiteral("this is no report of a run that names its files")});
        return Verification::NoReport;
    }
    const QStringList problems = problemsOf(report);
    say("", problems);
    say("warning: ", changedInputs(report));
    if (!report.content.contains("sum"))
        say("warning: ", {QStringLiteral("the report has no sum: its numbers may have been changed")});
    if (problems.isEmpty())
        *out << path << ": " << report.content.value("files").toArray().size() << " files are those of the run "
             << report.id() << '\n';
    return problems.isEmpty() ? Verification::Good : Verification::NotThatRun;
}
