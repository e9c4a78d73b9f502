#include "mapdata/MapHeader.h"

#include "numeric/RealToInt.h"

#include <QVector>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

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

void MapHeader::addLine(const QString &line, bool isFirstOfFile)
{
    if (isFirstOfFile)
        m_isColumnMapped = line.startsWith(QLatin1String("# 2003901"));
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
            m_nx = axisLength(tokens[7]);
        else if (axis == 1)
            m_ny = axisLength(tokens[7]);
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
    if (later.m_nx)
        m_nx = later.m_nx;
    if (later.m_ny)
        m_ny = later.m_ny;
    m_columnI0 = later.m_columnI0;
    m_columnI = later.m_columnI;
}

MapHeader MapHeader::continuation() const
{
    MapHeader header;
    header.m_isColumnMapped = m_isColumnMapped;
    header.m_columnI0 = m_columnI0;
    header.m_columnI = m_columnI;
    return header;
}

RecordLayout MapHeader::layout() const
{
    RecordLayout layout;
    if (!m_isColumnMapped)
        return layout;
    constexpr qint64 positionTokens = 2; // the header counts columns from behind x and y
    layout.threeMakeARecord = false;
    layout.tokenI = m_columnI + positionTokens;
    layout.tokenI0 = m_columnI0 + positionTokens;
    layout.tokensNeeded = std::max({positionTokens, layout.tokenI + 1, layout.tokenI0 + 1});
    if (std::min(layout.tokenI, layout.tokenI0) < 0) // a token that no line has
        layout.tokensNeeded = std::numeric_limits<qint64>::max();
    return layout;
}

bool MapHeader::hasColumnsOf(const MapHeader &other) const
{
    return m_columnI0 == other.m_columnI0 && m_columnI == other.m_columnI;
}
