#pragma once

#include "import/Image.h"
#include "import/ImportOptions.h"

#include <QRect>
#include <QString>
#include <QVector>

#include <functional>

/// Where the picture of an image lies from that of the reference image: what stands at (x, y) there stands at
/// (x + shift.x, y + shift.y) here, in pixels.
struct ImageShift {
    double x = 0.0;
    double y = 0.0;
    double disagreement = 0.0; ///< distance between the direct and the chained shift, pixels
};

/// The shifts of a stack.
struct Alignment {
    QVector<ImageShift> shifts; ///< one per image; empty: nothing is aligned
    int reference = 0;          ///< the image that the others are brought to
    QRect common;               ///< pixels of the reference image that all images show

    bool isEmpty() const { return shifts.isEmpty(); }
};

/// Reads the absorption of an image. False, with one sentence, when that failed.
using ReadAbsorption = std::function<bool(int index, Image *absorption, QString *error)>;

/// Finds the shifts of a stack of images, the last of which (behind the edge, where the contrast is best) is the
/// reference: each image directly against it, or, where its contrast is poor, against the mean of those found surely;
/// and chained from neighbour to neighbour, whose contrasts are alike. The direct shift counts, unless both differ by
/// more than a pixel and the weakest link of the chain stands out more. `isGoingOn` hears how much is done and may stop
/// it. False, with one sentence (none when stopped), when an image cannot be read, the images have nothing in common,
/// or the program was built without kissfft.
[[nodiscard]] bool alignImages(int count, const ReadAbsorption &read, const std::function<bool(double done)> &isGoingOn,
                               Alignment *alignment, QString *error);
