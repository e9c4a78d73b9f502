#include "analysis/drawing/PlottedText.h"

#include "display/HistogramBins.h"
#include "numeric/FieldText.h"
#include "numeric/NumberText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace
{

QString line(const QStringList &cells)
{
    return cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
}

/// A line of titles, then the points pointOf(input, i).
template <class Input>
QString pointsText(const Input &input, std::size_t count)
{
    QByteArray lines;
    char number[numeric::g6MaxLength];
    for (std::size_t i = 0; i < count; ++i) {
        const QPointF point = pointOf(input, i);
        lines.append(number, static_cast<int>(numeric::writeG6(point.x(), number) - number));
        lines += '\t';
        lines.append(number, static_cast<int>(numeric::writeG6(point.y(), number) - number));
        lines += '\n';
    }
    return line({input.xTitle, input.yTitle}) + QString::fromLatin1(lines);
}

} // namespace

QString plottedtext::of(const MutsInput &input)
{
    QStringList titles;
    int rows = 0;
    for (const MutsCurve &curve : input.curves) {
        titles << input.xTitle << curve.name;
        rows = std::max(rows, curve.points.size());
    }
    QString text = line(titles);
    for (int row = 0; row < rows; ++row) {
        QStringList cells;
        for (const MutsCurve &curve : input.curves) {
            if (row < curve.points.size())
                cells << fieldText(curve.points.at(row).x()) << fieldText(curve.points.at(row).y());
            else
                cells << QString() << QString();
        }
        text += line(cells);
    }
    return text;
}

QString plottedtext::of(const HistogramInput &input)
{
    QStringList titles{QCoreApplication::translate("FourPs", "From"), QCoreApplication::translate("FourPs", "Centre"),
                       QCoreApplication::translate("FourPs", "To"), input.yTitle};
    for (const HistogramPart &part : input.parts)
        titles << part.name;
    QString text = line(titles);
    const HistogramBins none;
    const HistogramBins &bins = input.bins ? *input.bins : none;
    for (int i = 0; i < bins.counts.size(); ++i) {
        QStringList cells{fieldText(bins.lowerEdge(i)), fieldText(bins.centre(i)), fieldText(bins.upperEdge(i)),
                          QString::number(bins.counts.at(i))};
        for (const HistogramPart &part : input.parts)
            cells << QString::number(part.bins->counts.value(i));
        text += line(cells);
    }
    return text;
}

QString plottedtext::of(const LcfVsMpsInput &input)
{
    QString text = line({input.xTitle, input.yTitle, QStringLiteral("a (MPs)"), QStringLiteral("f1 (LCF)")});
    for (const ComparisonRecord &record : input.records)
        text += line({fieldText(record.valence), fieldText(record.lcfValence), fieldText(record.a),
                      fieldText(record.lcfFraction)});
    return text;
}

QString plottedtext::of(const ScatterInput &input)
{
    return pointsText(input, input.count);
}

QString plottedtext::of(const M2M3Input &input)
{
    return pointsText(input, input.r.count);
}

QByteArray plottedtext::ofMap(const ShownMap &map, char separator, const quint8 *mask)
{
    QByteArray text;
    char number[numeric::g6MaxLength];
    const auto width = static_cast<std::size_t>(std::max(map.grid.nx, 0));
    const auto height = static_cast<std::size_t>(std::max(map.grid.ny, 0));
    const std::size_t count = map.values ? std::min(map.count, width * height) : 0;
    for (std::size_t start = 0; start < count; start += width) {
        for (std::size_t i = start; i < std::min(start + width, count); ++i) {
            if (i > start)
                text += separator;
            if (mask && mask[i] != 0)
                text += "nan";
            else
                text.append(number, static_cast<int>(numeric::writeG6(map.values[i], number) - number));
        }
        text += '\n';
    }
    return text;
}
