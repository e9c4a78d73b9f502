#include "numeric/FieldText.h"
#include "numeric/NumberLines.h"
#include "numeric/NumberText.h"
#include "tests/NumbersToWrite.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace numeric;

namespace
{

QByteArray unpadded(double value)
{
    char text[g6Room];
    return QByteArray(text, static_cast<int>(writeG6(value, text) - text));
}

QByteArray padded(double value)
{
    char text[g6Room];
    return QByteArray(text, static_cast<int>(writeG6Padded(value, text) - text));
}

} // namespace

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void sixDigits_data();
    void sixDigits();
    void generatedNumbers_data();
    void generatedNumbers();
    void powersOfTwoAndTen();
    void linesOfColumns_data();
    void linesOfColumns();
};

void TestNumberText::sixDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    using Limits = std::numeric_limits<double>;
    const auto row = [](const char *name, double value, const char *text) {
        QTest::newRow(name) << value << QByteArray(text);
    };
    row("zero", 0.0, "0");
    row("negative zero has no sign", -0.0, "0");
    row("NaN", Limits::quiet_NaN(), "nan");
    row("NaN has no sign", -Limits::quiet_NaN(), "nan");
    row("infinity", Limits::infinity(), "inf");
    row("negative infinity", -Limits::infinity(), "-inf");
    row("tie goes up to an odd digit", 101.5625, "101.563");
    row("tie goes up to an even digit", 101.6875, "101.688"); // the C library too
    row("tie goes up, nearer even is below", 1234.125, "1234.13");
    row("tie of an integer", 1000005.0, "1.00001e+06");
    row("negative tie goes away from zero", -100000.5, "-100001");
    row("just below a tie", std::nextafter(101.5625, 0.0), "101.562");
    row("decimal tie that is below one in binary", 2.000005, "2");
    row("decimal tie that is above one in binary", 1.000005, "1.00001");
    row("carry into the next power", 999999.5, "1e+06");
    row("no carry", 999999.4999999999, "999999");
    row("carry into plain notation", 9.999995e-05, "0.0001");
    row("carry over the point", 9.9999951, "10");
    row("below a power of ten", std::nextafter(1000.0, 0.0), "1000");
    row("largest plain", 999999.0, "999999");
    row("smallest plain", 0.0001, "0.0001");
    row("smallest with an exponent", 1e6, "1e+06");
    row("largest with a negative exponent", 9.99999e-05, "9.99999e-05");
    row("longer than ten characters", -0.000123456789, "-0.000123457");
    row("longer than ten characters with an exponent", -1.23456e-7, "-1.23456e-07");
    row("integer with zeros at the end", 120000.0, "120000");
    row("two digits", -0.5, "-0.5");
    row("denormal", 4.9406564584124654e-324, "4.94066e-324");
    row("smallest normal number", Limits::min(), "2.22507e-308");
    row("largest number", -Limits::max(), "-1.79769e+308");
    row("10^23, which no double is", 1e23, "1e+23");
    row("10^-23", 1e-23, "1e-23");
}

void TestNumberText::sixDigits()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    QCOMPARE(unpadded(value), text);
    QCOMPARE(fieldText(value), QString(text));
    QCOMPARE(QString::number(value, 'g', 6), QString(text));
    QCOMPARE(padded(value), text.rightJustified(10));
    QCOMPARE(QStringLiteral("%1").arg(value, 10, 'g', 6).toLatin1(), text.rightJustified(10)); // the wanted bytes
    const QByteArray line = ' ' + text.rightJustified(10) + '\n';
    QCOMPARE(numberLines({value, value, value, value, value}, false), line.repeated(5)); // four at once, then one
    QCOMPARE(numberLines({1.0, 2.0, value, 3.0}, false).split('\n').at(2) + '\n', line);
}

void TestNumberText::generatedNumbers_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < NumbersToWrite::kinds; ++kind)
        QTest::newRow(NumbersToWrite::name(kind)) << kind;
}

/// A digit that is rounded the wrong way once in a hundred thousand numbers; bench/digits looks at more of them.
void TestNumberText::generatedNumbers()
{
    QFETCH(int, kind);
    NumbersToWrite numbers(7);
    std::vector<double> values(150000);
    for (double &value : values)
        value = numbers.next(kind);
    QByteArray report;
    QVERIFY2(countDifferences(values, &report) == 0, report.constData());
}

/// Where the decimal exponent is guessed from the binary one, and where the guess ends.
void TestNumberText::powersOfTwoAndTen()
{
    std::vector<double> values;
    for (int exponent = -1074; exponent < 1024; ++exponent)
        values.push_back(std::ldexp(1.0, exponent));
    for (int exponent = -323; exponent <= 308; ++exponent)
        values.push_back(QByteArray("1e" + QByteArray::number(exponent)).toDouble());
    const std::size_t powers = values.size();
    for (std::size_t i = 0; i < powers; ++i) {
        values.push_back(std::nextafter(values[i], 0.0));
        values.push_back(-std::nextafter(values[i], 1e308));
    }
    QByteArray report;
    QVERIFY2(countDifferences(values, &report) == 0, report.constData());
}

void TestNumberText::linesOfColumns_data()
{
    QTest::addColumn<bool>("plain");
    QTest::newRow("plain") << true;
    QTest::newRow("fastest") << false;
}

/// Columns that change between short, long and unusual numbers, with every number of blanks, from a line in the middle
/// on; nothing is written before the text or too far behind it.
void TestNumberText::linesOfColumns()
{
    QFETCH(bool, plain);
    constexpr std::size_t lines = 203;
    NumbersToWrite numbers(11);
    std::vector<std::vector<double>> values(NumbersToWrite::kinds, std::vector<double>(lines));
    std::vector<NumberColumn> columns;
    for (std::size_t k = 0; k < values.size(); ++k) {
        for (double &value : values[k])
            value = numbers.next(static_cast<int>(k));
        columns.push_back({values[k].data(), 1 + static_cast<int>(k % 4)});
    }
    for (std::size_t begin = 0; begin < 9; ++begin) {
        QByteArray wanted;
        for (std::size_t line = begin; line < lines - begin / 2; ++line) {
            for (const NumberColumn &column : columns)
                wanted +=
                    QByteArray(column.blanks, ' ') + QByteArray::number(column.values[line], 'g', 6).rightJustified(10);
            wanted += '\n';
        }
        QByteArray text(wanted.size() + g6Room + 1, '#');
        const char *const end =
            (plain ? writeG6LinesPlain : writeG6Lines)(columns, begin, lines - begin / 2, text.data());
        QCOMPARE(static_cast<int>(end - text.constData()), wanted.size());
        QVERIFY2(text.startsWith(wanted), qPrintable(QString::number(begin)));
        QCOMPARE(text.back(), '#');
    }
    char none[g6Room];
    QCOMPARE((plain ? writeG6LinesPlain : writeG6Lines)(columns, 5, 5, none) - none, std::ptrdiff_t(0));
}

QTEST_APPLESS_MAIN(TestNumberText)
#include "TestNumberText.moc"
