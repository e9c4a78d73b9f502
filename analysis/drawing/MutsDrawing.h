#pragma once

#include "display/RealRange.h"

#include <QColor>
#include <QPolygonF>
#include <QString>
#include <QVector>

#include <optional>

class AMutE;
class DispABase;
class QStylePainter;

/// One spectrum among all of them.
struct MutsCurve {
    QString name;
    QColor colour;
    QPolygonF points;                   ///< energy in eV, value
    Qt::PenStyle style = Qt::SolidLine; ///< tells curves of one colour apart
};

/// The points of a spectrum under a normalisation (AMutE::Type), over its shifted energies; none when it is not valid.
QPolygonF spectrumPoints(const AMutE &spectrum, int type);

struct MutsInput {
    QVector<MutsCurve> curves;        ///< the first one is drawn first
    QVector<double> pointEnergies;    ///< eV, green lines: the energy points in use
    QVector<double> markedEnergies;   ///< eV, pink lines: ends of the fit ranges, V point
    std::optional<double> edgeEnergy; ///< eV, a red line
    double windowFrom = 0.0;          ///< eV: shows these energies at first; all of them unless the window has a width
    double windowTo = 0.0;
    QString xTitle;
    QString yTitle;
};

namespace resultdrawing
{

const QColor mutsGridColour(200, 200, 200);
const QColor pointEnergyColour(80, 255, 80);
const QColor markedEnergyColour(255, 200, 255);
const QColor edgeEnergyColour(255, 0, 0); // as in the graphs of single spectra

/// Spans the energies of the curves or the window, and the values therein widened by 5 % of their extent; half a unit
/// on either side of a single energy or value. None without a finite point.
std::optional<RealRange> naturalRange(const MutsInput &input);

/// All spectra in one graph, with their names. Points that are not finite leave gaps.
void drawMuts(DispABase *display, QStylePainter *p, const MutsInput &input);

} // namespace resultdrawing
