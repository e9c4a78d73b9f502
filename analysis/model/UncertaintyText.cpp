#include "analysis/model/UncertaintyText.h"

#include "analysis/methods/LinearCombination.h"
#include "analysis/uncertainty/Distributions.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// Large numbers are whole rather than with an exponent.
QString significant(double value, int digits)
{
    const bool isLarge = std::abs(value) >= std::pow(10.0, digits) && std::abs(value) < 1e7;
    return isLarge ? QString::number(value, 'f', 0) : QString::number(value, 'g', digits);
}

QString ratioLine(std::size_t reference, const QString &number)
{
    return translated(QT_TRANSLATE_NOOP("FourPs", "Ratio %1: %2")).arg(reference + 1).arg(number);
}

/// Lines with errors that Student's factor for `degrees` is in, and what that is.
QString withFactor(const QStringList &lines, int degrees)
{
    if (degrees == 0)
        return translated(QT_TRANSLATE_NOOP("FourPs", "No standard errors: as many points as unknowns."));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n') +
           translated(QT_TRANSLATE_NOOP("FourPs", "(68 %: standard error times Student's factor %1 for n - p = %2)"))
               .arg(significant(studentFactor(degrees), 3))
               .arg(degrees);
}

} // namespace

QString withError(double value, double error)
{
    if (!std::isfinite(value) || !std::isfinite(error) || error <= 0.0)
        return significant(value, 3);
    const double exponent = std::floor(std::log10(error));
    const int decimals = static_cast<int>(std::max(0.0, std::min(9.0, 1.0 - exponent)));
    return QStringLiteral("%1 ± %2").arg(QString::number(value, 'f', decimals), significant(error, 2));
}

QString fractionErrorText(const TargetFit &target, int reference)
{
    const auto j = static_cast<std::size_t>(reference);
    if (target.fit.degrees == 0 || j >= target.fit.fractions.size())
        return QString();
    return withError(target.fit.fractions[j], target.factor * target.fit.fractionErrors[j]);
}

QString targetErrorsText(const TargetFit &target)
{
    const SpectrumFit &fit = target.fit;
    QStringList lines = {QStringLiteral("V ") + withError(fit.valence, target.factor * fit.valenceError),
                         QStringLiteral("t ") + withError(fit.amount, target.factor * fit.amountError)};
    for (std::size_t j = 0; j < fit.fractions.size(); ++j)
        lines << ratioLine(j, fractionErrorText(target, static_cast<int>(j)));
    return withFactor(lines, fit.degrees);
}

QString fitResultErrorsText(const LinearCombination &fit)
{
    if (fit.degrees < 0)
        return QString();
    const double factor = studentFactor(fit.degrees);
    QStringList lines = {QStringLiteral("V ") + withError(fit.valence, factor * fit.valenceError),
                         QStringLiteral("S ") + withError(fit.sum, factor * fit.sumError),
                         QStringLiteral("V / S ") + withError(fit.meanValence, factor * fit.meanValenceError)};
    for (std::size_t j = 0; j < fit.fractions.size(); ++j)
        lines << ratioLine(j, withError(fit.fractions[j], factor * fit.fractionErrors[j]));
    return withFactor(lines, fit.degrees);
}

QString regionLine(const RegionStatistics &statistics)
{
    if (statistics.pixels == 0)
        return translated(QT_TRANSLATE_NOOP("FourPs", "No pixel of this region has intensities and a result."));
    QString line = translated(QT_TRANSLATE_NOOP("FourPs", "V %1, t %2, %3 pixels, scatter %4 (expected %5)"))
                       .arg(withError(statistics.mean, statistics.fit.valenceError))
                       .arg(significant(statistics.fit.amount, 3))
                       .arg(statistics.pixels)
                       .arg(significant(statistics.scatter, 2), significant(statistics.expectedScatter, 2));
    if (statistics.fit.degrees > 0)
        line += translated(QT_TRANSLATE_NOOP("FourPs", ", chi² %1")).arg(significant(statistics.fit.misfit(), 2));
    return line;
}

QStringList regionTitles()
{
    QStringList titles;
    for (const char *const title :
         {QT_TRANSLATE_NOOP("FourPs", "Region"), "x0", "y0", "x1", "y1", QT_TRANSLATE_NOOP("FourPs", "Pixels"),
          QT_TRANSLATE_NOOP("FourPs", "Amount"), QT_TRANSLATE_NOOP("FourPs", "Mean"),
          QT_TRANSLATE_NOOP("FourPs", "Median"), QT_TRANSLATE_NOOP("FourPs", "Scatter"),
          QT_TRANSLATE_NOOP("FourPs", "Expected"), "±", QT_TRANSLATE_NOOP("FourPs", "chi²")})
        titles << translated(title);
    return titles;
}

QStringList regionCells(const Region &region, const RegionStatistics &statistics, int width, int height, int digits)
{
    const PixelRectangle all = {0, 0, width - 1, height - 1};
    const PixelRectangle area = region.rectangle.value_or(all);
    const auto clipped = [](int position, int last) {
        return QString::number(std::max(0, std::min(position, last)));
    };
    QStringList cells = {region.name,
                         clipped(std::min(area.x0, area.x1), all.x1),
                         clipped(std::min(area.y0, area.y1), all.y1),
                         clipped(std::max(area.x0, area.x1), all.x1),
                         clipped(std::max(area.y0, area.y1), all.y1),
                         QString::number(statistics.pixels)};
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    const bool hasMisfit = statistics.fit.degrees > 0;
    for (const double value :
         {statistics.amount, statistics.mean, statistics.median, statistics.scatter, statistics.expectedScatter,
          statistics.fit.valenceError, hasMisfit ? statistics.fit.misfit() : noNumber})
        cells << (statistics.pixels > 0 && !std::isnan(value) ? significant(value, digits) : QString());
    return cells;
}
