#include "display/DrawText.h"

#include "numeric/RealToInt.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double probeSize = 10; // points at which a text is measured first

/// Sets the size; false, and the font untouched, for sizes that no font has.
bool setPointSize(QFont *font, double points)
{
    constexpr double largest = 100000;
    if (!(points > 0) || !std::isfinite(points))
        return false;
    font->setPointSizeF(std::min(points, largest));
    return true;
}

/// Swaps the painter's font for the time of a scope.
class FontGuard
{
public:
    FontGuard(QPainter *painter, const QFont &font)
        : m_painter(painter)
        , m_previous(painter->font())
    {
        painter->setFont(font);
    }
    ~FontGuard() { m_painter->setFont(m_previous); }
    Q_DISABLE_COPY(FontGuard)

private:
    QPainter *m_painter;
    QFont m_previous;
};

} // namespace

DrawText::DrawText(QObject *parent)
    : QObject(parent)
{
}

double DrawText::fitSize(QPainter *painter, const QRectF &rect, const QFont &font, int flags, const QString &text)
{
    const QRectF room = normalized(rect);
    QFont probeFont = font;
    probeFont.setPointSizeF(probeSize);
    const FontGuard guard(painter, probeFont);
    const QRectF box = painter->boundingRect(QRectF(0, 0, 5000, 5000), flags, text);
    if (box.width() == 0 && box.height() == 0)
        return probeSize;
    const double acrossRatio = box.width() == 0 ? 1 : room.width() / box.width();
    const double upRatio = box.height() == 0 ? 1 : room.height() / box.height();
    return probeSize * std::min(acrossRatio, upRatio);
}

QRectF DrawText::drawText(QPainter *painter, const QRectF &rect, const QFont &font, int flags, int fit,
                          const QString &text, double maxSize)
{
    const QRectF room = normalized(rect);
    if (fit != 1) {
        const FontGuard guard(painter, font);
        painter->drawText(room, flags, text);
        return QRectF();
    }
    double size = fitSize(painter, room, font, flags, text);
    if (maxSize > 0 && size > maxSize)
        size = maxSize;
    QFont fitted = font;
    if (!setPointSize(&fitted, size))
        return QRectF();
    const FontGuard guard(painter, fitted);
    const QRectF box = painter->boundingRect(QRectF(room.topLeft(), QSizeF(1000, 1000)), flags, text);
    painter->drawText(room, flags, text);
    return box;
}

void DrawText::drawTexts(QPainter *painter, const QRectF &rect, const QFont &font, int flags, int fit,
                         const QStringList &texts, double maxSize)
{
    QFont common = font;
    if (fit == 0) {
        double size = 100000;
        for (const QString &text : texts)
            size = std::min(size, fitSize(painter, rect, font, Qt::AlignLeft | Qt::AlignVCenter, text));
        if (!setPointSize(&common, numeric::truncToInt(0.9 * size)))
            return;
    }
    for (const QString &text : texts)
        drawText(painter, rect, common, flags, fit, text, maxSize);
}

QRectF DrawText::normalized(const QRectF &rect)
{
    return rect.normalized();
}

void DrawText::addRect(const QRectF &rect)
{
    used.append(rect);
}

bool DrawText::overlaps(const QRectF &rect) const
{
    const QRectF wanted = normalized(rect);
    return std::any_of(used.cbegin(), used.cend(), [&wanted](const QRectF &taken) { return wanted.intersects(taken); });
}
