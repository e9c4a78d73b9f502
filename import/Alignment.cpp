#include "import/Alignment.h"

#include "import/ImportText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#ifdef FLOKLUK_HAVE_KISSFFT

#include "import/Correlation.h"

#include <memory>

namespace
{

/// The pixels of the reference image whose places in all images lie within them.
QRect commonArea(const QVector<ImageShift> &shifts, int width, int height)
{
    double left = 0.0, top = 0.0, right = 0.0, bottom = 0.0;
    for (const ImageShift &shift : shifts) {
        left = std::max(left, -shift.x);
        top = std::max(top, -shift.y);
        right = std::max(right, shift.x);
        bottom = std::max(bottom, shift.y);
    }
    const auto up = [](double value) { // a shift is a sum of tenths, and such sums are not exact
        return static_cast<int>(std::ceil(value - 1e-6));
    };
    return {up(left), up(top), width - up(left) - up(right), height - up(top) - up(bottom)};
}

/// Tenths of a pixel: what sums of them lost is put back.
double tenths(double value)
{
    return std::round(value * 10.0) / 10.0;
}

/// How one image lies from the reference: found directly, and along the chain up to it.
struct TwoWays {
    FoundShift direct;
    FoundShift link; ///< from the image before
};

/// The direct shift adds up no errors; the chain counts where it is surer, each of its links on the way.
QVector<ImageShift> chooseShifts(const QVector<TwoWays> &images)
{
    QVector<ImageShift> shifts(images.size());
    QPointF chained;
    double weakestLink = std::numeric_limits<double>::infinity();
    for (int i = images.size() - 1; i >= 0; --i) {
        const QPointF difference = images[i].direct.shift - chained;
        const bool isChainSurer = weakestLink > images[i].direct.significance;
        ImageShift &shift = shifts[i];
        shift.disagreement = tenths(std::hypot(difference.x(), difference.y()));
        const QPointF chosen = isChainSurer && shift.disagreement > 1.0 ? chained : images[i].direct.shift;
        shift.x = tenths(chosen.x());
        shift.y = tenths(chosen.y());
        chained -= images[i].link.shift;
        weakestLink = std::min(weakestLink, images[i].link.significance);
    }
    return shifts;
}

} // namespace

bool alignImages(int count, const ReadAbsorption &read, const std::function<bool(double done)> &isGoingOn,
                 Alignment *alignment, QString *error)
{
    Image image;
    if (!read(count - 1, &image, error))
        return false;
    const Correlation correlation(image.width, image.height);
    const Correlation::Spectrum reference = correlation.spectrumOf(image);
    Correlation::Spectrum previous;
    QVector<TwoWays> images;
    for (int i = 0; i < count; ++i) {
        if (!isGoingOn(static_cast<double>(i) / count) || !read(i, &image, error))
            return false;
        const bool isReference = i == count - 1;
        Correlation::Spectrum spectrum = isReference ? reference : correlation.spectrumOf(image);
        TwoWays found;
        if (!isReference)
            found.direct = correlation.shiftOf(reference, spectrum, image);
        if (i > 0)
            found.link = correlation.shiftOf(previous, spectrum, image);
        images << found;
        previous = std::move(spectrum);
    }
    alignment->shifts = chooseShifts(images);
    alignment->reference = count - 1;
    alignment->common = commonArea(alignment->shifts, image.width, image.height);
    if (alignment->common.isValid())
        return true;
    *error = ImportText::tr("the images are shifted so far that they have nothing in common");
    return false;
}

#else

bool alignImages(int, const ReadAbsorption &, const std::function<bool(double done)> &, Alignment *, QString *error)
{
    *error = ImportText::tr("--align needs kissfft, which this program was built without");
    return false;
}

#endif
