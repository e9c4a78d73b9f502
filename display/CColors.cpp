#include "display/CColors.h"

namespace
{

QVector<QColor> asColors(const ColourTable &table)
{
    QVector<QColor> colors;
    colors.reserve(table.size());
    for (const quint32 colour : table)
        colors.append(QColor(colour));
    return colors;
}

ColourTable asTable(const QVector<QColor> &colors)
{
    ColourTable table;
    table.reserve(colors.size());
    for (const QColor &colour : colors)
        table.append(colour.rgb());
    return table;
}

} // namespace

CColors::CColors(int count)
    : colors(asColors(extendedColours(lineColours(), count)))
{
}

CColors::CColors(const QVector<QColor> &base, int count)
    : colors(asColors(extendedColours(asTable(base), count)))
{
}
