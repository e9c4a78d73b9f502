#include "numeric/TemporaryName.h"
#include "series/JobsCommand.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char *argv[])
{
    numeric::prepareForSignals();
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runJobsCommand(QCoreApplication::arguments(), &out, &err);
}
