#pragma once

#include "analysis/methods/ResultPosition.h"
#include "analysis/results/RunInfo.h"
#include "mapdata/A2DData.h"
#include "spectrum/AMutE.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <array>

/// Everything that the user has set, as plain values at one moment. Rows are counted from 0, in panel order.

struct ReferenceInput {
    QString file; ///< as chosen; empty: none
    AMutE spectrum;
    bool isUsed = false;
    double valence = 0.0;
    bool hasValence = true; ///< false: what stands in its place is no number

    /// Used, loaded and processed: it takes part in the methods.
    bool takesPart() const { return isUsed && spectrum.valid(); }
};

struct TargetInput {
    QString file;
    AMutE spectrum;
};

struct PointInput {
    double energy = 0.0; ///< eV
    bool isUsed = false;
    bool isVPoint = false;
    bool isForLcf = false;
    /// Absorptions less a background line, with the six digits that the fields show; 0 for an empty field.
    double target = 0.0;
    std::array<double, ResultPosition::referenceRows> references = {};
    const A2DData *map = nullptr; ///< not owned; null: none is loaded
    MapFile mapFile;
};

struct Conditions {
    bool isNonEquivalent = false;
    bool isExact = false;        ///< four-points method: t, mu0 and k exactly
    bool isLeastSquares = false; ///< four-points method: by least squares
    bool isLinear = false;       ///< background of the non-equivalent method; false: Victoreen
    bool subtractsPostLineOfReferences = false;
    bool subtractsPostLineOfTarget = false;
    EdgeSettings edge;
    HistogramSettings valences, thicknesses;
};

struct AnalysisInput {
    QVector<ReferenceInput> references;
    QVector<PointInput> points;
    TargetInput target;
    QStringList displayFiles; ///< paths of the spectra that are only displayed
    Conditions conditions;
};
