#pragma once

#include "import/Image.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

/// Images of one size, read one at a time.
class FrameSource
{
public:
    virtual ~FrameSource() = default;
    FrameSource() = default;
    FrameSource(const FrameSource &) = delete;
    FrameSource &operator=(const FrameSource &) = delete;

    virtual int width() const = 0;
    virtual int height() const = 0;
    virtual int count() const = 0;
    /// Reads frame 0 ... count() - 1; the memory of `image` is used again. False, with one sentence, when that failed.
    [[nodiscard]] virtual bool read(int frame, Image *image, QString *error) = 0;
};

using Frames = std::unique_ptr<FrameSource>;

/// The mean of all frames of a source.
[[nodiscard]] bool averageFrames(FrameSource *frames, Image *mean, QString *error);

/// The positions of the pixels along one axis.
struct PixelAxis {
    QString unit;              ///< such as "um"; empty where the file gives none
    QVector<double> positions; ///< one per column or row; empty where the file gives none
};

/// A stack of images as its files have it: what they do not hold is empty or null.
struct ImageStack {
    QString layout;    ///< such as "NeXus NXstxm"
    QStringList parts; ///< what was taken from where: "data: /entry/detector/data"
    QStringList files; ///< all that is read
    QStringList warnings;

    Frames images;            ///< I, one per energy, in the order of `energies`
    QVector<double> energies; ///< eV
    PixelAxis x, y;
    QVector<double> incident;     ///< I0, one per energy
    Frames flat;                  ///< I0 as images
    bool flatIsPerEnergy = false; ///< one frame per energy; else they are averaged
    Frames dark;                  ///< averaged
};

/// Largest image that is taken, in pixels, and its largest side: what is beyond comes from a broken file.
constexpr qint64 mostPixels = qint64(1) << 27;
constexpr qint64 longestSide = 65536;
/// Most images of a stack.
constexpr qint64 mostFrames = 100000;

/// False, with a sentence about `file`, for images that are empty or larger than what is taken.
[[nodiscard]] bool isImageSize(qint64 width, qint64 height, const QString &file, QString *error);

/// Energies in eV: `unit` is "eV" or "keV" in any case of letters; without either, values below 100 are keV.
QVector<double> inEv(QVector<double> energies, const QString &unit);

/// Where energies were taken from, for ImageStack::parts; says when they were taken for keV without a word.
QString energyPart(const QString &source, const QVector<double> &given, const QVector<double> &taken,
                   const QString &unit);
