#include "import/ImportCommand.h"

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
    std::signal(SIGINT, interrupt); // what was begun is removed before the program ends
    std::signal(SIGTERM, interrupt);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runImportCommand(QCoreApplication::arguments(), &out, &err, isatty(STDERR_FILENO) != 0,
                            [] { return isInterrupted != 0; });
}
