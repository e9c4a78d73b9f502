#pragma once

#include <QRect>
#include <QString>

#include <cstddef>
#include <vector>

/// One image: `height` rows of `width` values, row by row.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<double> values;

    void resize(int newWidth, int newHeight)
    {
        width = newWidth;
        height = newHeight;
        values.resize(static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight));
    }
    bool isEmpty() const { return values.empty(); }
    const double *row(int y) const
    {
        return values.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
    double *row(int y) { return values.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width); }
};

/// "40 x 30": columns and rows.
QString sizeText(int width, int height);

/// Takes `dark`, an image of the same size, away.
void subtract(const Image &dark, Image *image);
/// Keeps the pixels of `part`, which lies inside of the image.
void crop(const QRect &part, Image *image);
/// Puts the mean of squares of `side` x `side` pixels in their place; what is left over at the right and at the bottom
/// goes. A side of 1 changes nothing.
void bin(int side, Image *image);
/// The mean over `part`, which lies inside of the image.
double mean(const QRect &part, const Image &image);
/// Moves the image by a fraction of a pixel: out(x, y) = image(x + dx, y + dy), linear between the four pixels around;
/// only the pixels of `part` are kept, all of which must have their four neighbours inside of the image.
Image shifted(const Image &image, double dx, double dy, const QRect &part);
