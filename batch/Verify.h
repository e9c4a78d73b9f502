#pragma once

class BatchMessages;
class QString;
class QTextStream;

/// What verifyReport() found; the values are the program's exit codes.
enum class Verification { Good = 0, NotThatRun = 1, NoReport = 2 };

/// Whether the files on disk are those that the run of a report wrote, all of them: each has the contents that the
/// report names, the run wrote all that its job asks for, and no picture of the same job is left of another run. What
/// is not so goes to `messages`, a sentence each; inputs that have changed since are only warned of.
Verification verifyReport(const QString &path, QTextStream *out, BatchMessages *messages);
