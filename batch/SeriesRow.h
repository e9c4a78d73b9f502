#pragma once

#include "analysis/job/Job.h"
#include "batch/JobRunner.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

/// What became of one of several jobs.
struct SeriesRow {
    Job job;
    int code = 0; ///< see JobOutcome
    QStringList errors;
    QStringList warnings;
    QJsonObject report; ///< see runReport(); empty where nothing was calculated
};

/// A row but for its job, for another process.
QByteArray seriesRowToJson(const SeriesRow &row);
/// The same back; an empty report and no sentences where it is none.
void readSeriesRow(const QByteArray &text, SeriesRow *row);
