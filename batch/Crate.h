#pragma once

#include "batch/SeriesRow.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// Why a crate cannot be made in a folder: something else lies in it. Empty when it can.
QString crateMistake(const QString &folder);

/// Makes `folder` an RO-Crate 1.1 (https://w3id.org/ro/crate/1.1) of what the jobs were: ro-crate-metadata.json, a
/// Process Run Crate (https://w3id.org/ro/wfrun/process/0.5) with a CreateAction for each job that was calculated, this
/// program as its instrument, its inputs as object and its files as result. Job files, results, pictures and reports
/// are copied into a folder per job, unless they are in the crate already; maps and spectra, which may be large, stay
/// where they are and are named by their file URIs. All of it takes its place at once. One sentence for what could not
/// be done.
QStringList writeCrate(const QVector<SeriesRow> &rows, const QString &folder);
