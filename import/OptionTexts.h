#pragma once

#include "import/ImportOptions.h"

#include <QString>
#include <QVector>

/// How options are written on a command line and in the fields of the window. Each gives false for a text that cannot
/// be taken; what it fills is then of no use.

/// "2,3.5": numbers with commas between them.
[[nodiscard]] bool readNumbers(const QString &text, QVector<double> *numbers);
/// "x0,y0,x1,y1" in pixels from 0 on, x1 and y1 behind the last one.
[[nodiscard]] bool readRegion(const QString &text, QRect *region);
/// "8" is a number of energies, from 2 to 8; anything else is up to eight energies, eV. One below 100 would be a number
/// that is too large.
[[nodiscard]] bool readPick(const QString &text, ImportOptions *options);
/// "::PATH" or "PATH".
QString withoutColons(const QString &path);
