#include "import/Hdf5Frames.h"

#include "import/ImportText.h"

#include <algorithm>
#include <cstdint>

namespace
{

/// Values in memory: of the stored ones' size, so that a batch of 16-bit images takes no more than it must.
hid_t memoryTypeOf(hid_t stored, std::size_t *bytes)
{
    const std::size_t size = H5Tget_size(stored);
    const bool isInteger = H5Tget_class(stored) == H5T_INTEGER;
    const bool isSigned = isInteger && H5Tget_sign(stored) != H5T_SGN_NONE;
    *bytes = size <= 2 && isInteger ? 2 : size <= 4 ? 4 : 8;
    if (!isInteger)
        return *bytes == 4 ? H5T_NATIVE_FLOAT : H5T_NATIVE_DOUBLE;
    if (*bytes == 2)
        return isSigned ? H5T_NATIVE_INT16 : H5T_NATIVE_UINT16;
    if (*bytes == 4)
        return isSigned ? H5T_NATIVE_INT32 : H5T_NATIVE_UINT32;
    return H5T_NATIVE_DOUBLE;
}

} // namespace

std::unique_ptr<Hdf5Frames> Hdf5Frames::open(const std::shared_ptr<Hdf5File> &file, const QString &path,
                                             const StackAxes &axes, QString *error)
{
    const Hdf5Dataset description = file->dataset(path);
    if (!description.exists() || !description.isNumeric || description.rank() != (axes.frame < 0 ? 2 : 3)) {
        *error = ImportText::tr("%1: %2 is no dataset of images").arg(file->name(), path);
        return nullptr;
    }
    auto frames = std::make_unique<Hdf5Frames>();
    frames->m_file = file;
    frames->m_path = path;
    frames->m_shape = description.shape;
    frames->m_axes = axes;
    const qint64 count = axes.frame < 0 ? 1 : description.shape[axes.frame];
    if (!isImageSize(description.shape[axes.column], description.shape[axes.row], file->name(), error))
        return nullptr;
    if (count < 1 || count > mostFrames) {
        *error = ImportText::tr("%1: %2 holds %3 images").arg(file->name(), path).arg(count);
        return nullptr;
    }
    frames->m_dataset = Hdf5Id(H5Dopen2(file->id(), path.toUtf8().constData(), H5P_DEFAULT), H5Dclose);
    const Hdf5Id stored(H5Dget_type(frames->m_dataset), H5Tclose);
    frames->m_memoryType = memoryTypeOf(stored, &frames->m_valueBytes);
    if (!frames->checkFilters(error))
        return nullptr;
    frames->chooseBatch();
    return frames;
}

/// Whether there is anything stored, and whether the library can unpack it.
bool Hdf5Frames::checkFilters(QString *error) const
{
    const Hdf5Id properties(H5Dget_create_plist(m_dataset), H5Pclose);
    const H5D_layout_t layout = H5Pget_layout(properties);
    if ((layout == H5D_CHUNKED || layout == H5D_CONTIGUOUS) && H5Dget_storage_size(m_dataset) == 0 &&
        H5Pget_external_count(properties) <= 0) {
        *error = ImportText::tr("%1: %2 holds no data").arg(m_file->name(), m_path);
        return false;
    }
    const int filters = H5Pget_nfilters(properties);
    for (int i = 0; i < filters; ++i) {
        char name[64] = "";
        unsigned flags = 0, config = 0;
        std::size_t values = 0;
        const H5Z_filter_t filter = H5Pget_filter2(properties, static_cast<unsigned>(i), &flags, &values, nullptr,
                                                   sizeof name - 1, name, &config);
        if (H5Zfilter_avail(filter) > 0)
            continue;
        *error =
            ImportText::tr("%1: %2 is compressed with \"%3\" (filter %4), which the HDF5 library here does not have")
                .arg(m_file->name(), m_path, QString::fromUtf8(name))
                .arg(filter);
        return false;
    }
    return true;
}

void Hdf5Frames::chooseBatch()
{
    constexpr std::size_t budget = std::size_t(96) << 20;
    const std::size_t frameBytes =
        static_cast<std::size_t>(width()) * static_cast<std::size_t>(height()) * m_valueBytes;
    const int fitting = static_cast<int>(std::clamp<std::size_t>(budget / frameBytes, 1, mostFrames));
    if (m_axes.frame < 0)
        return;
    const Hdf5Id properties(H5Dget_create_plist(m_dataset), H5Pclose);
    int inChunk = 1;
    if (H5Pget_layout(properties) == H5D_CHUNKED) {
        hsize_t chunk[3] = {1, 1, 1};
        H5Pget_chunk(properties, 3, chunk);
        inChunk = static_cast<int>(std::min<hsize_t>(chunk[m_axes.frame], static_cast<hsize_t>(count())));
    }
    m_batch = m_axes.frame == 0 ? std::min(inChunk, fitting) : fitting;
    if (m_batch > inChunk)
        m_batch -= m_batch % inChunk;
    m_batch = std::clamp(m_batch, 1, count());
}

bool Hdf5Frames::readBatch(int first, QString *error)
{
    const int held = std::min(m_batch, count() - first);
    hsize_t start[3] = {0, 0, 0};
    hsize_t lengths[3] = {1, 1, 1};
    std::size_t values = 1;
    for (int i = 0; i < m_shape.size(); ++i) {
        lengths[i] = static_cast<hsize_t>(i == m_axes.frame ? held : m_shape[i]);
        values *= static_cast<std::size_t>(lengths[i]);
    }
    if (m_axes.frame >= 0)
        start[m_axes.frame] = static_cast<hsize_t>(first);
    m_bytes.resize(values * m_valueBytes);
    const Hdf5Id space(H5Dget_space(m_dataset), H5Sclose);
    const Hdf5Id memory(H5Screate_simple(m_shape.size(), lengths, nullptr), H5Sclose);
    H5Sselect_hyperslab(space, H5S_SELECT_SET, start, nullptr, lengths, nullptr);
    m_held = 0;
    if (H5Dread(m_dataset, m_memoryType, memory, space, H5P_DEFAULT, m_bytes.data()) < 0) {
        *error = ImportText::tr("%1: the images in %2 cannot be read, the file is damaged or cut off")
                     .arg(m_file->name(), m_path);
        return false;
    }
    m_first = first;
    m_held = held;
    return true;
}

template <class Value>
void Hdf5Frames::unpack(int frameInBatch, Image *image) const
{
    std::size_t strides[3] = {1, 1, 1};
    for (int i = m_shape.size() - 2; i >= 0; --i)
        strides[i] = strides[i + 1] * static_cast<std::size_t>(i + 1 == m_axes.frame ? m_held : m_shape[i + 1]);
    const auto *values = reinterpret_cast<const Value *>(m_bytes.data());
    if (m_axes.frame >= 0)
        values += static_cast<std::size_t>(frameInBatch) * strides[m_axes.frame];
    const std::size_t toNext = strides[m_axes.column];
    for (int y = 0; y < image->height; ++y) {
        const Value *from = values + static_cast<std::size_t>(y) * strides[m_axes.row];
        double *const to = image->row(y);
        for (int x = 0; x < image->width; ++x, from += toNext)
            to[x] = static_cast<double>(*from);
    }
}

bool Hdf5Frames::read(int frame, Image *image, QString *error)
{
    const bool isHeld = frame >= m_first && frame < m_first + m_held;
    if (!isHeld && !readBatch(frame - frame % m_batch, error))
        return false;
    image->resize(width(), height());
    const int inBatch = frame - m_first;
    if (m_memoryType == H5T_NATIVE_INT16)
        unpack<std::int16_t>(inBatch, image);
    else if (m_memoryType == H5T_NATIVE_UINT16)
        unpack<std::uint16_t>(inBatch, image);
    else if (m_memoryType == H5T_NATIVE_INT32)
        unpack<std::int32_t>(inBatch, image);
    else if (m_memoryType == H5T_NATIVE_UINT32)
        unpack<std::uint32_t>(inBatch, image);
    else if (m_memoryType == H5T_NATIVE_FLOAT)
        unpack<float>(inBatch, image);
    else
        unpack<double>(inBatch, image);
    if (m_batch == 1) { // the next one is another: its memory is better used for the image
        m_held = 0;
        m_bytes = std::vector<char>();
    }
    return true;
}
