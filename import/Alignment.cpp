#include "import/Alignment.h"

#include "import/ImportText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#ifdef FLOKLUK_HAVE_KISSFFT

#include "import/Correlation.h"

#include <memory>
#include <numeric>
#include <vector>

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
        const bool isChainSurer = weakestLink > images[i].direct.coefficient;
        ImageShift &shift = shifts[i];
        shift.disagreement = tenths(std::hypot(difference.x(), difference.y()));
        const QPointF chosen = isChainSurer && shift.disagreement > 1.0 ? chained : images[i].direct.shift;
        shift.x = tenths(chosen.x());
        shift.y = tenths(chosen.y());
        chained -= images[i].link.shift;
        weakestLink = std::min(weakestLink, images[i].link.coefficient);
    }
    return shifts;
}

/// Aligns a stack, whose last image is the reference.
class StackAligner
{
public:
    StackAligner(int count, const ReadAbsorption &read, const std::function<bool(double done)> &isGoingOn,
                 QString *error)
        : m_count(count)
        , m_read(read)
        , m_isGoingOn(isGoingOn)
        , m_error(error)
    {
    }

    /// False when an image cannot be read or the work was stopped.
    bool run()
    {
        if (!m_read(m_count - 1, &m_image, m_error))
            return false;
        m_correlation = std::make_unique<Correlation>(m_image.width, m_image.height);
        return compareAll() && compareFaint();
    }
    QVector<ImageShift> shifts() const { return chooseShifts(m_images); }
    int width() const { return m_image.width; }
    int height() const { return m_image.height; }

private:
    bool readNext(int index)
    {
        return m_isGoingOn(static_cast<double>(m_done++) / (2 * m_count)) && m_read(index, &m_image, m_error);
    }
    bool compareAll();
    bool compareFaint();
    bool meanOf(const QVector<int> &sure, Image *mean);

    int m_count;
    const ReadAbsorption &m_read;
    const std::function<bool(double done)> &m_isGoingOn;
    QString *m_error;
    std::unique_ptr<Correlation> m_correlation;
    Image m_image;
    QVector<TwoWays> m_images;
    int m_done = 0;
};

bool StackAligner::compareAll()
{
    const Correlation::Spectrum reference = m_correlation->spectrumOf(m_image);
    Correlation::Spectrum previous;
    for (int i = 0; i < m_count; ++i) {
        if (!readNext(i))
            return false;
        const bool isReference = i == m_count - 1;
        Correlation::Spectrum spectrum = isReference ? reference : m_correlation->spectrumOf(m_image);
        TwoWays found;
        if (!isReference)
            found.direct = m_correlation->shiftOf(reference, spectrum, m_image);
        if (i > 0)
            found.link = m_correlation->shiftOf(previous, spectrum, m_image);
        m_images << found;
        previous = std::move(spectrum);
    }
    return true;
}

/// Images without much contrast (before the edge) once more, against the mean of those that were found surely: it holds
/// less noise than the reference image, whose noise times theirs is their largest error.
bool StackAligner::compareFaint()
{
    constexpr int mostInMean = 16;
    const auto likeness = [this](int i) {
        return m_images[i].direct.coefficient;
    };
    QVector<int> order(m_count - 1);
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int l, int r) { return likeness(l) > likeness(r); });
    QVector<int> sure = {m_count - 1}, faint;
    for (const int i : qAsConst(order)) {
        const bool isSure = likeness(i) > 0.8 * likeness(order.first());
        if (!isSure)
            faint << i;
        else if (sure.size() < mostInMean)
            sure << i;
    }
    Image mean;
    if (faint.isEmpty() || sure.size() < 3)
        return true;
    if (!meanOf(sure, &mean))
        return false;
    if (mean.isEmpty())
        return true;
    const Correlation::Spectrum reference = m_correlation->spectrumOf(mean);
    for (const int i : qAsConst(faint)) {
        if (!readNext(i))
            return false;
        m_images[i].direct = m_correlation->shiftOf(reference, m_correlation->spectrumOf(m_image), m_image);
    }
    return true;
}

/// The mean of images brought to the reference; where not all of them reach, the mean of its values. Empty when they
/// have nothing in common.
bool StackAligner::meanOf(const QVector<int> &sure, Image *mean)
{
    QVector<ImageShift> shifts;
    for (const int i : sure)
        shifts << ImageShift{m_images[i].direct.shift.x(), m_images[i].direct.shift.y(), 0.0};
    const QRect common = commonArea(shifts, m_image.width, m_image.height);
    if (!common.isValid())
        return true;
    std::vector<double> sums(static_cast<std::size_t>(common.width()) * static_cast<std::size_t>(common.height()));
    for (int i = 0; i < sure.size(); ++i) {
        if (!readNext(sure[i]))
            return false;
        const Image part = shifted(m_image, shifts[i].x, shifts[i].y, common);
        std::transform(sums.begin(), sums.end(), part.values.begin(), sums.begin(), std::plus<>());
    }
    const double level = std::accumulate(sums.begin(), sums.end(), 0.0) / static_cast<double>(sums.size());
    mean->resize(m_image.width, m_image.height);
    std::fill(mean->values.begin(), mean->values.end(), level);
    for (int y = 0; y < common.height(); ++y)
        std::copy_n(sums.begin() + static_cast<std::ptrdiff_t>(y) * common.width(), common.width(),
                    mean->row(common.top() + y) + common.left());
    return true;
}

} // namespace

bool alignImages(int count, const ReadAbsorption &read, const std::function<bool(double done)> &isGoingOn,
                 Alignment *alignment, QString *error)
{
    StackAligner aligner(count, read, isGoingOn, error);
    if (!aligner.run())
        return false;
    alignment->shifts = aligner.shifts();
    alignment->reference = count - 1;
    alignment->common = commonArea(alignment->shifts, aligner.width(), aligner.height());
    if (alignment->common.isValid())
        return true;
    *error = ImportText::tr("the images are shifted so far that they have nothing in common");
    return false;
}

#else

bool alignImages(int, const ReadAbsorption &, const std::function<bool(double done)> &, Alignment *, QString *error)
{
    *error = builtWithout(QStringLiteral("--align"), QStringLiteral("kissfft"));
    return false;
}

#endif
