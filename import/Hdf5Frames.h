#pragma once

#include "import/Hdf5File.h"
#include "import/ImageStack.h"

#include <vector>

/// Which dimension of a dataset is which.
struct StackAxes {
    int frame = 0; ///< -1 in two dimensions: one image
    int row = 1;
    int column = 2;
};

/// The images of one dataset, the energy along any of its dimensions. Where a frame does not lie in one piece, several
/// are read at once, as many as 96 MB hold.
class Hdf5Frames : public FrameSource
{
public:
    /// Null, with one sentence, for a dataset that is missing, no numbers, not of two or three dimensions, empty, too
    /// large, or compressed by something that the library was built without.
    static std::unique_ptr<Hdf5Frames> open(const std::shared_ptr<Hdf5File> &file, const QString &path,
                                            const StackAxes &axes, QString *error);

    int width() const override { return length(m_axes.column); }
    int height() const override { return length(m_axes.row); }
    int count() const override { return m_axes.frame < 0 ? 1 : length(m_axes.frame); }
    bool read(int frame, Image *image, QString *error) override;

private:
    int length(int axis) const { return static_cast<int>(m_shape[axis]); }
    bool checkFilters(QString *error) const;
    void chooseBatch();
    bool readBatch(int first, QString *error);
    template <class Value>
    void unpack(int frameInBatch, Image *image) const;

    std::shared_ptr<Hdf5File> m_file;
    QString m_path;
    Hdf5Id m_dataset;
    QVector<qint64> m_shape;
    StackAxes m_axes;
    hid_t m_memoryType = -1; ///< one of the library's own, never closed
    std::size_t m_valueBytes = 0;
    int m_batch = 1; ///< frames read at once
    int m_first = 0; ///< frame of the batch in memory
    int m_held = 0;  ///< frames in memory
    std::vector<char> m_bytes;
};
