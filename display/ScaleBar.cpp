#include "display/ScaleBar.h"

#include "display/ChCoord.h"
#include "display/GraphBoxes.h"
#include "display/PlotFrame.h"
#include "numeric/FieldText.h"

#include <QFont>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cmath>

double roundLength(double most)
{
    if (!(most > 0) || !std::isfinite(most))
        return 0;
    const double decade = std::pow(10.0, std::floor(std::log10(most)));
    for (const double multiple : {5.0, 2.0}) {
        if (multiple * decade <= most)
            return multiple * decade;
    }
    return decade;
}

void drawScaleBar(QPainter *painter, const ChCoord &cc, double width, const QString &unit)
{
    if (unit.isEmpty() || !plot::isDrawable(cc))
        return;
    constexpr double share = 0.2; // of the plot
    const double pixels = std::abs(cc.r2sdx(1)) / std::abs(width);
    const QRectF plot = plot::innerRect(cc);
    const double length = roundLength(share * plot.width() / pixels);
    if (!(length > 0))
        return;
    const GraphBoxes boxes(cc);
    const QRectF room = boxes.xMinimum.normalized();
    QFont font;
    font.setPixelSize(std::max(6, static_cast<int>(0.8 * std::min(room.height(), 16.0))));
    const double thickness = std::max(2.0, room.height() / 6);
    const double left = plot.left() + 0.3 * plot.width();
    painter->save();
    painter->setFont(font);
    painter->fillRect(QRectF(left, room.center().y() - thickness / 2, length * pixels, thickness), Qt::black);
    painter->setPen(Qt::black);
    painter->drawText(QPointF(left + length * pixels + thickness + 2, room.center().y() + 0.35 * font.pixelSize()),
                      fieldText(length) + QLatin1Char(' ') + unit);
    painter->restore();
}
