// Any bytes as a map data file: no fault of memory, the same result from one segment and from many, beside another map
// of the same or nearly the same positions as alone, and, for one input in sixteen, the result of the line-by-line
// reading, which takes several times as long as all the others.
#include "mapdata/MapFileReader.h"
#include "tests/LiteralMapReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

struct Loaded {
    A2DData data;
    MapLoadResult result;
};

void stopAt(const QString &difference)
{
    if (difference.isEmpty())
        return;
    std::fprintf(stderr, "%s\n", qUtf8Printable(difference));
    std::abort();
}

Loaded load(const QByteArray &text, const MapReadOptions &options)
{
    Loaded loaded;
    loaded.result = parseMapText(text, &loaded.data, options);
    return loaded;
}

bool sameValues(const numeric::Plane &l, const numeric::Plane &r)
{
    for (std::size_t i = 0; i < l.size(); ++i) {
        if (!sameValue(l[i], r[i]))
            return false;
    }
    return l.size() == r.size();
}

QString summaryOf(const Loaded &loaded)
{
    const auto &found = loaded.data.facts().orderBreak;
    return summary(loaded.result.loaded, loaded.result.energyText, loaded.data.grid(), loaded.data.headerLines()) +
           QStringLiteral("\n%1 %2 %3")
               .arg(static_cast<int>(loaded.result.problem))
               .arg(loaded.data.facts().unreadableRecords)
               .arg(found ? found->to : -1);
}

void compare(const Loaded &wanted, const Loaded &got)
{
    const QString wantedSummary = summaryOf(wanted), gotSummary = summaryOf(got);
    if (gotSummary != wantedSummary)
        stopAt(gotSummary + QStringLiteral("\nnot ") + wantedSummary);
    const A2DData &l = wanted.data, &r = got.data;
    if (!sameValues(l.x(), r.x()) || !sameValues(l.y(), r.y()) || !sameValues(l.I(), r.I()) ||
        !sameValues(l.I0(), r.I0()) || !sameValues(l.absorptions(), r.absorptions()))
        stopAt(QStringLiteral("other values"));
}

/// FNV-1a.
std::uint32_t hashOf(const std::uint8_t *data, std::size_t size)
{
    std::uint32_t hash = 2166136261u;
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ data[i]) * 16777619u;
    return hash;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const std::uint32_t hash = hashOf(data, size);
    MapReadOptions options;
    options.threads = 1;
    const Loaded whole = load(text, options);
    if (hash % 16 == 0) {
        const std::string_view view(text.constData(), size);
        const QByteArray utf8 =
            numeric::isWideText(view) ? numeric::wideTextToUtf8(text) : text.mid(numeric::utf8MarkLength(view));
        stopAt(differenceTo(readLiterally(utf8), whole.result, whole.data));
    }

    QByteArray changed = text;
    if (size > 0 && hash / 16 % 4 != 0)
        changed[static_cast<int>(hash / 64 % size)] = '1';
    const Loaded other = load(changed, options);
    options.segmentBytes = 1;
    options.threads = 5;
    options.blockBytes = 7;
    options.others = {&other.data};
    compare(whole, load(text, options));
    return 0;
}
