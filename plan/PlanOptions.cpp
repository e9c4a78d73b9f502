#include "plan/PlanOptions.h"

#include "version/Version.h"

#include <QCommandLineParser>

PlanOptions parsePlanOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Plans at which energies to measure maps, and how long at each, from reference spectra. Exit code: 0 done, "
        "1 nothing can be planned, 2 the plan is wrong, 3 a file could not be written."));
    parser.addPositionalArgument(QStringLiteral("PLAN.json"), QStringLiteral("The plan; a job is one, too."));
    const auto option = [](const char *name, const char *text, const char *value) {
        return QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value));
    };
    const QCommandLineOption report = option("report", "Write the plan as JSON.", "FILE");
    const QCommandLineOption picture = option("picture", "Draw references, energies and candidates (PNG).", "FILE");
    const QCommandLineOption job = option("job", "Write a job with the energies filled in.", "FILE");
    const QCommandLineOption seed(
        QStringLiteral("seed"), QStringLiteral("Number that the search starts from; the same one gives the same plan."),
        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    parser.addOptions({report, picture, job, seed, help});
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show version and commit."));
    parser.addOption(version);

    PlanOptions options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    if (parser.isSet(help))
        options.answer = parser.helpText();
    else if (parser.isSet(version))
        options.answer = versionLine(QStringLiteral("flokluk-plan")) + QLatin1Char('\n');
    bool isNumber = false;
    options.seed = parser.value(seed).toULongLong(&isNumber);
    options.report = parser.value(report);
    options.picture = parser.value(picture);
    options.job = parser.value(job);
    options.plan = parser.positionalArguments().value(0);
    if (!isNumber)
        options.error = QStringLiteral("--seed wants a whole number from 0 on");
    else if (parser.positionalArguments().size() != 1)
        options.error = QStringLiteral("one plan file is to be named");
    return options;
}
