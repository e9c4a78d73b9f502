#include "batch/SeriesTable.h"

#include "analysis/methods/FourPoints.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

/// One line of the table while it is made.
class Cells
{
public:
    void add(const QString &column, const QString &text)
    {
        columns << column;
        texts << text;
    }
    void add(const QString &column, double value)
    {
        add(column, std::isfinite(value) ? QString::number(value, 'g', 10) : QString());
    }
    void add(const QString &column, const QJsonValue &value) { add(column, numberOf(value)); }
    /// A value and its standard error.
    void add(const QString &column, const QJsonValue &value, const QJsonValue &error)
    {
        add(column, value);
        add(column + QLatin1String("_error"), error);
    }
    /// The amount where it is a t, nothing where it is a t/ts: these are different quantities and never share a column.
    void addT(const QString &column, bool isT, const QJsonValue &value, const QJsonValue &error)
    {
        add(column, isT ? value : QJsonValue(), isT ? error : QJsonValue());
    }
    /// One column per reference that there can be, and one for the standard error of each.
    void addFractions(const QString &column, const QVector<double> &values, const QVector<double> &errors)
    {
        const double none = std::numeric_limits<double>::quiet_NaN();
        for (int j = 0; j < Job::maxReferences; ++j) {
            const QString name = column + QString::number(j + 1);
            add(name, values.value(j, none));
            add(name + QLatin1String("_error"), errors.value(j, none));
        }
    }

    QStringList columns;
    QStringList texts;
};

const QLatin1String fourPoints("four-points");

/// Whether the amounts of the report's map and regions are t/ts.
bool isFourPoints(const QJsonObject &report)
{
    return report.value("map").toObject().value("method").toString() == fourPoints;
}

/// Of the map, else of the target; empty where neither was calculated.
QString methodOf(const QJsonObject &report)
{
    const QJsonObject target = report.value("target").toObject();
    const QString ofMap = report.value("map").toObject().value("method").toString();
    if (!ofMap.isEmpty() || target.contains("fourPoints"))
        return ofMap.isEmpty() ? QString(fourPoints) : ofMap;
    return target.contains("nonEquivalent") ? QStringLiteral("non-equivalent") : QString();
}

/// What tells runs of one method apart: how four points are solved, or the background of the non-equivalent method.
QString variantOf(const SeriesRow &row)
{
    const QString method = methodOf(row.report);
    const QJsonObject settings = row.report.value("settings").toObject();
    const auto isSet = [&settings](const char *name) {
        return settings.value(QLatin1String(name)).toBool();
    };
    if (method.isEmpty())
        return QString();
    if (method != fourPoints)
        return isSet("NonEquivBGLinear") ? QStringLiteral("linear") : QStringLiteral("Victoreen");
    const bool isOfMap = isFourPoints(row.report);
    const auto points =
        std::count_if(row.job.energies.begin(), row.job.energies.end(), [isOfMap](const Job::Energy &energy) {
            return energy.use && !(isOfMap && energy.map.isEmpty());
        });
    switch (chooseFourPoints(static_cast<int>(points), isSet("TypeTMKisExact"), isSet("TypeTMKisLS"))) {
    case FourPointsVariant::ThreePoint:
        return QStringLiteral("three points");
    case FourPointsVariant::Exact:
        return QStringLiteral("exact");
    case FourPointsVariant::LeastSquares:
        return QStringLiteral("least squares");
    case FourPointsVariant::None:
        break;
    }
    return QString();
}

QString nameOf(const QJsonValue &file)
{
    return QFileInfo(file.toString()).fileName();
}

void addNames(const SeriesRow &row, Cells *cells)
{
    const QJsonObject target = row.report.value("target").toObject();
    cells->add("job", row.job.fileName);
    cells->add("x", row.job.x.value_or(std::numeric_limits<double>::quiet_NaN()));
    cells->add("outcome", static_cast<double>(row.code));
    cells->add("errors", row.errors.join(QLatin1String("; ")));
    cells->add("method", methodOf(row.report));
    const QJsonArray references = row.report.value("references").toArray();
    for (int j = 0; j < Job::maxReferences; ++j)
        cells->add(QStringLiteral("reference%1").arg(j + 1), nameOf(references.at(j).toObject().value("file")));
    cells->add("target", nameOf(target.value("file")));
    cells->add("result", row.job.resultFile);
}

void addTarget(const QJsonObject &report, Cells *cells)
{
    const QJsonObject target = targetOf(report), errors = target.value("errors").toObject();
    cells->addFractions("target_fraction", fractionsOf(target), numbersOf(errors.value("fractions")));
    cells->add("target_valence", target.value("valence"), errors.value("valence"));
    cells->addT("target_t", target.contains("t"), target.value("t"), errors.value("t"));
    const QJsonObject lcf = fitOf(report);
    cells->addFractions("lcf_fraction", numbersOf(lcf.value("fractions")),
                        numbersOf(lcf.value("errors").toObject().value("fractions")));
    cells->add("lcf_valence", lcf.value("valence"));
    cells->add("lcf_R", lcf.value("R"));
}

void addMap(const QJsonObject &report, Cells *cells)
{
    const QJsonObject map = report.value("map").toObject(), quality = map.value("quality").toObject(),
                      quantities = map.value("quantities").toObject(), material = materialOf(report);
    const auto ofQuantity = [&quantities](const QString &name, const char *what) {
        return quantities.value(name).toObject().value(QLatin1String(what));
    };
    cells->add("map_pixels", map.value("pixels"));
    cells->add("map_material", quality.value("material"));
    cells->add("map_gamma", quality.value("gamma"));
    cells->addFractions("map_fraction", numbersOf(material.value("fractions")),
                        numbersOf(material.value("fractionErrors")));
    for (int j = 1; j <= Job::maxReferences; ++j)
        cells->add(QStringLiteral("map_fraction%1_median").arg(j),
                   ofQuantity(QStringLiteral("Ratio %1").arg(j), "materialMedian"));
    cells->add("map_valence", material.value("mean"), material.value("error"));
    cells->add("map_valence_median", material.value("median"));
    const bool isT = !isFourPoints(report);
    cells->addT("map_t", isT, ofQuantity("Amount", "materialMean"), material.value("amountError"));
    cells->add("map_t_median", isT ? ofQuantity("Amount", "materialMedian") : QJsonValue());
    cells->add("map_chi2", material.value("chi2"));
}

/// What came to the table later: it stands behind the columns that were there before.
void addLater(const SeriesRow &row, Cells *cells)
{
    const QJsonObject &report = row.report;
    const QJsonObject lcf = fitOf(report), lcfErrors = lcf.value("errors").toObject(), target = targetOf(report),
                      material = materialOf(report),
                      amount = report.value("map").toObject().value("quantities").toObject().value("Amount").toObject();
    cells->add("lcf_valence_error", lcfErrors.value("valence"));
    cells->add("lcf_sum", lcf.value("sum"), lcfErrors.value("sum"));
    cells->add("lcf_mean_valence", lcf.value("meanValence"), lcfErrors.value("meanValence"));
    cells->addT("target_t_over_ts", target.contains("t/ts"), target.value("t/ts"),
                target.value("errors").toObject().value("t"));
    const bool isRatio = isFourPoints(report);
    cells->addT("map_t_over_ts", isRatio, amount.value("materialMean"), material.value("amountError"));
    cells->add("map_t_over_ts_median", isRatio ? amount.value("materialMedian") : QJsonValue());
    cells->add("method_variant", variantOf(row));
}

void addRegions(const QJsonObject &report, Cells *cells)
{
    const bool isRatio = isFourPoints(report);
    for (const QJsonValue &value : report.value("regions").toArray()) {
        const QJsonObject region = value.toObject();
        const QString name = region.value("name").toString() + QLatin1String(": ");
        cells->add(name + QLatin1String("pixels"), region.value("pixels"));
        cells->addFractions(name + QLatin1String("fraction"), numbersOf(region.value("fractions")),
                            numbersOf(region.value("fractionErrors")));
        cells->add(name + QLatin1String("valence"), region.value("mean"), region.value("error"));
        cells->add(name + QLatin1String("valence_median"), region.value("median"));
        const QJsonValue mean = numberOf(region.value("amount")) / numberOf(region.value("pixels"));
        cells->addT(name + QLatin1String("t"), !isRatio, mean, region.value("amountError"));
        cells->add(name + QLatin1String("chi2"), region.value("chi2"));
        cells->addT(name + QLatin1String("t_over_ts"), isRatio, mean, region.value("amountError"));
    }
}

/// Of a job that was refused for its inputs there is no report, but what else is doubtful about them was said.
QStringList warningsOf(const SeriesRow &row)
{
    QStringList sentences;
    for (const QJsonValue &warning : row.report.value("warnings").toArray())
        sentences << warning.toString();
    const QString job = row.job.fileName + QLatin1String(": ");
    for (const QString &warning : row.report.isEmpty() ? row.warnings : QStringList())
        sentences << (warning.startsWith(job) ? warning.mid(job.size()) : warning);
    return sentences;
}

QString quoted(QString text)
{
    static const QRegularExpression special(QStringLiteral("[,\"\\r\\n]"));
    if (!text.contains(special))
        return text;
    return QLatin1Char('"') + text.replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString lineOf(const QStringList &cells)
{
    QStringList texts;
    for (const QString &cell : cells)
        texts << quoted(cell);
    return texts.join(QLatin1Char(',')) + QLatin1String("\r\n");
}

} // namespace

double numberOf(const QJsonValue &value)
{
    return value.toDouble(std::numeric_limits<double>::quiet_NaN());
}

QVector<double> numbersOf(const QJsonValue &list)
{
    QVector<double> numbers;
    for (const QJsonValue &value : list.toArray())
        numbers << numberOf(value);
    return numbers;
}

QJsonObject materialOf(const QJsonObject &report)
{
    return report.value("map").toObject().value("quality").toObject().value("ofMaterial").toObject();
}

QJsonObject targetOf(const QJsonObject &report)
{
    const QJsonObject target = report.value("target").toObject();
    return target.value(target.contains("nonEquivalent") ? "nonEquivalent" : "fourPoints").toObject();
}

QJsonObject fitOf(const QJsonObject &report)
{
    return report.value("target").toObject().value("lcf").toObject();
}

QVector<double> fractionsOf(const QJsonObject &target)
{
    if (!target.contains("a"))
        return numbersOf(target.value("fractions"));
    const double a = numberOf(target.value("a"));
    return {a, 1.0 - a};
}

QByteArray seriesTable(const QVector<SeriesRow> &rows)
{
    QStringList columns, regionColumns;
    QHash<QString, int> places; // of the columns of regions, of which there can be many thousands
    QVector<QStringList> lines;
    QVector<Cells> regions;
    for (const SeriesRow &row : rows) {
        Cells cells, ofRegions;
        addNames(row, &cells);
        addTarget(row.report, &cells);
        addMap(row.report, &cells);
        const QStringList sentences = warningsOf(row);
        cells.add("warnings", static_cast<double>(sentences.size()));
        cells.add("warning_texts", sentences.join(QLatin1String("; ")));
        addLater(row, &cells);
        addRegions(row.report, &ofRegions);
        columns = cells.columns;
        lines << cells.texts;
        regions << ofRegions;
        for (const QString &column : qAsConst(ofRegions.columns)) {
            if (places.contains(column))
                continue;
            places.insert(column, regionColumns.size());
            regionColumns << column;
        }
    }
    QString table = lineOf(columns + regionColumns);
    for (int i = 0; i < lines.size(); ++i) {
        QVector<QString> cells(regionColumns.size());
        for (int k = 0; k < regions[i].columns.size(); ++k)
            cells[places.value(regions[i].columns[k])] = regions[i].texts[k];
        table += lineOf(lines[i] + QStringList(cells.toList()));
    }
    return table.toUtf8();
}
