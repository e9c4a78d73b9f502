#pragma once

#include "analysis/methods/ResultPosition.h"

#include <QtGlobal>

#include <array>
#include <cstddef>

/// Where the colour range of a quantity comes from, see quantityRange().
enum class RangeRule {
    Fraction,    ///< a little more than 0 to 1
    EdgeJump,    ///< a little more than 0 to the sum of the references' edge jumps
    Valence,     ///< half a unit beyond the references' valences
    TotalAmount, ///< as EdgeJump; a relative thickness has the bounds of the thickness histogram
    None         ///< no range of its own
};

/// How a four-points result has a quantity, see shownPlane().
enum class FourPointsRule {
    Fraction,     ///< a
    OtherPart,    ///< 1 - a
    MixedValence, ///< of the two references
    Thickness,    ///< t/ts
    None          ///< the method knows no such quantity
};

/// When the non-equivalent method finds a quantity; the others are 0.
struct NonEquivalentNeeds {
    int references = 0;           ///< so many or more
    bool isVictoreenOnly = false; ///< with the Victoreen background only
};

/// One result quantity: where it stands, what it is called, the object names of its controls, its rules.
struct ResultQuantity {
    int position;
    const char *name;            ///< to be translated in the context FourPs
    const char *recordBox;       ///< check box: written to the result file
    const char *mapButton;       ///< radio button: shown as the result map
    const char *histogramButton; ///< feeds the histogram; note the spelling HgdMut1
    RangeRule range;
    FourPointsRule fourPoints;
    NonEquivalentNeeds nonEquivalent;
};

// clang-format off
constexpr std::array<ResultQuantity, ResultPosition::count> resultQuantities = {{
    {ResultPosition::ratio, QT_TRANSLATE_NOOP("FourPs", "Ratio 1"), "RecRatio1", "MapRatio1", "HgRatio1",
     RangeRule::Fraction, FourPointsRule::Fraction, {1}},
    {ResultPosition::ratio + 1, QT_TRANSLATE_NOOP("FourPs", "Ratio 2"), "RecRatio2", "MapRatio2", "HgRatio2",
     RangeRule::Fraction, FourPointsRule::OtherPart, {2}},
    {ResultPosition::ratio + 2, QT_TRANSLATE_NOOP("FourPs", "Ratio 3"), "RecRatio3", "MapRatio3", "HgRatio3",
     RangeRule::Fraction, FourPointsRule::None, {3}},
    {ResultPosition::ratio + 3, QT_TRANSLATE_NOOP("FourPs", "Ratio 4"), "RecRatio4", "MapRatio4", "HgRatio4",
     RangeRule::Fraction, FourPointsRule::None, {4}},
    {ResultPosition::dMut, QT_TRANSLATE_NOOP("FourPs", "dMut 1"), "RecDMut1", "MapDMut1", "HgdMut1",
     RangeRule::EdgeJump, FourPointsRule::None, {1}},
    {ResultPosition::dMut + 1, QT_TRANSLATE_NOOP("FourPs", "dMut 2"), "RecDMut2", "MapDMut2", "HgdMut2",
     RangeRule::EdgeJump, FourPointsRule::None, {2}},
    {ResultPosition::dMut + 2, QT_TRANSLATE_NOOP("FourPs", "dMut 3"), "RecDMut3", "MapDMut3", "HgdMut3",
     RangeRule::EdgeJump, FourPointsRule::None, {3}},
    {ResultPosition::dMut + 3, QT_TRANSLATE_NOOP("FourPs", "dMut 4"), "RecDMut4", "MapDMut4", "HgdMut4",
     RangeRule::EdgeJump, FourPointsRule::None, {4}},
    {ResultPosition::mut0, QT_TRANSLATE_NOOP("FourPs", "mut0"), "RecMut0", "MapMut0", "HgMut0",
     RangeRule::EdgeJump, FourPointsRule::None, {}},
    {ResultPosition::c1, QT_TRANSLATE_NOOP("FourPs", "C1"), "RecC1", "MapC1", "HgC1",
     RangeRule::None, FourPointsRule::None, {}},
    {ResultPosition::c2, QT_TRANSLATE_NOOP("FourPs", "C2"), "RecC2", "MapC2", "HgC2",
     RangeRule::None, FourPointsRule::None, {0, true}},
    {ResultPosition::valence, QT_TRANSLATE_NOOP("FourPs", "Valence"), "RecValence", "MapValence", "HgValence",
     RangeRule::Valence, FourPointsRule::MixedValence, {}},
    {ResultPosition::amount, QT_TRANSLATE_NOOP("FourPs", "Amount"), "RecAmount", "MapAmount", "HgAmount",
     RangeRule::TotalAmount, FourPointsRule::Thickness, {}},
}};
// clang-format on

/// Whether every row stands at its own position.
constexpr bool quantitiesAreInOrder()
{
    for (int i = 0; i < ResultPosition::count; ++i) {
        if (resultQuantities[static_cast<std::size_t>(i)].position != i)
            return false;
    }
    return true;
}
static_assert(quantitiesAreInOrder(), "a result quantity stands in another one's place");

/// The quantity at a position (see ResultPosition); null where there is none.
constexpr const ResultQuantity *quantityAt(int position)
{
    return position >= 0 && position < ResultPosition::count ? &resultQuantities[static_cast<std::size_t>(position)]
                                                             : nullptr;
}
