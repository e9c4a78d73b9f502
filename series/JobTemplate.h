#pragma once

#include "analysis/job/Job.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// A job for one folder of measurements.
struct FolderJob {
    QString file; ///< where it is to be written
    Job job;      ///< with absolute paths
};

struct FolderJobs {
    QVector<FolderJob> jobs;    ///< in the order of the folders
    QStringList problems;       ///< one sentence each; with any of them nothing should be written
    bool isTemplateBad = false; ///< they are about the template, not about what lies in the folders
};

/// The folders that the words of a command line name; a word may hold * and ? in any part. Those of one word are in
/// the order of their names, in which numbers count as numbers. A word that names no folder is a problem.
QStringList foldersOf(const QStringList &words, QStringList *problems);

/// Makes a job file into one per folder, to be written into `out` as FOLDER.json.
///
/// In the texts of the template {folder} stands for the name of the folder, {path} for its path and {number} for the
/// last number in its name, with decimals and without a sign; "x" may be "{number}". Any other word in braces is a
/// mistake. An input whose name holds * or ? is looked for in the folder, where
/// it must match exactly one file; every other relative path is one from the template, as in a job. Folders of the same
/// name, inputs that are not there, and outputs that two jobs would share are problems.
FolderJobs jobsFromTemplate(const QString &templateFile, const QStringList &folders, const QString &out);
