#pragma once

#include "analysis/job/Job.h"

/// The same job with all its paths absolute: it can be run from any folder.
Job withAbsolutePaths(const Job &job);

/// The same job with its paths from `folder`: it can be moved together with its files.
Job withPathsFrom(const QString &folder, const Job &job);
