#include "import/ImportCommand.h"
#include "numeric/TemporaryName.h"

#include <QCoreApplication>
#include <QTextStream>

#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace
{

volatile std::sig_atomic_t isInterrupted = 0;

void interrupt(int)
{
    isInterrupted = 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) { // what was begun is removed before the program ends
        if (std::signal(number, interrupt) == SIG_IGN)
            std::signal(number, SIG_IGN); // a nohup stays one
    }
    numeric::prepareForSignals();
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runImportCommand(QCoreApplication::arguments(), &out, &err, isatty(STDERR_FILENO) != 0,
                            [] { return isInterrupted != 0; });
}
