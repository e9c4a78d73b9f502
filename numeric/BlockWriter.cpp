#include "numeric/BlockWriter.h"

#include "numeric/HelperThreads.h"

#include <QThread>
#include <QtGlobal>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace numeric
{

namespace
{

void writeOneByOne(const TextBlocks &blocks, OutputFile *file)
{
    std::vector<char> text(blocks.room);
    for (std::size_t block = 0; block < blocks.count; ++block) {
        const auto length = static_cast<qint64>(blocks.fill(block, text.data()));
        if (!file->write(text.data(), length))
            return;
    }
}

/// The calling thread writes the blocks in their order while others fill the buffers behind. A block that nobody has
/// begun when its turn comes is filled by the calling thread, so that all are written whatever threads there are.
class BlockPipe
{
public:
    BlockPipe(const TextBlocks &blocks, std::size_t buffers)
        : m_blocks(blocks)
        , m_buffers(buffers)
    {
        for (Buffer &buffer : m_buffers)
            buffer.text.resize(blocks.room);
    }

    /// Stops at the first failure.
    void writeTo(OutputFile *file)
    {
        HelperThreads others(m_buffers.size());
        while (others.start([this] { fillAll(); })) {
        }
        bool good = true;
        for (std::size_t block = 0; good && block < m_blocks.count; ++block) {
            const Buffer &buffer = filled(block);
            good = file->write(buffer.text.data(), static_cast<qint64>(buffer.length));
            release(block, good);
        }
        others.finish();
    }

private:
    struct Buffer {
        std::vector<char> text;
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
            buffer.length = m_blocks.fill(block, buffer.text.data());
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

    const TextBlocks &m_blocks;
    std::vector<Buffer> m_buffers;
    std::mutex m_mutex; ///< of all that follows, and of Buffer::isFull
    std::condition_variable m_changed;
    std::size_t m_begun = 0;   ///< blocks that somebody fills or has filled
    std::size_t m_written = 0; ///< blocks whose buffer is free again
    std::size_t m_end = m_blocks.count;
};

} // namespace

void writeBlocks(const TextBlocks &blocks, int threads, OutputFile *file)
{
    const auto wanted = static_cast<std::size_t>(threads > 0 ? threads : QThread::idealThreadCount());
    const std::size_t useful = std::min(wanted, blocks.count);
    if (useful > 1)
        BlockPipe(blocks, useful).writeTo(file);
    else
        writeOneByOne(blocks, file);
}

} // namespace numeric
