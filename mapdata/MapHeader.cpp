#include "mapdata/MapHeader.h"

#include "numeric/RealToInt.h"

#include <QStringRef>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <tuple>

/// One kind of map data file.
struct MapFormat {
    const char *firstLine;    ///< starts so
    RecordLayout layout;      ///< unless the header names the columns
    int firstColumn;          ///< the token that is column 0 of the header's I0 and I lines; -1: these say nothing
    bool sizeIsFromPositions; ///< not from the axis lines
};

namespace
{

constexpr RecordLayout positionThenI = {0, 1, 2, 3, 4, 3};
/// Looked through from the top: what no other row takes is of the last one.
constexpr MapFormat formats[] = {
    {"# 1301", positionThenI, -1, false},
    {"# 2003901", {0, 1, 2, 2, 3, -1}, 2, true},
    {"", positionThenI, -1, false},
};

const MapFormat *formatOf(const QString &firstLine)
{
    return std::find_if(std::begin(formats), std::end(formats) - 1, [&firstLine](const MapFormat &format) {
        return firstLine.startsWith(QLatin1String(format.firstLine));
    });
}

constexpr int tokensLookedAt = 8;

/// The first tokens of a simplified line; a line may hold millions.
QVector<QString> firstTokens(const QString &line)
{
    QVector<QString> tokens;
    int begin = 0;
    while (begin <= line.size() && tokens.size() < tokensLookedAt) {
        const int blank = line.indexOf(QLatin1Char(' '), begin);
        const int end = blank < 0 ? line.size() : blank;
        tokens << line.mid(begin, end - begin);
        begin = end + 1;
    }
    return tokens;
}

/// The number of pixels along an axis whose last index is written in `token`: 0 when an int cannot hold it.
int axisLength(const QString &token)
{
    bool isInt = false;
    const int last = token.toInt(&isInt);
    constexpr int highest = std::numeric_limits<int>::max();
    if (last == highest || (!isInt && std::fabs(token.toDouble()) > highest))
        return 0;
    return last + 1;
}

/// The integer behind the first colon of the line, cut to what an int holds; 0 when there is none.
int columnAfterColon(const QString &line)
{
    const int colon = line.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return 0;
    const QStringRef rest = line.midRef(colon + 1).trimmed();
    const bool hasSign = rest.startsWith(QLatin1Char('-')) || rest.startsWith(QLatin1Char('+'));
    int length = hasSign ? 1 : 0;
    while (length < rest.size() && rest.at(length) >= QLatin1Char('0') && rest.at(length) <= QLatin1Char('9'))
        ++length;
    return numeric::truncToInt(rest.left(length).toDouble());
}

} // namespace

bool operator==(const RecordLayout &l, const RecordLayout &r)
{
    const auto all = [](const RecordLayout &layout) {
        return std::tie(layout.tokenX, layout.tokenY, layout.tokenI, layout.tokenI0, layout.tokensNeeded,
                        layout.tokensWithoutI0);
    };
    return all(l) == all(r);
}

MapHeader::MapHeader()
    : m_format(formatOf(QString()))
{
}

/// An axis line of eight tokens: "# AXIS 0 x um 0.0 0.1 124", of which many programs only mean the first and the last.
MapHeader::Axis MapHeader::readAxis(const QVector<QString> &tokens)
{
    Axis axis;
    axis.length = axisLength(tokens[7]);
    bool unitIsNumber = false, startIsNumber = false, stepIsNumber = false;
    tokens[4].toDouble(&unitIsNumber);
    const double start = tokens[5].toDouble(&startIsNumber);
    const double step = tokens[6].toDouble(&stepIsNumber);
    if (unitIsNumber || !startIsNumber || !stepIsNumber || !std::isfinite(start) || !std::isnormal(step))
        return axis;
    axis.unit = tokens[4];
    axis.positions = {tokens[3], start, step};
    return axis;
}

MapGrid MapHeader::grid() const
{
    const Axis x = m_x.value_or(Axis());
    const Axis y = m_y.value_or(Axis());
    const bool hasTwoUnits = !x.unit.isEmpty() && !y.unit.isEmpty() && x.unit != y.unit;
    const QString unit = hasTwoUnits ? QString() : x.unit.isEmpty() ? y.unit : x.unit;
    return {x.length, y.length, unit, x.positions, y.positions};
}

void MapHeader::addLine(const QString &line, bool isFirstOfFile)
{
    if (isFirstOfFile)
        m_format = formatOf(line);
    if (!m_text.isEmpty())
        m_text += QLatin1Char('\n');
    m_text += line;
    if (line.size() < 5) // "# I :" is the shortest line that says something
        return;

    const QVector<QString> tokens = firstTokens(line);
    if (tokens.size() < 3)
        return;
    const QString keyword = tokens[1].toUpper();
    if (tokens.size() >= 8 && keyword == QLatin1String("AXIS")) {
        const int axis = tokens[2].toInt();
        if (axis == 0)
            m_x = readAxis(tokens);
        else if (axis == 1)
            m_y = readAxis(tokens);
    } else if (tokens.size() >= 4 && keyword == QLatin1String("ENERGY")) {
        m_energyText = tokens[3];
    } else if (keyword == QLatin1String("I0")) {
        m_columnI0 = columnAfterColon(line);
    } else if (keyword == QLatin1String("I")) {
        m_columnI = columnAfterColon(line);
    }
}

void MapHeader::append(const MapHeader &later)
{
    if (!m_text.isEmpty() && !later.m_text.isEmpty())
        m_text += QLatin1Char('\n');
    m_text += later.m_text;
    if (!later.m_energyText.isNull())
        m_energyText = later.m_energyText;
    if (later.m_x)
        m_x = later.m_x;
    if (later.m_y)
        m_y = later.m_y;
    m_columnI0 = later.m_columnI0;
    m_columnI = later.m_columnI;
}

MapHeader MapHeader::continuation() const
{
    MapHeader header;
    header.m_format = m_format;
    header.m_columnI0 = m_columnI0;
    header.m_columnI = m_columnI;
    return header;
}

RecordLayout MapHeader::layout() const
{
    RecordLayout layout = m_format->layout;
    if (m_format->firstColumn < 0)
        return layout;
    layout.tokenI = qint64(m_columnI) + m_format->firstColumn;
    layout.tokenI0 = qint64(m_columnI0) + m_format->firstColumn;
    const auto [first, last] = std::minmax({layout.tokenX, layout.tokenY, layout.tokenI, layout.tokenI0});
    layout.tokensNeeded = first < 0 ? std::numeric_limits<qint64>::max() : last + 1; // a token that no line has
    return layout;
}

bool MapHeader::sizeIsFromPositions() const
{
    return m_format->sizeIsFromPositions;
}
