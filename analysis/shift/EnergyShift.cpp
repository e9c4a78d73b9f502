#include "analysis/shift/EnergyShift.h"

#include "analysis/methods/NonEquivalentBasis.h"
#include "analysis/uncertainty/Distributions.h"
#include "analysis/uncertainty/LeastSquaresBasis.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <numeric>

using Vector = std::vector<double>;
using Outcome = EnergyShift::Outcome;

namespace
{

constexpr double gridStep = 0.02;    // eV
constexpr double largestError = 0.5; // eV: a worse one tells nothing within the limits
constexpr double slopeStep = 0.1;    // eV to both sides
constexpr double confidence = 4.0;   // of chi^2: two standard errors

double dot(const Vector &l, const Vector &r)
{
    return std::inner_product(l.begin(), l.end(), r.begin(), 0.0);
}

/// The weighted fit at any shift.
class ShiftedFit
{
public:
    explicit ShiftedFit(const EnergyShiftInput &input)
        : m_input(input)
    {
        for (std::size_t k = 0; k < input.values.size(); ++k) {
            m_weights.push_back(1.0 / std::sqrt(input.variances[k]));
            m_values.push_back(input.values[k] * m_weights[k]);
        }
    }

    double chiSquare(double shift) const
    {
        double sum = 0.0;
        for (const Vector &direction : leastSquaresBasis(columns(shift)).complement)
            sum += std::pow(dot(direction, m_values), 2);
        return sum;
    }

    /// Half the second derivative of chi^2: what the slopes of the fitted sum of references are beyond the fit.
    double curvature(double shift) const
    {
        const std::vector<Vector> basis = columns(shift);
        const LeastSquaresBasis fit = leastSquaresBasis(basis);
        const std::vector<Vector> below = columns(shift - slopeStep), above = columns(shift + slopeStep);
        Vector slope(m_values.size(), 0.0);
        for (std::size_t j = 0; j < m_input.spectra.size(); ++j) {
            const double coefficient = dot(fit.inverse[j], m_values);
            for (std::size_t k = 0; k < slope.size(); ++k)
                slope[k] += coefficient * (above[j][k] - below[j][k]) / (2.0 * slopeStep);
        }
        double sum = 0.0;
        for (const Vector &direction : fit.complement)
            sum += std::pow(dot(direction, slope), 2);
        return sum;
    }

private:
    /// References first, then the background, divided by the standard errors.
    std::vector<Vector> columns(double shift) const
    {
        Vector shifted = m_input.energies;
        for (double &energy : shifted)
            energy += shift;
        NonEquivalentReferences references = prepareNonEquivalent(shifted, m_input.spectra, m_input.subtractsPostLine);
        references.energies = m_input.energies;
        const auto unknowns = static_cast<std::size_t>(nonEquivalentUnknowns(references.count(), m_input.background));
        std::vector<Vector> found(unknowns, Vector(m_values.size(), 0.0));
        for (std::size_t k = 0; k < m_values.size(); ++k) {
            const NonEquivalentBasis basis = nonEquivalentBasis(m_input.background, references, k);
            for (std::size_t i = 0; i < unknowns; ++i)
                found[i][k] = basis[i] * m_weights[k];
        }
        return found;
    }

    const EnergyShiftInput &m_input;
    Vector m_weights, m_values;
};

/// chi^2 on an even grid of shifts.
struct Profile {
    Vector shifts, values;
    std::size_t smallest = 0;
};

Profile profileOf(const ShiftedFit &fit)
{
    constexpr int steps = 100; // to both sides
    Profile profile;
    for (int i = -steps; i <= steps; ++i) {
        profile.shifts.push_back(i * gridStep);
        profile.values.push_back(fit.chiSquare(profile.shifts.back()));
    }
    profile.smallest = static_cast<std::size_t>(std::min_element(profile.values.begin(), profile.values.end()) -
                                                profile.values.begin());
    return profile;
}

/// The minimum within a grid step of `middle`, by thirds.
double refined(const ShiftedFit &fit, double middle)
{
    double low = middle - gridStep, high = middle + gridStep;
    while (high - low > 1e-4) {
        const double third = (high - low) / 3.0;
        if (fit.chiSquare(low + third) < fit.chiSquare(high - third))
            high -= third;
        else
            low += third;
    }
    return 0.5 * (low + high);
}

/// Whether another minimum, beyond a rise of chi^2, comes within `margin` of the smallest one.
bool hasRival(const Profile &profile, double margin)
{
    const double bound = profile.values[profile.smallest] + margin;
    const auto beyondRise = [&](const auto &from, const auto &to) {
        const auto rise = std::find_if(from, to, [bound](double value) { return value > bound; });
        return std::any_of(rise, to, [bound](double value) { return value < bound; });
    };
    const auto middle = profile.values.begin() + static_cast<std::ptrdiff_t>(profile.smallest);
    return beyondRise(middle, profile.values.end()) ||
           beyondRise(std::make_reverse_iterator(middle), profile.values.rend());
}

bool isUsable(const EnergyShiftInput &input)
{
    const auto isFinite = [](double value) {
        return std::isfinite(value);
    };
    return !input.spectra.empty() && !input.values.empty() &&
           std::all_of(input.values.begin(), input.values.end(), isFinite) &&
           std::all_of(input.variances.begin(), input.variances.end(),
                       [](double value) { return std::isfinite(value) && value > 0.0; });
}

} // namespace

EnergyShift findEnergyShift(const EnergyShiftInput &input)
{
    EnergyShift found;
    if (!isUsable(input))
        return found;
    const int degrees = static_cast<int>(input.values.size()) -
                        nonEquivalentUnknowns(static_cast<int>(input.spectra.size()), input.background);
    found.outcome = Outcome::FewEnergies;
    if (degrees < (input.isScaleKnown ? 1 : 2))
        return found;

    const ShiftedFit fit(input);
    const Profile profile = profileOf(fit);
    found.shift = refined(fit, profile.shifts[profile.smallest]);
    const double smallest = fit.chiSquare(found.shift);
    found.misfitBefore = fit.chiSquare(0.0) / degrees;
    found.misfitAfter = smallest / degrees;
    const int rest = degrees - 1; // the shift is an unknown, too
    double scale = rest > 0 ? smallest / rest : 1.0;
    if (input.isScaleKnown)
        scale = std::max(scale, 1.0);
    found.error = std::sqrt(scale / fit.curvature(found.shift));
    if (!input.isScaleKnown)
        found.error *= studentFactor(rest);

    if (profile.smallest == 0 || profile.smallest + 1 == profile.values.size())
        found.outcome = Outcome::AtLimit;
    else if (!(found.error <= largestError))
        found.outcome = Outcome::Flat;
    else if (hasRival(profile, confidence * scale))
        found.outcome = Outcome::Ambiguous;
    else
        found.outcome = Outcome::Found;
    return found;
}

QString textOf(const EnergyShift &shift)
{
    const auto translated = [](const char *text) {
        return QCoreApplication::translate("EnergyShift", text);
    };
    const auto number = [](double value) {
        return QString::number(value, 'f', 3);
    };
    const auto refused = [&](const char *reason) {
        return translated(QT_TRANSLATE_NOOP("EnergyShift", "The energy shift of the maps cannot be told: %1."))
            .arg(translated(reason));
    };
    switch (shift.outcome) {
    case Outcome::Found:
        break;
    case Outcome::NoMaterial:
        return refused(QT_TRANSLATE_NOOP("EnergyShift", "there is no mean spectrum of material"));
    case Outcome::FewEnergies:
        return refused(QT_TRANSLATE_NOOP("EnergyShift", "there are too few energies for a misfit"));
    case Outcome::AtLimit:
        return refused(QT_TRANSLATE_NOOP("EnergyShift", "the misfit still falls at 2 eV"));
    case Outcome::Flat:
        return refused(QT_TRANSLATE_NOOP("EnergyShift", "the misfit hardly depends on it"));
    case Outcome::Ambiguous:
        return refused(QT_TRANSLATE_NOOP("EnergyShift", "several shifts do equally well"));
    }
    return translated(QT_TRANSLATE_NOOP("EnergyShift",
                                        "Energy shift of the maps: %1 +- %2 eV, to be added to the dE of "
                                        "all references (misfit %3 without, %4 with it)"))
        .arg(number(shift.shift), number(shift.error), number(shift.misfitBefore), number(shift.misfitAfter));
}
