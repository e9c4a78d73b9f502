#include "numeric/TemporaryName.h"
#include "samples/SampleCommand.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    numeric::prepareForSignals();
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return sample::runCommand(QCoreApplication::arguments(), out, err);
}
