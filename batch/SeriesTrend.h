#pragma once

#include "batch/SeriesRow.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// Fractions over a series of jobs.
struct Trend {
    struct Point {
        double x = 0.0;
        double fraction = 0.0;
        double error = 0.0; ///< standard error; NaN: not known
    };
    struct Curve {
        QString name;         ///< of the reference
        int place = 0;        ///< of the reference in the jobs, from 1
        double valence = 0.0; ///< of the reference
        QVector<Point> points;
    };

    QString title;           ///< whose fractions
    QString xTitle;          ///< with unit
    bool isNumbered = false; ///< x is the number of the job
    QVector<Curve> curves;
    QStringList warnings; ///< about jobs that are left out, a sentence each
};

/// Takes the fractions of the target by the method of the jobs; where no job has any, those of the linear combination
/// fit; else those of the mean spectrum of the map's material. x is that of the jobs, or their number from 1 where none
/// has one; jobs without x beside others that have one, and jobs without fractions, are left out.
/// References of several jobs are the same one when place and valence are.
Trend trendOf(const QVector<SeriesRow> &rows);

/// Points with bars of one standard error to both sides, joined in the order of x: PNG, or PDF for a name that ends in
/// .pdf. Needs a QGuiApplication.
QByteArray trendPicture(const Trend &trend, const QString &fileName);
