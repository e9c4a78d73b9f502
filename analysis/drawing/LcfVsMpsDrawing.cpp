#include "analysis/drawing/LcfVsMpsDrawing.h"

#include "analysis/drawing/GraphFrame.h"
#include "analysis/drawing/PointCloud.h"
#include "display/DispABase.h"
#include "display/PlotFrame.h"

#include <QStylePainter>

#include <vector>

namespace
{

constexpr double radius = 3; // pixels

QColor colourOf(const LcfVsMpsInput &input, int index)
{
    const int count = input.colours.size();
    return count == 0 ? QColor(Qt::black) : input.colours.at((index % count + count) % count);
}

void drawRecord(QPainter *p, const ChCoord &cc, const ComparisonRecord &record, const QColor &colour)
{
    p->setBrush(colour);
    p->drawEllipse(QPointF(cc.r2sx(record.valence), cc.r2sy(record.lcfValence)), radius, radius);
}

/// Of records at the same place only the last one is to be seen and drawn.
void drawRecords(QPainter *p, const ChCoord &cc, const LcfVsMpsInput &input)
{
    PointCloud places(CloudPlace(*p, cc, radius));
    std::vector<int> visible;
    for (int i = input.records.size() - 1; i >= 0; --i) {
        if (places.visit(input.records.at(i).valence, input.records.at(i).lcfValence))
            visible.push_back(i);
    }
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    p->setPen(Qt::NoPen);
    for (auto i = visible.crbegin(); i != visible.crend(); ++i)
        drawRecord(p, cc, input.records.at(*i), colourOf(input, input.records.at(*i).colourIndex));
    const ComparisonRecord &newest = input.records.last();
    if (!visible.empty() && visible.front() == input.records.size() - 1) {
        p->setPen(Qt::black); // the palette has a red, too
        drawRecord(p, cc, newest, resultdrawing::newestRecordColour);
    }
    p->restore();
}

} // namespace

std::optional<RealRange> resultdrawing::naturalRange(const LcfVsMpsInput &input)
{
    if (input.records.isEmpty())
        return std::nullopt;
    const ValueRange valences{input.valenceA - 0.2, input.valenceB + 0.2};
    return RealRange{valences, valences};
}

void resultdrawing::drawLcfVsMps(DispABase *display, QStylePainter *p, const LcfVsMpsInput &input)
{
    const std::optional<RealRange> natural = naturalRange(input);
    drawFramed(display, p, {input.xTitle, input.yTitle, natural.has_value(), natural}, [&](const ChCoord &cc) {
        const double first = input.valenceA;
        const double second = input.valenceB;
        const plot::GridLines grid{first, 0.1, first, second + 0.05};
        plot::drawVerticals(p, cc, plot::gridColour, grid);
        plot::drawHorizontals(p, cc, plot::gridColour, grid);
        p->setPen(QPen(agreementColour, 2));
        plot::drawCurve(p, cc, plot::toPixels(cc, QVector<QPointF>{{first, first}, {second, second}}));
        drawRecords(p, cc, input);
    });
}
