#include "numeric/LinearAlgebra.h"
#include "numeric/LinearSystem.h"
#include "numeric/Plane.h"
#include "numeric/RealToInt.h"
#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"

#include <QtTest>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <random>

#include <unistd.h>

using namespace numeric;

namespace
{

using Rows = QVector<QVector<double>>;

void fill(LinearSystem *system, const Rows &a, const QVector<double> &b)
{
    for (int i = 0; i < a.size(); ++i) {
        for (int j = 0; j < a.size(); ++j)
            system->matrix()[i][j] = a[i][j];
        system->rightHandSide()[i] = b[i];
    }
}

quint64 bits(double value)
{
    quint64 result;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

/// Both readings of a token; NaNs count as equal whatever their bits.
bool readsAsQt(const QByteArray &token, QByteArray *report)
{
    const double wanted = QString::fromUtf8(token.constData(), token.size()).toDouble();
    const double got = textToDouble(std::string_view(token.constData(), static_cast<std::size_t>(token.size())));
    if (bits(wanted) == bits(got) || (std::isnan(wanted) && std::isnan(got)))
        return true;
    *report =
        '<' + token + "> read as " + QByteArray::number(got, 'g', 17) + ", not " + QByteArray::number(wanted, 'g', 17);
    return false;
}

} // namespace

class TestNumeric : public QObject
{
    Q_OBJECT

private slots:
    void solve_data();
    void solve();
    void pivotFollowsTheIndexRule();
    void pivotRuleDecidesWhichRow_data();
    void pivotRuleDecidesWhichRow();
    void factorsMultiplyToTheMatrix();
    void singularSystemsGiveNonFiniteUnknowns_data();
    void singularSystemsGiveNonFiniteUnknowns();
    void zeroPivotCountsAsOneInElimination();
    void dumps();
    void normalEquations();
    void sizesBelowOneTouchNothing();
    void impossibleSizeThrows();
    void products();
    void hasNaNFindsTheLastElement();
    void textToDoubleUnusual_data();
    void textToDoubleUnusual();
    void textToDoubleGenerated();
    void textToInt_data();
    void textToInt();
    void truncation_data();
    void truncation();
    void tokens_data();
    void tokens();
    void lines();
    void wideTexts_data();
    void wideTexts();
    void planeKeepsWhatItHolds();
};

void TestNumeric::solve_data()
{
    QTest::addColumn<Rows>("a");
    QTest::addColumn<QVector<double>>("b");
    QTest::addColumn<QVector<double>>("x");
    QTest::newRow("one unknown") << Rows{{4}} << QVector<double>{2} << QVector<double>{0.5};
    QTest::newRow("diagonally dominant") << Rows{{4, 1, 0}, {1, 3, 1}, {0, 1, 2}} << QVector<double>{1, 2, 3}
                                         << QVector<double>{2.0 / 9, 1.0 / 9, 13.0 / 9};
    QTest::newRow("zero on the diagonal, rows exchanged")
        << Rows{{0, 2, 1}, {5, 0, 0}, {0, 3, 4}} << QVector<double>{7, 10, 18} << QVector<double>{2, 2, 3};
    QTest::newRow("five unknowns, every row exchanged")
        << Rows{{0, 9, 0, 0, 0}, {0, 0, 0, 0, 9}, {9, 0, 0, 0, 0}, {0, 0, 9, 0, 0}, {0, 0, 0, 9, 0}}
        << QVector<double>{18, 45, 9, 27, 36} << QVector<double>{1, 2, 3, 4, 5};
}

void TestNumeric::solve()
{
    QFETCH(Rows, a);
    QFETCH(QVector<double>, b);
    QFETCH(QVector<double>, x);
    LinearSystem system(a.size());
    fill(&system, a, b);
    system.solve();
    for (int k = 0; k < x.size(); ++k)
        QVERIFY2(std::abs(system.unknown(k) - x[k]) < 1e-13, qPrintable(QString::number(k)));
    QCOMPARE(system.matrix()[0][0], a[0][0]); // the matrix stays for the next right-hand side
}

/// A search for the largest magnitude would take row 2 here; 0.9 does not exceed the index 1.
void TestNumeric::pivotFollowsTheIndexRule()
{
    double **a = newMatrix(3);
    double **l = newMatrix(3);
    double **u = newMatrix(3);
    int p[3];
    identity(3, a);
    a[0][0] = 0.5;
    a[1][0] = 0.7;
    a[2][0] = 0.9;
    luDecompose(3, a, l, u, p);
    QCOMPARE(p[0], 1);
    for (double **matrix : {a, l, u})
        deleteMatrix(3, matrix);
}

void TestNumeric::pivotRuleDecidesWhichRow_data()
{
    QTest::addColumn<QVector<double>>("column");
    QTest::addColumn<int>("row");
    QTest::newRow("the last row above the index, not the largest") << QVector<double>{9, 100, 7, 0} << 2;
    QTest::newRow("equal to the index is not above it") << QVector<double>{0, 0, 0, 0} << 0;
    QTest::newRow("one at row 0, exactly the index of row 1") << QVector<double>{1, 1, 1, 1} << 1;
    QTest::newRow("negative numbers count by magnitude") << QVector<double>{-0.1, -0.2, -1.5, -1.9} << 2;
}

void TestNumeric::pivotRuleDecidesWhichRow()
{
    QFETCH(QVector<double>, column);
    QFETCH(int, row);
    const int n = column.size();
    double **a = newMatrix(n);
    double **l = newMatrix(n);
    double **u = newMatrix(n);
    QVector<int> p(n);
    identity(n, a);
    for (int i = 0; i < n; ++i)
        a[i][0] = column[i];
    luDecompose(n, a, l, u, p.data());
    QCOMPARE(p[0], row);
    for (double **matrix : {a, l, u})
        deleteMatrix(n, matrix);
}

void TestNumeric::factorsMultiplyToTheMatrix()
{
    constexpr int n = 5;
    std::mt19937 random(7);
    double **a = newMatrix(n);
    double **l = newMatrix(n);
    double **u = newMatrix(n);
    double **lRows = newMatrix(n);
    double **uRows = newMatrix(n);
    double **product = newMatrix(n);
    int p[n];
    for (int round = 0; round < 100; ++round) {
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                a[i][j] = static_cast<double>(random()) / 1e9 - 2.0;
        }
        luDecompose(n, a, l, u, p);
        for (int i = 0; i < n; ++i) {
            copyVector(n, l[p[i]], lRows[i]);
            copyVector(n, u[p[i]], uRows[i]);
            QCOMPARE(lRows[i][i], 1.0);
        }
        matMul(n, lRows, uRows, product);
        for (int i = 0; i < n; ++i) {
            for (int j = 0; j < n; ++j)
                QVERIFY(std::abs(product[i][j] - a[p[i]][j]) < 1e-9);
        }
    }
    for (double **matrix : {a, l, u, lRows, uRows, product})
        deleteMatrix(n, matrix);
}

void TestNumeric::singularSystemsGiveNonFiniteUnknowns_data()
{
    QTest::addColumn<Rows>("a");
    QTest::newRow("all zero") << Rows{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}};
    QTest::newRow("equal rows") << Rows{{1, 2, 3}, {1, 2, 3}, {4, 5, 7}};
    QTest::newRow("a zero column") << Rows{{1, 0, 3}, {2, 0, 5}, {4, 0, 7}};
}

void TestNumeric::singularSystemsGiveNonFiniteUnknowns()
{
    QFETCH(Rows, a);
    LinearSystem system(3);
    fill(&system, a, {0, 0, 1});
    system.solve();
    bool finite = true;
    for (int k = 0; k < 3; ++k)
        finite = finite && std::isfinite(system.unknown(k));
    QVERIFY(!finite);
}

/// Rows (0 2), (0 3): the multiplier of row 1 is 0 / 1, so U keeps the zero pivot and 3.
void TestNumeric::zeroPivotCountsAsOneInElimination()
{
    double **a = newMatrix(3);
    double **l = newMatrix(3);
    double **u = newMatrix(3);
    int p[3];
    identity(3, a);
    a[0][0] = 0;
    a[0][1] = 2;
    a[1][0] = 1e-3; // chosen: it exceeds the index 0
    a[1][1] = 0;
    a[2][2] = 0;
    a[2][0] = 0;
    luDecompose(3, a, l, u, p);
    QCOMPARE(p[0], 1);
    QCOMPARE(u[p[0]][0], 1e-3);
    clearMatrix(3, a);
    a[1][1] = 5;
    a[2][0] = 0.0;
    luDecompose(3, a, l, u, p);
    QCOMPARE(u[p[0]][0], 0.0);
    QCOMPARE(l[p[1]][0], 0.0);
    QCOMPARE(u[p[1]][1], 5.0);
    for (double **matrix : {a, l, u})
        deleteMatrix(3, matrix);
}

/// Debugging scripts read these lines.
void TestNumeric::dumps()
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
    QFile written(file.fileName());
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("# A = \n1 2.5 \n# -3 1e-07 \n# \n# A = \n-3 1e-07 \n# 1 2.5 \n# \n"
                                           "# v = \n1 2.5 \n# \n# v = \n2.5 1 \n# \n# p = \n1 0 \n# \n"));
}

void TestNumeric::normalEquations()
{
    LinearSystem system(2);
    for (int i = 0; i < 5; ++i) {
        const double basis[] = {1.0, static_cast<double>(i)};
        system.add(basis, 3.0 - 2.0 * i + (i % 2 ? 0.5 : -0.5)); // residuals -.5 .5 -.5 .5 -.5: slope unchanged
    }
    system.solve();
    QVERIFY(std::abs(system.unknown(1) + 2.0) < 1e-12);
    QVERIFY(std::abs(system.unknown(0) - 2.9) < 1e-12);

    system.clear();
    const double basis[] = {1.0, 1.0};
    system.add(basis, 1.0);
    QCOMPARE(system.matrix()[1][1], 1.0); // nothing of the first fit is left
}

void TestNumeric::sizesBelowOneTouchNothing()
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
}

void TestNumeric::impossibleSizeThrows()
{
    volatile int size = -1;
    QVERIFY_EXCEPTION_THROWN(newMatrix(size), std::bad_array_new_length);
    QVERIFY_EXCEPTION_THROWN(newVector(size), std::bad_array_new_length);
}

void TestNumeric::products()
{
    double a0[] = {1, 2}, a1[] = {3, 4}, b0[] = {0, 1}, b1[] = {1, 1}, o0[2], o1[2];
    double *a[] = {a0, a1}, *b[] = {b0, b1}, *out[] = {o0, o1};
    matMul(2, a, b, out);
    QCOMPARE(o0[0], 2.0);
    QCOMPARE(o0[1], 3.0);
    QCOMPARE(o1[0], 4.0);
    QCOMPARE(o1[1], 7.0);
    const double v[] = {5, 6};
    double result[2];
    matVec(2, a, v, result);
    QCOMPARE(result[0], 17.0);
    QCOMPARE(result[1], 39.0);
}

void TestNumeric::hasNaNFindsTheLastElement()
{
    double **m = newMatrix(3);
    identity(3, m);
    m[0][1] = std::numeric_limits<double>::infinity();
    QVERIFY(!hasNaN(3, m));
    m[2][2] = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(hasNaN(3, m));
    QVERIFY(hasNaN(3, m[2]));
    QVERIFY(!hasNaN(2, m[2]));
    deleteMatrix(3, m);
}

void TestNumeric::textToDoubleUnusual_data()
{
    QTest::addColumn<QByteArray>("token");
    const char *const tokens[] = {"",
                                  "+1",
                                  "1e5",
                                  "1E5",
                                  "1e+05",
                                  ".5",
                                  "5.",
                                  ".",
                                  "-",
                                  "+",
                                  "-.5",
                                  "-0",
                                  "-0.0",
                                  "+0",
                                  "inf",
                                  "-inf",
                                  "+inf",
                                  "nan",
                                  "NaN",
                                  "INF",
                                  "infinity",
                                  "1e400",
                                  "-1e400",
                                  "1e-400",
                                  "1e-320",
                                  "4.9e-324",
                                  "2.4e-324",
                                  "1.7976931348623157e308",
                                  "1.7976931348623159e308",
                                  "0x10",
                                  "0X1P3",
                                  "1,5",
                                  "1,000",
                                  "1d3",
                                  "1e",
                                  "1e+",
                                  "e5",
                                  "--1",
                                  "1-",
                                  "1.2.3",
                                  "1f",
                                  "9007199254740993",
                                  "9007199254740992",
                                  "18446744073709551616",
                                  "99999999999999999999",
                                  "0.1000000000000000055511151231257827",
                                  "123456789012345678901234567890",
                                  "0.000000000000000000000000012345",
                                  "00000000000000000000000000001.5",
                                  "7.2057594037927945e16",
                                  "1e22",
                                  "1e23",
                                  "8.5e22",
                                  "1_000",
                                  "\xEF\xBC\x91",
                                  "\xFF\xFE",
                                  "\xE3\x80\x80"
                                  "1",
                                  "1\xC2\xA0",
                                  "e",
                                  "0e0",
                                  "-0e5",
                                  "1e0000000000000000001"};
    for (const char *const token : tokens)
        QTest::newRow(token) << QByteArray(token);
    QTest::newRow("a NUL inside") << QByteArray("1\0002", 3);
    QTest::newRow("a NUL at the end") << QByteArray("1\0", 2);
    QTest::newRow("800 digits") << QByteArray(800, '7');
    QTest::newRow("800 decimals") << "0." + QByteArray(800, '3');
}

void TestNumeric::textToDoubleUnusual()
{
    QFETCH(QByteArray, token);
    QByteArray report;
    QVERIFY2(readsAsQt(token, &report), report.constData());
}

void TestNumeric::textToDoubleGenerated()
{
    std::mt19937_64 random(20);
    QByteArray report;
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
        QVERIFY2(readsAsQt(token, &report), report.constData());
    }
    // The shortest texts of random doubles, and random characters that may or may not be a number.
    const QByteArray characters("0123456789.-+eE,xnaif ");
    for (int round = 0; round < 200000; ++round) {
        double value;
        const auto r = random();
        std::memcpy(&value, &r, sizeof value);
        QVERIFY2(readsAsQt(QByteArray::number(value, 'g', 17), &report), report.constData());
        QByteArray noise;
        for (std::uint64_t i = 0; i < r % 7; ++i)
            noise += characters[static_cast<int>(random() % static_cast<unsigned>(characters.size()))];
        QVERIFY2(readsAsQt(noise, &report), report.constData());
    }
}

void TestNumeric::textToInt_data()
{
    QTest::addColumn<QByteArray>("token");
    for (const char *const token : {"", "0", "12", "-3", "+4", "2.0", "1e3", "0x1F", "010", "999999999", "2147483647",
                                    "2147483648", "-2147483648", "12345678901234567890", "a", "1a", "1,0"})
        QTest::newRow(token) << QByteArray(token);
}

void TestNumeric::textToInt()
{
    QFETCH(QByteArray, token);
    QCOMPARE(numeric::textToInt(std::string_view(token.constData(), static_cast<std::size_t>(token.size()))),
             QString::fromUtf8(token).toInt());
}

void TestNumeric::truncation_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("whole");
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("toward zero, above") << 1.99 << 1;
    QTest::newRow("toward zero, below") << -1.99 << -1;
    QTest::newRow("not a number") << std::nan("") << 0;
    QTest::newRow("infinity") << inf << std::numeric_limits<int>::max();
    QTest::newRow("minus infinity") << -inf << std::numeric_limits<int>::min();
    QTest::newRow("just above the range") << 2147483648.0 << std::numeric_limits<int>::max();
    QTest::newRow("just inside the range") << 2147483647.0 << std::numeric_limits<int>::max();
    QTest::newRow("last fraction inside") << -2147483648.5 << std::numeric_limits<int>::min();
}

void TestNumeric::truncation()
{
    QFETCH(double, value);
    QFETCH(int, whole);
    QCOMPARE(truncToInt(value), whole);
}

void TestNumeric::tokens_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks only") << QByteArray(" \t\v\f\r ");
    QTest::newRow("leading, inner and trailing blanks") << QByteArray("  # AXIS\t0   x \r");
    QTest::newRow("ideographic and no-break spaces") << QByteArray("1\xE3\x80\x80"
                                                                   "2\xC2\xA0"
                                                                   "3\xE2\x80\x83"
                                                                   "4\xE2\x80\xA8");
    QTest::newRow("controls that are no white space") << QByteArray("a\x1C"
                                                                    "b\x01"
                                                                    "c\0d",
                                                                    7);
    QTest::newRow("Japanese words") << QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99 1").toUtf8();
    QTest::newRow("a cut character at the end") << QByteArray("1 \xE3\x80");
}

void TestNumeric::tokens()
{
    QFETCH(QByteArray, line);
    const QString simplified = QString::fromUtf8(line.constData(), line.size()).simplified();
    const QStringList wanted = simplified.isEmpty() ? QStringList() : simplified.split(QLatin1Char(' '));
    TokenScanner scanner(std::string_view(line.constData(), static_cast<std::size_t>(line.size())));
    std::string_view token;
    QStringList got;
    while (scanner.next(&token))
        got << QString::fromUtf8(token.data(), static_cast<int>(token.size()));
    QCOMPARE(got, wanted);
}

void TestNumeric::lines()
{
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

void TestNumeric::wideTexts_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::newRow("UTF-16 little endian") << QByteArray("UTF-16LE");
    QTest::newRow("UTF-16 big endian") << QByteArray("UTF-16BE");
    QTest::newRow("UTF-32 little endian") << QByteArray("UTF-32LE");
    QTest::newRow("UTF-32 big endian") << QByteArray("UTF-32BE");
}

void TestNumeric::wideTexts()
{
    QFETCH(QByteArray, codec);
    const QString text = QString(QChar::ByteOrderMark) + QStringLiteral("# 1301\n1 2");
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QByteArray bytes = QTextCodec::codecForName(codec)->fromUnicode(text.constData(), text.size(), &state);
    QVERIFY(isWideText(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
    QCOMPARE(wideTextToUtf8(bytes), QByteArray("# 1301\n1 2"));
    QVERIFY(!isWideText("# 1301"));
    QCOMPARE(utf8MarkLength("\xEF\xBB\xBF# 1301"), 3);
    QCOMPARE(utf8MarkLength("\xEF\xBB"), 0);
}

void TestNumeric::planeKeepsWhatItHolds()
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

QTEST_APPLESS_MAIN(TestNumeric)
#include "TestNumeric.moc"
