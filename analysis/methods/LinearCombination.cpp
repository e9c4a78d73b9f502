#include "analysis/methods/LinearCombination.h"

#include "numeric/LinearSystem.h"

#include <cmath>
#include <cstddef>
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

/// The diagonal of the inverse of the decomposed matrix.
std::vector<double> inverseDiagonal(numeric::LinearSystem *system)
{
    std::vector<double> diagonal;
    for (int i = 0; i < system->size(); ++i) {
        for (int k = 0; k < system->size(); ++k)
            system->rightHandSide()[k] = k == i ? 1.0 : 0.0;
        system->substitute();
        diagonal.push_back(system->unknown(i));
    }
    return diagonal;
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
    const double variance = residuals / (static_cast<double>(samples.size()) - static_cast<double>(m) - 1.0);
    for (const double element : inverseDiagonal(&system))
        result.standardErrors.push_back(std::sqrt(variance * element));
    return result;
}
