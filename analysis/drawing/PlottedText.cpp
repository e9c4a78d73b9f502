#include "analysis/drawing/PlottedText.h"

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

} // namespace

QString plottedtext::ofCurves(const QVector<MutsCurve> &curves)
{
    QStringList titles;
    int rows = 0;
    for (const MutsCurve &curve : curves) {
        titles << QCoreApplication::translate("FourPs", "Eng.[eV]") << curve.name;
        rows = std::max(rows, curve.points.size());
    }
    QString text = line(titles);
    for (int row = 0; row < rows; ++row) {
        QStringList cells;
        for (const MutsCurve &curve : curves) {
            if (row < curve.points.size())
                cells << fieldText(curve.points.at(row).x()) << fieldText(curve.points.at(row).y());
            else
                cells << QString() << QString();
        }
        text += line(cells);
    }
    return text;
}

QString plottedtext::ofHistogram(const HistogramBins &bins)
{
    QString text = line({QCoreApplication::translate("FourPs", "From"), QCoreApplication::translate("FourPs", "Centre"),
                         QCoreApplication::translate("FourPs", "To"), QCoreApplication::translate("FourPs", "Num.")});
    for (int i = 0; i < bins.counts.size(); ++i)
        text += line({fieldText(bins.lowerEdge(i)), fieldText(bins.centre(i)), fieldText(bins.upperEdge(i)),
                      QString::number(bins.counts.at(i))});
    return text;
}

QString plottedtext::ofComparison(const QVector<ComparisonRecord> &records)
{
    QString text = line({QCoreApplication::translate("FourPs", "MPs"), QCoreApplication::translate("FourPs", "LCF"),
                         QStringLiteral("a (MPs)"), QStringLiteral("f1 (LCF)")});
    for (const ComparisonRecord &record : records)
        text += line({fieldText(record.valence), fieldText(record.lcfValence), fieldText(record.a),
                      fieldText(record.lcfFraction)});
    return text;
}

QString plottedtext::ofPoints(const QString &xTitle, const QString &yTitle, const double *x, const double *y,
                              std::size_t count)
{
    QByteArray lines;
    char number[numeric::g6MaxLength];
    for (std::size_t i = 0; i < count; ++i) {
        lines.append(number, static_cast<int>(numeric::writeG6(x[i], number) - number));
        lines += '\t';
        lines.append(number, static_cast<int>(numeric::writeG6(y[i], number) - number));
        lines += '\n';
    }
    return line({xTitle, yTitle}) + QString::fromLatin1(lines);
}

QByteArray plottedtext::ofMap(const ShownMap &map, char separator)
{
    QByteArray text;
    char number[numeric::g6MaxLength];
    const auto width = static_cast<std::size_t>(std::max(map.width, 0));
    const std::size_t rows =
        width == 0 || !map.values ? 0 : std::min(map.count / width, static_cast<std::size_t>(map.height));
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t column = 0; column < width; ++column) {
            if (column > 0)
                text += separator;
            const double value = map.values[row * width + column];
            text.append(number, static_cast<int>(numeric::writeG6(value, number) - number));
        }
        text += '\n';
    }
    return text;
}
