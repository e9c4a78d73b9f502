#pragma once

#include "import/ImageStack.h"
#include "import/ImportOptions.h"

#include <QString>
#include <QStringList>

/// Opens the stack of an HDF5 file: NeXus NXstxm, Data Exchange, full-field TXM, or the datasets that the options name.
/// False, with one sentence, when none of these is there or the library was not built in.
[[nodiscard]] bool openHdf5Stack(const QString &path, const ImportOptions &options, ImageStack *stack, QString *error);

/// The images of one dataset ("FILE::PATH"), of two dimensions or of three with the frames first.
[[nodiscard]] Frames openHdf5Frames(const QString &path, const QString &dataset, QString *error);

/// What is inside, a line each: the layout when it is known, all datasets with their shapes, and what the options
/// --data and --energy could name. False, with one sentence, when it cannot be read.
[[nodiscard]] bool listHdf5(const QString &path, QStringList *lines, QString *error);
