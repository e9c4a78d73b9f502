// Whether plans are worth what they say, on the sample maker's model: simulated measurements scatter as predicted, the
// exchange finds what trying all sets finds, and a plan is made within two seconds on one core. Fails otherwise.
#include "analysis/methods/NonEquivalent.h"
#include "bench/SampleReferences.h"
#include "plan/PlanCandidates.h"
#include "plan/PlanResult.h"
#include "plan/PlanSearch.h"
#include "samples/PortableMath.h"
#include "samples/Random.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>

namespace
{

using Vector = std::vector<double>;

/// Standard deviation of the valences of pixels measured at these energies.
double scatterOf(const PlanRequest &request, const PlannedSet &set, int pixels, std::uint64_t seed)
{
    std::vector<const AMutE *> spectra;
    Vector valences;
    for (const PlanReference &reference : request.references) {
        spectra.push_back(&reference.spectrum);
        valences.push_back(reference.valence);
    }
    const NonEquivalentReferences references = prepareNonEquivalent(set.energies, spectra, false);
    const PlanMixture mixture = planMixtures(request).front();
    sample::Random random(seed, 0);
    Vector y(set.energies.size());
    double sum = 0.0, squares = 0.0;
    for (int i = 0; i < pixels; ++i) {
        for (std::size_t k = 0; k < y.size(); ++k) {
            const double absorption = request.background + mixture.absorption(planPoint(request, set.energies[k]));
            y[k] = std::log(random.counts(request.counts) / random.counts(request.counts * std::exp(-absorption)));
        }
        const double valence =
            solveNonEquivalent(backgroundOf(request.method), y, references, valences)[ResultPosition::valence];
        sum += valence;
        squares += valence * valence;
    }
    return std::sqrt(squares / pixels - sum / pixels * (sum / pixels));
}

/// Planned, listed, even and largest-difference energies: 200 repetitions of 100 pixels each.
bool checkScatter()
{
    constexpr int pixels = 200 * 100;
    constexpr double tolerance = 0.05;
    bool good = true;
    std::printf("method      energies                            predicted     found  ratio\n");
    for (const PlanMethod method : {PlanMethod::LinearNonEquivalent, PlanMethod::VictoreenNonEquivalent}) {
        PlanRequest request = sampleRequest();
        request.method = method;
        request.counts = 40000;
        request.scenarios = {{{0.25, 0.45, 0.30}, 1.0}};
        PlanList even = {QStringLiteral("even"), {}, -1};
        for (int i = 0; i < 8; ++i)
            even.energies.push_back(sample::edgeEnergy - 40.0 + 20.0 * i);
        request.compare = {{QStringLiteral("the sample's"),
                            Vector(std::begin(sample::mapEnergies), std::end(sample::mapEnergies)), -1},
                           even};
        const auto outcome = planEnergies(request);
        if (const auto *const mistake = std::get_if<QString>(&outcome)) {
            std::printf("%s\n", qPrintable(*mistake));
            return false;
        }
        const PlanResult &result = std::get<PlanResult>(outcome);
        std::vector<PlannedSet> sets = {result.planned};
        sets.front().name = QStringLiteral("planned");
        sets.insert(sets.end(), result.compared.begin(), result.compared.end());
        for (const PlannedSet &set : sets) {
            const double found = scatterOf(request, set, pixels, 7);
            const bool isGood = std::abs(found / set.sigmaV - 1.0) <= tolerance;
            std::printf("%-10s  %-36s %8.4f  %8.4f  %5.3f%s\n",
                        method == PlanMethod::LinearNonEquivalent ? "linear" : "Victoreen", qPrintable(set.name),
                        set.sigmaV, found, found / set.sigmaV, isGood ? "" : "  OUT OF BOUNDS");
            good = good && isGood;
        }
    }
    return good;
}

/// A smooth edge at a random place, with a random white line and wave.
PlanReference randomReference(sample::Random *random)
{
    const double edge = random->between(7117.0, 7124.0), width = random->between(0.8, 2.5);
    const double peak = random->between(0.1, 0.8), wave = random->between(0.03, 0.12), phase = random->between(0, 6.28);
    AMutE spectrum;
    for (double energy = 6900.0; energy <= 7600.0; energy += energy > 7080.0 && energy < 7200.0 ? 0.5 : 5.0) {
        const double x = energy - edge;
        const double line = peak * std::exp(-x * x / (18.0 * width));
        const double exafs = x > 0.0 ? wave * std::sin(0.35 * std::sqrt(x) * 3.0 + phase) : 0.0;
        spectrum.addPoint({0.0, energy, 0.2 + (1.0 + exafs) / (1.0 + std::exp(-x / width)) + line});
    }
    spectrum.setValid(true);
    spectrum.setEdgeEnergy(7120.0);
    spectrum.setPreEdgeEnd(7070.0);
    spectrum.setPostEdgeStart(7220.0);
    spectrum.fitLines();
    return {QStringLiteral("random"), spectrum, 0.0};
}

/// 4 of 40 candidates: the exchange alone against all 91 390 sets, for 20 pairs of references.
bool checkExchange()
{
    sample::Random random(3, 0);
    int agreed = 0;
    constexpr int pairs = 20, starts = 16;
    for (int pair = 0; pair < pairs; ++pair) {
        PlanRequest request;
        request.references = {randomReference(&random), randomReference(&random)};
        request.references[0].valence = 2.0;
        request.references[1].valence = 3.0;
        request.edge = 7120.0;
        request.from = 7090.0;
        request.to = 7168.0;
        request.step = 2.0;
        const Vector candidates = planCandidates(request);
        std::vector<PlanPoint> points;
        for (const double energy : candidates)
            points.push_back(planPoint(request, energy));
        const std::unique_ptr<PlanCriterion> criterion = planCriterion(request, points, false);
        const PlanSearch search(request, candidates);
        const double all = criterion->of(search.exhaustive(*criterion, 4));
        const double exchanged = criterion->of(search.exchanged(*criterion, 4, starts, {}));
        agreed += exchanged <= all * (1.0 + 1e-9);
    }
    std::printf("\n4 of 40 candidates: the exchange found the best set of all for %d of %d pairs of references\n",
                agreed, pairs);
    return agreed == pairs;
}

/// 8 of 500 candidates with 4 references: the whole planning, with what is printed for other numbers.
bool checkTime()
{
    constexpr double most = 2.0; // s
    PlanRequest request = sampleRequest();
    PlanReference shifted = request.references[1];
    shifted.spectrum.setDE(1.3);
    shifted.spectrum.fitLines();
    shifted.name = QStringLiteral("ref4");
    request.references.push_back(shifted);
    request.from = sample::edgeEnergy - 50.0;
    request.to = sample::edgeEnergy + 199.5;
    request.step = 0.5;
    bool good = true;
    for (const PlanMethod method : {PlanMethod::LinearNonEquivalent, PlanMethod::VictoreenNonEquivalent}) {
        request.method = method;
        const std::clock_t start = std::clock(); // of the processor: it does not count what others do on this machine
        const auto outcome = planEnergies(request);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        const auto *const result = std::get_if<PlanResult>(&outcome);
        std::printf("8 of %zu candidates with 4 references, %s: %.2f s\n", result ? result->candidates.size() : 0,
                    method == PlanMethod::LinearNonEquivalent ? "linear" : "Victoreen", seconds);
        good = good && result && seconds < most;
    }
    return good;
}

} // namespace

int main()
{
    bool good = checkScatter();
    good = checkExchange() && good;
    good = checkTime() && good;
    std::printf(good ? "\nall good\n" : "\nOUT OF BOUNDS\n");
    return good ? 0 : 1;
}
