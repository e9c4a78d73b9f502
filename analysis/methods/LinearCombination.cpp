#include "analysis/methods/LinearCombination.h"

#include "numeric/LinearSystem.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace
{

/// One point of the target in the range: its basis vector (r_1 ... r_m, 1) and its normalised value.
struct Sample {
    int index = 0; ///< of the target's point
    std::vector<double> basis;
    double y = 0.0;
};

std::vector<Sample> samplesOf(const LinearCombinationInput &input)
{
    const AMutE &target = *input.target;
    std::vector<Sample> samples;
    for (int i = 0; i < target.pointCount(); ++i) {
        const double energy = target.shiftedEnergy(i);
        if (!(input.energyMin <= energy && energy <= input.energyMax))
            continue;
        Sample sample;
        sample.index = i;
        sample.y = target.valueAt(AMutE::ByBothLines, i);
        for (const AMutE *reference : input.references)
            sample.basis.push_back(reference->valueAtEnergy(AMutE::ByBothLines, energy));
        sample.basis.push_back(1.0);
        samples.push_back(std::move(sample));
    }
    return samples;
}

/// The root of g^T C g for the covariance matrix C = variance A^-1 of the unknowns, with the decomposed normal matrix
/// A.
double errorOf(const std::vector<double> &gradient, double variance, numeric::LinearSystem *system)
{
    for (int k = 0; k < system->size(); ++k)
        system->rightHandSide()[k] = gradient[static_cast<std::size_t>(k)];
    system->substitute();
    double form = 0.0;
    for (int k = 0; k < system->size(); ++k)
        form += gradient[static_cast<std::size_t>(k)] * system->unknown(k);
    return std::sqrt(variance * form);
}

/// The standard errors; overwrites the right-hand side and the solution of the decomposed system.
void findErrors(const std::vector<double> &valences, double variance, numeric::LinearSystem *system,
                LinearCombination *result)
{
    const std::size_t m = result->coefficients.size();
    const auto error = [&](auto derivative) {
        std::vector<double> gradient(m + 1, 0.0); // nothing but the base itself depends on the base
        for (std::size_t k = 0; k < m; ++k)
            gradient[k] = derivative(k);
        return errorOf(gradient, variance, system);
    };
    for (std::size_t j = 0; j < m; ++j) {
        result->standardErrors.push_back(error([j](std::size_t k) { return k == j ? 1.0 : 0.0; }));
        result->fractionErrors.push_back(
            error([&](std::size_t k) { return ((k == j ? 1.0 : 0.0) - result->fractions[j]) / result->sum; }));
    }
    std::vector<double> base(m + 1, 0.0);
    base[m] = 1.0;
    result->standardErrors.push_back(errorOf(base, variance, system));
    result->sumError = error([](std::size_t) { return 1.0; });
    result->valenceError = error([&](std::size_t k) { return valences[k]; });
    result->meanValenceError = error([&](std::size_t k) { return (valences[k] - result->meanValence) / result->sum; });
}

} // namespace

LinearCombination fitLinearCombination(const LinearCombinationInput &input)
{
    const std::size_t m = input.references.size();
    const std::vector<Sample> samples = samplesOf(input);
    numeric::LinearSystem system(static_cast<int>(m) + 1);
    for (const Sample &sample : samples)
        system.add(sample.basis.data(), sample.y);
    system.solve();

    LinearCombination result;
    for (std::size_t j = 0; j < m; ++j) {
        result.coefficients.push_back(system.unknown(static_cast<int>(j)));
        result.sum += result.coefficients[j];
        result.valence += result.coefficients[j] * input.valences[j];
    }
    for (const double coefficient : result.coefficients)
        result.fractions.push_back(coefficient / result.sum);
    result.meanValence = result.valence / result.sum;
    result.base = system.unknown(static_cast<int>(m));

    double residuals = 0.0;
    double squares = 0.0;
    for (const Sample &sample : samples) {
        double fit = result.base;
        for (std::size_t j = 0; j < m; ++j)
            fit += result.coefficients[j] * sample.basis[j];
        residuals += (sample.y - fit) * (sample.y - fit);
        squares += sample.y * sample.y;
        const SpectrumPoint &measured = input.target->points().at(sample.index);
        result.fitted.addPoint({measured.angle, input.target->shiftedEnergy(sample.index), fit});
    }
    result.fitted.setValid(!samples.empty());
    result.points = static_cast<int>(samples.size());
    result.rFactor = residuals / squares;
    result.degrees = result.points - static_cast<int>(m) - 1;
    const double variance = result.degrees > 0 ? residuals / result.degrees : std::numeric_limits<double>::quiet_NaN();
    findErrors(input.valences, variance, &system, &result);
    return result;
}
