#pragma once

#include <QByteArray>
#include <QList>

/// What stands above the points of a spectrum file. The texts stand there as they are; none of them may hold one of the
/// reader's keywords ("Mode", "Offset", "D=") as a word.
struct SpectrumHead {
    QList<QByteArray> titles;
    QByteArray crystal = "Si(111)";
    QByteArray spacing;    ///< of its lattice, angstrom
    QByteArray firstAngle; ///< degrees
    QByteArray method;     ///< such as "Transmission"
    int points = 0;
    int mode = 2; ///< of the last column: 2 transmission (mu is ln(I0 / I)), 3 fluorescence (mu is I / I0)
};

/// The head of a spectrum file with one measured channel; its lines are two angles in degrees, the time in seconds, I0
/// and I.
QByteArray spectrumHead(const SpectrumHead &head);
