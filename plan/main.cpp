#include "numeric/TemporaryName.h"
#include "plan/PlanCommand.h"

#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>

#include <unistd.h>

namespace
{

/// Standard error is for progress and mistakes: leaves out notes, and what Qt says about a platform without a screen.
void handleQtMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const bool isNote = type == QtDebugMsg || type == QtInfoMsg;
    if (!isNote && !text.startsWith(QLatin1String("QStandardPaths:")))
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace

int main(int argc, char *argv[])
{
    numeric::prepareForSignals();
    qInstallMessageHandler(handleQtMessage);
    // Nothing is shown: a picture needs fonts and no screen.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runPlanCommand(parsePlanOptions(QCoreApplication::arguments()), &out, &err, isatty(STDERR_FILENO) != 0);
}
