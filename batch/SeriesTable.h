#pragma once

#include "batch/SeriesRow.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QVector>

/// Several jobs as one table, a line each, in their order: CSV (RFC 4180), UTF-8, numbers with a decimal point and up
/// to ten digits, an empty cell for what there is not. The columns are always the same ones in the same order, and
/// after these those of the regions that any job has. docs/batch.md describes them.
QByteArray seriesTable(const QVector<SeriesRow> &rows);

/// Of a report's "map": the region statistics of the material; empty where there are none.
QJsonObject materialOf(const QJsonObject &report);
/// Of a report's "target": what the method of the job found, by its name there; empty where there is none.
QJsonObject targetOf(const QJsonObject &report);
/// Of the same: what the linear combination fit found.
QJsonObject fitOf(const QJsonObject &report);
/// The fractions of what a report says about a target; those of the four-points method are a and 1 - a.
QVector<double> fractionsOf(const QJsonObject &target);
/// Numbers of a report; NaN for null.
QVector<double> numbersOf(const QJsonValue &list);
double numberOf(const QJsonValue &value);
