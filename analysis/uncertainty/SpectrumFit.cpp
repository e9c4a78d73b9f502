#include "analysis/uncertainty/SpectrumFit.h"

#include "analysis/methods/FourPoints.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/methods/NonEquivalentBasis.h"
#include "analysis/uncertainty/PixelErrors.h"
#include "analysis/uncertainty/UncertaintyConstants.h"
#include "numeric/LinearSystem.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace
{

using Vector = std::vector<double>;

void fitNonEquivalentSpectrum(const RunInfo &run, const Vector &y, SpectrumFit *fit)
{
    const NonEquivalentReferences &references = run.nonEquivalent;
    Vector valences;
    for (const RunReference &reference : run.references)
        valences.push_back(reference.valence);
    const NonEquivalentValues found = solveNonEquivalent(run.method.background, y, references, valences);
    fit->valence = found[ResultPosition::valence];
    fit->amount = found[ResultPosition::amount];
    fit->background = {found[ResultPosition::mut0], found[ResultPosition::c1], found[ResultPosition::c2]};
    for (std::size_t j = 0; j < references.columns.size(); ++j) {
        fit->fractions.push_back(found[ResultPosition::ratio + j]);
        fit->components.push_back(found[ResultPosition::dMut + j] / (references.weights[j] * references.jumpSum));
    }
    for (std::size_t k = 0; k < y.size(); ++k) {
        const NonEquivalentBasis basis = nonEquivalentBasis(run.method.background, references, k);
        double sum = 0.0;
        std::size_t i = 0;
        for (const double component : fit->components)
            sum += component * basis[i++];
        for (const double coefficient : fit->background) {
            if (i < basis.size())
                sum += coefficient * basis[i++];
        }
        fit->fitted.push_back(sum);
    }
}

/// The line mu0 + k E that the method draws through what the anchor points leave of t (A + B) / 2.
void fitLine(const FourPointsReferences &references, const Vector &y, std::size_t anchors, SpectrumFit *fit)
{
    const auto rest = [&](std::size_t k) {
        return y[k] - 0.5 * fit->amount * (references.a[k] + references.b[k]);
    };
    const auto count = static_cast<double>(anchors);
    double centre = 0.0, mean = 0.0, product = 0.0, square = 0.0;
    for (std::size_t k = 0; k < anchors; ++k) {
        centre += references.energies[k] / count;
        mean += rest(k) / count;
    }
    for (std::size_t k = 0; k < anchors; ++k) {
        const double distance = references.energies[k] - centre;
        product += distance * rest(k);
        square += distance * distance;
    }
    fit->background = {mean - product / square * centre, product / square, 0.0};
}

void fitFourPointsSpectrum(const RunInfo &run, const Vector &y, SpectrumFit *fit)
{
    const FourPointsReferences &references = run.fourPoints;
    const bool isThree = run.method.variant == FourPointsVariant::ThreePoint;
    numeric::LinearSystem work(3);
    const FourPointsResult found = solveFourPoints(run.method.variant, references, y.data(), &work);
    const double a = found.a;
    fit->amount = found.t;
    fit->fractions = {a, 1.0 - a};
    fit->valence =
        run.references.size() < 2 ? 0.0 : mixedValence(run.references[0].valence, run.references[1].valence, a);
    fit->fitted = y; // the V point, and three points, are met exactly
    if (y.size() < pointsNeeded(run.method.variant))
        return;
    if (isThree) {
        // y = y_P + step (a (A - A_P) / dA + (1 - a) (B - B_P) / dB)
        const double step = y[1] - y[0];
        fit->components = {step * a / (references.a[1] - references.a[0]),
                           step * (1.0 - a) / (references.b[1] - references.b[0])};
        fit->background[0] = y[0] - fit->components[0] * references.a[0] - fit->components[1] * references.b[0];
        return;
    }
    // y - line = t (J_A + J_B) / 2 (a A / J_A + (1 - a) B / J_B) with r = J_A / J_B
    const double r = references.r;
    fit->components = {0.5 * found.t * a * (1.0 + 1.0 / r), 0.5 * found.t * (1.0 - a) * (1.0 + r)};
    const std::size_t anchors = run.method.variant == FourPointsVariant::Exact ? 3 : y.size() - 1;
    fitLine(references, y, anchors, fit);
    for (std::size_t k = 0; k < anchors; ++k)
        fit->fitted[k] = 0.5 * found.t * (references.a[k] + references.b[k]) + fit->background[0] +
                         fit->background[1] * references.energies[k];
}

SpectrumFit solve(const RunInfo &run, const Vector &values)
{
    SpectrumFit fit;
    if (run.method.isNonEquivalent)
        fitNonEquivalentSpectrum(run, values, &fit);
    else
        fitFourPointsSpectrum(run, values, &fit);
    return fit;
}

void findErrors(const UncertaintyConstants &constants, const Vector &values, const Vector &variances, SpectrumFit *fit)
{
    PixelValues found = {fit->amount, fit->valence, {}};
    std::copy(fit->fractions.begin(), fit->fractions.end(), found.fractions.begin());
    const PixelErrors errors = pixelErrors(constants, values.data(), variances.data(), found);
    fit->valenceError = errors.valence;
    fit->amountError = errors.amount;
    const auto count = static_cast<std::ptrdiff_t>(fit->fractions.size());
    fit->fractionErrors.assign(errors.fractions.begin(), errors.fractions.begin() + count);
    fit->degrees = constants.degrees;
    fit->chiSquare = errors.chiSquare;
}

} // namespace

SpectrumFit fitSpectrum(const RunInfo &run, const Vector &values, const Vector &variances)
{
    SpectrumFit fit = solve(run, values);
    findErrors(uncertaintyConstants(run), values, variances, &fit);
    return fit;
}

TargetFit fitTarget(const RunInfo &run, const Vector &values)
{
    const UncertaintyConstants constants = uncertaintyConstants(run);
    TargetFit target;
    target.fit = solve(run, values);
    findErrors(constants, values, Vector(values.size(), 1.0), &target.fit); // chi^2 is RSS with unit variances
    const double variance =
        constants.degrees > 0 ? target.fit.chiSquare / constants.degrees : std::numeric_limits<double>::quiet_NaN();
    target.deviation = std::sqrt(variance);
    target.fit.valenceError *= target.deviation;
    target.fit.amountError *= target.deviation;
    for (double &error : target.fit.fractionErrors)
        error *= target.deviation;
    target.fit.chiSquare /= variance;
    target.factor = studentFactor(constants.degrees);
    return target;
}
