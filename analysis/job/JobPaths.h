#pragma once

#include "analysis/job/Job.h"

#include <QString>
#include <QStringList>

/// The same job with all its paths absolute: it can be run from any folder.
Job withAbsolutePaths(const Job &job);

/// The same job with its paths from `folder`: it can be moved together with its files.
Job withPathsFrom(const QString &folder, const Job &job);

/// What is written with a result file: itself and its histograms of valence and thickness.
QStringList resultFiles(const QString &result);
