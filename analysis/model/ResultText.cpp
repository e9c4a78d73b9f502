#include "analysis/model/ResultText.h"

#include "analysis/methods/LinearCombination.h"

#include <QCoreApplication>
#include <QStringList>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

QString joined(const std::vector<double> &fractions)
{
    QStringList numbers;
    for (const double fraction : fractions)
        numbers.append(resultNumber(fraction));
    return numbers.join(QStringLiteral(" : "));
}

} // namespace

/// QString::asprintf would round ties away from zero and lose the sign of -0.
QString resultNumber(double value)
{
    char text[std::numeric_limits<double>::max_exponent10 + 32];
    std::snprintf(text, sizeof text, "% 6.3f", std::isnan(value) ? std::fabs(value) : value);
    // The sign of a NaN depends on the processor and tells nothing. The separator is that of the process's locale.
    return QString::fromLocal8Bit(text).replace(QString::fromLocal8Bit(std::localeconv()->decimal_point),
                                                QStringLiteral("."));
}

QString linearCombinationText(const std::vector<double> &fractions, double valence, double base)
{
    return translated(QT_TRANSLATE_NOOP("FourPs", "Result of LCF :: ")) + joined(fractions) +
           translated(QT_TRANSLATE_NOOP("FourPs", ", Valence = %1, Base = %2"))
               .arg(resultNumber(valence), resultNumber(base));
}

QString nonEquivalentText(const std::vector<double> &fractions, double valence, double t)
{
    return translated(QT_TRANSLATE_NOOP("FourPs", "Result of NEQ :: ")) + joined(fractions) +
           translated(QT_TRANSLATE_NOOP("FourPs", ", Valence = %1, t = %2"))
               .arg(resultNumber(valence), resultNumber(t));
}

QString fourPointsText(FourPointsVariant variant, const FourPointsResult &result, double valence)
{
    switch (variant) {
    case FourPointsVariant::ThreePoint:
        return translated(QT_TRANSLATE_NOOP("FourPs", "3ps: a = %1, Valence = %2")).arg(result.a).arg(valence);
    case FourPointsVariant::Exact:
        return translated(QT_TRANSLATE_NOOP("FourPs", "a = %1, Valence = %2, t/ts = %3"))
            .arg(result.a)
            .arg(valence)
            .arg(result.t);
    case FourPointsVariant::LeastSquares:
        return translated(QT_TRANSLATE_NOOP("FourPs", "4ps2: a = %1, Valence = %2, t/ts = %3"))
            .arg(result.a)
            .arg(valence)
            .arg(result.t);
    case FourPointsVariant::None:
        break;
    }
    return QString();
}

QString fitQualityText(const LinearCombination &fit)
{
    return translated(QT_TRANSLATE_NOOP("FourPs", "R = %1, %2 points")).arg(fit.rFactor, 0, 'g', 3).arg(fit.points);
}

QString fitErrorsText(const LinearCombination &fit)
{
    QStringList lines = {translated(
        QT_TRANSLATE_NOOP("FourPs", "R = sum of (y - fit)^2 / sum of y^2; standard errors of the coefficients:"))};
    for (std::size_t j = 0; j < fit.coefficients.size(); ++j)
        lines << translated(QT_TRANSLATE_NOOP("FourPs", "Reference %1: %2 ± %3"))
                     .arg(j + 1)
                     .arg(fit.coefficients[j], 0, 'g', 4)
                     .arg(fit.standardErrors[j], 0, 'g', 2);
    lines << translated(QT_TRANSLATE_NOOP("FourPs", "Base: %1 ± %2"))
                 .arg(fit.base, 0, 'g', 4)
                 .arg(fit.standardErrors.back(), 0, 'g', 2);
    return lines.join(QLatin1Char('\n'));
}

QString fitSumText(const LinearCombination &fit)
{
    return translated(QT_TRANSLATE_NOOP("FourPs",
                                        "The coefficients c sum up to S = %1. V is the sum of c times valence; of the "
                                        "fractions c / S it is V / S = %2."))
        .arg(fit.sum, 0, 'g', 4)
        .arg(fit.meanValence, 0, 'g', 4);
}
