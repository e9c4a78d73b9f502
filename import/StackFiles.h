#pragma once

#include "import/ImageStack.h"
#include "import/ImportOptions.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// Opens the one stack that `files` are, of whatever kind. False, with one sentence, when they are none.
[[nodiscard]] bool openStack(const QStringList &files, const ImportOptions &options, ImageStack *stack, QString *error);

/// The images of "FILE" or "FILE::PATH", for flat and dark frames; null, with one sentence, when there are none.
[[nodiscard]] Frames openFrames(const QString &name, QString *error);

/// Energies in eV from a text, one a line, with "eV" or "keV" behind it or not; lines beginning with "#" or "*" are
/// comments. Without a unit all are below 100 and in keV, which `isGuess` says then, or none is.
[[nodiscard]] bool readEnergies(const QString &path, QVector<double> *energies, QString *error,
                                bool *isGuess = nullptr);

/// I0 at the energies (eV, in any order) from a text of two columns, energy and intensity; linear between its points.
[[nodiscard]] bool readIncident(const QString &path, const QVector<double> &energies, QVector<double> *incident,
                                QString *error);

/// What is inside of a file, a line each. False, with one sentence, when it cannot be read.
[[nodiscard]] bool listInput(const QString &path, QStringList *lines, QString *error);
