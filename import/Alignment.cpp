#include "import/Alignment.h"

#include "import/ImportText.h"

#include <algorithm>
#include <cmath>

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

/// Where both ways agree the direct one counts, which adds up no errors.
QVector<ImageShift> chooseShifts(const QVector<QPointF> &direct, const QVector<QPointF> &chained)
{
    QVector<ImageShift> shifts;
    for (int i = 0; i < direct.size(); ++i) {
        const QPointF fromReference = chained[i] - chained.last();
        const QPointF difference = direct[i] - fromReference;
        ImageShift shift;
        shift.disagreement = tenths(std::hypot(difference.x(), difference.y()));
        const QPointF chosen = shift.disagreement <= 1.0 ? direct[i] : fromReference;
        shift.x = tenths(chosen.x());
        shift.y = tenths(chosen.y());
        shifts << shift;
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
    QVector<QPointF> direct, chained;
    for (int i = 0; i < count; ++i) {
        if (!isGoingOn(static_cast<double>(i) / count) || !read(i, &image, error))
            return false;
        const bool isReference = i == count - 1;
        Correlation::Spectrum spectrum = isReference ? reference : correlation.spectrumOf(image);
        direct << (isReference ? QPointF() : correlation.shiftOf(reference, spectrum, image));
        chained << (i == 0 ? QPointF() : chained.last() + correlation.shiftOf(previous, spectrum, image));
        previous = std::move(spectrum);
    }
    alignment->shifts = chooseShifts(direct, chained);
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
