#pragma once

#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/MapDrawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "display/HistogramBins.h"

#include <QString>

/// What the displays show, as tab-separated text with a line of titles, for a spreadsheet. Numbers have six significant
/// digits and a decimal point.
namespace plottedtext
{

/// Two columns per curve, side by side: energy in eV and value.
QString ofCurves(const QVector<MutsCurve> &curves);
/// A line per box: lower edge, centre, upper edge, count.
QString ofHistogram(const HistogramBins &bins);
/// A line per record: the two valences and the two fractions.
QString ofComparison(const QVector<ComparisonRecord> &records);
/// Two columns of `count` values.
QString ofPoints(const QString &xTitle, const QString &yTitle, const double *x, const double *y, std::size_t count);

/// A plain grid without titles: one line per map row, the values separated by `separator`. Rows without values are
/// left out.
QByteArray ofMap(const ShownMap &map, char separator);

} // namespace plottedtext
