#pragma once

#include "import/ImageStack.h"

#include <QString>
#include <QStringList>

/// Opens the stack that TIFF files are: the pages of one file, with their energies in the text file of the same name
/// (if there is one), or one file per energy with the energy in its name ("_08324.0_eV_", "8353.5eV"). Files with the
/// word flat, ref or bkg in their names are I0. False, with one sentence, when they are none, or the library was not
/// built in.
[[nodiscard]] bool openTiffStack(const QStringList &files, ImageStack *stack, QString *error);

/// All pages of a file.
[[nodiscard]] Frames openTiffFrames(const QString &path, QString *error);

/// What is inside of a file, a line each.
[[nodiscard]] bool listTiff(const QString &path, QStringList *lines, QString *error);

/// What the name of a file says about it.
struct ImageFileName {
    double energy = 0.0; ///< eV; 0: nothing
    bool isFlat = false; ///< an image of I0
};
ImageFileName readImageFileName(const QString &path);
