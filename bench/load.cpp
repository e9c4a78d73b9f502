// Loading a map data file with one and with two threads, against pandas in the same run. Map files are made in a
// temporary folder, read once to have them in the cache of the system, and every time is the best of several rounds.
#include "mapdata/A2DData.h"
#include "mapdata/MapFileReader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{

constexpr int rounds = 7;

/// A uniform number in [0, 1); the same sequence on every machine.
double nextRandom(std::uint64_t *state)
{
    *state = *state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(*state >> 11) / 9007199254740992.0;
}

/// Writes a map of side x side pixels with lines like "0.10 0.00 371.0000 901.4840".
bool writeMap(const QString &path, int side)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("# 1301 made for measuring\n# ENERGY : 7112.0 eV\n");
    for (int axis = 0; axis < 2; ++axis)
        file.write("# AXIS " + QByteArray::number(axis) + " um 0 0.05 end " + QByteArray::number(side - 1) + '\n');
    std::uint64_t random = 1;
    char line[96];
    for (int iy = 0; iy < side; ++iy) {
        for (int ix = 0; ix < side; ++ix) {
            const double incident = 900.0 + 20.0 * nextRandom(&random);
            const double transmitted = std::floor(incident * (0.2 + 0.6 * nextRandom(&random)));
            const int length =
                std::snprintf(line, sizeof line, "%.2f %.2f %.4f %.4f\n", ix * 0.05, iy * 0.05, transmitted, incident);
            file.write(line, length);
        }
    }
    return file.flush();
}

double peakMegabytes()
{
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

struct Measurement {
    double freshMs = 0.0; ///< best time into an object of its own, whose memory the system has to hand out
    double againMs = 0.0; ///< best time into the object of the round before, as when a row loads its next file
    MapLoadResult result;
    qint64 count = 0; ///< records
};

double loadMs(const QString &path, int threads, A2DData *data, MapLoadResult *result)
{
    MapReadOptions options;
    options.threads = threads;
    QElapsedTimer timer;
    timer.start();
    *result = loadMapFile(path, data, options);
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

Measurement measure(const QString &path, int threads)
{
    Measurement m;
    for (int round = 0; round < rounds; ++round) {
        A2DData data;
        const double freshMs = loadMs(path, threads, &data, &m.result);
        const double againMs = loadMs(path, threads, &data, &m.result);
        m.count = data.count();
        m.freshMs = round == 0 ? freshMs : std::min(m.freshMs, freshMs);
        m.againMs = round == 0 ? againMs : std::min(m.againMs, againMs);
    }
    return m;
}

/// Whether the peer's columns are ours to the last bit.
bool sameColumns(const QString &path, const QString &peerPath)
{
    A2DData data;
    loadMapFile(path, &data);
    QFile peer(peerPath);
    const qint64 bytes = data.count() * static_cast<qint64>(sizeof(double));
    if (!peer.open(QIODevice::ReadOnly) || peer.size() != 4 * bytes)
        return false;
    for (const numeric::Plane *const plane : {&data.x(), &data.y(), &data.I(), &data.I0()}) {
        const QByteArray column = peer.read(bytes);
        if (column.size() != bytes || std::memcmp(column.constData(), plane->data(), static_cast<size_t>(bytes)) != 0)
            return false;
    }
    return true;
}

void report(const char *what, double ms, double megabytes, double peerMs)
{
    std::printf("  %-22s %9.1f ms %8.1f MB/s", what, ms, megabytes / ms * 1e3);
    if (peerMs > 0.0)
        std::printf("   %5.2f x pandas", peerMs / ms);
    std::printf("\n");
}

/// False when something is wrong with the result.
bool measureSide(const QTemporaryDir &folder, int side, double peakBefore)
{
    const QString path = folder.filePath(QStringLiteral("map%1.txt").arg(side));
    const QString columns = folder.filePath(QStringLiteral("columns.bin"));
    if (!writeMap(path, side)) {
        std::printf("cannot write %s\n", qUtf8Printable(path));
        return false;
    }
    const double megabytes = static_cast<double>(QFileInfo(path).size()) * 1e-6;
    const Measurement one = measure(path, 1);
    const double peak = peakMegabytes() - peakBefore;
    const Measurement two = measure(path, 2);

    QProcess peer;
    peer.start(QStringLiteral(BENCH_PYTHON), {QStringLiteral(BENCH_PEER), path, QString::number(rounds), columns},
               QIODevice::ReadOnly);
    const bool ran = peer.waitForFinished(-1) && peer.exitStatus() == QProcess::NormalExit && peer.exitCode() == 0;
    const QList<QByteArray> figures = peer.readAllStandardOutput().trimmed().split(' ');
    const double peerMs = ran ? figures.value(0).toDouble() : 0.0;

    std::printf("%d x %d pixels, %.1f MB, best of %d rounds (ours with the absorption)\n", side, side, megabytes,
                rounds);
    report("one thread", one.freshMs, megabytes, peerMs);
    report("two threads", two.freshMs, megabytes, peerMs);
    report("one thread, next file", one.againMs, megabytes, peerMs);
    report("two threads, next file", two.againMs, megabytes, peerMs);
    if (ran)
        report("pandas.read_csv", peerMs, megabytes, 0.0);
    else
        std::printf("  no comparison: %s has no pandas\n", BENCH_PYTHON);
    std::printf("  peak memory on top: %.1f MB, %.2f times the file", peak, peak * 1048576.0 * 1e-6 / megabytes);
    std::printf(ran ? "; pandas %s MB\n" : "\n", figures.value(1).constData());

    const bool counted = one.result.loaded && two.result.loaded && one.count == qint64(side) * side;
    const bool agree = counted && (!ran || sameColumns(path, columns));
    std::printf("  %s\n", agree ? (ran ? "all values agree to the last bit" : "all pixels read") : "RESULTS DIFFER");
    return agree;
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    bool good = folder.isValid();
    const double peakBefore = peakMegabytes();
    for (const int side : {1024, 2048})
        good = good && measureSide(folder, side, peakBefore); // the larger one last: peaks only grow
    return good ? 0 : 1;
}
