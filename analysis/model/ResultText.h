#pragma once

#include "analysis/methods/FourPoints.h"

#include <QString>

#include <vector>

struct LinearCombination;

/// The texts that report a fit to the user, in the language of the program.

/// A number as printf's "% 6.3f" writes it, with a decimal point whatever the locale: room for a sign, at least six
/// characters, three decimals (ties to even). Infinities are "   inf" and "  -inf", every NaN is "   nan".
QString resultNumber(double value);

/// "Result of LCF ::  0.412 :  0.301 :  0.287, Valence =  2.713, Base =  0.004"
QString linearCombinationText(const std::vector<double> &fractions, double valence, double base);

/// "Result of NEQ ::  0.412 :  0.301 :  0.287, Valence =  2.713, t =  0.914"
QString nonEquivalentText(const std::vector<double> &fractions, double valence, double t);

/// "3ps: a = 0.25, Valence = 2.75", with "t/ts = ..." behind it for the variants that know the thickness; the numbers
/// with as many digits as QString::arg gives them.
QString fourPointsText(FourPointsVariant variant, const FourPointsResult &result, double valence);

/// "R = 0.00123, 41 points", and line by line the standard errors of the coefficients.
QString fitQualityText(const LinearCombination &fit);
QString fitErrorsText(const LinearCombination &fit);
/// The sum S of the coefficients and V / S: the valence of the fractions, which the fit's own V is not.
QString fitSumText(const LinearCombination &fit);
