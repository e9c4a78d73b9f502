#pragma once

#include "import/Image.h"

#include <QPoint>
#include <QPointF>

#include <kissfft/kiss_fftr.h>

#include <memory>
#include <vector>

/// A shift that was found.
struct FoundShift {
    QPointF shift;
    double coefficient = 0.0; ///< of correlation at that shift: 1 for pictures that are alike, 0 for noise
};

/// Finds how far pictures are shifted against each other by plain (not phase-normalised) windowed cross-correlation:
/// the peak to a pixel by a transform, then to a tenth of a pixel by an upsampled one around it (M. Guizar-Sicairos, S.
/// T. Thurman and J. R. Fienup, Opt. Lett. 33 (2008) 156). All images have one size.
class Correlation
{
public:
    Correlation(int width, int height);

    /// The half spectrum of an image under its window, rows of columns() values.
    using Spectrum = std::vector<kiss_fft_cpx>;

    /// The spectrum of an image less its mean, under a window that falls to 0 over the outer fifth of each side (J. W.
    /// Tukey's), moved by `windowShift`.
    Spectrum spectrumOf(const Image &image, QPoint windowShift = {}) const;

    /// Where what stands at (x, y) of the first picture stands in the second, less (x, y), to a tenth of a pixel and at
    /// most a third of the image.
    FoundShift shiftBetween(const Spectrum &first, const Spectrum &second) const;

    /// The same between a spectrum and an image. Windows in one place pull towards no shift: it is found again with the
    /// window moved along, until that stays where it is.
    FoundShift shiftOf(const Spectrum &reference, const Spectrum &spectrum, const Image &image) const;

private:
    struct Free {
        void operator()(void *memory) const { kiss_fft_free(memory); }
    };
    template <class State>
    using Plan = std::unique_ptr<State, Free>;

    int columns() const { return m_columns / 2 + 1; }
    /// How often a column of the half spectrum stands in the whole one.
    double weight(std::size_t column) const
    {
        return column == 0 || 2 * column == static_cast<std::size_t>(m_columns) ? 1.0 : 2.0;
    }
    void transformColumns(kiss_fft_state *plan, Spectrum *spectrum) const;
    QPoint coarsePeak(const Spectrum &product) const;
    double power(const Spectrum &spectrum) const;
    FoundShift finePeak(const Spectrum &product, QPoint coarse) const;

    int m_width, m_height;                               ///< of the images
    int m_columns, m_rows;                               ///< of the transform: at least that, and fast
    Plan<kiss_fftr_state> m_rowsForward, m_rowsBackward; ///< of real values
    Plan<kiss_fft_state> m_columnsForward, m_columnsBackward;
};
