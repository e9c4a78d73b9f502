#pragma once

// What the tests of the graphs share: inputs of every kind, and drawing them.

#include "DrawingHelpers.h"
#include "Tables.h"

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/M2M3Drawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/PointCloud.h"
#include "analysis/drawing/ScatterDrawing.h"
#include "display/DispABase.h"
#include "display/HistogramBins.h"
#include "display/PlotFrame.h"

#include <variant>

using namespace resultdrawing;
using Doubles = QVector<double>;

const double notANumber = qQNaN(), infinity = qInf();
const QColor white(Qt::white), black(Qt::black), red(Qt::red), blue(Qt::blue), grid(plot::gridColour);

using Input = std::variant<LcfVsMpsInput, ScatterInput, M2M3Input, MutsInput, HistogramInput>;

/// Draws any kind of input.
struct Draw {
    void operator()(const LcfVsMpsInput &input) const { drawLcfVsMps(display, p, input); }
    void operator()(const ScatterInput &input) const { drawScatter(display, p, input, cache); }
    void operator()(const M2M3Input &input) const { drawM2M3(display, p, input, cache); }
    void operator()(const MutsInput &input) const { drawMuts(display, p, input); }
    void operator()(const HistogramInput &input) const { drawHistogram(display, p, input); }
    DispABase *display;
    QStylePainter *p;
    ScatterCache *cache;
};

struct Graph : Canvas<DispABase> {
    using Canvas<DispABase>::Canvas;
    void draw(const Input &input, double pixelRatio = 1, ScatterCache *cache = nullptr)
    {
        paint([&](QStylePainter *p) { std::visit(Draw{&display, p, cache}, input); }, pixelRatio);
    }
};

inline QString rangeOf(const Input &input)
{
    return textOf(std::visit([](const auto &any) { return naturalRange(any); }, input));
}

inline LcfVsMpsInput comparisonOf(const QVector<ComparisonRecord> &records, double valenceA = 2, double valenceB = 3)
{
    return {records, {QColor(0, 0, 255), QColor(120, 220, 120)}, valenceA, valenceB, QString(), QString()};
}

/// Of references of valence 2 and 3, shown from 1.5 to 3.5 and from -0.5 to 2.
inline ScatterInput scatterOf(const Doubles &a, const Doubles &t)
{
    return {a.data(), t.data(), std::size_t(a.size()), 2, 3, {1.5, 3.5}, {-0.5, 2.0}, {}, {}, 0};
}

inline PixelValues pixels(const Doubles &values)
{
    return {values.data(), static_cast<std::size_t>(values.size())};
}

/// With references of P, Q and R = 1, 3, 2 and 0, 1, 3.
inline M2M3Input m2m3Of(const Doubles &p, const Doubles &q, const Doubles &r)
{
    return {pixels(p), pixels(q), pixels(r), {1, 3, 2}, {0, 1, 3}, false, {}, {}, 0};
}

inline HistogramBins binsOf(double first, double last, const QVector<int> &counts)
{
    HistogramBins bins;
    bins.setBoxes(first, last, counts.size());
    bins.counts = counts;
    return bins;
}

inline HistogramInput histogramOf(const HistogramBins &bins, const ValueRange &range)
{
    return {&bins, range, {}, {}, {}};
}

/// One curve in red.
inline MutsInput mutsOf(const QPolygonF &points, double windowFrom = 0, double windowTo = 0)
{
    return {{{QStringLiteral("curve"), red, points}}, {}, {}, {}, windowFrom, windowTo, {}, {}};
}
