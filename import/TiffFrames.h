#pragma once

#include "import/ImageStack.h"

#include <tiffio.h>

#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/// One page of a TIFF file.
struct TiffPage {
    QString file;
    int page = 0;
};

struct TiffClose {
    void operator()(TIFF *file) const { TIFFClose(file); }
};
using TiffFile = std::unique_ptr<TIFF, TiffClose>;

/// The sentence about a file that is not whole.
QString damagedTiff(const QString &path);

/// Opens a file; null, with one sentence, when it is no TIFF file.
TiffFile openTiff(const QString &path, QString *error);

/// Grey images of 8, 16, 32 bit integers or 32, 64 bit floats, in strips or tiles, compressed by whatever the library
/// knows. Each frame is the mean of its pages.
class TiffFrames : public FrameSource
{
public:
    /// Null, with one sentence, when there is no page or the first cannot be read.
    static std::unique_ptr<TiffFrames> open(const QVector<QVector<TiffPage>> &frames, QString *error);

    int width() const override { return m_width; }
    int height() const override { return m_height; }
    int count() const override { return m_frames.size(); }
    bool read(int frame, Image *image, QString *error) override;

private:
    bool readPage(const TiffPage &page, Image *image, QString *error);
    bool goTo(const TiffPage &page, QString *error);

    QVector<QVector<TiffPage>> m_frames;
    int m_width = 0;
    int m_height = 0;
    QString m_openName;
    TiffFile m_open;
    std::vector<unsigned char> m_piece; ///< a strip or tile
};
