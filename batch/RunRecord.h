#pragma once

#include "numeric/FileSet.h"

#include <QDateTime>
#include <QString>
#include <QVector>

class QJsonObject;
struct Job;

/// A file that a run reads, as it is when the run begins.
struct RecordedInput {
    QString path; ///< without links
    qint64 size = 0;
    QDateTime time;    ///< of its last change
    QByteArray sha256; ///< hexadecimal; empty unless asked for
};

/// By what a run and its files can be known again.
struct RunRecord {
    QString id;
    QDateTime started;
    bool isJapanese = false; ///< the language of pictures and sentences
    QVector<RecordedInput> inputs;
    QVector<numeric::FileSet::Member> files; ///< that take their places together with the report
    bool isComplete = false;                 ///< these are all that the job asks for
};

/// A new id, the time, and the inputs of a job.
RunRecord beginRecord(const Job &job, bool isHashed);

/// The keys of a report about the program, the host and the times, the job itself (see absoluteJob()), "run",
/// "complete", "files" and "inputs". The paths of files are relative to the folder of the report, or of the job where
/// it has none. The run ends now.
void insertRecord(const RunRecord &record, const Job &job, QJsonObject *report);

/// A job as it can be run from any folder: all its paths absolute, otherwise as they are.
QJsonObject absoluteJob(const Job &job);

/// The time of a file's last change as it stands in reports.
QString timeText(const QDateTime &time);
