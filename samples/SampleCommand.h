#pragma once

#include <QStringList>
#include <QTextStream>

namespace sample
{

enum ExitCode { Success = 0, WrongArgument = 2, CannotWrite = 3 };

/// Runs flokluk-sample with its command-line arguments (the program's name first). Prints the written files or the
/// help to `out`, one sentence about what is wrong to `err`, and gives the program's exit code.
int runCommand(const QStringList &arguments, QTextStream &out, QTextStream &err);

} // namespace sample
