#include "plan/PlanCommand.h"

#include <QGuiApplication>
#include <QTextStream>

#include <unistd.h>

int main(int argc, char *argv[])
{
    // Nothing is shown: a picture needs fonts and no screen.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runPlanCommand(parsePlanOptions(QCoreApplication::arguments()), &out, &err, isatty(STDERR_FILENO) != 0);
}
