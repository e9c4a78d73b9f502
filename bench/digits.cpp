// The time that numeric::writeG6Lines takes per number, then a comparison of its texts with Qt's for very many numbers:
// digits [MILLIONS [SEED]], 100 million numbers by default, one eighth of each kind.
#include "tests/NumbersToWrite.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace
{

/// How many of `count` numbers of one kind are written otherwise than by Qt.
long long checkKind(int kind, long long count, unsigned long long seed)
{
    constexpr std::size_t batch = 5000;
    NumbersToWrite numbers(seed);
    std::vector<double> values(batch);
    long long wrong = 0;
    for (long long done = 0; done < count; done += static_cast<long long>(batch)) {
        for (double &value : values)
            value = numbers.next(kind);
        QByteArray report;
        wrong += countDifferences(values, &report);
        if (!report.isEmpty())
            std::printf("  %s\n", report.constData());
    }
    return wrong;
}

double nsPerNumber(const std::vector<double> &values, bool plain)
{
    std::vector<char> text(values.size() * numeric::longestNumberLine(1) + numeric::g6Room);
    const std::vector<numeric::NumberColumn> columns = {{values.data()}};
    double best = 1e9;
    for (int round = 0; round < 9; ++round) {
        QElapsedTimer timer;
        timer.start();
        if (plain)
            numeric::writeG6LinesPlain(columns, 0, values.size(), text.data());
        else
            numeric::writeG6Lines(columns, 0, values.size(), text.data());
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()));
    }
    return best / static_cast<double>(values.size());
}

void measureKind(int kind)
{
    NumbersToWrite numbers(1);
    std::vector<double> values(100000);
    for (double &value : values)
        value = numbers.next(kind);
    std::printf("%-30s %6.1f ns per number, plain %6.1f ns\n", NumbersToWrite::name(kind), nsPerNumber(values, false),
                nsPerNumber(values, true));
}

} // namespace

int main(int argc, char **argv)
{
    const long long millions = argc > 1 ? std::atoll(argv[1]) : 100;
    const unsigned long long seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    const long long perKind = millions * 1000000 / NumbersToWrite::kinds;
    for (int kind = 0; kind < NumbersToWrite::kinds; ++kind)
        measureKind(kind);

    long long wrong = 0;
    for (int kind = 0; kind < NumbersToWrite::kinds; ++kind) {
        const long long differences = checkKind(kind, perKind, seed);
        std::printf("%-30s %lld numbers, %lld differ from Qt\n", NumbersToWrite::name(kind), perKind, differences);
        std::fflush(stdout);
        wrong += differences;
    }
    return wrong == 0 ? 0 : 1;
}
