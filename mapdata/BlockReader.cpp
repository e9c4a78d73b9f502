#include "mapdata/BlockReader.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

BlockReader::BlockReader(QIODevice *device, qint64 begin, qint64 end, qint64 blockBytes)
    : m_device(device)
    , m_left(std::max<qint64>(end - begin, 0))
    , m_capacity(std::max<qint64>(std::min(blockBytes, m_left), 1))
    , m_buffer(new char[static_cast<std::size_t>(m_capacity)])
{
    if (m_left > 0 && !device->seek(begin)) {
        m_problem = MapLoadProblem::NotRead;
        m_left = 0;
    }
}

void BlockReader::fill()
{
    const qint64 wanted = std::min(m_capacity - m_used, m_left);
    const qint64 got = m_device->read(m_buffer.get() + m_used, wanted);
    m_problem = got < 0 ? MapLoadProblem::NotRead : MapLoadProblem::None;
    m_left = got <= 0 ? 0 : m_left - got;
    m_used += std::max<qint64>(got, 0);
}

bool BlockReader::next(std::string_view *block)
{
    m_used -= m_returned;
    std::memmove(m_buffer.get(), m_buffer.get() + m_returned, static_cast<std::size_t>(m_used));
    m_returned = 0;
    while (m_left > 0) {
        if (m_used == m_capacity) // one line fills it
            grow();
        const qint64 known = m_used; // holds no line feed
        fill();
        const std::string_view fresh(m_buffer.get() + known, static_cast<std::size_t>(m_used - known));
        const auto feed = fresh.rfind('\n');
        if (feed != std::string_view::npos) {
            m_returned = m_left > 0 ? known + static_cast<qint64>(feed) + 1 : m_used;
            break;
        }
        if (m_used > longestLine) {
            m_problem = MapLoadProblem::LineTooLong;
            m_left = m_used = 0;
        }
    }
    if (m_returned == 0)
        m_returned = m_used; // the end of the range: what is left, ended or not
    *block = std::string_view(m_buffer.get(), static_cast<std::size_t>(m_returned));
    return m_returned > 0;
}

void BlockReader::grow()
{
    const qint64 capacity = std::min({2 * m_capacity, m_used + m_left, std::max(m_used, longestLine) + 1});
    std::unique_ptr<char[]> larger(new char[static_cast<std::size_t>(capacity)]);
    std::memcpy(larger.get(), m_buffer.get(), static_cast<std::size_t>(m_used));
    m_buffer = std::move(larger);
    m_capacity = capacity;
}

qint64 countLineFeeds(std::string_view text)
{
    constexpr std::size_t group = 128; // a fixed length below 256, which compilers turn into byte-wise vector code
    qint64 feeds = 0;
    std::size_t i = 0;
    for (; i + group <= text.size(); i += group) {
        const char *const p = text.data() + i;
        unsigned char inGroup = 0;
        for (std::size_t k = 0; k < group; ++k)
            inGroup = static_cast<unsigned char>(inGroup + (p[k] == '\n' ? 1 : 0));
        feeds += inGroup;
    }
    return feeds + std::count(text.begin() + static_cast<std::ptrdiff_t>(i), text.end(), '\n');
}
