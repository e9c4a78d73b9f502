#pragma once

#include <QFile>
#include <QtTest>

#include <cmath>
#include <initializer_list>
#include <tuple>

/// What all tests share: tables of cases that read like tables, files, and a comparison for small numbers.
namespace tables
{

/// Runs check(row) for every row of a table; a row is a struct whose first member `name` says what it is about. Where
/// a check fails, the row's name is printed and the others still run; the test function fails all the same.
///
///     struct Case { const char *name; QVector<double> mu; double edge; };
///     forEach<Case>({{"one step", {0, 0, 1, 1}, 1.5},
///                    {"falls only", {3, 2, 1, 0}, 0.0}},
///                   [](const Case &c) { QCOMPARE(edgeOf(c.mu), c.edge); });
template <class Row, class Check>
void forEach(std::initializer_list<Row> rows, Check check)
{
    bool failedBefore = QTest::currentTestFailed();
    for (const Row &row : rows) {
        check(row);
        if (QTest::currentTestFailed() && !failedBefore)
            qWarning("failed in the row \"%s\"", qPrintable(QString(row.name)));
        // From here on the test counts as failed whatever the next rows do: each of their failures prints itself.
        failedBefore = QTest::currentTestFailed();
    }
}

/// The same for rows without a type of their own: a name, then the cells, which check() gets one by one.
///
///     forRows<QVector<double>, double>({{"one step", {0, 0, 1, 1}, 1.5},
///                                       {"falls only", {3, 2, 1, 0}, 0.0}},
///                                      [](const QVector<double> &mu, double edge) { QCOMPARE(edgeOf(mu), edge); });
template <class... Cells, class Check>
void forRows(std::initializer_list<std::tuple<const char *, Cells...>> rows, Check check)
{
    bool failedBefore = QTest::currentTestFailed();
    for (const auto &row : rows) {
        std::apply([&check](const char *, const Cells &...cells) { check(cells...); }, row);
        if (QTest::currentTestFailed() && !failedBefore)
            qWarning("failed in the row \"%s\"", std::get<0>(row));
        failedBefore = QTest::currentTestFailed();
    }
}

/// Equal but for a relative error; NaN equals NaN. QCOMPARE calls any two numbers below 1e-12 equal.
inline bool isClose(double value, double expected, double relative = 1e-12)
{
    if (std::isnan(expected) || std::isinf(expected))
        return std::isnan(expected) ? std::isnan(value) : value == expected;
    return std::abs(value - expected) <= relative * std::abs(expected);
}

/// The contents of a file; "cannot open" where there is none.
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot open");
}

inline bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace tables

using tables::forEach;
using tables::forRows;
