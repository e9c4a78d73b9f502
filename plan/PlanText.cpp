#include "plan/PlanText.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace
{

struct Row {
    PlanText key;
    const char *text;
};

constexpr Row texts[] = {
    {PlanText::FewReferences, QT_TRANSLATE_NOOP("Plan", "Planning needs at least two references.")},
    {PlanText::OutsideReference,
     QT_TRANSLATE_NOOP("Plan", "Reference %1 reaches from %2 to %3 eV and not to %4 eV, which \"%5\" asks for.")},
    {PlanText::EmptyRange, QT_TRANSLATE_NOOP("Plan", "There are no candidates between %1 and %2 eV.")},
    {PlanText::ManyCandidates, QT_TRANSLATE_NOOP("Plan", "The step makes more than %1 candidates.")},
    {PlanText::FewEnergies, QT_TRANSLATE_NOOP("Plan", "%1 energies are too few: the method wants %2 or more.")},
    {PlanText::ManyEnergies, QT_TRANSLATE_NOOP("Plan", "%1 energies are too many: the method knows %2.")},
    {PlanText::FewCandidates, QT_TRANSLATE_NOOP("Plan", "Candidates %2 eV apart: %1 found, %3 energies wanted.")},
    {PlanText::KeptOutside, QT_TRANSLATE_NOOP("Plan", "%1 eV is to be kept, but lies outside of %2 to %3 eV.")},
    {PlanText::KeptNear,
     QT_TRANSLATE_NOOP("Plan", "%1 and %2 eV are to be kept, but the spacing asks for %3 eV between energies.")},
    {PlanText::EqualEnergies, QT_TRANSLATE_NOOP("Plan", "%1: %2 eV stands there twice.")},
    {PlanText::ManyKept, QT_TRANSLATE_NOOP("Plan", "%1 energies are to be kept, more than the %2 that are planned.")},
    {PlanText::NoLines,
     QT_TRANSLATE_NOOP("Plan", "Reference %1 has no edge jump: its pre-edge or post-edge range holds too few points.")},
    {PlanText::AlikeReferences,
     QT_TRANSLATE_NOOP("Plan", "References %1 and %2 are alike: no energies can tell them apart.")},
    {PlanText::MixedReference,
     QT_TRANSLATE_NOOP("Plan", "Reference %1 is a mixture of the others: no energies can tell them apart.")},
    {PlanText::SameValences,
     QT_TRANSLATE_NOOP("Plan", "All references have the valence %1: there is none to be told.")},
    {PlanText::NotANumber, QT_TRANSLATE_NOOP("Plan", "\"%1\" is no number that can be planned with.")},
    {PlanText::NotPositive, QT_TRANSLATE_NOOP("Plan", "\"%1\" must be a number above 0.")},
    {PlanText::Negative, QT_TRANSLATE_NOOP("Plan", "\"%1\" must be a number, not below 0.")},
    {PlanText::NotWhole, QT_TRANSLATE_NOOP("Plan", "\"%1\" must be a whole number from 1 to 100.")},
    {PlanText::NoShare, QT_TRANSLATE_NOOP("Plan", "\"%1\" must be a share from 0 to below 1.")},
    {PlanText::BadSample,
     QT_TRANSLATE_NOOP("Plan", "The sample \"%1\" must be %2 fractions, one per reference, with a sum above 0.")},
    {PlanText::NotCompared, QT_TRANSLATE_NOOP("Plan", "The energies in the window are not compared: %1")},
    {PlanText::Present, QT_TRANSLATE_NOOP("Plan", "in the window")},
    {PlanText::UsualSamples, QT_TRANSLATE_NOOP("Plan", "each alone, equal parts")},
    {PlanText::NothingFound, QT_TRANSLATE_NOOP("Plan", "No candidates determine the fit.")},
    {PlanText::Stopped, QT_TRANSLATE_NOOP("Plan", "Planning was stopped.")},
    {PlanText::EndsAndDifferences, QT_TRANSLATE_NOOP("Plan", "ends + largest reference differences")},
    {PlanText::Background, QT_TRANSLATE_NOOP("Plan", "background")},
    {PlanText::Amount, QT_TRANSLATE_NOOP("Plan", "amount and background")},
    {PlanText::Difference, QT_TRANSLATE_NOOP("Plan", "%1 against %2")},
    {PlanText::Planned, QT_TRANSLATE_NOOP("Plan", "planned")},
    {PlanText::EnergyTitle, QT_TRANSLATE_NOOP("Plan", " energy/eV  share/%  separates")},
    {PlanText::ScenarioTitle,
     QT_TRANSLATE_NOOP("Plan",
                       "fractions and thickness: sigma_V at equal shares, at these shares, change of V per 0.1 eV "
                       "of wrong energy; sigma_f per reference")},
    {PlanText::SetTitle,
     QT_TRANSLATE_NOOP("Plan", "sigma_V at equal shares, at the best shares, change of V per 0.1 eV; energies/eV")},
    {PlanText::NumberTitle, QT_TRANSLATE_NOOP("Plan", "The same by the number of energies, each planned:")},
    {PlanText::Limits, QT_TRANSLATE_NOOP("Plan", "detection limits of the fractions: %1")},
    {PlanText::Bias, QT_TRANSLATE_NOOP("Plan", "valence that the method misses without any noise: %1")},
    {PlanText::PureBias,
     QT_TRANSLATE_NOOP("Plan", "these energies find a valence of %2 in a sample of %1 alone, which has %3")},
    {PlanText::Method, QT_TRANSLATE_NOOP("Plan", "method: %1")},
    {PlanText::MethodKnowsTwo, QT_TRANSLATE_NOOP("Plan", "method: %1; it knows two references, %2, and not %3")},
    {PlanText::LinearNonEquivalent, QT_TRANSLATE_NOOP("Plan", "non-equivalent, linear background")},
    {PlanText::VictoreenNonEquivalent, QT_TRANSLATE_NOOP("Plan", "non-equivalent, Victoreen background")},
    {PlanText::LeastSquaresFourPoints, QT_TRANSLATE_NOOP("Plan", "four points, least squares")},
    {PlanText::ExactFourPoints, QT_TRANSLATE_NOOP("Plan", "four points, exact")},
    {PlanText::Marked, QT_TRANSLATE_NOOP("Plan", "* too few energies to be planned with a background term more")},
    {PlanText::PictureShares, QT_TRANSLATE_NOOP("Plan", "share of the exposure/%")},
    {PlanText::PictureEnergy, QT_TRANSLATE_NOOP("Plan", "energy/eV")},
    {PlanText::PictureReferences, QT_TRANSLATE_NOOP("Plan", "references in edge jumps")},
    {PlanText::PictureWorth, QT_TRANSLATE_NOOP("Plan", "error of V if moved here")},
    {PlanText::WithExtraTerm, QT_TRANSLATE_NOOP("Plan", "planned with one background term more than the fit has")},
    {PlanText::WithoutExtraTerm,
     QT_TRANSLATE_NOOP("Plan", "planned with the background of the fit, without a term more")},
};

} // namespace

QString planText(PlanText text)
{
    const auto row = std::find_if(std::begin(texts), std::end(texts),
                                  [text](const Row &candidate) { return candidate.key == text; });
    return QCoreApplication::translate("Plan", row->text);
}

QString planMethodName(PlanMethod method)
{
    switch (method) {
    case PlanMethod::LinearNonEquivalent:
        return planText(PlanText::LinearNonEquivalent);
    case PlanMethod::VictoreenNonEquivalent:
        return planText(PlanText::VictoreenNonEquivalent);
    case PlanMethod::LeastSquaresFourPoints:
        return planText(PlanText::LeastSquaresFourPoints);
    case PlanMethod::ExactFourPoints:
        break;
    }
    return planText(PlanText::ExactFourPoints);
}
