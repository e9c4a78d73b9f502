#include "batch/BatchCommand.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return runBatchCommand(QCoreApplication::arguments().mid(1), &out, &err);
}
