#pragma once

#include "import/ImportOptions.h"

#include <QString>
#include <QStringList>

class QTextStream;

/// What the command line of flokluk-import asks for.
struct ImportArguments {
    ImportOptions options;
    QStringList toList; ///< files of which to say what is inside, in the place of importing
    QString answer;     ///< help or version, to be printed instead
    QString error;      ///< why the command line cannot be taken; empty when it can
};

/// Reads the arguments, the program's name first.
ImportArguments parseImportArguments(const QStringList &arguments);

/// Runs flokluk-import: what was written goes to `out`; mistakes, one sentence each, and on a terminal a bar to `err`.
/// Returns the exit code, see ImportResult::Outcome. `isStopped` is asked between images.
int runImportCommand(const QStringList &arguments, QTextStream *out, QTextStream *err, bool isTerminal = false,
                     const std::function<bool()> &isStopped = {});
