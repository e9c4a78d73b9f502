// Any bytes as a map data file: no fault of memory, the same result from one segment and from many, and the result of
// the line-by-line reading.
#include "mapdata/MapFileReader.h"
#include "tests/LiteralMapReader.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

void check(const LiteralMap &wanted, const QByteArray &text, const MapReadOptions &options)
{
    A2DData data;
    const MapLoadResult result = parseMapText(text, &data, options);
    const QString difference = differenceTo(wanted, result, data);
    if (difference.isEmpty())
        return;
    std::fprintf(stderr, "%s\n", qUtf8Printable(difference));
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const std::string_view view(text.constData(), size);
    const QByteArray utf8 =
        numeric::isWideText(view) ? numeric::wideTextToUtf8(text) : text.mid(numeric::utf8MarkLength(view));
    const LiteralMap wanted = readLiterally(utf8);
    MapReadOptions options;
    options.threads = 1;
    check(wanted, text, options);
    options.segmentBytes = 1;
    options.threads = 5;
    options.blockBytes = 7;
    check(wanted, text, options);
    return 0;
}
