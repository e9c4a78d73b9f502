#pragma once

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/results/ResultHistograms.h"

#include <QString>
#include <QVector>

#include <cmath>
#include <tuple>

/// What a result was calculated from. Plain values: two runs with equal ones give the same result.

/// The edge energy and, as offsets from it, the end of the pre-edge and the start of the post-edge range, in eV.
struct EdgeSettings {
    double edge = 0.0;
    double preEnd = 0.0;
    double postStart = 0.0;
};

/// A map file as it was when it was read.
struct MapFile {
    QString path;
    qint64 bytes = 0;
    qint64 modified = 0; ///< milliseconds since 1970
};

/// A reference that took part.
struct RunReference {
    int row = 0; ///< of the panel, from 0
    QString name;
    double valence = 0.0;
    double edgeJump = 0.0;
};

/// An energy point that took part.
struct RunPoint {
    int row = 0;           ///< of the panel, from 0
    double energy = 0.0;   ///< eV
    MapFile map;           ///< empty for a target
    bool isMarked = false; ///< V; only where the method looks at it
};

/// The method as it was chosen: the variant counts for the four-points method, the background for the other one.
struct RunMethod {
    bool isNonEquivalent = false;
    FourPointsVariant variant = FourPointsVariant::None;
    NonEquivalentBackground background = NonEquivalentBackground::Linear;
};

struct RunInfo {
    RunMethod method;
    QVector<RunReference> references; ///< in panel order; the four-points method knows the first two
    QVector<RunPoint> points;         ///< in panel order
    int vPoint = -1;                  ///< row of the V point; -1: none, as the non-equivalent method needs none
    EdgeSettings edge;
    HistogramSettings valences, thicknesses;
    FourPointsReferences fourPoints;       ///< the references' values, for the four-points method
    NonEquivalentReferences nonEquivalent; ///< the same for the non-equivalent method
};

/// What a linear combination fit was made of, besides the spectra themselves.
struct FitRun {
    QVector<RunReference> references;
    double energyMin = 0.0; ///< eV
    double energyMax = 0.0;
};

/// Equality of measured numbers: a NaN equals a NaN.
inline bool isSame(double l, double r)
{
    return l == r || (std::isnan(l) && std::isnan(r));
}

inline bool operator==(const MapFile &l, const MapFile &r)
{
    return std::tie(l.path, l.bytes, l.modified) == std::tie(r.path, r.bytes, r.modified);
}
inline bool operator==(const HistogramSettings &l, const HistogramSettings &r)
{
    return isSame(l.from, r.from) && isSame(l.to, r.to) && isSame(l.boxes, r.boxes);
}
inline bool operator==(const EdgeSettings &l, const EdgeSettings &r)
{
    return isSame(l.edge, r.edge) && isSame(l.preEnd, r.preEnd) && isSame(l.postStart, r.postStart);
}
