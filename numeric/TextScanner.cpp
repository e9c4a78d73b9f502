#include "numeric/TextScanner.h"

#include <QTextCodec>

#include <algorithm>
#include <cstring>

namespace numeric
{

bool LineScanner::next(std::string_view *line)
{
    if (m_p == m_end)
        return false;
    const auto left = static_cast<std::size_t>(m_end - m_p);
    const auto *feed = static_cast<const char *>(std::memchr(m_p, '\n', left));
    const char *const lineEnd = feed ? feed : m_end;
    *line = std::string_view(m_p, static_cast<std::size_t>(lineEnd - m_p));
    m_p = feed ? feed + 1 : m_end;
    return true;
}

QString simplifiedLine(std::string_view line)
{
    constexpr std::size_t longest = 1 << 28; // what a QString holds and no line of a measurement reaches
    line = line.substr(0, longest);
    const auto size = static_cast<int>(line.size());
    if (std::all_of(line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return QString::fromLatin1(line.data(), size).simplified();
    const QByteArray bytes = QByteArray::fromRawData(line.data(), size);
    QTextCodec::ConverterState state;
    const QString text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
    return (isUtf8 ? text : QString::fromLocal8Bit(bytes.constData(), bytes.size())).simplified();
}

int utf8MarkLength(std::string_view text)
{
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

bool isWideText(std::string_view text)
{
    using namespace std::string_view_literals;
    const auto mark = text.substr(0, 2);
    return mark == "\xFF\xFE"sv || mark == "\xFE\xFF"sv || text.substr(0, 4) == "\0\0\xFE\xFF"sv;
}

QByteArray wideTextToUtf8(const QByteArray &text)
{
    QTextCodec *const codec = QTextCodec::codecForUtfText(text, nullptr);
    return codec ? codec->toUnicode(text).toUtf8() : text;
}

int wideWhiteSpaceAt(const char *p, const char *end)
{
    const auto byteAt = [p, end](int i) {
        return end - p > i ? static_cast<unsigned char>(p[i]) : 0u;
    };
    if (byteAt(0) == 0xC2)
        return byteAt(1) == 0x85 || byteAt(1) == 0xA0 ? 2 : 0;
    const unsigned character = byteAt(0) << 16 | byteAt(1) << 8 | byteAt(2);
    switch (character) {
    case 0xE19A80: // U+1680
    case 0xE280A8: // U+2028
    case 0xE280A9: // U+2029
    case 0xE280AF: // U+202F
    case 0xE2819F: // U+205F
    case 0xE38080: // U+3000, the ideographic space
        return 3;
    default:
        return character >= 0xE28080 && character <= 0xE2808A ? 3 : 0; // U+2000 to U+200A
    }
}

} // namespace numeric
