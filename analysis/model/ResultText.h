#pragma once

#include <QString>

#include <vector>

/// The texts that report a fit to the user, in the language of the program.

/// A number as printf's "% 6.3f" writes it, with a decimal point whatever the locale: room for a sign, at least six
/// characters, three decimals (ties to even). Infinities are "   inf" and "  -inf", every NaN is "   nan".
QString resultNumber(double value);

/// "Result of LCF ::  0.412 :  0.301 :  0.287, Valence =  2.713, Base =  0.004"
QString linearCombinationText(const std::vector<double> &fractions, double valence, double base);

/// "Result of NEQ ::  0.412 :  0.301 :  0.287, Valence =  2.713, t =  0.914"
QString nonEquivalentText(const std::vector<double> &fractions, double valence, double t);
