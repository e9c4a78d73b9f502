#include "batch/SeriesTrend.h"

#include "batch/SeriesTable.h"
#include "display/ChCoord.h"
#include "display/Legend.h"
#include "display/PlotFrame.h"
#include "display/PlotNumbers.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QJsonArray>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <tuple>

namespace
{

constexpr int width = 1500, height = 1000;                    // units of the picture; of a PNG pixels
constexpr int left = 130, right = 30, top = 60, bottom = 890; // of the plot
constexpr int textSize = 24;
constexpr double radius = 7.0, cap = 9.0; // of a point, of the ends of its bar

QString translated(const char *text)
{
    return QCoreApplication::translate("Series", text);
}

enum class Source { Target, Fit, Material };

struct Fractions {
    QVector<double> values, errors;

    /// Whether there is anything to draw: of a fit that came to nothing no number is left.
    bool isKnown() const
    {
        return std::any_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
    }
};

Fractions fractionsFrom(const QJsonObject &report, Source source)
{
    switch (source) {
    case Source::Target: {
        const QJsonObject target = targetOf(report);
        return {fractionsOf(target), numbersOf(target.value("errors").toObject().value("fractions"))};
    }
    case Source::Fit: {
        const QJsonObject fit = fitOf(report);
        return {numbersOf(fit.value("fractions")), numbersOf(fit.value("errors").toObject().value("fractions"))};
    }
    case Source::Material:
        break;
    }
    const QJsonObject material = materialOf(report);
    return {numbersOf(material.value("fractions")), numbersOf(material.value("fractionErrors"))};
}

Source sourceOf(const QVector<SeriesRow> &rows)
{
    for (const Source source : {Source::Target, Source::Fit}) {
        for (const SeriesRow &row : rows) {
            if (fractionsFrom(row.report, source).isKnown())
                return source;
        }
    }
    return Source::Material;
}

QString titleOf(Source source)
{
    if (source == Source::Target)
        return translated(QT_TRANSLATE_NOOP("Series", "Fractions of the target"));
    if (source == Source::Fit)
        return translated(QT_TRANSLATE_NOOP("Series", "Fractions of the target by linear combination"));
    return translated(QT_TRANSLATE_NOOP("Series", "Fractions of the material in the map"));
}

/// Where each reference of a report stands in the job, from 1; reports have only those that take part.
QVector<int> placesOf(const Job &job, int count)
{
    QVector<int> places;
    for (int i = 0; i < job.references.size(); ++i) {
        if (job.references[i].use && !job.references[i].file.isEmpty())
            places << i + 1;
    }
    if (places.size() == count)
        return places;
    places.resize(count);
    std::iota(places.begin(), places.end(), 1);
    return places;
}

/// A reference is known by place and valence: two may have files of one name, and each scan may have its own files.
Trend::Curve &curveOf(int place, double valence, const QString &name, QVector<Trend::Curve> *curves)
{
    const auto found = std::find_if(curves->begin(), curves->end(), [&](const Trend::Curve &curve) {
        return curve.place == place && curve.valence == valence;
    });
    if (found == curves->end()) {
        curves->append({name, place, valence, {}});
        return curves->last();
    }
    if (found->name != name)
        found->name.clear();
    return *found;
}

/// Puts the curves in order, and names those whose files have no common name, or one that another curve has, too.
void arrange(QVector<Trend::Curve> *curves)
{
    std::sort(curves->begin(), curves->end(), [](const Trend::Curve &l, const Trend::Curve &r) {
        return std::tie(l.place, l.valence) < std::tie(r.place, r.valence);
    });
    QStringList names;
    for (Trend::Curve &curve : *curves) {
        names << curve.name;
        std::stable_sort(curve.points.begin(), curve.points.end(),
                         [](const Trend::Point &l, const Trend::Point &r) { return l.x < r.x; });
    }
    for (Trend::Curve &curve : *curves) {
        if (curve.name.isEmpty() || names.count(curve.name) > 1)
            curve.name = translated(QT_TRANSLATE_NOOP("Series", "reference %1 (valence %2)"))
                             .arg(curve.place)
                             .arg(curve.valence);
    }
}

/// The whole of the bars, and 0 to 1 at least.
ValueRange fractionRange(const Trend &trend)
{
    ValueRange range = {0.0, 1.0};
    for (const Trend::Curve &curve : trend.curves) {
        for (const Trend::Point &point : curve.points) {
            const double error = std::isfinite(point.error) ? point.error : 0.0;
            widen(&range, point.fraction - error);
            widen(&range, point.fraction + error);
        }
    }
    return withMargin(range, 0.04, 0.5);
}

ValueRange xRange(const Trend &trend)
{
    ValueRange range = emptyRange;
    for (const Trend::Curve &curve : trend.curves) {
        for (const Trend::Point &point : curve.points)
            widen(&range, point.x);
    }
    return range.min > range.max ? ValueRange{0.0, 1.0} : withMargin(range, 0.05, 0.5);
}

/// The curve's line in the units of the picture.
QPolygonF drawPoints(QPainter *p, const ChCoord &cc, const Trend::Curve &curve, const QColor &colour)
{
    QPolygonF line;
    p->setPen(QPen(colour, 3));
    p->setBrush(Qt::white); // short bars are seen inside
    for (const Trend::Point &point : curve.points) {
        const QPointF place(cc.r2sx(point.x), cc.r2sy(point.fraction));
        line.append(place);
        p->drawEllipse(place, radius, radius);
        if (!std::isfinite(point.error))
            continue;
        const double upper = cc.r2sy(point.fraction + point.error), lower = cc.r2sy(point.fraction - point.error);
        p->drawLine(QLineF(place.x(), lower, place.x(), upper));
        for (const double end : {lower, upper})
            p->drawLine(QLineF(place.x() - cap, end, place.x() + cap, end));
    }
    p->setPen(QPen(colour, 2, Qt::DashLine));
    p->setBrush(Qt::NoBrush);
    plot::drawCurve(p, cc, line);
    return line;
}

/// In smaller letters where it is long; the end of a very long one is left out.
void drawXTitle(QPainter *p, const QString &title)
{
    const QRectF room(left, height - 60, width - left - right, 44);
    QFont font = p->font();
    for (int size = textSize; size > textSize / 2 && QFontMetricsF(font).horizontalAdvance(title) > room.width();
         --size)
        font.setPixelSize(size);
    p->setFont(font);
    p->drawText(room, Qt::AlignCenter, QFontMetricsF(font).elidedText(title, Qt::ElideRight, room.width()));
}

void drawTrend(QPainter *p, const Trend &trend)
{
    const QColor colours[] = {QColor(0, 90, 200), QColor(220, 90, 0), QColor(140, 0, 160), QColor(90, 90, 90)};
    QFont font;
    font.setPixelSize(textSize);
    p->setFont(font);
    p->setRenderHint(QPainter::Antialiasing);
    ChCoord cc;
    cc.setScreenArea(left, bottom, width - right, top);
    const ValueRange x = xRange(trend), y = fractionRange(trend);
    cc.setRealArea(x.min, y.min, x.max, y.max);
    QVector<LegendEntry> names;
    QVector<QPolygonF> drawn;
    for (int i = 0; i < trend.curves.size(); ++i) {
        const QColor &colour = colours[i % 4];
        drawn.append(drawPoints(p, cc, trend.curves[i], colour));
        names.append({trend.curves[i].name, QPen(colour, 3)});
    }
    drawLegend(p, cc, names, drawn, textSize);
    p->setPen(QPen(QColor(150, 150, 150), 2));
    p->setBrush(Qt::NoBrush);
    p->drawRect(plot::innerRect(cc));
    plot::drawTicks(p, cc);
    p->setFont(font);
    p->setPen(Qt::black);
    plot::drawNumbers(p, cc, plot::Numbers::AlongBoth, trend.isNumbered ? 1.0 : 0.0);
    p->drawText(QRectF(left, 8, width - left - right, 40), Qt::AlignLeft | Qt::AlignVCenter, trend.title);
    drawXTitle(p, trend.xTitle);
}

} // namespace

Trend trendOf(const QVector<SeriesRow> &rows)
{
    const Source source = sourceOf(rows);
    const bool hasX = std::any_of(rows.begin(), rows.end(), [](const SeriesRow &row) { return row.job.x.has_value(); });
    Trend trend;
    trend.title = titleOf(source);
    trend.isNumbered = !hasX;
    trend.xTitle = hasX ? QString() : translated(QT_TRANSLATE_NOOP("Series", "Number of the job"));
    for (int i = 0; i < rows.size(); ++i) {
        const SeriesRow &row = rows[i];
        if (trend.xTitle.isEmpty())
            trend.xTitle = row.job.xTitle;
        const Fractions fractions = fractionsFrom(row.report, source);
        if (!fractions.isKnown() || (hasX && !row.job.x)) {
            trend.warnings << QStringLiteral("%1 is not in the picture: it has no %2")
                                  .arg(row.job.fileName, QLatin1String(fractions.isKnown() ? "\"x\"" : "fractions"));
            continue;
        }
        const QJsonArray references = row.report.value("references").toArray();
        const QVector<int> places = placesOf(row.job, references.size());
        for (int j = 0; j < fractions.values.size(); ++j) {
            const QJsonObject reference = references.at(j).toObject();
            const QString name = QFileInfo(reference.value("file").toString()).completeBaseName();
            if (std::isfinite(fractions.values[j]))
                curveOf(places.value(j, j + 1), reference.value("valence").toDouble(), name, &trend.curves)
                    .points.append({row.job.x.value_or(i + 1.0), fractions.values[j],
                                    fractions.errors.value(j, std::numeric_limits<double>::quiet_NaN())});
        }
    }
    arrange(&trend.curves);
    return trend;
}

QByteArray trendPicture(const Trend &trend, const QString &fileName)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (fileName.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)) {
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QSizeF(width / 6.0, height / 6.0), QPageSize::Millimeter));
        writer.setPageMargins(QMarginsF());
        QPainter p(&writer);
        p.setWindow(0, 0, width, height);
        drawTrend(&p, trend);
        p.end();
        return bytes;
    }
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    drawTrend(&p, trend);
    p.end();
    image.save(&buffer, "PNG");
    return bytes;
}
