#pragma once

#include "mapdata/MapFileReader.h"
#include "numeric/TextScanner.h"

#include <QVector>

#include <cmath>
#include <cstring>

/// The map data format once more, read line by line with strings and lists: slow, simple, and independent of the
/// loader's scanning, cutting and joining. Takes UTF-8 without byte order mark; numbers stay within an int.
struct LiteralMap {
    MapLoadResult result;
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
    const QString rest = line.contains(QLatin1Char(':')) ? line.section(QLatin1Char(':'), 1).trimmed() : QString();
    int length = 0;
    while (length < rest.size() && (rest[length].unicode() < 128) &&
           (rest[length].isDigit() || (length == 0 && (rest[0] == '-' || rest[0] == '+'))))
        ++length;
    const double number = rest.left(length).toDouble();
    return static_cast<int>(qBound(-2147483648.0, number, 2147483647.0));
}

inline int literalAxis(const QString &token)
{
    bool isInt = false;
    const qint64 last = token.toInt(&isInt);
    const bool isHuge = !isInt && std::fabs(token.toDouble()) > 2147483647.0;
    return isHuge || last == 2147483647 ? 0 : static_cast<int>(last + 1);
}

inline LiteralMap readLiterally(const QByteArray &text)
{
    LiteralMap map;
    MapLoadResult &result = map.result;
    result.opened = true;
    bool isMapped = false;
    qint64 columnI0 = 0;
    qint64 columnI = 0;
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
                    result.nx = literalAxis(t[7]);
                if (t[2].toInt() == 1)
                    result.ny = literalAxis(t[7]);
            } else if (t.size() >= 4 && keyword == QLatin1String("ENERGY")) {
                result.energyText = t[3];
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
    result.count = map.records.size();
    if (isMapped) {
        result.nx = result.ny = static_cast<int>(qMin<qint64>(result.count, 1));
        if (result.count > 1) {
            result.nx = result.ny = 0;
            for (const MapRecord &record : qAsConst(map.records)) {
                result.nx += record.y == map.records[0].y ? 1 : 0;
                result.ny += record.x == map.records[0].x ? 1 : 0;
            }
        }
    }
    result.loaded = result.nx > 0 && result.ny > 0 && result.count > 0;
    return map;
}

inline bool sameValue(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

inline double literalAbsorption(const MapRecord &r)
{
    return r.I0 == 0.0 ? r.I : r.I == 0.0 ? 1.0 : std::log(r.I0 / r.I);
}

/// What differs between the two readings; empty when nothing does.
inline QString differenceTo(const LiteralMap &wanted, const MapLoadResult &result, const A2DData &data)
{
    if (data.headerLines() != wanted.headerLines)
        return QStringLiteral("header lines: ") + data.headerText();
    if (result.energyText != wanted.result.energyText ||
        result.energyText.isNull() != wanted.result.energyText.isNull())
        return QStringLiteral("energy: ") + result.energyText;
    if (data.count() != wanted.records.size() || result.count != data.count())
        return QStringLiteral("%1 records, not %2").arg(data.count()).arg(wanted.records.size());
    if (data.nx() != wanted.result.nx || data.ny() != wanted.result.ny || result.nx != data.nx() ||
        result.ny != data.ny())
        return QStringLiteral("%1 x %2, not %3 x %4")
            .arg(data.nx())
            .arg(data.ny())
            .arg(wanted.result.nx)
            .arg(wanted.result.ny);
    if (result.loaded != wanted.result.loaded || result.opened != wanted.result.opened)
        return QStringLiteral("loaded: %1").arg(result.loaded);
    for (int i = 0; i < wanted.records.size(); ++i) {
        const MapRecord a = data.record(i);
        const MapRecord &b = wanted.records[i];
        if (!sameValue(a.x, b.x) || !sameValue(a.y, b.y) || !sameValue(a.I, b.I) || !sameValue(a.I0, b.I0) ||
            !sameValue(data.absorption(i), literalAbsorption(b)))
            return QStringLiteral("record %1: %2 %3 %4 %5 %6")
                .arg(i)
                .arg(a.x)
                .arg(a.y)
                .arg(a.I)
                .arg(a.I0)
                .arg(data.absorption(i));
    }
    return {};
}
