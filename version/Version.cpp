#include "version/Version.h"

#include "version/FloklukCommit.h" // made by version/WriteCommit.cmake

QString floklukVersion()
{
    return QStringLiteral(FLOKLUK_VERSION);
}

QString floklukCommit()
{
    return QStringLiteral(FLOKLUK_COMMIT);
}

QString versionLine(const QString &program)
{
    const QString line = program + QLatin1Char(' ') + floklukVersion();
    return floklukCommit().isEmpty() ? line : line + QStringLiteral(" (commit %1)").arg(floklukCommit());
}
