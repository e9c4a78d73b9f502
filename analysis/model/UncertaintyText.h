#pragma once

#include "analysis/model/Quality.h"

#include <QString>
#include <QStringList>

struct LinearCombination;

/// What uncertainties, regions and the target's fit say, in the language of the program; numbers have a decimal point.

/// "2.71 ± 0.013": the error with two significant digits, the value with as many decimals. Without a finite error the
/// value alone, with three significant digits.
QString withError(double value, double error);

/// Of a target: line by line V, t and the fractions with what they may be off, 68.3 % of the time: the standard errors
/// times Student's factor. For n = p a sentence that says why there are none.
QString targetErrorsText(const TargetFit &target);
/// That of one fraction, counted from 0; empty for n = p.
QString fractionErrorText(const TargetFit &target, int reference);
/// The same of a linear combination fit: V, its sum S of the coefficients, V / S and the fractions; empty where there
/// are fewer points than unknowns.
QString fitResultErrorsText(const LinearCombination &fit);

/// "V 2.71 ± 0.01, t 0.83, 1240 pixels, scatter 0.12 (expected 0.09), chi² 1.1": the mean valence with its standard
/// error, the mean amount per pixel, and chi^2 / (n - p) of the mean spectrum, which is left out for n = p. For a
/// region without a pixel a sentence that says so.
QString regionLine(const RegionStatistics &statistics);

/// Titles of a table of regions and the cells of one row: name, x0, y0, x1, y1, pixels, amount, mean, median, scatter,
/// expected scatter, standard error of the mean and chi^2 / (n - p). The corners are those of the part that lies on a
/// map of `width` x `height` pixels; numbers have six significant digits, in a column for a person to read three.
QStringList regionTitles();
QStringList regionCells(const Region &region, const RegionStatistics &statistics, int width, int height,
                        int digits = 6);
