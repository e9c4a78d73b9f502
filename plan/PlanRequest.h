#pragma once

#include "analysis/methods/NonEquivalent.h"
#include "spectrum/AMutE.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// What is to be planned: which few energies tell the valence best. Energies in eV, all else dimensionless.

struct PlanReference {
    QString name;
    AMutE spectrum; ///< with its dE, its edge and its lines fitted
    double valence = 0.0;
};

/// A sample that the plan is to be good for.
struct PlanScenario {
    std::vector<double> fractions; ///< one per reference; only their proportions count
    double thickness = 1.0;        ///< t as the method gives it
};

/// Energies that somebody thought of, to be compared with the plan.
struct PlanList {
    QString name;
    std::vector<double> energies;
    int vPoint = -1; ///< index of the V point, for the four-points method; -1: the best of them
};

enum class PlanMode {
    Transmission, ///< y = ln(I0 / I) of counted quanta
    Fluorescence  ///< y in proportion to the counts of a detector
};

enum class PlanMethod { LinearNonEquivalent, VictoreenNonEquivalent, LeastSquaresFourPoints, ExactFourPoints };

inline bool isFourPoints(PlanMethod method)
{
    return method == PlanMethod::LeastSquaresFourPoints || method == PlanMethod::ExactFourPoints;
}

/// The most energies that a method can be planned for.
inline int mostPlanEnergies(PlanMethod method)
{
    if (method == PlanMethod::ExactFourPoints)
        return 4;
    return isFourPoints(method) ? mostNonEquivalentPoints : 100;
}

inline NonEquivalentBackground backgroundOf(PlanMethod method)
{
    return method == PlanMethod::VictoreenNonEquivalent ? NonEquivalentBackground::Victoreen
                                                        : NonEquivalentBackground::Linear;
}

struct PlanRequest {
    std::vector<PlanReference> references; ///< 2 to 4; the four-points method knows the first two
    PlanMethod method = PlanMethod::LinearNonEquivalent;
    bool subtractsPostLine = false; ///< from the references, in the place of the pre-edge line
    double edge = 0.0;

    int count = 8; ///< energies to be planned
    /// The candidates. Without bounds: 100 eV before to 200 eV behind the edge, as far as all references reach. Without
    /// a step: 0.5 eV from 20 eV before to 50 eV behind the edge, 5 eV elsewhere.
    std::optional<double> from, to, step;
    /// These and no others, rising: energies that have been measured already. In the place of bounds and step.
    std::vector<double> candidates;
    double spacing = 1.0;     ///< smallest distance of two energies
    std::vector<double> keep; ///< energies that belong to the plan in any case

    double counts = 1e4; ///< transmission: quanta of I0 per exposure and pixel; fluorescence: quanta where y is 1
    PlanMode mode = PlanMode::Transmission;
    double background = 0.5; ///< transmission: absorption of all else; fluorescence: share of the signal, below 1
    std::vector<PlanScenario> scenarios; ///< none: each reference alone and the equal mixture
    double thickness = 1.0;              ///< t of those
    double deltaE = 0.1;                 ///< reproducibility of the monochromator, one standard deviation
    bool hasExtraTerm = true;            ///< plan with one background term more than the fit has, where possible
    std::vector<PlanList> compare;
    std::uint64_t seed = 1;
};

/// Hears of the share that is done, 0 to 1; false stops the planning.
using PlanProgress = std::function<bool(double done)>;
