#pragma once

#include "batch/SeriesRow.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// Why a crate cannot be made in a folder: something else lies in it, or one of `ofAll`, which are written before it,
/// would take the place of a copy that an earlier crate has made. Empty when it can.
QString crateMistake(const QString &folder, const QStringList &ofAll);

/// The file that says what lies in a crate; empty for no crate.
QString crateMetadata(const QString &folder);

/// Makes `folder` an RO-Crate 1.1 (https://w3id.org/ro/crate/1.1) of what the jobs were: ro-crate-metadata.json, a
/// Process Run Crate (https://w3id.org/ro/wfrun/process/0.5) with a CreateAction for each job that was calculated, this
/// program as its instrument, its inputs as object and its files as result. Results, pictures and report are copied
/// into a folder per job, as they lie to each other, so that the report still tells whether they are those of the run,
/// and the job file as a record beside them; what lies in the crate already stays there. Maps and spectra, which may be
/// large, stay where they are and are named by their file URIs. `ofAll`: the table and the picture that were made of
/// all jobs. All of it takes its place at once. One sentence for what could not be done.
QStringList writeCrate(const QVector<SeriesRow> &rows, const QStringList &ofAll, const QString &folder);
