#pragma once

#include <QStringList>

struct Job;

/// Makes the folders of a job's outputs where they are missing; `checkOnly` makes none and looks whether they could be
/// made. One sentence for each that cannot be made.
QStringList makeOutputFolders(const Job &job, bool checkOnly);
