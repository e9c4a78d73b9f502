#pragma once

#include "import/ImageStack.h"

#include <QString>
#include <QStringList>

/// Opens a stack of text images: NAME.hdr with NAME_a000.xim, NAME_a001.xim, ... and I0 from NAME.xsp (energy and
/// intensity), where there is one. False, with one sentence, when a part is missing or does not fit.
[[nodiscard]] bool openXimStack(const QString &path, ImageStack *stack, QString *error);

/// One text image.
[[nodiscard]] Frames openXimFrames(const QString &path, QString *error);

/// What the header says, a line each.
[[nodiscard]] bool listXim(const QString &path, QStringList *lines, QString *error);
