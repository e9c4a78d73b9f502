#include "analysis/results/ResultWriter.h"

#include "numeric/HelperThreads.h"
#include "numeric/NumberLines.h"
#include "numeric/OutputFile.h"

#include <QThread>
#include <QtGlobal>

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <vector>

namespace
{

constexpr std::size_t blockPixels = 4096;
constexpr std::size_t blockRoom =
    blockPixels * (numeric::longestNumberLine(2 + ResultRecords::quantityCount) + 1) + numeric::g6Room;

/// The pixel lines of a result file; every method may be called by several threads at once.
class PixelLines
{
public:
    PixelLines(const ResultRecords &results, const ValencePair &valences, const RecordSelection &selection)
        : m_results(results)
        , m_valences(valences)
    {
        m_columns.push_back({results.x()});
        m_columns.push_back({results.y()});
        if (results.method() == ResultRecords::Method::FourPoints) {
            m_columns.push_back({results.a(), 4});
            m_columns.push_back({nullptr}); // the valence, which each block works out for itself
            m_columns.push_back({results.t()});
            return;
        }
        for (int position = 0; position < ResultRecords::quantityCount; ++position) {
            if (selection[static_cast<std::size_t>(position)])
                m_columns.push_back({results.quantity(position)});
        }
    }

    std::size_t blocks() const { return (m_results.count() + blockPixels - 1) / blockPixels; }

    /// Writes the lines of one block of pixels and the empty line behind each map row that ends in it; returns the
    /// number of characters, blockRoom at most.
    std::size_t writeBlock(std::size_t block, char *out) const
    {
        const std::size_t first = block * blockPixels;
        const std::size_t last = std::min(first + blockPixels, m_results.count());
        std::vector<numeric::NumberColumn> columns = m_columns;
        for (numeric::NumberColumn &column : columns) {
            if (column.values != nullptr)
                column.values += first;
        }
        std::vector<double> valence;
        if (m_results.method() == ResultRecords::Method::FourPoints) {
            valence = valencesOf(first, last);
            columns[valenceColumn].values = valence.data();
        }

        const char *const begin = out;
        const auto width = static_cast<std::size_t>(m_results.width());
        for (std::size_t i = first; i < last;) {
            const std::size_t endOfRow = i - i % width + width;
            const std::size_t end = std::min(last, endOfRow);
            out = numeric::writeG6Lines(columns, i - first, end - first, out);
            if (end == endOfRow)
                *out++ = '\n';
            i = end;
        }
        return static_cast<std::size_t>(out - begin);
    }

private:
    static constexpr std::size_t valenceColumn = 3;

    std::vector<double> valencesOf(std::size_t first, std::size_t last) const
    {
        std::vector<double> valence(last - first);
        for (std::size_t i = first; i < last; ++i)
            valence[i - first] = m_valences.mixed(m_results.a()[i]);
        return valence;
    }

    const ResultRecords &m_results;
    const ValencePair m_valences;
    std::vector<numeric::NumberColumn> m_columns;
};

/// Stops at the first failure, as does the other; it shows when the file is committed.
void writeBlocks(const PixelLines &lines, numeric::OutputFile *file)
{
    std::vector<char> text(blockRoom);
    for (std::size_t block = 0; block < lines.blocks(); ++block) {
        const auto length = static_cast<qint64>(lines.writeBlock(block, text.data()));
        if (!file->write(text.data(), length))
            return;
    }
}

/// The calling thread writes the blocks in their order while others fill the buffers behind. A block that nobody has
/// begun when its turn comes is filled by the calling thread, so that all are written whatever threads there are.
class BlockPipe
{
public:
    BlockPipe(const PixelLines &lines, std::size_t buffers)
        : m_lines(lines)
        , m_buffers(buffers)
    {
    }

    /// Stops at the first failure.
    void writeTo(numeric::OutputFile *file)
    {
        numeric::HelperThreads others(m_buffers.size());
        while (others.start([this] { fillAll(); })) {
        }
        bool good = true;
        for (std::size_t block = 0; good && block < m_lines.blocks(); ++block) {
            const Buffer &buffer = filled(block);
            good = file->write(buffer.text.data(), static_cast<qint64>(buffer.length));
            release(block, good);
        }
        others.finish();
    }

private:
    struct Buffer {
        std::vector<char> text = std::vector<char>(blockRoom);
        std::size_t length = 0;
        bool isFull = false;
    };
    using Lock = std::unique_lock<std::mutex>;

    /// Block n goes into buffer n modulo their number, once the block before it there is written.
    void fillAll()
    {
        Lock lock(m_mutex);
        while (true) {
            m_changed.wait(lock, [this] { return m_begun == m_end || m_begun < m_written + m_buffers.size(); });
            if (m_begun == m_end)
                return;
            fillNext(&lock);
            m_changed.notify_all();
        }
    }

    void fillNext(Lock *lock)
    {
        const std::size_t block = m_begun++;
        Buffer &buffer = m_buffers[block % m_buffers.size()];
        lock->unlock();
        try {
            buffer.length = m_lines.writeBlock(block, buffer.text.data());
        } catch (...) { // nobody may wait for this block
            lock->lock();
            buffer.length = 0;
            buffer.isFull = true;
            m_end = m_begun;
            m_changed.notify_all();
            throw;
        }
        lock->lock();
        buffer.isFull = true;
    }

    const Buffer &filled(std::size_t block)
    {
        Lock lock(m_mutex);
        if (m_begun == block)
            fillNext(&lock);
        const Buffer &buffer = m_buffers[block % m_buffers.size()];
        m_changed.wait(lock, [&buffer] { return buffer.isFull; });
        return buffer;
    }

    void release(std::size_t block, bool goesOn)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_buffers[block % m_buffers.size()].isFull = false;
        m_written = block + 1;
        m_end = goesOn ? m_end : m_begun;
        m_changed.notify_all();
    }

    const PixelLines &m_lines;
    std::vector<Buffer> m_buffers;
    std::mutex m_mutex; ///< of all that follows, and of Buffer::isFull
    std::condition_variable m_changed;
    std::size_t m_begun = 0;   ///< blocks that somebody fills or has filled
    std::size_t m_written = 0; ///< blocks whose buffer is free again
    std::size_t m_end = m_lines.blocks();
};

} // namespace

WriteOutcome writeResultFile(const QString &path, const ResultRecords &results, const ValencePair &valences,
                             const RecordSelection &selection, int threads, numeric::FileSet *set)
{
    numeric::OutputFile file(path, set);
    if (!file.open())
        return WriteOutcome::CannotOpen;
    for (const QString &line : results.headerLines)
        file.write((line + QLatin1Char('\n')).toUtf8());
    file.write("\n");

    const PixelLines lines(results, valences, selection);
    const auto wanted = static_cast<std::size_t>(threads > 0 ? threads : QThread::idealThreadCount());
    const std::size_t useful = std::min(wanted, lines.blocks());
    if (useful > 1)
        BlockPipe(lines, useful).writeTo(&file);
    else
        writeBlocks(lines, &file);
    return file.commit() ? WriteOutcome::Written : WriteOutcome::CannotWrite;
}
