#include "display/Legend.h"

#include "display/ChCoord.h"
#include "display/FreePlace.h"
#include "display/PlotFrame.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace
{

constexpr double widestPart = 0.45; // of the plot
constexpr double highestPart = 0.9;
constexpr int gap = 6;          // pixels from the plot's outline
constexpr int padding = 4;      // pixels around the names
constexpr int smallestText = 9; // pixels

struct Layout {
    int lines = 0; // entries shown
    int lineHeight = 0;
    int sample = 0; // length of the sample lines
    QSize size;
    bool isWhole = false; // no entry and no name is cut
};

Layout layoutOf(const QFontMetrics &metrics, const QRectF &inner, const QVector<LegendEntry> &entries)
{
    Layout layout;
    layout.lineHeight = metrics.height();
    layout.sample = 2 * metrics.height();
    layout.lines = std::min(entries.size(), static_cast<int>(inner.height() * highestPart) / layout.lineHeight);
    int widest = 0;
    for (int i = 0; i < layout.lines; ++i)
        widest = std::max(widest, metrics.boundingRect(entries.at(i).name).width() + 2);
    const int room = static_cast<int>(inner.width() * widestPart) - layout.sample - 3 * padding;
    layout.isWhole = layout.lines == entries.size() && widest <= room;
    widest = std::min(widest, room);
    layout.size = QSize(widest + layout.sample + 3 * padding, layout.lines * layout.lineHeight + padding);
    if (widest <= 0)
        layout.lines = 0;
    return layout;
}

/// Where the legend may stand, the corners first.
QVector<QPointF> placesIn(const QRectF &inner, const QSize &size)
{
    const QRectF room = inner.adjusted(gap, gap, -gap - size.width(), -gap - size.height());
    QVector<QPointF> places;
    for (const QPointF &place : {room.topLeft(), room.bottomRight(), room.topRight(), room.bottomLeft(),
                                 QPointF(room.center().x(), room.top()), QPointF(room.center().x(), room.bottom())})
        places.append(place.toPoint());
    return places;
}

} // namespace

void drawLegend(QPainter *p, const ChCoord &cc, const QVector<LegendEntry> &entries, const QVector<QPolygonF> &curves,
                int textPixels)
{
    p->save();
    const QRectF inner = plot::innerRect(cc);
    QFont font = p->font();
    Layout layout;
    const int largest = textPixels > 0 ? textPixels : plot::textPixels(cc);
    const int smallest = std::max(smallestText, 2 * textPixels / 3);
    for (int pixels = largest; pixels >= smallest && !layout.isWhole; --pixels) {
        font.setPixelSize(pixels);
        layout = layoutOf(QFontMetrics(font), inner, entries);
    }
    p->setFont(font);
    const QFontMetrics metrics(font);
    if (layout.lines > 0) {
        const QRectF box = freePlace(placesIn(inner, layout.size), layout.size, curves);
        p->setPen(QColor(200, 200, 200));
        p->setBrush(QColor(255, 255, 255, 225));
        p->drawRect(box);
        const double textLeft = box.left() + layout.sample + 2 * padding;
        for (int i = 0; i < layout.lines; ++i) {
            const LegendEntry &entry = entries.at(i);
            const double top = box.top() + padding / 2.0 + i * layout.lineHeight;
            const double middle = static_cast<int>(top + layout.lineHeight / 2.0);
            p->setPen(entry.pen);
            p->drawLine(QLineF(box.left() + padding, middle, textLeft - padding, middle));
            p->setPen(Qt::black);
            const double width = box.right() - padding - textLeft;
            const bool isCut = i == layout.lines - 1 && layout.lines < entries.size();
            const QString text = isCut ? QString(QChar(0x2026)) : entry.name;
            p->drawText(QRectF(textLeft, top, width + 2, layout.lineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                        metrics.elidedText(text, Qt::ElideMiddle, static_cast<int>(width) + 2));
        }
    }
    p->restore();
}
