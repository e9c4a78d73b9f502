// Writing the result file of a four-points and of a non-equivalent map, with one and with all threads, against
// numpy.savetxt in the same run: write [SIDE [ROUNDS [PEER_ROUNDS]]]. Every time is the best of several rounds and
// includes that the file waits for the disk; savetxt does not wait.
#include "analysis/methods/FourPoints.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/ResultWriter.h"
#include "mapdata/A2DData.h"
#include "numeric/TextToNumber.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace
{

const ValencePair valences = {true, 2.0, 3.0};

/// A uniform number in [0, 1); the same sequence on every machine.
double nextRandom(std::uint64_t *state)
{
    *state = *state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(*state >> 11) / 9007199254740992.0;
}

/// Results as noisy maps give them, at positions in steps of 0.05.
bool makeResults(ResultRecords::Method method, int side, ResultRecords *results)
{
    A2DData map;
    const A2DData::Columns columns = map.resize(qint64(side) * side);
    map.setSize(side, side);
    if (!results->reset(method, map))
        return false;
    results->headerLines = QStringList{QStringLiteral("# 1301 made for measuring")};
    std::uint64_t random = 1;
    const auto noise = [&random](double size) {
        return size * (nextRandom(&random) - 0.5);
    };
    for (std::size_t i = 0; i < results->count(); ++i) {
        const auto column = static_cast<int>(i % static_cast<std::size_t>(side));
        const auto row = static_cast<int>(i / static_cast<std::size_t>(side));
        const double f[] = {0.6 + 0.3 * std::sin(0.01 * column) + noise(0.1), 0.2 + noise(0.1), 0.1 + noise(0.05),
                            0.05 + noise(0.05)};
        const double t = 1.2 + 0.5 * std::cos(0.013 * row) + noise(0.1);
        columns.x[i] = 0.05 * column;
        columns.y[i] = 0.05 * row;
        results->a()[i] = f[0];
        results->t()[i] = t;
        if (method == ResultRecords::Method::FourPoints)
            continue;
        for (int k = 0; k < ResultPosition::referenceRows; ++k) {
            results->quantity(ResultPosition::ratio + k)[i] = f[k];
            results->quantity(ResultPosition::dMut + k)[i] = t * f[k];
        }
        results->quantity(ResultPosition::mut0)[i] = -0.7 + noise(0.1);
        results->quantity(ResultPosition::c1)[i] =
            0.031 + noise(0.02); // of the cube and of the fourth power of a wavelength
        results->quantity(ResultPosition::c2)[i] = -0.0042 + noise(0.004);
        results->quantity(ResultPosition::valence)[i] = 2.0 * f[0] + 3.0 * f[1] + 8.0 / 3.0 * f[2] + 4.0 * f[3];
        results->quantity(ResultPosition::amount)[i] = t;
    }
    return true;
}

/// The numbers of one line, column after column, as the peer reads them.
bool writeColumns(const ResultRecords &results, const QString &path)
{
    std::vector<double> valence(results.count());
    for (std::size_t i = 0; i < valence.size(); ++i)
        valence[i] = valences.mixed(results.a()[i]);
    std::vector<const double *> columns = {results.x(), results.y()};
    if (results.method() == ResultRecords::Method::FourPoints) {
        columns.insert(columns.end(), {results.a(), valence.data(), results.t()});
    } else {
        for (int position = 0; position < ResultRecords::quantityCount; ++position)
            columns.push_back(results.quantity(position));
    }
    QFile file(path);
    const auto bytes = static_cast<qint64>(results.count() * sizeof(double));
    bool good = file.open(QIODevice::WriteOnly);
    for (const double *const column : columns)
        good = good && file.write(reinterpret_cast<const char *>(column), bytes) == bytes;
    return good && file.flush();
}

/// Best time in ms; negative when the file cannot be written.
double measure(const QString &path, const ResultRecords &results, int threads, int rounds)
{
    RecordSelection everything;
    everything.fill(true);
    double best = -1.0;
    for (int round = 0; round < rounds; ++round) {
        QFile::remove(path);
        QElapsedTimer timer;
        timer.start();
        if (writeResultFile(path, results, valences, everything, threads) != WriteOutcome::Written)
            return -1.0;
        const double ms = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
        best = best < 0.0 ? ms : std::min(best, ms);
    }
    return best;
}

/// The peer's best time in ms; 0 when there is no numpy.
double measurePeer(const QString &columns, const ResultRecords &results, int rounds, const QString &out)
{
    const bool fourPoints = results.method() == ResultRecords::Method::FourPoints;
    const QString format = fourPoints ? QStringLiteral(" %10.6g %10.6g    %10.6g %10.6g %10.6g")
                                      : QStringLiteral(" %10.6g").repeated(2 + ResultRecords::quantityCount);
    QProcess peer;
    peer.start(
        QStringLiteral(BENCH_PYTHON),
        {QStringLiteral(BENCH_PEER), columns, QString::number(results.width()), format, QString::number(rounds), out},
        QIODevice::ReadOnly);
    const bool ran = peer.waitForFinished(-1) && peer.exitStatus() == QProcess::NormalExit && peer.exitCode() == 0;
    return ran ? peer.readAllStandardOutput().trimmed().toDouble() : 0.0;
}

/// The numbers of a file, one after another.
class Numbers
{
public:
    explicit Numbers(const QString &path)
        : m_file(path)
    {
        if (!m_file.open(QIODevice::ReadOnly))
            return;
        m_at = reinterpret_cast<const char *>(m_file.map(0, m_file.size()));
        m_end = m_at == nullptr ? nullptr : m_at + m_file.size();
        while (m_at != m_end && *m_at != '\n') // the header
            ++m_at;
    }
    bool next(double *value)
    {
        while (m_at != m_end && (*m_at == ' ' || *m_at == '\n'))
            ++m_at;
        const char *const begin = m_at;
        while (m_at != m_end && *m_at != ' ' && *m_at != '\n')
            ++m_at;
        *value = numeric::textToDouble(std::string_view(begin, static_cast<std::size_t>(m_at - begin)));
        return m_at != begin;
    }

private:
    QFile m_file;
    const char *m_at = nullptr;
    const char *m_end = nullptr;
};

/// Whether both files hold the same numbers, `wanted` of them. At a tie the C library rounds to even: there the last
/// digit may differ by one.
bool sameNumbers(const QString &ours, const QString &theirs, std::size_t wanted)
{
    Numbers left(ours);
    Numbers right(theirs);
    std::size_t count = 0;
    std::size_t differing = 0;
    double l = 0.0;
    double r = 0.0;
    while (left.next(&l)) {
        if (!right.next(&r) || !(std::abs(l - r) <= 1.0001e-5 * std::abs(l)))
            return false;
        ++count;
        differing += l != r ? 1 : 0;
    }
    if (right.next(&r) || count != wanted)
        return false;
    std::printf("  %zu numbers read back from both files, %zu differ in the sixth digit\n", count, differing);
    return true;
}

bool sameBytes(const QString &ours, const QString &theirs)
{
    QFile left(ours);
    QFile right(theirs);
    if (!left.open(QIODevice::ReadOnly) || !right.open(QIODevice::ReadOnly) || left.size() != right.size())
        return false;
    while (!left.atEnd()) {
        if (left.read(1 << 20) != right.read(1 << 20))
            return false;
    }
    return true;
}

void report(const char *what, double ms, double megabytes, double peerMs)
{
    std::printf("  %-14s %9.1f ms %8.1f MB/s", what, ms, megabytes / ms * 1e3);
    if (peerMs > 0.0)
        std::printf("   %6.1f x numpy.savetxt", peerMs / ms);
    std::printf("\n");
}

/// False when something is wrong with the result.
bool measureMethod(const QTemporaryDir &folder, ResultRecords::Method method, int side, int rounds, int peerRounds)
{
    const QString path = folder.filePath(QStringLiteral("result.dat"));
    const QString parallelPath = folder.filePath(QStringLiteral("parallel.dat"));
    const QString columns = folder.filePath(QStringLiteral("columns.bin"));
    const QString peerPath = folder.filePath(QStringLiteral("peer.dat"));
    ResultRecords results;
    if (!makeResults(method, side, &results) || !writeColumns(results, columns))
        return false;
    const double oneMs = measure(path, results, 1, rounds);
    const double allMs = measure(parallelPath, results, 0, rounds);
    if (oneMs < 0.0 || allMs < 0.0)
        return false;
    const double peerMs = measurePeer(columns, results, peerRounds, peerPath);

    const bool fourPoints = method == ResultRecords::Method::FourPoints;
    const double megabytes = static_cast<double>(QFileInfo(path).size()) * 1e-6;
    std::printf("%s, %d x %d pixels, %.1f MB, best of %d rounds (numpy %d)\n",
                fourPoints ? "four points" : "non-equivalent, all quantities", side, side, megabytes, rounds,
                peerRounds);
    report("one thread", oneMs, megabytes, peerMs);
    report("all threads", allMs, megabytes, peerMs);
    bool good = sameBytes(path, parallelPath);
    if (peerMs > 0.0) {
        report("numpy.savetxt", peerMs, megabytes, 0.0);
        const std::size_t columnCount = fourPoints ? 5 : 2 + ResultRecords::quantityCount;
        good = good && sameNumbers(path, peerPath, results.count() * columnCount);
        std::printf("  the files %s\n", sameBytes(path, peerPath) ? "are the same" : "differ in some bytes");
    } else {
        std::printf("  no comparison: %s has no numpy\n", BENCH_PYTHON);
    }
    if (!good)
        std::printf("  RESULTS DIFFER\n");
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    const int side = argc > 1 ? std::atoi(argv[1]) : 2048;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    const int peerRounds = argc > 3 ? std::atoi(argv[3]) : 2;
    const QTemporaryDir folder;
    bool good = folder.isValid();
    for (const auto method : {ResultRecords::Method::FourPoints, ResultRecords::Method::NonEquivalent})
        good = good && measureMethod(folder, method, side, rounds, peerRounds);
    return good ? 0 : 1;
}
