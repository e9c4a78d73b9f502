#include "import/TiffFrames.h"

#include "import/ImportText.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace
{

/// What the directory of a page says.
struct PageInfo {
    std::uint32_t width = 0, height = 0;
    std::uint16_t bits = 1, samples = 1, format = SAMPLEFORMAT_UINT, compression = COMPRESSION_NONE;
    std::uint16_t photometric = PHOTOMETRIC_MINISBLACK;
};

PageInfo infoOf(TIFF *file)
{
    PageInfo info;
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &info.width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &info.height);
    TIFFGetFieldDefaulted(file, TIFFTAG_BITSPERSAMPLE, &info.bits);
    TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLESPERPIXEL, &info.samples);
    TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLEFORMAT, &info.format);
    TIFFGetFieldDefaulted(file, TIFFTAG_COMPRESSION, &info.compression);
    TIFFGetField(file, TIFFTAG_PHOTOMETRIC, &info.photometric);
    return info;
}

using Convert = void (*)(const unsigned char *from, int count, double *to);

template <class Value>
void convert(const unsigned char *from, int count, double *to)
{
    for (int i = 0; i < count; ++i) {
        Value value;
        std::memcpy(&value, from + static_cast<std::size_t>(i) * sizeof value, sizeof value);
        to[i] = static_cast<double>(value);
    }
}

/// Null for values of another form.
Convert converterOf(const PageInfo &info)
{
    switch (info.format) {
    case SAMPLEFORMAT_UINT:
    case SAMPLEFORMAT_VOID:
        return info.bits == 8    ? convert<std::uint8_t>
               : info.bits == 16 ? convert<std::uint16_t>
               : info.bits == 32 ? convert<std::uint32_t>
                                 : nullptr;
    case SAMPLEFORMAT_INT:
        return info.bits == 8    ? convert<std::int8_t>
               : info.bits == 16 ? convert<std::int16_t>
               : info.bits == 32 ? convert<std::int32_t>
                                 : nullptr;
    case SAMPLEFORMAT_IEEEFP:
        return info.bits == 32 ? convert<float> : info.bits == 64 ? convert<double> : nullptr;
    default:
        return nullptr;
    }
}

/// Reads a page piece by piece; false where the library cannot.
bool readPieces(TIFF *file, const PageInfo &info, Convert convertRow, std::vector<unsigned char> *piece, Image *image)
{
    const bool isTiled = TIFFIsTiled(file) != 0;
    std::uint32_t pieceWidth = info.width, pieceHeight = info.height;
    if (isTiled) {
        TIFFGetField(file, TIFFTAG_TILEWIDTH, &pieceWidth);
        TIFFGetField(file, TIFFTAG_TILELENGTH, &pieceHeight);
    } else {
        TIFFGetFieldDefaulted(file, TIFFTAG_ROWSPERSTRIP, &pieceHeight);
        pieceHeight = std::min(pieceHeight, info.height);
    }
    const auto bytes = static_cast<std::uint64_t>(isTiled ? TIFFTileSize(file) : TIFFStripSize(file));
    const std::uint64_t valueBytes = info.bits / 8U;
    constexpr std::uint64_t largest = std::uint64_t(mostPixels) * 8;
    if (pieceWidth == 0 || pieceHeight == 0 || bytes > largest || bytes < valueBytes * pieceWidth * pieceHeight)
        return false;
    piece->resize(static_cast<std::size_t>(bytes));
    for (std::uint32_t top = 0; top < info.height; top += pieceHeight) {
        const std::uint32_t rows = std::min(pieceHeight, info.height - top);
        for (std::uint32_t left = 0; left < info.width; left += pieceWidth) {
            const tmsize_t wanted = static_cast<tmsize_t>(valueBytes * pieceWidth * (isTiled ? pieceHeight : rows));
            const tmsize_t got =
                isTiled ? TIFFReadTile(file, piece->data(), left, top, 0, 0)
                        : TIFFReadEncodedStrip(file, TIFFComputeStrip(file, top, 0), piece->data(), wanted);
            if (got < wanted)
                return false;
            const int columns = static_cast<int>(std::min(pieceWidth, info.width - left));
            for (std::uint32_t y = 0; y < rows; ++y)
                convertRow(piece->data() + valueBytes * pieceWidth * y, columns,
                           image->row(static_cast<int>(top + y)) + left);
        }
    }
    return true;
}

QString pageName(const TiffPage &page)
{
    return ImportText::tr("page %1 of %2").arg(page.page + 1).arg(QDir::toNativeSeparators(page.file));
}

} // namespace

QString damagedTiff(const QString &path)
{
    return ImportText::tr("%1 is no whole TIFF file: it is damaged or cut off").arg(QDir::toNativeSeparators(path));
}

TiffFile openTiff(const QString &path, QString *error)
{
    TIFFSetErrorHandler(nullptr); // what went wrong is told in one sentence
    TIFFSetWarningHandler(nullptr);
    TiffFile file(TIFFOpen(QFile::encodeName(path).constData(), "r"));
    if (!file)
        *error = damagedTiff(path);
    return file;
}

std::unique_ptr<TiffFrames> TiffFrames::open(const QVector<QVector<TiffPage>> &frames, QString *error)
{
    if (frames.isEmpty() || frames.first().isEmpty()) {
        *error = ImportText::tr("there is no image in the TIFF files");
        return nullptr;
    }
    auto source = std::make_unique<TiffFrames>();
    source->m_frames = frames;
    const TiffPage &first = frames.first().first();
    if (!source->goTo(first, error))
        return nullptr;
    const PageInfo info = infoOf(source->m_open.get());
    if (!isImageSize(info.width, info.height, QDir::toNativeSeparators(first.file), error))
        return nullptr;
    source->m_width = static_cast<int>(info.width);
    source->m_height = static_cast<int>(info.height);
    return source;
}

/// Pages in their order are reached one from the other: from the start each would cost as many steps as its number.
bool TiffFrames::goTo(const TiffPage &page, QString *error)
{
    if (m_openName != page.file) {
        m_open = openTiff(page.file, error);
        m_openName = m_open ? page.file : QString();
        if (!m_open)
            return false;
    }
    const int current = static_cast<int>(TIFFCurrentDirectory(m_open.get()));
    const bool isThere = page.page == current ? true
                         : page.page == current + 1
                             ? TIFFReadDirectory(m_open.get()) != 0
                             : TIFFSetDirectory(m_open.get(), static_cast<tdir_t>(page.page)) != 0;
    if (!isThere) {
        m_open.reset();
        m_openName.clear();
        *error = ImportText::tr("%1 cannot be read, the file is damaged or cut off").arg(pageName(page));
    }
    return isThere;
}

bool TiffFrames::readPage(const TiffPage &page, Image *image, QString *error)
{
    if (!goTo(page, error))
        return false;
    const PageInfo info = infoOf(m_open.get());
    const Convert convertRow = converterOf(info);
    const bool isGrey =
        info.samples == 1 && (info.photometric == PHOTOMETRIC_MINISBLACK || info.photometric == PHOTOMETRIC_MINISWHITE);
    if (static_cast<int>(info.width) != m_width || static_cast<int>(info.height) != m_height)
        *error = ImportText::tr("%1 has %2 x %3 pixels, the first image %4")
                     .arg(pageName(page))
                     .arg(info.width)
                     .arg(info.height)
                     .arg(sizeText(m_width, m_height));
    else if (!isGrey)
        *error = ImportText::tr("%1 is a picture in colours, not an image of intensities").arg(pageName(page));
    else if (convertRow == nullptr)
        *error = ImportText::tr("%1 has values of %2 bits that are not read here").arg(pageName(page)).arg(info.bits);
    else if (TIFFIsCODECConfigured(info.compression) == 0)
        *error = ImportText::tr("%1 is compressed with method %2, which the TIFF library here does not have")
                     .arg(pageName(page))
                     .arg(info.compression);
    else {
        image->resize(m_width, m_height);
        if (readPieces(m_open.get(), info, convertRow, &m_piece, image))
            return true;
        *error = ImportText::tr("%1 cannot be read, the file is damaged or cut off").arg(pageName(page));
    }
    return false;
}

bool TiffFrames::read(int frame, Image *image, QString *error)
{
    const QVector<TiffPage> &pages = m_frames[frame];
    if (!readPage(pages.first(), image, error))
        return false;
    Image next;
    for (int i = 1; i < pages.size(); ++i) {
        if (!readPage(pages[i], &next, error))
            return false;
        std::transform(image->values.begin(), image->values.end(), next.values.begin(), image->values.begin(),
                       [](double sum, double value) { return sum + value; });
    }
    for (double &value : image->values)
        value /= pages.size();
    return true;
}
