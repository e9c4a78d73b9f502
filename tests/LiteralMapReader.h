#pragma once

#include "mapdata/MapFileReader.h"
#include "numeric/TextScanner.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <cmath>
#include <cstring>

/// The map data format once more, read line by line with strings and lists: slow, simple, and independent of the
/// loader's scanning, cutting and joining. Takes UTF-8 without byte order mark; numbers stay within an int.
struct LiteralMap {
    bool loaded = false;
    QString energyText;
    MapGrid grid;
    QStringList headerLines;
    QVector<MapRecord> records;
};

/// Not cut at a NUL.
inline QString fromUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

inline int literalColumn(const QString &line)
{
    static const QRegularExpression number("^[^:]*: *([-+]?[0-9]*)");
    return static_cast<int>(qBound(-2147483648.0, number.match(line).captured(1).toDouble(), 2147483647.0));
}

inline int literalAxis(const QString &token)
{
    bool isInt = false;
    const qint64 last = token.toInt(&isInt);
    const bool isHuge = !isInt && std::fabs(token.toDouble()) > 2147483647.0;
    return isHuge || last == 2147483647 ? 0 : static_cast<int>(last + 1);
}

inline void readAxisLiterally(const QStringList &t, int *length, MapAxis *axis, QString *unit)
{
    *length = literalAxis(t[7]);
    *axis = MapAxis();
    unit->clear();
    bool unitIsNumber = false, startIsNumber = false, stepIsNumber = false;
    t[4].toDouble(&unitIsNumber);
    const double start = t[5].toDouble(&startIsNumber), step = t[6].toDouble(&stepIsNumber);
    if (unitIsNumber || !startIsNumber || !stepIsNumber || !std::isfinite(start) || !std::isnormal(step))
        return;
    *axis = {t[3], start, step};
    *unit = t[4];
}

inline LiteralMap readLiterally(const QByteArray &text)
{
    LiteralMap map;
    int &nx = map.grid.nx, &ny = map.grid.ny;
    QString units[2];
    bool isMapped = false;
    qint64 columnI0 = 0, columnI = 0;
    QList<QByteArray> lines = text.split('\n');
    for (int n = 0; n < lines.size(); ++n) {
        const QByteArray &bytes = lines[n];
        QString line = fromUtf8("x" + bytes).mid(1).simplified(); // a byte order mark inside is a character
        const bool isHeader = line.startsWith(QLatin1Char('#'));
        if (isHeader) // text may be in another encoding
            line = numeric::simplifiedLine(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
        const QStringList t = line.split(QLatin1Char(' '));
        if (n == 0)
            isMapped = line.startsWith(QLatin1String("# 2003901"));
        if (isHeader) {
            map.headerLines << line;
            const QString keyword = t.value(1).toUpper();
            if (t.size() >= 8 && keyword == QLatin1String("AXIS")) {
                if (t[2].toInt() == 0)
                    readAxisLiterally(t, &nx, &map.grid.x, &units[0]);
                if (t[2].toInt() == 1)
                    readAxisLiterally(t, &ny, &map.grid.y, &units[1]);
            } else if (t.size() >= 4 && keyword == QLatin1String("ENERGY")) {
                map.energyText = t[3];
            } else if (t.size() >= 3 && keyword == QLatin1String("I0")) {
                columnI0 = literalColumn(line);
            } else if (t.size() >= 3 && keyword == QLatin1String("I")) {
                columnI = literalColumn(line);
            }
            continue;
        }
        const auto number = [&t](qint64 i) {
            return fromUtf8(t[static_cast<int>(i)].toUtf8()).toDouble(); // without a mark
        };
        if (!isMapped && t.size() == 3)
            map.records << MapRecord{number(0), number(1), number(2), 1.0, {}};
        if (!isMapped && t.size() > 3)
            map.records << MapRecord{number(0), number(1), number(2), number(3), {}};
        if (isMapped && t.size() > 1 && qMin(columnI, columnI0) + 2 >= 0 && t.size() > qMax(columnI, columnI0) + 2)
            map.records << MapRecord{number(0), number(1), number(columnI + 2), number(columnI0 + 2), {}};
    }
    if (units[0].isEmpty() || units[1].isEmpty() || units[0] == units[1])
        map.grid.unit = units[units[0].isEmpty() ? 1 : 0];
    if (isMapped) {
        nx = ny = qMin(map.records.size(), 1);
        if (map.records.size() > 1)
            nx = ny = 0;
        for (int i = 0; i < map.records.size() && map.records.size() > 1; ++i) {
            nx += map.records[i].y == map.records[0].y;
            ny += map.records[i].x == map.records[0].x;
        }
    }
    map.loaded = nx > 0 && ny > 0 && !map.records.isEmpty();
    return map;
}

inline bool sameValue(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

/// All but the records.
inline QString summary(bool loaded, const QString &energy, const MapGrid &grid, const QStringList &headerLines)
{
    const auto axis = [](const MapAxis &a) {
        return a.start && a.step ? QStringLiteral("%1 from %2 by %3").arg(a.name).arg(*a.start).arg(*a.step) : a.name;
    };
    return QStringLiteral("%1 x %2 ").arg(grid.nx).arg(grid.ny) + grid.unit + ", " + axis(grid.x) + ", " +
           axis(grid.y) + (loaded ? ", loaded" : "") + (energy.isNull() ? QString() : ", energy " + energy) + '\n' +
           headerLines.join('\n');
}

/// What differs between the two readings; empty when nothing does.
inline QString differenceTo(const LiteralMap &wanted, const MapLoadResult &result, const A2DData &data)
{
    const QString got = summary(result.loaded, result.energyText, data.grid(), data.headerLines());
    const QString shouldBe = summary(wanted.loaded, wanted.energyText, wanted.grid, wanted.headerLines);
    if (!result.opened || got != shouldBe)
        return got + QStringLiteral("\nnot ") + shouldBe;
    if (data.count() != wanted.records.size())
        return QStringLiteral("%1 records, not %2").arg(data.count()).arg(wanted.records.size());
    for (int i = 0; i < wanted.records.size(); ++i) {
        const MapRecord a = data.record(i), &b = wanted.records[i];
        const double absorption = b.I0 == 0.0 ? b.I : b.I == 0.0 ? 1.0 : std::log(b.I0 / b.I);
        if (!sameValue(a.x, b.x) || !sameValue(a.y, b.y) || !sameValue(a.I, b.I) || !sameValue(a.I0, b.I0) ||
            !sameValue(data.absorption(i), absorption))
            return QStringLiteral("record %1: %2 %3 %4 %5").arg(i).arg(a.x).arg(a.y).arg(a.I).arg(a.I0);
    }
    return {};
}
