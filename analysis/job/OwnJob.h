#pragma once

#include "analysis/job/Job.h"

namespace numeric
{
class FileSet;
}

/// Jobs that these programs write carry their name and version, so that they can be written again without touching what
/// a user has written.

/// Whether the file is a job without a mistake that one of these programs has written.
bool isOwnJob(const QString &path);

/// Writes a job as one of these programs', whole or not at all, and with a set together with its other files. False
/// when it cannot be written.
[[nodiscard]] bool writeOwnJob(Job job, const QString &path, numeric::FileSet *set = nullptr);
