#include "import/Image.h"

#include <algorithm>
#include <cmath>

QString sizeText(int width, int height)
{
    return QStringLiteral("%1 x %2").arg(width).arg(height);
}

void subtract(const Image &dark, Image *image)
{
    std::transform(image->values.begin(), image->values.end(), dark.values.begin(), image->values.begin(),
                   [](double value, double darkValue) { return value - darkValue; });
}

void crop(const QRect &part, Image *image)
{
    if (part.width() == image->width && part.height() == image->height)
        return;
    double *out = image->values.data(); // never runs past what is still to be read
    for (int y = part.top(); y < part.top() + part.height(); ++y) {
        const double *const from = image->row(y) + part.left();
        out = std::copy(from, from + part.width(), out);
    }
    image->resize(part.width(), part.height());
}

void bin(int side, Image *image)
{
    if (side <= 1)
        return;
    const int width = image->width / side;
    const int height = image->height / side;
    const double share = 1.0 / (static_cast<double>(side) * side);
    std::vector<double> sums(static_cast<std::size_t>(width));
    double *out = image->values.data();
    for (int y = 0; y < height; ++y) {
        std::fill(sums.begin(), sums.end(), 0.0);
        for (int line = y * side; line < (y + 1) * side; ++line) {
            const double *from = image->row(line);
            for (double &sum : sums) {
                for (int i = 0; i < side; ++i)
                    sum += *from++;
            }
        }
        for (const double sum : sums)
            *out++ = sum * share;
    }
    image->resize(width, height);
}

double mean(const QRect &part, const Image &image)
{
    double sum = 0.0;
    for (int y = part.top(); y < part.top() + part.height(); ++y) {
        const double *const row = image.row(y);
        for (int x = part.left(); x < part.left() + part.width(); ++x)
            sum += row[x];
    }
    return sum / (static_cast<double>(part.width()) * part.height());
}

Image shifted(const Image &image, double dx, double dy, const QRect &part)
{
    const int wholeX = static_cast<int>(std::floor(dx));
    const int wholeY = static_cast<int>(std::floor(dy));
    const double right = dx - wholeX;
    const double below = dy - wholeY;
    const int toRight = right > 0.0 ? 1 : 0; // the neighbour of a whole shift may not exist
    Image out;
    out.resize(part.width(), part.height());
    for (int y = 0; y < part.height(); ++y) {
        const double *const upper = image.row(part.top() + y + wholeY) + part.left() + wholeX;
        const double *const lower = below > 0.0 ? upper + image.width : upper;
        double *const to = out.row(y);
        for (int x = 0; x < part.width(); ++x) {
            const double above = upper[x] + right * (upper[x + toRight] - upper[x]);
            const double under = lower[x] + right * (lower[x + toRight] - lower[x]);
            to[x] = above + below * (under - above);
        }
    }
    return out;
}
