#include "analysis/model/ResultText.h"

#include <QCoreApplication>
#include <QStringList>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>

namespace
{

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
    return QCoreApplication::translate("FourPs", "Result of LCF :: ") + joined(fractions) +
           QCoreApplication::translate("FourPs", ", Valence = %1, Base = %2")
               .arg(resultNumber(valence), resultNumber(base));
}

QString nonEquivalentText(const std::vector<double> &fractions, double valence, double t)
{
    return QCoreApplication::translate("FourPs", "Result of NEQ :: ") + joined(fractions) +
           QCoreApplication::translate("FourPs", ", Valence = %1, t = %2").arg(resultNumber(valence), resultNumber(t));
}
