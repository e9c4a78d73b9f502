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
    QVector<RecordedInput> inputs;
    QVector<numeric::FileSet::Member> files; ///< that take their places together with the report
    bool isComplete = false;                 ///< these are all that the job asks for
};

/// A new id, and the inputs of a job.
RunRecord beginRecord(const Job &job, bool isHashed);

/// The keys "run", "complete", "files" and "inputs" of a report. The paths of files are relative to its folder.
void insertRecord(const RunRecord &record, const QString &reportPath, QJsonObject *report);

/// The time of a file's last change as it stands in reports.
QString timeText(const QDateTime &time);
