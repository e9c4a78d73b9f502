#pragma once

#include "mapdata/MapLoadResult.h"

#include <QIODevice>

#include <memory>
#include <string_view>

/// Reads the bytes [begin, end) of a device in blocks of whole lines. A line ends at a line feed; the last one may
/// lack it. A device that ends early ends the reading, and so does a line longer than longestLine: no measurement has
/// one, and a file without line feeds must not be held as a whole. The device is read at its own pace, not mapped: a
/// file that another program shortens meanwhile only becomes shorter.
class BlockReader
{
public:
    static constexpr qint64 longestLine = qint64(64) << 20; ///< bytes, without the line feed

    /// `device` is open for reading and stays alive; `blockBytes` >= 1 is what is read at once. A longer line makes
    /// the block as long as it needs (std::bad_alloc when memory does not suffice).
    BlockReader(QIODevice *device, qint64 begin, qint64 end, qint64 blockBytes);

    /// The next block, valid until the next call; false at the end.
    bool next(std::string_view *block);

    /// None, or NotRead or LineTooLong, where the reading ended.
    MapLoadProblem problem() const { return m_problem; }

private:
    void fill();
    void grow();

    QIODevice *m_device;
    qint64 m_left;
    qint64 m_capacity;
    std::unique_ptr<char[]> m_buffer;
    qint64 m_used = 0;     ///< bytes in the buffer
    qint64 m_returned = 0; ///< of these, how many the last block held
    MapLoadProblem m_problem = MapLoadProblem::None;
};

/// The number of line feeds in `text`.
qint64 countLineFeeds(std::string_view text);
