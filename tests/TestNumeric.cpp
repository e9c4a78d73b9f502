#include "numeric/LinearAlgebra.h"
#include "numeric/LinearSystem.h"
#include "numeric/Plane.h"
#include "numeric/RealToInt.h"
#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"
#include "tests/Tables.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <random>

#include <unistd.h>

using namespace numeric;
using namespace tables;

namespace
{

using Rows = QVector<QVector<double>>;

/// A matrix of the row pointers that the functions take.
class Square
{
public:
    explicit Square(int size)
        : n(size)
        , rows(newMatrix(size))
    {
        identity(n, rows);
    }
    ~Square() { deleteMatrix(n, rows); }
    Q_DISABLE_COPY(Square)
    operator double **() { return rows; }

    const int n;

private:
    double **rows;
};

std::string_view viewOf(const QByteArray &text)
{
    return std::string_view(text.constData(), static_cast<std::size_t>(text.size()));
}

/// What differs between both readings of a token; NaNs count as equal whatever their bits.
QByteArray differenceToQt(const QByteArray &token)
{
    const double wanted = QString::fromUtf8(token.constData(), token.size()).toDouble();
    const double got = textToDouble(viewOf(token));
    if (std::memcmp(&wanted, &got, sizeof got) == 0 || (std::isnan(wanted) && std::isnan(got)))
        return {};
    return '<' + token + "> read as " + QByteArray::number(got, 'g', 17) + ", not " +
           QByteArray::number(wanted, 'g', 17);
}

} // namespace

class TestNumeric : public QObject
{
    Q_OBJECT

private slots:
    void solve()
    {
        forRows<bool, Rows, QVector<double>>(
            {{"one unknown", true, {{4}}, {2}},
             {"diagonally dominant", true, {{4, 1, 0}, {1, 3, 1}, {0, 1, 2}}, {1, 2, 3}},
             {"zero on the diagonal, rows exchanged", true, {{0, 2, 1}, {5, 0, 0}, {0, 3, 4}}, {7, 10, 18}},
             {"every row exchanged", true, {{0, 9, 0, 0}, {0, 0, 0, 9}, {9, 0, 0, 0}, {0, 0, 9, 0}}, {18, 45, 9, 27}},
             {"nothing but zeros", false, {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {0, 0, 1}},
             {"two equal rows", false, {{1, 2, 3}, {1, 2, 3}, {4, 5, 7}}, {0, 0, 1}},
             {"an unknown that no row has", false, {{1, 0, 3}, {2, 0, 5}, {4, 0, 7}}, {0, 0, 1}}},
            [](bool isSolvable, const Rows &a, const QVector<double> &b) {
                const int n = a.size();
                LinearSystem system(n);
                for (int i = 0; i < n; ++i)
                    std::copy(a[i].begin(), a[i].end(), system.matrix()[i]);
                std::copy(b.begin(), b.end(), system.rightHandSide());
                for (int round = 0; round < 2; ++round) { // the matrix is left for the next right-hand side
                    system.solve();
                    QVector<double> x, product(n);
                    for (int k = 0; k < n; ++k)
                        x += system.unknown(k);
                    QCOMPARE(std::all_of(x.begin(), x.end(), [](double v) { return std::isfinite(v); }), isSolvable);
                    matVec(n, system.matrix(), x.data(), product.data());
                    for (int k = 0; isSolvable && k < n; ++k)
                        QVERIFY(std::abs(product[k] - b[k]) < 1e-13);
                }
            });
    }

    /// A search for the largest magnitude would take other rows.
    void pivotRuleDecidesWhichRow()
    {
        forRows<QVector<double>, int>({{"0.9 does not exceed the index 1", {0.5, 0.7, 0.9}, 1},
                                       {"the last row above the index, not the largest", {9, 100, 7, 0}, 2},
                                       {"equal to the index is not above it", {0, 0, 0, 0}, 0},
                                       {"one at row 0, exactly the index of row 1", {1, 1, 1, 1}, 1},
                                       {"tiny, but above the index 0", {0, 1e-3, 0}, 1},
                                       {"negative numbers count by magnitude", {-0.1, -0.2, -1.5, -1.9}, 2}},
                                      [](const QVector<double> &column, int row) {
                                          const int n = column.size();
                                          Square a(n), l(n), u(n);
                                          QVector<int> p(n);
                                          for (int i = 0; i < n; ++i)
                                              a[i][0] = column[i];
                                          luDecompose(n, a, l, u, p.data());
                                          QCOMPARE(p[0], row);
                                      });
    }

    void factorsMultiplyToTheMatrix()
    {
        constexpr int n = 5;
        std::mt19937 random(7);
        Square a(n), l(n), u(n), lRows(n), uRows(n), product(n);
        int p[n];
        for (int round = 0; round < 100; ++round) {
            for (int i = 0; i < n * n; ++i)
                a[i / n][i % n] = static_cast<double>(random()) / 1e9 - 2.0;
            luDecompose(n, a, l, u, p);
            for (int i = 0; i < n; ++i) {
                copyVector(n, l[p[i]], lRows[i]);
                copyVector(n, u[p[i]], uRows[i]);
                QCOMPARE(lRows[i][i], 1.0);
            }
            matMul(n, lRows, uRows, product);
            for (int i = 0; i < n * n; ++i)
                QVERIFY(std::abs(product[i / n][i % n] - a[p[i / n]][i % n]) < 1e-9);
        }
    }

    /// Rows (0 0), (0 5): the multiplier of row 1 is 0 / 1, so U keeps the zero pivot and 5.
    void zeroPivotCountsAsOneInElimination()
    {
        Square a(2), l(2), u(2);
        int p[2];
        a[0][0] = 0;
        a[1][1] = 5;
        luDecompose(2, a, l, u, p);
        QCOMPARE(u[p[0]][0], 0.0);
        QCOMPARE(l[p[1]][0], 0.0);
        QCOMPARE(u[p[1]][1], 5.0);
    }

    /// Debugging scripts read these lines.
    void dumps()
    {
        double r0[] = {1, 2.5}, r1[] = {-3, 1e-7};
        double *rows[] = {r0, r1};
        const int p[] = {1, 0};
        QTemporaryFile file;
        QVERIFY(file.open());
        std::fflush(stdout);
        const int saved = dup(1);
        dup2(file.handle(), 1);
        dumpMatrix("A", 2, rows);
        dumpMatrix("A", 2, rows, p);
        dumpVector("v", 2, r0);
        dumpVector("v", 2, r0, p);
        dumpIndex("p", 2, p);
        dumpVector("nothing", 0, r0);
        std::fflush(stdout);
        dup2(saved, 1);
        close(saved);
        QCOMPARE(bytesOf(file.fileName()),
                 QByteArray("# A = \n1 2.5 \n# -3 1e-07 \n# \n# A = \n-3 1e-07 \n# 1 2.5 \n# \n"
                            "# v = \n1 2.5 \n# \n# v = \n2.5 1 \n# \n# p = \n1 0 \n# \n"));
    }

    void normalEquations()
    {
        LinearSystem system(2);
        for (int round = 0; round < 2; ++round) { // nothing of the first fit is left
            system.clear();
            for (int i = 0; i < 5; ++i) {
                const double basis[] = {1.0, static_cast<double>(i)};
                system.add(basis, 3.0 - 2.0 * i + (i % 2 ? 0.5 : -0.5)); // the rests leave the slope as it is
            }
            QCOMPARE(system.matrix()[1][1], 30.0);
            system.solve();
            QVERIFY(isClose(system.unknown(1), -2.0) && isClose(system.unknown(0), 2.9));
        }
    }

    void sizesBelowOneTouchNothing()
    {
        double value = 3.0;
        double *row = &value;
        int index = 4;
        for (const int n : {0, -1}) {
            clearMatrix(n, &row);
            identity(n, &row);
            copyVector(n, nullptr, &value);
            matVec(n, &row, &value, &value);
            luDecompose(n, &row, &row, &row, &index);
            forwardSubstitute(n, &row, &value, &value, &index);
            backSubstitute(n, &row, &value, &value, &index);
            clearIndex(n, &index);
            QVERIFY(!hasNaN(n, &value));
        }
        QCOMPARE(value, 3.0);
        QCOMPARE(index, 4);
        deleteMatrix(0, newMatrix(0));
        deleteVector(static_cast<double *>(nullptr));
        volatile int size = -1;
        QVERIFY_EXCEPTION_THROWN(newMatrix(size), std::bad_array_new_length);
        QVERIFY_EXCEPTION_THROWN(newVector(size), std::bad_array_new_length);
    }

    void hasNaNFindsTheLastElement()
    {
        Square m(3);
        m[0][1] = std::numeric_limits<double>::infinity();
        QVERIFY(!hasNaN(3, m));
        m[2][2] = std::numeric_limits<double>::quiet_NaN();
        QVERIFY(hasNaN(3, m) && hasNaN(3, m[2]) && !hasNaN(2, m[2]));
    }

    void unusualTokens()
    {
        const QList<QByteArray> tokens =
            QByteArray(
                "+1 1e5 1E5 1e+05 .5 5. . - + -.5 -0 -0.0 +0 inf -inf +inf nan NaN INF infinity 1e400 -1e400 "
                "1e-400 1e-320 4.9e-324 2.4e-324 1.7976931348623157e308 1.7976931348623159e308 0x10 0X1P3 1,5 "
                "1,000 1d3 1e 1e+ e5 --1 1- 1.2.3 1f 9007199254740993 9007199254740992 18446744073709551616 "
                "99999999999999999999 0.1000000000000000055511151231257827 123456789012345678901234567890 "
                "0.000000000000000000000000012345 00000000000000000000000000001.5 7.2057594037927945e16 1e22 1e23 "
                "8.5e22 1_000 \xEF\xBC\x91 \xFF\xFE \xE3\x80\x80\x31 1\xC2\xA0 e 0e0 -0e5 1e0000000000000000001 "
                "0 12 -3 +4 2.0 1e3 0x1F 010 999999999 2147483647 2147483648 -2147483648 12345678901234567890 a 1a")
                .split(' ')
            << QByteArray() << QByteArray("1\0002", 3) << QByteArray("1\0", 2) << QByteArray(800, '7')
            << "0." + QByteArray(800, '3');
        for (const QByteArray &token : tokens) {
            QCOMPARE(differenceToQt(token), QByteArray());
            QCOMPARE(textToInt(viewOf(token)), QString::fromUtf8(token.constData(), token.size()).toInt());
        }
    }

    void generatedTokens()
    {
        std::mt19937_64 random(20);
        // Every length of integer and decimal part, with and without sign and exponent: both paths and their border.
        for (int round = 0; round < 300000; ++round) {
            QByteArray token;
            const auto r = random();
            if (r % 3 == 0)
                token += '-';
            const auto digits = [&token, &random](std::uint64_t count) {
                for (std::uint64_t i = 0; i < count; ++i)
                    token += static_cast<char>('0' + random() % 10);
            };
            digits((r >> 8) % 21);
            if ((r >> 16) % 4 != 0)
                token += '.';
            digits((r >> 24) % 19);
            if ((r >> 32) % 4 == 0)
                token += "e" + QByteArray::number(static_cast<int>((r >> 40) % 660) - 330);
            QCOMPARE(differenceToQt(token), QByteArray());
        }
        // The shortest texts of random doubles, and random characters that may or may not be a number.
        const QByteArray characters("0123456789.-+eE,xnaif ");
        for (int round = 0; round < 200000; ++round) {
            double value;
            const auto r = random();
            std::memcpy(&value, &r, sizeof value);
            QCOMPARE(differenceToQt(QByteArray::number(value, 'g', 17)), QByteArray());
            QByteArray noise;
            for (std::uint64_t i = 0; i < r % 7; ++i)
                noise += characters[static_cast<int>(random() % static_cast<unsigned>(characters.size()))];
            QCOMPARE(differenceToQt(noise), QByteArray());
        }
    }

    void truncation()
    {
        constexpr double inf = std::numeric_limits<double>::infinity();
        constexpr int highest = std::numeric_limits<int>::max(), lowest = std::numeric_limits<int>::min();
        forRows<double, int>({{"toward zero, above", 1.99, 1},
                              {"toward zero, below", -1.99, -1},
                              {"not a number", std::nan(""), 0},
                              {"infinity", inf, highest},
                              {"minus infinity", -inf, lowest},
                              {"just above the range", 2147483648.0, highest},
                              {"just inside the range", 2147483647.0, highest},
                              {"last fraction inside", -2147483648.5, lowest}},
                             [](double value, int whole) { QCOMPARE(truncToInt(value), whole); });
    }

    void tokens()
    {
        forRows<QByteArray>(
            {{"empty", ""},
             {"blanks only", " \t\v\f\r "},
             {"leading, inner and trailing blanks", "  # AXIS\t0   x \r"},
             {"ideographic and no-break spaces", "1\xE3\x80\x80\x32\xC2\xA0\x33\xE2\x80\x83\x34\xE2\x80\xA8"},
             {"controls that are no white space", QByteArray("a\x1C\x62\x01\x63\0d", 7)},
             {"Japanese words", "\xE8\xA9\xA6\xE6\x96\x99 1"},
             {"a cut character at the end", "1 \xE3\x80"}},
            [](const QByteArray &line) {
                const QString simplified = QString::fromUtf8(line.constData(), line.size()).simplified();
                TokenScanner scanner(viewOf(line));
                std::string_view token;
                QStringList got;
                while (scanner.next(&token))
                    got << QString::fromUtf8(token.data(), static_cast<int>(token.size()));
                QCOMPARE(got, simplified.isEmpty() ? QStringList() : simplified.split(QLatin1Char(' ')));
            });
    }

    void lines()
    {
        QCOMPARE(utf8MarkLength("\xEF\xBB"), 0);
        QStringList got;
        LineScanner scanner("a\r\n\nb\nlast");
        std::string_view line;
        while (scanner.next(&line))
            got << simplifiedLine(line);
        QCOMPARE(got, QStringList({"a", "", "b", "last"}));
        QCOMPARE(simplifiedLine(std::string_view("\xFF\0 a  b", 7)).mid(1),
                 QString(QChar(0) + QStringLiteral(" a b"))); // not cut at NUL
        QCOMPARE(simplifiedLine("\xE8\xA9\xA6  \xE6\x96\x99"), QString::fromUtf8("\xE8\xA9\xA6 \xE6\x96\x99"));
    }

    void planeKeepsWhatItHolds()
    {
        Plane plane;
        plane.resize(100);
        for (std::size_t i = 0; i < 100; ++i)
            plane[i] = static_cast<double>(i);
        const double *const memory = plane.data();
        plane.truncate(99); // nearly full: no copy
        QCOMPARE(static_cast<const double *>(plane.data()), memory);
        plane.truncate(3);
        QCOMPARE(plane.size(), std::size_t(3));
        QCOMPARE(plane[2], 2.0);
        plane.resize(2);
        QCOMPARE(plane[1], 1.0);

        // Shared values stay when the one that they came from is filled anew.
        const Plane shared = plane.share();
        QCOMPARE(shared.data(), static_cast<const double *>(plane.data()));
        plane.resize(2);
        plane[1] = 7.0;
        QCOMPARE(shared[1], 1.0);
        plane.clear();
        QCOMPARE(shared.size(), std::size_t(2));
    }
};

QTEST_APPLESS_MAIN(TestNumeric)
#include "TestNumeric.moc"
