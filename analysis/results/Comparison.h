#pragma once

#include <QVector>

/// What one linear combination fit of the target found, beside the four-points method's result at that time.
struct ComparisonRecord {
    double a = 0.0;           ///< fraction of the first reference by the four-points method
    double valence = 0.0;     ///< by the four-points method
    double lcfFraction = 0.0; ///< fraction of the first reference by the fit
    double lcfValence = 0.0;
    int colourIndex = 0; ///< of the palette
};

/// The comparisons made so far, and the colour of the next one.
struct Comparisons {
    QVector<ComparisonRecord> records; ///< in the order found
    int colourIndex = 0;

    /// Later records get the next colour of a palette of `colours`.
    void nextColour(int colours) { colourIndex = (colourIndex + 1) % colours; }
    void clear() { *this = Comparisons(); }
};
