#pragma once

#include "analysis/job/Job.h"

namespace numeric
{
class FileSet;
}

/// Jobs that these programs write carry their name and version and a sum of themselves, so that they can be written
/// again without touching what a user has written or changed.

/// What stands where one of these programs wants to write a job.
enum class JobPlace {
    Free,   ///< nothing, or a job as one of these programs wrote it, or the very same job
    Edited, ///< a job of these programs with another sum, or of an early version, which wrote none
    Foreign ///< anything else
};

JobPlace placeForJob(const QString &path, const Job &job);

/// Writes a job as one of these programs', whole or not at all, and with a set together with its other files. False
/// when it cannot be written.
[[nodiscard]] bool writeOwnJob(const Job &job, const QString &path, numeric::FileSet *set = nullptr);
