#include "mapdata/PixelLineParser.h"

#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace
{

/// Lines whose record lies within so many tokens take the fast path.
constexpr int usualTokens = 16;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

} // namespace

bool isHeaderLine(std::string_view line)
{
    numeric::TokenScanner scanner(line);
    std::string_view token;
    return scanner.next(&token) && token.front() == '#';
}

PixelLineParser::PixelLineParser(const MapHeader &header, const A2DData::Columns &columns, qint64 first, qint64 slots,
                                 const KnownPositions &known)
    : m_header(header)
    , m_layout(header.layout())
    , m_columns(columns)
    , m_first(first)
    , m_next(first)
    , m_end(first + slots)
    , m_known(known)
    , m_isKnown(known.count > 0)
{
}

void PixelLineParser::parse(std::string_view block)
{
    const qint64 firstOfBlock = m_next;
    const char *p = block.data();
    const char *const end = p + block.size();
    const char *const endOfEnded = p + (block.rfind('\n') + 1); // of the lines that end with a line feed
    while (p != end) {
        if (p < endOfEnded && readUsualLine(p, endOfEnded))
            continue;
        const auto *feed = static_cast<const char *>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
        const char *const lineEnd = feed ? feed : end;
        readAnyLine(std::string_view(p, static_cast<std::size_t>(lineEnd - p)));
        p = feed ? feed + 1 : end;
    }
    for (qint64 i = firstOfBlock; i < m_next; ++i) // while the values are still in the cache
        m_columns.absorption[i] = pixelAbsorption(m_columns.I[i], m_columns.I0[i]);
}

/// Reads a line of plain decimals between blanks, as measuring programs write them, straight from the block and moves
/// `p` behind its line feed, which stands before `end`. Returns false, with nothing done, for any other line.
inline bool PixelLineParser::readUsualLine(const char *&p, const char *end)
{
    if (m_layout.tokensNeeded > usualTokens)
        return false;
    double values[usualTokens];
    const char *s = p;
    const auto needed = static_cast<int>(m_layout.tokensNeeded);
    for (int k = 0; k < needed; ++k) {
        while (isBlank(*s))
            ++s;
        if (k == m_layout.tokensWithoutI0 && *s == '\n') {
            values[m_layout.tokenI0] = 1.0;
            break;
        }
        if (!numeric::readPlainDecimal(s, &values[k]) || !(isBlank(*s) || *s == '\n'))
            return false;
    }
    if (*s != '\n')
        s = static_cast<const char *>(std::memchr(s, '\n', static_cast<std::size_t>(end - s)));
    p = s + 1;
    add(values[m_layout.tokenX], values[m_layout.tokenY], values[m_layout.tokenI], values[m_layout.tokenI0]);
    return true;
}

inline bool PixelLineParser::isKnown(double x, double y) const
{
    const auto bits = [](double value) {
        std::uint64_t pattern;
        std::memcpy(&pattern, &value, sizeof value);
        return pattern;
    };
    return m_next < m_known.count && bits(x) == bits(m_known.x[m_next]) && bits(y) == bits(m_known.y[m_next]);
}

/// From here on positions are stored, and those so far as well.
void PixelLineParser::storeKnown()
{
    const auto bytes = static_cast<std::size_t>(count()) * sizeof(double);
    std::memcpy(m_columns.x + m_first, m_known.x + m_first, bytes);
    std::memcpy(m_columns.y + m_first, m_known.y + m_first, bytes);
    m_isKnown = false;
}

/// False when there is no slot for it.
inline bool PixelLineParser::add(double x, double y, double I, double I0)
{
    if (m_next == m_end) {
        m_lacksRoom = true;
        return false;
    }
    if (m_isKnown && !isKnown(x, y))
        storeKnown();
    if (!m_isKnown) {
        m_columns.x[m_next] = x;
        m_columns.y[m_next] = y;
    }
    m_columns.I[m_next] = I;
    m_columns.I0[m_next] = I0;
    ++m_next;
    return true;
}

void PixelLineParser::readAnyLine(std::string_view line)
{
    if (isHeaderLine(line)) {
        m_header.addLine(numeric::simplifiedLine(line), false);
        m_layout = m_header.layout();
    } else {
        readDataLine(line);
    }
}

void PixelLineParser::readDataLine(std::string_view line)
{
    std::string_view x, y, I, I0;
    std::string_view token;
    numeric::TokenScanner scanner(line);
    qint64 tokens = 0;
    for (; tokens < m_layout.tokensNeeded && scanner.next(&token); ++tokens) {
        if (tokens == m_layout.tokenX)
            x = token;
        if (tokens == m_layout.tokenY)
            y = token;
        if (tokens == m_layout.tokenI)
            I = token;
        if (tokens == m_layout.tokenI0)
            I0 = token;
    }
    const bool hasI0 = tokens == m_layout.tokensNeeded;
    if (!hasI0 && tokens != m_layout.tokensWithoutI0)
        return;
    bool areNumbers = true;
    const auto number = [&areNumbers](std::string_view text) {
        bool isNumber = false;
        const double value = numeric::textToDouble(text, &isNumber);
        areNumbers = areNumbers && isNumber;
        return value;
    };
    const double valueX = number(x), valueY = number(y), valueI = number(I), valueI0 = hasI0 ? number(I0) : 1.0;
    if (add(valueX, valueY, valueI, valueI0) && !areNumbers)
        ++m_unreadable;
}
