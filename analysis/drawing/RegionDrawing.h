#pragma once

#include "analysis/model/FittedCurve.h"
#include "analysis/uncertainty/RegionStatistics.h"
#include "display/RealRange.h"

#include <QColor>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>
#include <vector>

class ChCoord;
class DispABase;
class QPainter;
class QStylePainter;

/// The mean spectrum of a region and its fit.
struct RegionGraphInput {
    std::vector<RegionPoint> points;
    FittedCurve curve;         ///< may be empty
    QStringList names;         ///< of the curve's components
    bool hasResiduals = false; ///< false: there are as many points as unknowns
    QColor colour;
    QString xTitle;
    QString yTitle;
    QString residualTitle;
    QString fitName; ///< of curve and background, for the legend
    QString backgroundName;
};

/// A region on a map.
struct RegionOutline {
    PixelRectangle pixels;
    QColor colour;
    bool isPart = false; ///< not every pixel of the rectangle belongs to it: a broken line
};

namespace resultdrawing
{

/// Colours that tell regions apart, on white and on the colours of a map.
constexpr int regionColourCount = 8;
QColor regionColour(int index);

/// A fifth beyond the points' energies on either side, and what is to be seen there, widened by 5 %. None without a
/// finite point.
std::optional<RealRange> naturalRange(const RegionGraphInput &input);

/// The points with their standard errors, the fitted curve, the background and, each upon it, the components as thin
/// lines; in a strip below the residuals in units of the standard errors. Without points the area is only white.
void drawRegion(DispABase *display, QStylePainter *p, const RegionGraphInput &input);

/// What it shows as tab-separated text with lines of titles: a line per point (energy in eV, mean, standard error, fit,
/// residual / s), then after an empty line one per energy of the curve (energy, fit, background, the components).
QString regionText(const RegionGraphInput &input);

/// The outlines of regions on a map whose cell (i, j) covers (i, j) to (i + 1, j + 1), within the plot.
void drawOutlines(QPainter *p, const ChCoord &cc, const QVector<RegionOutline> &outlines);

} // namespace resultdrawing
