#pragma once

#include <QVector>

#include <string_view>

/// One step of a scan.
struct SpectrumPoint {
    double angle = 0.0;  ///< of the monochromator, degrees
    double energy = 0.0; ///< eV, as measured (no energy shift)
    double mu = 0.0;     ///< absorption, dimensionless
};

/// Smallest and largest value seen.
struct Extremes {
    double min = 0.0;
    double max = 0.0;

    /// The state before the first value: any finite value of a spectrum lies between.
    void reset()
    {
        min = 1e300;
        max = -1e300;
    }
    void add(double value)
    {
        if (value < min)
            min = value;
        if (value > max)
            max = value;
    }
};

/// What a spectrum file holds.
struct SpectrumScan {
    bool hasData = false;          ///< an "Offset" line and at least one data line
    bool isSupported = true;       ///< false: there are "Mode" lines, but none names a channel for I0
    QVector<SpectrumPoint> points; ///< in file order; empty when the file is not supported
    Extremes angle, energy, mu;
};

/// Reads the text of a step-scan record (UTF-8, or any Unicode with a byte order mark): one line per angle step
/// with the counts of several channels. The "Mode" line gives each channel's role (1: I0, 2: transmission,
/// 3: fluorescence), "D=" the lattice spacing in angstrom, and data lines follow the "Offset" line. What is no
/// number reads as 0. Never fails; see SpectrumScan for what came of it.
SpectrumScan parseSpectrum(std::string_view text);
