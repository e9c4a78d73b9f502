#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <functional>

namespace numeric
{
class FileSet;
class StagedFile;
} // namespace numeric
class QPaintDevice;
class QStylePainter;
class QWidget;

/// The picture of a display, for talks and papers: its title on a line of its own and below it what the display shows.
struct DisplayPicture {
    QString title;
    QWidget *widget = nullptr;                  ///< whose style and resolution are used
    QSize size;                                 ///< pixels, without the title
    std::function<void(QStylePainter *)> paint; ///< paints the rectangle (0, 0) to size

    /// The size with the title; an empty title takes no room.
    QSize fullSize() const;
    /// The scale of saved and copied pictures: at least 1500 pixels wide, and twice as fine as on screen.
    double printScale() const;
    /// The picture with `scale` pixels for each pixel on screen; null when it has no size.
    QImage toImage(double scale) const;
    /// Writes a PNG of that scale, or where the name ends in ".pdf" vectors. On failure returns why and leaves the
    /// file as it was; an empty text is success. With a set the file takes its place with the others of the set.
    QString save(const QString &path, double scale, numeric::FileSet *set = nullptr) const;

    /// The two steps of saving a PNG, for whoever encodes on another thread; no bytes when it cannot be encoded, which
    /// saveBytes() reports as too little room.
    static QByteArray pngOf(const QImage &image);
    static QString saveBytes(const QString &path, const QByteArray &bytes, numeric::FileSet *set = nullptr);
    /// What save() says of a picture without a size.
    static QString nothingToSee();

private:
    int titleHeight() const;
    bool paintOn(QPaintDevice *device) const;
    bool writePdf(numeric::StagedFile *file) const;
};
