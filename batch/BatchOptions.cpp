#include "batch/BatchOptions.h"

#include "version/Version.h"

#include <QCommandLineParser>

namespace
{

struct Option {
    const char *name;
    const char *value; ///< what the help calls its value; null: it has none
    const char *text;  ///< null: for this program alone
};

const Option optionTable[] = {
    {"pictures", "DIR", "Save every display and map as PNG in this folder."},
    {"report", "FILE", "Write the results as JSON; with several jobs one file each, _JOB added to the name."},
    {"table", "FILE", "Write one line a job, with all numbers, as CSV."},
    {"trend", "FILE", "Draw the fractions of all jobs with their error bars, as .png or .pdf."},
    {"crate", "DIR", "Copy what was written into this folder, described as an RO-Crate."},
    {"jobs", "N", "Run N jobs at once."},
    {"check", nullptr, "Only look for mistakes in the jobs."},
    {"list-outputs", nullptr, "Only print the files that the jobs would write, one a line."},
    {"skip-done", nullptr, "Leave out the jobs whose files are all there, by their reports."},
    {"lenient", nullptr, "Calculate with inputs that cannot be right, too."},
    {"hash", nullptr, "Put the SHA-256 of each input into the report."},
    {"progress", "FORM", "\"json\": progress and mistakes as one JSON object a line."},
    {"verify", "REPORT",
     "Tell whether the files on disk are those of this report's run: exit code 0 if they are, 1 if not, 2 if it is no "
     "report."},
    {"again", "REPORT",
     "Run this report's job again, with its files in a temporary folder, and tell whether inputs and results are the "
     "same: exit code 0 if they are, 1 if not, 2 if it is no report."},
    {"show", nullptr, "Open the window with one job loaded."},
    {"j", nullptr, "Japanese texts."},
    {"e", nullptr, "English texts (default)."},
    {"outcome-file", "FILE", nullptr},
};

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QStringLiteral(
        "Runs analyses of X-ray absorption maps from job files (JSON), without a window. "
        "Exit code: 0 done, 1 the inputs cannot be right or the analysis refused, 2 a job is wrong, 3 a result "
        "could not be written; of several jobs the largest."));
    parser->addPositionalArgument(QStringLiteral("JOB.json"), QStringLiteral("The jobs, run in this order."),
                                  QStringLiteral("JOB.json ..."));
    for (const Option &option : optionTable) {
        QCommandLineOption added(QLatin1String(option.name), QLatin1String(option.text),
                                 QLatin1String(option.value ? option.value : ""));
        if (!option.text)
            added.setFlags(QCommandLineOption::HiddenFromHelp);
        parser->addOption(added);
    }
    parser->addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    parser->addOption({{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show version and commit.")});
}

QString trendMistake(const BatchOptions &options)
{
    const bool isKnown = options.trend.isEmpty() ||
                         options.trend.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) ||
                         options.trend.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
    return isKnown ? QString() : QStringLiteral("--trend draws a .png or a .pdf");
}

/// Of --verify and --again, which look at one report alone.
QString mistakeWithReport(const BatchOptions &options)
{
    const QString name = QLatin1String(options.verify.isEmpty() ? "--again" : "--verify");
    if (!options.jobs.isEmpty())
        return name + QLatin1String(" goes with no job");
    if (!options.verify.isEmpty() && !options.again.isEmpty())
        return QStringLiteral("--verify and --again do not go together");
    if (options.isSeries())
        return name + QLatin1String(" goes with no --table, --trend or --crate");
    return options.check || options.listOutputs
               ? name + QLatin1String(options.check ? " goes with no --check" : " goes with no --list-outputs")
               : QString();
}

/// The first option whose value is empty; empty when there is none.
QString emptyOption(const QCommandLineParser &parser)
{
    for (const Option &option : optionTable) {
        const QString name = QLatin1String(option.name);
        if (option.value && parser.isSet(name) && parser.value(name).isEmpty())
            return name;
    }
    return QString();
}

QString mistake(const BatchOptions &options, bool isNumber, const QStringList &forms)
{
    if (!isNumber || options.processes < 1)
        return QStringLiteral("--jobs wants a number from 1 on");
    if (forms.count(QStringLiteral("json")) != forms.size())
        return QStringLiteral("--progress knows one form, json");
    if (!options.verify.isEmpty() || !options.again.isEmpty())
        return mistakeWithReport(options);
    if (options.jobs.isEmpty())
        return QStringLiteral("no job file is named");
    if (options.show && options.jobs.size() != 1)
        return QStringLiteral("--show opens one job");
    if (options.show && (options.check || options.listOutputs || options.skipDone || options.isSeries() ||
                         options.lenient || !options.pictures.isEmpty() || !options.report.isEmpty()))
        return QStringLiteral("--show goes with no other option than -j or -e");
    if ((options.check || options.listOutputs) && options.isSeries())
        return QStringLiteral("--table, --trend and --crate want jobs that are run");
    if (options.check && options.listOutputs)
        return QStringLiteral("--check and --list-outputs do not go together");
    return trendMistake(options);
}

} // namespace

bool areForPrograms(const QStringList &arguments)
{
    const QString option = QStringLiteral("--progress"), form = QStringLiteral("json");
    const QStringList words = arguments.mid(0, arguments.indexOf(QStringLiteral("--")));
    for (int i = 1; i < words.size(); ++i) {
        if (words[i] == option + QLatin1Char('=') + form || (words[i] == form && words[i - 1] == option))
            return true;
    }
    return false;
}

BatchOptions parseBatchOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(&parser);

    BatchOptions options;
    if (areForPrograms(arguments))
        options.form = ProgressForm::Json;
    const bool parsed = parser.parse(arguments);
    if (parsed && parser.isSet(QStringLiteral("help")))
        options.answer = parser.helpText();
    else if (parsed && parser.isSet(QStringLiteral("version")))
        options.answer = versionLine(QStringLiteral("flokluk-batch")) + QLatin1Char('\n');
    if (!parsed || !options.answer.isEmpty()) {
        options.error = parsed ? QString() : parser.errorText();
        return options;
    }
    const auto value = [&parser](const char *name) {
        return parser.value(QLatin1String(name));
    };
    const auto isSet = [&parser](const char *name) {
        return parser.isSet(QLatin1String(name));
    };
    options.jobs = parser.positionalArguments();
    options.pictures = value("pictures");
    options.report = value("report");
    options.table = value("table");
    options.trend = value("trend");
    options.crate = value("crate");
    bool isNumber = true;
    if (isSet("jobs"))
        options.processes = value("jobs").toInt(&isNumber);
    options.verify = value("verify");
    options.again = value("again");
    options.outcomeFile = value("outcome-file");
    options.check = isSet("check");
    options.listOutputs = isSet("list-outputs");
    options.skipDone = isSet("skip-done");
    options.hash = isSet("hash");
    options.show = isSet("show");
    options.lenient = isSet("lenient");
    const QStringList names = parser.optionNames();
    options.japanese = names.lastIndexOf(QStringLiteral("j")) > names.lastIndexOf(QStringLiteral("e"));
    const QString empty = emptyOption(parser);
    options.error = !empty.isEmpty() ? QStringLiteral("--%1 wants a value").arg(empty)
                                     : mistake(options, isNumber, parser.values(QStringLiteral("progress")));
    return options;
}
