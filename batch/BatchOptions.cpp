#include "batch/BatchOptions.h"

#include "version/Version.h"

#include <QCommandLineParser>

namespace
{

QString mistake(const BatchOptions &options, bool isNumber)
{
    if (!isNumber || options.processes < 1)
        return QStringLiteral("--jobs wants a number from 1 on");
    if (!options.verify.isEmpty())
        return options.jobs.isEmpty() ? QString() : QStringLiteral("--verify goes with no job");
    if (options.jobs.isEmpty())
        return QStringLiteral("no job file is named");
    if (options.show && options.jobs.size() != 1)
        return QStringLiteral("--show opens one job");
    if (options.show && (options.check || options.lenient || !options.pictures.isEmpty() || !options.report.isEmpty()))
        return QStringLiteral("--show goes with no other option than -j or -e");
    return QString();
}

} // namespace

BatchOptions parseBatchOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Runs analyses of X-ray absorption maps from job files (JSON), without a window. "
                       "Exit code: 0 done, 1 the analysis refused, 2 a job is wrong, 3 a result could not be written; "
                       "of several jobs the largest."));
    parser.addPositionalArgument(QStringLiteral("JOB.json"), QStringLiteral("The jobs, run in this order."),
                                 QStringLiteral("JOB.json ..."));
    const QCommandLineOption pictures(QStringLiteral("pictures"),
                                      QStringLiteral("Save every display and map as PNG in this folder."),
                                      QStringLiteral("DIR"));
    const QCommandLineOption report(
        QStringLiteral("report"),
        QStringLiteral("Write the results as JSON; with several jobs one file each, _JOB added to the name."),
        QStringLiteral("FILE"));
    const QCommandLineOption processes(QStringLiteral("jobs"), QStringLiteral("Run N jobs at once."),
                                       QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption check(QStringLiteral("check"), QStringLiteral("Only look for mistakes in the jobs."));
    const QCommandLineOption lenient(QStringLiteral("lenient"),
                                     QStringLiteral("Calculate with inputs that cannot be right, too."));
    const QCommandLineOption hash(QStringLiteral("hash"),
                                  QStringLiteral("Put the SHA-256 of each input into the report."));
    const QCommandLineOption verify(
        QStringLiteral("verify"),
        QStringLiteral("Tell whether the files on disk are those of this report's run: exit code 0 if they are, 1 if "
                       "not, 2 if it is no report."),
        QStringLiteral("REPORT"));
    const QCommandLineOption show(QStringLiteral("show"), QStringLiteral("Open the window with one job loaded."));
    const QCommandLineOption japanese(QStringLiteral("j"), QStringLiteral("Japanese texts."));
    const QCommandLineOption english(QStringLiteral("e"), QStringLiteral("English texts (default)."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    parser.addOptions({pictures, report, processes, check, lenient, hash, verify, show, japanese, english, help});
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show version and commit."));
    parser.addOption(version);

    BatchOptions options;
    const bool parsed = parser.parse(arguments);
    if (parsed && parser.isSet(help))
        options.answer = parser.helpText();
    else if (parsed && parser.isSet(version))
        options.answer = versionLine(QStringLiteral("flokluk-batch")) + QLatin1Char('\n');
    if (!parsed || !options.answer.isEmpty()) {
        options.error = parsed ? QString() : parser.errorText();
        return options;
    }
    options.jobs = parser.positionalArguments();
    options.pictures = parser.value(pictures);
    options.report = parser.value(report);
    bool isNumber = false;
    options.processes = parser.value(processes).toInt(&isNumber);
    options.check = parser.isSet(check);
    options.lenient = parser.isSet(lenient);
    options.hash = parser.isSet(hash);
    options.verify = parser.value(verify);
    options.show = parser.isSet(show);
    const QStringList names = parser.optionNames();
    options.japanese = names.lastIndexOf(QStringLiteral("j")) > names.lastIndexOf(QStringLiteral("e"));
    options.error = mistake(options, isNumber);
    return options;
}
