#pragma once

#include "plan/PlanRequest.h"

#include <QString>

#include <variant>
#include <vector>

/// What an energy of a plan is there for.
struct PlanRole {
    enum class Kind {
        Background, ///< below the edge
        Amount,     ///< above it, where the normalised references hardly differ
        Difference  ///< the references `first` and `second` differ most
    };
    Kind kind = Kind::Background;
    int first = 0;
    int second = 0;
};

/// What a set of energies does for one sample. Standard errors are those of the fit that is used afterwards.
struct PlanScenarioResult {
    PlanScenario scenario;
    double valence = 0.0;
    double sigmaV = 0.0;            ///< the same exposure at each energy
    double sigmaVAtShares = 0.0;    ///< the exposure shared out as planned
    std::vector<double> sigmaF;     ///< per reference, the same exposure at each energy
    double valencePerTenthEv = 0.0; ///< change of the valence when all energies are wrong by the same 0.1 eV
    double bias = 0.0;              ///< four-points method: what it finds without noise less the true valence
};

/// A set of energies and its worth. Over several scenarios the numbers are roots of the mean squares.
struct PlannedSet {
    QString name;
    std::vector<double> energies; ///< rising
    int vPoint = -1;              ///< index in energies, for the four-points method
    std::vector<double> shares;   ///< of the whole exposure, sum 1
    std::vector<PlanRole> roles;
    double sigmaV = 0.0;
    double sigmaVAtShares = 0.0;
    std::vector<double> sigmaF;
    std::vector<double> detectionLimits; ///< detectionFactor times sigmaF
    double valencePerTenthEv = 0.0;
    double bias = 0.0;
    /// Four-points method: valence found without noise less the true one, for each reference alone; else empty.
    std::vector<double> pureBias;
    double criterion = 0.0;    ///< root of what was minimised, in units of the valence
    bool hasExtraTerm = false; ///< in the criterion
    std::vector<PlanScenarioResult> scenarios;
};

struct PlanResult {
    PlannedSet planned;
    std::vector<PlannedSet> compared; ///< the lists of the request, then the ends with the largest differences
    std::vector<PlannedSet> byNumber; ///< plans for 4, 5, ... 10 energies, as far as there are such
    std::vector<double> candidates;   ///< eV, rising
    /// Root of the criterion with the nearest planned energy moved to the candidate.
    std::vector<double> candidateValues;
};

/// The plan, or one sentence why there is none. The same request gives the same plan.
std::variant<PlanResult, QString> planEnergies(const PlanRequest &request, const PlanProgress &progress = {});
