#include "import/Correlation.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numeric>

namespace
{

const double pi = std::acos(-1.0);

/// Hann's window over `count` pixels, its middle moved; 0 outside of it.
std::vector<double> hannWindow(int count, int shift)
{
    std::vector<double> window(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double place = (i - shift + 0.5) / count;
        window[static_cast<std::size_t>(i)] = place > 0.0 && place < 1.0 ? 0.5 - 0.5 * std::cos(2.0 * pi * place) : 0.0;
    }
    return window;
}

/// exp(2 pi i k t / count) for the frequencies 0 ... frequencies - 1 of one place t; those beyond the middle count as
/// negative.
std::vector<std::complex<float>> phases(int frequencies, int count, double place)
{
    std::vector<std::complex<float>> values(static_cast<std::size_t>(frequencies));
    for (int k = 0; k < frequencies; ++k) {
        const int frequency = k > count / 2 ? k - count : k;
        values[static_cast<std::size_t>(k)] =
            std::complex<float>(std::polar(1.0, 2.0 * pi * frequency * place / count));
    }
    return values;
}

} // namespace

Correlation::Correlation(int width, int height)
    : m_width(width)
    , m_height(height)
    , m_columns(kiss_fft_next_fast_size((width + 1) / 2) * 2) // the transform of real values wants an even number
    , m_rows(kiss_fft_next_fast_size(height))
{
    const int sides[] = {m_rows, m_columns};
    m_forward.reset(kiss_fftndr_alloc(sides, 2, 0, nullptr, nullptr));
    m_backward.reset(kiss_fftndr_alloc(sides, 2, 1, nullptr, nullptr));
}

Correlation::Spectrum Correlation::spectrumOf(const Image &image, QPoint windowShift) const
{
    const std::vector<double> acrossX = hannWindow(m_width, windowShift.x());
    const std::vector<double> acrossY = hannWindow(m_height, windowShift.y());
    double sum = 0.0, weight = 0.0;
    for (int y = 0; y < m_height; ++y) {
        const double *const row = image.row(y);
        const double inRow = std::inner_product(acrossX.begin(), acrossX.end(), row, 0.0);
        sum += acrossY[static_cast<std::size_t>(y)] * inRow;
        weight += acrossY[static_cast<std::size_t>(y)];
    }
    const double mean = sum / (weight * std::accumulate(acrossX.begin(), acrossX.end(), 0.0));

    std::vector<float> windowed(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows));
    for (int y = 0; y < m_height; ++y) {
        const double *const row = image.row(y);
        float *const out = windowed.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_columns);
        for (int x = 0; x < m_width; ++x)
            out[x] = static_cast<float>((row[x] - mean) * acrossX[static_cast<std::size_t>(x)] *
                                        acrossY[static_cast<std::size_t>(y)]);
    }
    Spectrum spectrum(static_cast<std::size_t>(columns()) * static_cast<std::size_t>(m_rows));
    kiss_fftndr(m_forward.get(), windowed.data(), spectrum.data());
    return spectrum;
}

QPoint Correlation::coarsePeak(const Spectrum &product) const
{
    std::vector<float> correlation(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows));
    kiss_fftndri(m_backward.get(), product.data(), correlation.data());
    QPoint peak;
    float highest = correlation.front();
    const int farX = m_width / 3;
    const int farY = m_height / 3;
    for (int y = -farY; y <= farY; ++y) {
        const auto row = static_cast<std::size_t>((y + m_rows) % m_rows) * static_cast<std::size_t>(m_columns);
        for (int x = -farX; x <= farX; ++x) {
            const float value = correlation[row + static_cast<std::size_t>((x + m_columns) % m_columns)];
            if (value <= highest)
                continue;
            highest = value;
            peak = QPoint(x, y);
        }
    }
    return peak;
}

/// The correlation at tenths of a pixel within a pixel and a half of the coarse peak, as two products of matrices: over
/// the rows of the spectrum first, then over its columns.
QPointF Correlation::finePeak(const Spectrum &product, QPoint coarse) const
{
    constexpr int reach = 15;
    constexpr double step = 0.1;
    constexpr int places = 2 * reach + 1;
    const auto width = static_cast<std::size_t>(columns());
    std::vector<std::vector<std::complex<float>>> alongX, alongY;
    for (int i = -reach; i <= reach; ++i) {
        alongX.push_back(phases(columns(), m_columns, coarse.x() + i * step));
        alongY.push_back(phases(m_rows, m_rows, coarse.y() + i * step));
    }
    QPointF peak;
    double highest = -std::numeric_limits<double>::infinity();
    std::vector<std::complex<float>> line(width);
    for (int j = 0; j < places; ++j) {
        std::fill(line.begin(), line.end(), std::complex<float>());
        for (int y = 0; y < m_rows; ++y) {
            const float cosine = alongY[static_cast<std::size_t>(j)][static_cast<std::size_t>(y)].real();
            const float sine = alongY[static_cast<std::size_t>(j)][static_cast<std::size_t>(y)].imag();
            const kiss_fft_cpx *const row = product.data() + static_cast<std::size_t>(y) * width;
            for (std::size_t x = 0; x < width; ++x)
                line[x] +=
                    std::complex<float>(row[x].r * cosine - row[x].i * sine, row[x].r * sine + row[x].i * cosine);
        }
        for (int i = 0; i < places; ++i) {
            const std::vector<std::complex<float>> &phase = alongX[static_cast<std::size_t>(i)];
            double value = 0.0; // the columns that are not held are the conjugates of those that are
            for (std::size_t x = 0; x < width; ++x) {
                const double share = x == 0 || 2 * x == static_cast<std::size_t>(m_columns) ? 1.0 : 2.0;
                value +=
                    share * static_cast<double>(line[x].real() * phase[x].real() - line[x].imag() * phase[x].imag());
            }
            if (value <= highest)
                continue;
            highest = value;
            peak = QPointF(coarse.x() + (i - reach) * step, coarse.y() + (j - reach) * step);
        }
    }
    return peak;
}

QPointF Correlation::shiftBetween(const Spectrum &first, const Spectrum &second) const
{
    Spectrum product(first.size());
    for (std::size_t i = 0; i < product.size(); ++i) { // conjugate of the first times the second
        product[i].r = first[i].r * second[i].r + first[i].i * second[i].i;
        product[i].i = first[i].r * second[i].i - first[i].i * second[i].r;
    }
    return finePeak(product, coarsePeak(product));
}

QPointF Correlation::shiftOf(const Spectrum &reference, const Spectrum &spectrum, const Image &image) const
{
    const QPointF first = shiftBetween(reference, spectrum);
    const QPoint whole = first.toPoint();
    return whole.isNull() ? first : shiftBetween(reference, spectrumOf(image, whole));
}
