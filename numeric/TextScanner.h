#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <string_view>

namespace numeric
{

/// Bytes of white space at `p` (0 when there is none), for UTF-8 text and as QChar::isSpace sees it.
inline int whiteSpaceAt(const char *p, const char *end);

/// Walks through the tokens of one line, the runs between white space: the same tokens that QString::simplified
/// followed by a split at blanks gives (an empty line has none).
class TokenScanner
{
public:
    explicit TokenScanner(std::string_view line)
        : m_p(line.data())
        , m_end(line.data() + line.size())
    {
    }

    /// The next token; false at the end of the line.
    bool next(std::string_view *token);

private:
    const char *m_p;
    const char *m_end;
};

/// Walks through the lines of a text; a line ends at a line feed, which it does not hold. The last line needs none.
class LineScanner
{
public:
    explicit LineScanner(std::string_view text)
        : m_p(text.data())
        , m_end(text.data() + text.size())
    {
    }

    bool next(std::string_view *line);

private:
    const char *m_p;
    const char *m_end;
};

/// The line as a string with its white space simplified. Bytes that are not UTF-8 are read in the system's encoding.
QString simplifiedLine(std::string_view line);

/// The length of a UTF-8 byte order mark at the start of the text: 3 or 0.
int utf8MarkLength(std::string_view text);

/// Whether the text starts with a UTF-16 or UTF-32 byte order mark, so that only its UTF-8 form can be scanned.
bool isWideText(std::string_view text);
/// The UTF-8 form, without byte order mark, of a text for which isWideText() holds.
QByteArray wideTextToUtf8(const QByteArray &text);

/// Three-byte white space (U+1680, U+2000 to U+200A, U+2028, U+2029, U+202F, U+205F, U+3000) and the two-byte one
/// (U+0085, U+00A0); kept out of line because text files of measurements hardly hold any.
int wideWhiteSpaceAt(const char *p, const char *end);

inline int whiteSpaceAt(const char *p, const char *end)
{
    const auto c = static_cast<unsigned char>(*p);
    if (c == ' ' || (c >= '\t' && c <= '\r'))
        return 1;
    return c < 0xC2 ? 0 : wideWhiteSpaceAt(p, end);
}

inline bool TokenScanner::next(std::string_view *token)
{
    while (m_p != m_end) {
        const int space = whiteSpaceAt(m_p, m_end);
        if (space == 0)
            break;
        m_p += space;
    }
    if (m_p == m_end)
        return false;
    const char *const begin = m_p;
    while (m_p != m_end && whiteSpaceAt(m_p, m_end) == 0)
        ++m_p;
    *token = std::string_view(begin, static_cast<std::size_t>(m_p - begin));
    return true;
}

} // namespace numeric
