#pragma once

#include <QByteArray>
#include <QList>

/// One axis of a map as its header line has it; the texts stand there as they are and hold no blank.
struct MapAxisText {
    QByteArray name;  ///< such as "x"
    QByteArray unit;  ///< of the positions, such as "um"
    QByteArray first; ///< position of the first pixel
    QByteArray step;  ///< from one pixel to the next
    int count = 0;    ///< pixels
};

/// The header of a plain map file, whose lines are "x y I I0", row by row with x fastest. `energy`: eV.
QByteArray plainMapHeader(const QByteArray &energy, const MapAxisText &x, const MapAxisText &y);

/// The header of a map file whose lines are x, y and the named columns, "I0" and "I" among them.
QByteArray columnMapHeader(const QByteArray &energy, const QList<QByteArray> &columns);
