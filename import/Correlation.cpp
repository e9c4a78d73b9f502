#include "import/Correlation.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numeric>

namespace
{

const double pi = std::acos(-1.0);
/// Tukey's window over `count` pixels, moved; 0 outside of it.
std::vector<double> tukeyWindow(int count, int shift)
{
    constexpr double taper = 0.2;
    std::vector<double> window(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double place = (i - shift + 0.5) / count;
        const double fromEdge = std::min(place, 1.0 - place) / taper;
        window[static_cast<std::size_t>(i)] = fromEdge <= 0.0   ? 0.0
                                              : fromEdge >= 1.0 ? 1.0
                                                                : 0.5 - 0.5 * std::cos(pi * fromEdge);
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
    m_rowsForward.reset(kiss_fftr_alloc(m_columns, 0, nullptr, nullptr));
    m_rowsBackward.reset(kiss_fftr_alloc(m_columns, 1, nullptr, nullptr));
    m_columnsForward.reset(kiss_fft_alloc(m_rows, 0, nullptr, nullptr));
    m_columnsBackward.reset(kiss_fft_alloc(m_rows, 1, nullptr, nullptr));
}

void Correlation::transformColumns(kiss_fft_state *plan, Spectrum *spectrum) const
{
    const auto width = static_cast<std::size_t>(columns());
    Spectrum before(static_cast<std::size_t>(m_rows)), after(before.size());
    for (std::size_t x = 0; x < width; ++x) {
        for (std::size_t y = 0; y < before.size(); ++y)
            before[y] = (*spectrum)[y * width + x];
        kiss_fft(plan, before.data(), after.data());
        for (std::size_t y = 0; y < before.size(); ++y)
            (*spectrum)[y * width + x] = after[y];
    }
}

Correlation::Spectrum Correlation::spectrumOf(const Image &image, QPoint windowShift) const
{
    const std::vector<double> acrossX = tukeyWindow(m_width, windowShift.x());
    const std::vector<double> acrossY = tukeyWindow(m_height, windowShift.y());
    double sum = 0.0, weight = 0.0;
    for (int y = 0; y < m_height; ++y) {
        const double *const row = image.row(y);
        const double inRow = std::inner_product(acrossX.begin(), acrossX.end(), row, 0.0);
        sum += acrossY[static_cast<std::size_t>(y)] * inRow;
        weight += acrossY[static_cast<std::size_t>(y)];
    }
    const double mean = sum / (weight * std::accumulate(acrossX.begin(), acrossX.end(), 0.0));

    std::vector<float> windowed(static_cast<std::size_t>(m_columns));
    Spectrum spectrum(static_cast<std::size_t>(columns()) * static_cast<std::size_t>(m_rows));
    for (int y = 0; y < m_height; ++y) {
        const double *const row = image.row(y);
        for (int x = 0; x < m_width; ++x)
            windowed[static_cast<std::size_t>(x)] = static_cast<float>(
                (row[x] - mean) * acrossX[static_cast<std::size_t>(x)] * acrossY[static_cast<std::size_t>(y)]);
        kiss_fftr(m_rowsForward.get(), windowed.data(),
                  spectrum.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(columns()));
    }
    transformColumns(m_columnsForward.get(), &spectrum);
    return spectrum;
}

QPoint Correlation::coarsePeak(const Spectrum &product) const
{
    Spectrum lines = product;
    transformColumns(m_columnsBackward.get(), &lines);
    std::vector<float> correlation(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows));
    for (std::size_t y = 0; y < static_cast<std::size_t>(m_rows); ++y)
        kiss_fftri(m_rowsBackward.get(), lines.data() + y * static_cast<std::size_t>(columns()),
                   correlation.data() + y * static_cast<std::size_t>(m_columns));
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
FoundShift Correlation::finePeak(const Spectrum &product, QPoint coarse) const
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
    FoundShift peak;
    peak.coefficient = -std::numeric_limits<double>::infinity();
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
            for (std::size_t x = 0; x < width; ++x)
                value += weight(x) *
                         static_cast<double>(line[x].real() * phase[x].real() - line[x].imag() * phase[x].imag());
            if (value <= peak.coefficient)
                continue;
            peak.coefficient = value;
            peak.shift = QPointF(coarse.x() + (i - reach) * step, coarse.y() + (j - reach) * step);
        }
    }
    return peak;
}

FoundShift Correlation::shiftBetween(const Spectrum &first, const Spectrum &second) const
{
    Spectrum product(first.size());
    for (std::size_t i = 0; i < product.size(); ++i) { // conjugate of the first times the second
        product[i].r = first[i].r * second[i].r + first[i].i * second[i].i;
        product[i].i = first[i].r * second[i].i - first[i].i * second[i].r;
    }
    FoundShift found = finePeak(product, coarsePeak(product));
    const double powers = std::sqrt(power(first) * power(second));
    found.coefficient = powers > 0.0 ? found.coefficient / powers : 0.0;
    return found;
}

double Correlation::power(const Spectrum &spectrum) const
{
    const auto width = static_cast<std::size_t>(columns());
    double sum = 0.0;
    for (std::size_t i = 0; i < spectrum.size(); ++i)
        sum += weight(i % width) * static_cast<double>(spectrum[i].r * spectrum[i].r + spectrum[i].i * spectrum[i].i);
    return sum;
}

FoundShift Correlation::shiftOf(const Spectrum &reference, const Spectrum &spectrum, const Image &image) const
{
    constexpr int mostWindows = 4;
    FoundShift found = shiftBetween(reference, spectrum);
    QPoint window;
    for (int i = 1; i < mostWindows && found.shift.toPoint() != window; ++i) {
        window = found.shift.toPoint();
        found = shiftBetween(reference, spectrumOf(image, window));
    }
    return found;
}
