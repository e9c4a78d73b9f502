#include "numeric/FieldText.h"
#include "numeric/NumberLines.h"
#include "numeric/NumberText.h"
#include "tests/NumbersToWrite.h"
#include "tests/Tables.h"

#include <limits>

using namespace numeric;

class TestNumberText : public QObject
{
    Q_OBJECT

private slots:
    void sixDigits()
    {
        using Limits = std::numeric_limits<double>;
        forRows<double, QByteArray>(
            {{"zero", 0.0, "0"},
             {"negative zero has no sign", -0.0, "0"},
             {"NaN", Limits::quiet_NaN(), "nan"},
             {"NaN has no sign", -Limits::quiet_NaN(), "nan"},
             {"infinity", Limits::infinity(), "inf"},
             {"negative infinity", -Limits::infinity(), "-inf"},
             {"tie goes up to an odd digit", 101.5625, "101.563"},
             {"tie goes up to an even digit", 101.6875, "101.688"}, // the C library too
             {"tie goes up, nearer even is below", 1234.125, "1234.13"},
             {"tie of an integer", 1000005.0, "1.00001e+06"},
             {"negative tie goes away from zero", -100000.5, "-100001"},
             {"just below a tie", std::nextafter(101.5625, 0.0), "101.562"},
             {"decimal tie that is below one in binary", 2.000005, "2"},
             {"decimal tie that is above one in binary", 1.000005, "1.00001"},
             {"carry into the next power", 999999.5, "1e+06"},
             {"no carry", 999999.4999999999, "999999"},
             {"carry into plain notation", 9.999995e-05, "0.0001"},
             {"carry over the point", 9.9999951, "10"},
             {"below a power of ten", std::nextafter(1000.0, 0.0), "1000"},
             {"largest plain", 999999.0, "999999"},
             {"smallest plain", 0.0001, "0.0001"},
             {"smallest with an exponent", 1e6, "1e+06"},
             {"largest with a negative exponent", 9.99999e-05, "9.99999e-05"},
             {"longer than ten characters", -0.000123456789, "-0.000123457"},
             {"longer than ten characters with an exponent", -1.23456e-7, "-1.23456e-07"},
             {"integer with zeros at the end", 120000.0, "120000"},
             {"two digits", -0.5, "-0.5"},
             {"denormal", 4.9406564584124654e-324, "4.94066e-324"},
             {"smallest normal number", Limits::min(), "2.22507e-308"},
             {"largest number", -Limits::max(), "-1.79769e+308"},
             {"10^23, which no double is", 1e23, "1e+23"},
             {"10^-23", 1e-23, "1e-23"}},
            [](double value, const QByteArray &text) {
                QCOMPARE(fieldText(value), QString(text));
                char room[g6Room];
                const QByteArray padded(room, static_cast<int>(writeG6Padded(value, room) - room));
                QCOMPARE(padded, text.rightJustified(10));
                const QByteArray line = ' ' + text.rightJustified(10) + '\n';
                const std::vector<double> five(5, value); // four at once, then one
                QCOMPARE(numberLines(five, false), line.repeated(5));
                QCOMPARE(numberLines({1.0, 2.0, value, 3.0}, false).split('\n').at(2) + '\n', line);
            });
    }

    /// A digit that is rounded the wrong way once in a hundred thousand numbers; bench/digits looks at more of them.
    void generatedNumbers()
    {
        for (int kind = 0; kind < NumbersToWrite::kinds; ++kind) {
            NumbersToWrite numbers(7);
            std::vector<double> values(150000);
            for (double &value : values)
                value = numbers.next(kind);
            QByteArray report;
            QVERIFY2(countDifferences(values, &report) == 0, NumbersToWrite::name(kind) + (": " + report));
        }
    }

    /// Where the decimal exponent is guessed from the binary one, and where the guess ends.
    void powersOfTwoAndTen()
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

    /// Columns that change between short, long and unusual numbers, with every number of blanks, from a line in the
    /// middle on; nothing is written before the text or too far behind it.
    void linesOfColumns()
    {
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
            const std::size_t end = lines - begin / 2;
            QByteArray wanted;
            for (std::size_t line = begin; line < end; ++line) {
                for (const NumberColumn &column : columns)
                    wanted += QByteArray(column.blanks, ' ') +
                              QByteArray::number(column.values[line], 'g', 6).rightJustified(10);
                wanted += '\n';
            }
            for (const auto write : {writeG6LinesPlain, writeG6Lines}) {
                QByteArray text(wanted.size() + g6Room + 1, '#');
                const char *const behind = write(columns, begin, end, text.data());
                QCOMPARE(text.left(static_cast<int>(behind - text.constData())), wanted);
                QCOMPARE(text.back(), '#');
                char none[g6Room];
                QCOMPARE(write(columns, 5, 5, none) - none, std::ptrdiff_t(0));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestNumberText)
#include "TestNumberText.moc"
