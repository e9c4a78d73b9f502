#pragma once

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/M2M3Drawing.h"
#include "analysis/drawing/MapDrawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/ScatterDrawing.h"

#include <QByteArray>
#include <QString>

/// What the displays show, as tab-separated text with a line of titles, for a spreadsheet. Numbers have six significant
/// digits and a decimal point.
namespace plottedtext
{

/// Two columns per curve, side by side: energy in eV and value.
QString of(const MutsInput &input);
/// A line per box: lower edge, centre, upper edge, count and the counts of the parts.
QString of(const HistogramInput &input);
/// A line per record: the two valences and the two fractions.
QString of(const LcfVsMpsInput &input);
/// A line per pixel: its coordinates in the picture.
QString of(const ScatterInput &input);
QString of(const M2M3Input &input);

/// A plain grid without titles: one line per map row, the values separated by `separator`, "nan" where `mask` (one per
/// value, or none) is not 0. Rows without values are left out; a row that is not whole ends early.
QByteArray ofMap(const ShownMap &map, char separator, const quint8 *mask = nullptr);

} // namespace plottedtext
