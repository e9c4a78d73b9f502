#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// One axis of a scan.
struct ScanAxis {
    QString name, unit;
    QVector<double> points;
};

/// What the header of a stack of an X-ray microscope (ALS, CLS; NAME.hdr) says.
struct StackHeader {
    ScanAxis energy; ///< StackAxis
    ScanAxis x, y;   ///< PAxis and QAxis of the first region
    int regions = 0;
};

/// Reads such a header: "name = value;" with numbers, "texts", lists in ( ) and objects in { }; the first entry of a
/// list of points is their number. False, with one sentence without the file's name, when it is cut off, is nested
/// deeper than such a header is, or lacks one of the three axes.
[[nodiscard]] bool parseStackHeader(const QByteArray &text, StackHeader *header, QString *error);
