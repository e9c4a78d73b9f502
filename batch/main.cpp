#include "analysis/panel/FourPs.h"
#include "app/Body.h"
#include "app/StartUp.h"
#include "batch/BatchCommand.h"
#include "batch/BatchMessages.h"
#include "batch/JobRunner.h"
#include "batch/Repeat.h"
#include "numeric/TemporaryName.h"

#include <QApplication>
#include <QTextStream>
#include <QTranslator>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace
{

bool isForPrograms = false; ///< standard error is; known before Qt speaks for the first time

/// Standard error is for progress and mistakes: leaves out notes, and what Qt says about a platform without a screen.
/// What Qt cannot go on after, a missing screen above all, ends the program without a crash.
void handleQtMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    QTextStream err(stderr);
    if (type == QtFatalMsg) {
        BatchMessages(&err, isForPrograms)
            .error(QString(), {QLatin1String("no window can be opened: ") + text.section(QLatin1Char('.'), 0, 0)});
        std::_Exit(static_cast<int>(JobOutcome::WrongJob));
    }
    const bool isNote = type == QtDebugMsg || type == QtInfoMsg;
    if (!isNote && !text.startsWith(QLatin1String("This plugin does not support")) &&
        !text.startsWith(QLatin1String("QStandardPaths:")))
        BatchMessages(&err, isForPrograms).warning(QString(), {text});
}

/// Opens the program's window with the inputs and settings of a job. A wrong job opens none.
int showJob(const QString &file, BatchMessages *messages)
{
    Body body;
    const JobOrErrors job = readJob(file);
    const QStringList errors = loadJob(job, body.panel(), {});
    body.panel()->takeRegions(job.job);
    messages->errorIn(file, errors);
    if (!errors.isEmpty())
        return static_cast<int>(JobOutcome::WrongJob);
    body.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    numeric::prepareForSignals();
    // Only a window needs a screen. Who wants one all the same says so; Qt takes -platform before the environment.
    const auto has = [argc, argv](const char *option) {
        return std::any_of(argv, argv + argc, [option](const char *word) { return qstrcmp(word, option) == 0; });
    };
    const bool isShown = has("--show") && !has("--check"); // which do not go together
    if (!isShown && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QStringList words;
    for (int i = 0; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    isForPrograms = areForPrograms(words);
    qInstallMessageHandler(handleQtMessage);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    BatchOptions options = parseBatchOptions(QCoreApplication::arguments());
    if (!options.again.isEmpty())
        options.japanese = isReportJapanese(options.again);
    QTranslator ofQt;
    QTranslator translator;
    if (options.japanese) {
        installJapaneseForQt(&ofQt);
        installJapanese(&translator);
    }
    if (options.show && options.error.isEmpty() && options.answer.isEmpty()) {
        BatchMessages messages(&err, isForPrograms);
        return showJob(options.jobs.first(), &messages);
    }
    return runBatchCommand(options, &out, &err, isatty(STDERR_FILENO) != 0);
}
