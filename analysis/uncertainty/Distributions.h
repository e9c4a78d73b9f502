#pragma once

/// Quantiles of the distributions that say what a sum of squares of normal errors is worth. Closed sums for whole
/// degrees of freedom (M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 26.4 and 26.7), inverted by
/// bisection to the last digits of a double.

/// The median of a chi^2 with `degrees` >= 1 degrees of freedom: 0.455, 1.386, 2.366, 3.357 ... NaN below 1.
double chiSquareMedian(int degrees);

/// The coverage of one standard error of a normal distribution.
constexpr double oneSigmaCoverage = 0.682689492137086;

/// Student's factor: the true value lies within this many standard errors with the probability `coverage` (between 0
/// and 1), when these were estimated from `degrees` >= 1 residuals. 1.84, 1.32, 1.20 ... for one sigma, towards 1; NaN
/// below 1.
double studentFactor(int degrees, double coverage = oneSigmaCoverage);
