#pragma once

#include "analysis/methods/ResultPosition.h"

#include <QtGlobal>

#include <array>

/// One result quantity: where it stands, what it is called and the object names of its controls.
struct ResultQuantity {
    int position;
    const char *name;            ///< to be translated in the context FourPs
    const char *recordBox;       ///< check box: written to the result file
    const char *mapButton;       ///< radio button: shown as the result map
    const char *histogramButton; ///< feeds the histogram; note the spelling HgdMut1
};

constexpr std::array<ResultQuantity, ResultPosition::count> resultQuantities = {{
    {0, QT_TRANSLATE_NOOP("FourPs", "Ratio 1"), "RecRatio1", "MapRatio1", "HgRatio1"},
    {1, QT_TRANSLATE_NOOP("FourPs", "Ratio 2"), "RecRatio2", "MapRatio2", "HgRatio2"},
    {2, QT_TRANSLATE_NOOP("FourPs", "Ratio 3"), "RecRatio3", "MapRatio3", "HgRatio3"},
    {3, QT_TRANSLATE_NOOP("FourPs", "Ratio 4"), "RecRatio4", "MapRatio4", "HgRatio4"},
    {4, QT_TRANSLATE_NOOP("FourPs", "dMut 1"), "RecDMut1", "MapDMut1", "HgdMut1"},
    {5, QT_TRANSLATE_NOOP("FourPs", "dMut 2"), "RecDMut2", "MapDMut2", "HgdMut2"},
    {6, QT_TRANSLATE_NOOP("FourPs", "dMut 3"), "RecDMut3", "MapDMut3", "HgdMut3"},
    {7, QT_TRANSLATE_NOOP("FourPs", "dMut 4"), "RecDMut4", "MapDMut4", "HgdMut4"},
    {8, QT_TRANSLATE_NOOP("FourPs", "mut0"), "RecMut0", "MapMut0", "HgMut0"},
    {9, QT_TRANSLATE_NOOP("FourPs", "C1"), "RecC1", "MapC1", "HgC1"},
    {10, QT_TRANSLATE_NOOP("FourPs", "C2"), "RecC2", "MapC2", "HgC2"},
    {11, QT_TRANSLATE_NOOP("FourPs", "Valence"), "RecValence", "MapValence", "HgValence"},
    {12, QT_TRANSLATE_NOOP("FourPs", "Amount"), "RecAmount", "MapAmount", "HgAmount"},
}};
