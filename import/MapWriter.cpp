#include "import/MapWriter.h"

#include "numeric/BlockWriter.h"
#include "numeric/CountText.h"
#include "numeric/OutputFile.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{

constexpr std::size_t blockPixels = 4096;

QByteArray numberText(double value)
{
    char text[numeric::countRoom];
    return QByteArray(text, static_cast<int>(numeric::writeCount(value, text) - text));
}

/// The step between even positions, 0 where they are uneven: off by more than a hundredth of a step somewhere.
double evenStep(const QVector<double> &positions)
{
    if (positions.size() < 2)
        return 0.0;
    const double step = (positions.last() - positions.first()) / (positions.size() - 1);
    for (int i = 0; i < positions.size(); ++i) {
        if (std::fabs(positions[i] - (positions.first() + i * step)) > 0.01 * std::fabs(step))
            return 0.0;
    }
    return step;
}

/// The positions of one axis; pixel numbers, and false, where its own do not tell the pixels apart.
bool writeAxis(int count, const PixelAxis &axis, MapAxisText *text, std::vector<QByteArray> *positions)
{
    QVector<double> values = axis.positions;
    QSet<QByteArray> different;
    for (const double value : qAsConst(values))
        different.insert(numberText(value));
    const bool isOwn = values.size() == count && different.size() == count &&
                       std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
    if (!isOwn) {
        values.clear();
        for (int i = 0; i < count; ++i)
            values << i;
    }
    double step = evenStep(values);
    if (isOwn && axis.unit.isEmpty() && step != 1.0)
        step = 0.0; // lengths without a unit: no scale can be told
    const QByteArray unit = axis.unit.simplified().replace(QLatin1Char(' '), QLatin1Char('_')).toUtf8();
    text->unit = !isOwn || unit.isEmpty() ? QByteArray("px") : unit;
    text->first = step == 0.0 ? QByteArray("-") : numberText(values.first());
    text->step = step == 0.0 ? QByteArray("-") : numberText(step);
    text->count = count;
    for (const double value : qAsConst(values))
        positions->push_back(numberText(value) + ' ');
    return isOwn;
}

std::size_t longest(const std::vector<QByteArray> &texts)
{
    int length = 0;
    for (const QByteArray &text : texts)
        length = std::max(length, text.size());
    return static_cast<std::size_t>(length);
}

/// A short text that is copied as a known number of bytes: a few instructions, any other number is a call.
struct Word {
    static constexpr std::size_t most = numeric::countRoom + 2;

    explicit Word(const QByteArray &bytes)
        : length(bytes.size())
    {
        std::memcpy(text, bytes.constData(), std::min(most, static_cast<std::size_t>(length)));
    }
    char *append(char *out) const
    {
        std::memcpy(out, text, most);
        return out + length;
    }

    char text[most] = {};
    std::ptrdiff_t length;
};

/// Fills blocks of pixel lines: "x y I I0".
class PixelText
{
public:
    PixelText(const MapGridText &grid, const MapToWrite &map)
        : m_map(map)
        , m_columns(grid.columns.begin(), grid.columns.end())
        , m_rows(grid.rows.begin(), grid.rows.end())
        , m_level(' ' + numberText(map.level) + '\n')
        , m_room(blockPixels * (longest(grid.columns) + longest(grid.rows) + 2 * numeric::countRoom) + Word::most)
    {
    }

    std::size_t room() const { return m_room; }
    std::size_t blocks() const { return (m_map.signal->values.size() + blockPixels - 1) / blockPixels; }

    std::size_t fill(std::size_t block, char *out) const
    {
        const char *const begin = out;
        const std::size_t width = m_columns.size();
        const std::size_t first = block * blockPixels;
        const std::size_t end = std::min(first + blockPixels, m_map.signal->values.size());
        std::size_t x = first % width;
        std::size_t y = first / width;
        for (std::size_t i = first; i < end; ++i) {
            out = m_columns[x].append(out);
            out = m_rows[y].append(out);
            out = numeric::writeCount(m_map.signal->values[i], out);
            if (m_map.incident == nullptr) {
                out = m_level.append(out);
            } else {
                *out++ = ' ';
                out = numeric::writeCount(m_map.incident->values[i], out);
                *out++ = '\n';
            }
            if (++x == width) {
                x = 0;
                ++y;
            }
        }
        return static_cast<std::size_t>(out - begin);
    }

private:
    const MapToWrite &m_map;
    std::vector<Word> m_columns, m_rows;
    Word m_level;
    std::size_t m_room;
};

} // namespace

MapGridText mapGridText(int width, int height, const PixelAxis &x, const PixelAxis &y)
{
    MapGridText grid;
    grid.x.name = "x";
    grid.y.name = "y";
    const bool hasColumns = writeAxis(width, x, &grid.x, &grid.columns);
    const bool hasRows = writeAxis(height, y, &grid.y, &grid.rows);
    grid.isCounted = !hasColumns || !hasRows;
    grid.hasDropped = (!hasColumns && !x.positions.isEmpty()) || (!hasRows && !y.positions.isEmpty());
    return grid;
}

QByteArray energyText(double energy)
{
    return QByteArray::number(energy, 'g', 10);
}

bool writeMap(const QString &path, ImportOptions::Layout layout, const MapGridText &grid, const MapToWrite &map,
              int threads)
{
    numeric::OutputFile file(path);
    if (!file.open())
        return false;
    QByteArray header = layout == ImportOptions::Layout::Plain ? plainMapHeader(energyText(map.energy), grid.x, grid.y)
                                                               : columnMapHeader(energyText(map.energy), {"I", "I0"});
    for (const QString &comment : map.comments)
        header += "# " + comment.simplified().toUtf8() + '\n';
    file.write(header);
    const PixelText text(grid, map);
    const auto fill = [&text](std::size_t block, char *out) {
        return text.fill(block, out);
    };
    numeric::writeBlocks({text.blocks(), text.room(), fill}, threads, &file);
    return file.commit();
}
