// The map calculations with one and with all threads, against numpy in the same run on the same counts. Every time is
// the best of several rounds into memory that the first round has made; both sides take turns several times, because a
// machine shared with others is slower at some times than at others.
#include "analysis/methods/FourPointsMap.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/methods/ResultPosition.h"
#include "analysis/results/MapRecords.h"
#include "mapdata/A2DData.h"
#include "numeric/ParallelRanges.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <vector>

namespace
{

constexpr int rounds = 5;
constexpr int turns = 4;
const std::vector<double> energies = {7040, 7080, 7118, 7122, 7126, 7132, 7160, 7220}; // eV
const std::vector<double> valences = {2, 3, 0, 2.5};
const std::vector<double> jumps = {1.3, 0.9, 1.1, 0.7};

/// Four different edges in the energies above.
double referenceValue(int reference, double energy)
{
    const double edge = 7118 + 2.5 * reference;
    const double line = (energy - edge - 5 - reference) / (4 + reference);
    return jumps[static_cast<std::size_t>(reference)] *
           (0.5 + std::atan((energy - edge) / 2) / 3.14159265358979 + (0.3 + 0.1 * reference) * std::exp(-line * line));
}

/// A uniform number in [0, 1); the same sequence on every machine.
double nextRandom(std::uint64_t *state)
{
    *state = *state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(*state >> 11) / 9007199254740992.0;
}

/// Eight maps of a mixture of the first two references in varying shares and thicknesses, in whole counts; the counts
/// go to `file` as well: per energy I0 and I, 16 bits each.
std::vector<A2DData> makeMaps(int side, QIODevice *file)
{
    const auto pixels = static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
    std::vector<A2DData> maps(energies.size());
    for (std::size_t k = 0; k < maps.size(); ++k) {
        std::uint64_t mixture = 1, noise = k + 2;
        const A2DData::Columns columns = maps[k].resize(static_cast<qint64>(pixels));
        maps[k].setSize(side, side);
        std::vector<std::uint16_t> incident(pixels), transmitted(pixels);
        const double r1 = referenceValue(0, energies[k]);
        const double r2 = referenceValue(1, energies[k]);
        for (std::size_t i = 0; i < pixels; ++i) {
            const double share = nextRandom(&mixture);
            const double t = 0.4 + nextRandom(&mixture);
            const double mu = t * (share * r1 + (1 - share) * r2) + 0.3 - 2e-4 * (energies[k] - 7100);
            incident[i] = static_cast<std::uint16_t>(60000 + 5000 * nextRandom(&noise));
            transmitted[i] = static_cast<std::uint16_t>(incident[i] * std::exp(-mu));
            columns.x[i] = static_cast<double>(i % static_cast<std::size_t>(side));
            columns.y[i] = static_cast<double>(i / static_cast<std::size_t>(side));
            columns.I0[i] = incident[i];
            columns.I[i] = transmitted[i];
            columns.absorption[i] = pixelAbsorption(columns.I[i], columns.I0[i]);
        }
        for (const auto &counts : {incident, transmitted})
            file->write(reinterpret_cast<const char *>(counts.data()), static_cast<qint64>(2 * counts.size()));
    }
    return maps;
}

QJsonArray toJson(const std::vector<double> &values)
{
    QJsonArray array;
    for (const double value : values)
        array.append(value);
    return array;
}

/// One method under measurement.
struct Case {
    QString name;
    QJsonObject conditions; ///< for the peer
    std::vector<int> points;
    std::function<bool(ResultRecords *, int threads)> run;
    int column1, column2; ///< result quantities to be compared, -1: a and t
};

QJsonArray toJson(const std::vector<int> &points)
{
    QJsonArray array;
    for (const int point : points)
        array.append(point);
    return array;
}

Case nonEquivalentCase(const std::vector<A2DData> &maps, int references, NonEquivalentBackground background)
{
    Case c;
    NonEquivalentMapInput input;
    input.background = background;
    std::vector<std::vector<double>> columns;
    QJsonArray jsonColumns;
    for (int j = 0; j < references; ++j) {
        columns.emplace_back();
        for (const double energy : energies)
            columns.back().push_back(referenceValue(j, energy));
        jsonColumns.append(toJson(columns.back()));
    }
    const std::vector<double> usedJumps(jumps.begin(), jumps.begin() + references);
    input.references = prepareNonEquivalent(energies, columns, usedJumps);
    input.valences.assign(valences.begin(), valences.begin() + references);
    for (std::size_t k = 0; k < maps.size(); ++k) {
        input.maps.push_back(&maps[k]);
        c.points.push_back(static_cast<int>(k));
    }
    const bool victoreen = background == NonEquivalentBackground::Victoreen;
    c.name =
        QStringLiteral("non-equivalent, %1 references, %2").arg(references).arg(victoreen ? "Victoreen" : "linear");
    c.conditions = {{"kind", "neq"},
                    {"columns", jsonColumns},
                    {"victoreen", victoreen},
                    {"jumps", toJson(usedJumps)},
                    {"points", toJson(c.points)},
                    {"valences", toJson(input.valences)}};
    c.run = [input](ResultRecords *results, int threads) {
        return fillRecords(input, results, threads);
    };
    c.column1 = ResultPosition::valence;
    c.column2 = ResultPosition::amount;
    return c;
}

Case fourPointsCase(const std::vector<A2DData> &maps, const char *kind, FourPointsVariant variant,
                    const std::vector<int> &points)
{
    Case c;
    c.name = QStringLiteral("four-points method, %1").arg(kind);
    c.points = points;
    FourPointsMapInput input;
    input.variant = variant;
    for (const int point : points) {
        const auto k = static_cast<std::size_t>(point);
        input.references.energies.push_back(energies[k]);
        input.references.a.push_back(referenceValue(0, energies[k]));
        input.references.b.push_back(referenceValue(1, energies[k]));
        input.maps.push_back(&maps[k]);
    }
    input.references.r = jumps[0] / jumps[1];
    c.conditions = {{"kind", kind},
                    {"points", toJson(points)},
                    {"a", toJson(input.references.a)},
                    {"b", toJson(input.references.b)},
                    {"e", toJson(input.references.energies)},
                    {"r", input.references.r}};
    c.run = [input](ResultRecords *results, int threads) {
        return fillRecords(input, results, threads);
    };
    c.column1 = c.column2 = -1;
    return c;
}

template <class Work>
double bestMs(Work work)
{
    double best = 0.0;
    for (int round = 0; round <= rounds; ++round) { // the first one makes the memory and does not count
        QElapsedTimer timer;
        timer.start();
        work();
        const double ms = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
        best = round <= 1 ? ms : std::min(best, ms);
    }
    return best;
}

/// Forming the absorptions of the case's maps, which the program does once when it loads them.
double logarithmMs(const Case &c, std::vector<A2DData> *maps, numeric::Plane *out, int threads)
{
    return bestMs([&] {
        for (const int point : c.points) {
            const A2DData &map = (*maps)[static_cast<std::size_t>(point)];
            numeric::parallelRanges(out->size(), threads, [&map, out](std::size_t begin, std::size_t end) {
                for (std::size_t i = begin; i < end; ++i)
                    (*out)[i] = pixelAbsorption(map.I()[i], map.I0()[i]);
            });
        }
    });
}

/// The largest difference of one of our planes from the peer's, relative to the larger of 1 and the value.
double largestDifference(const double *ours, std::size_t count, QIODevice *peer)
{
    const QByteArray bytes = peer->read(static_cast<qint64>(count * sizeof(double)));
    if (bytes.size() != static_cast<qint64>(count * sizeof(double)))
        return 1.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        double theirs;
        std::memcpy(&theirs, bytes.constData() + i * sizeof(double), sizeof theirs);
        const double difference = std::abs(ours[i] - theirs) / std::max(1.0, std::abs(theirs));
        largest = std::isnan(difference) ? 1.0 : std::max(largest, difference);
    }
    return largest;
}

bool runPeer(const QTemporaryDir &folder, const std::vector<Case> &cases, int side, QList<QByteArray> *lines)
{
    QJsonArray methods;
    for (const Case &c : cases)
        methods.append(c.conditions);
    QFile conditions(folder.filePath("conditions.json"));
    if (!conditions.open(QIODevice::WriteOnly))
        return false;
    conditions.write(QJsonDocument(QJsonObject{{"pixels", side * side},
                                               {"rounds", rounds},
                                               {"energies", toJson(energies)},
                                               {"methods", methods}})
                         .toJson());
    conditions.close();
    QProcess peer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("OPENBLAS_NUM_THREADS", "1"); // the blocks are shared out, not the products
    peer.setProcessEnvironment(environment);
    peer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    peer.start(QStringLiteral(BENCH_PYTHON), {QStringLiteral(BENCH_PEER), conditions.fileName(),
                                              folder.filePath("counts.bin"), folder.filePath("results.bin")});
    const bool ran = peer.waitForFinished(-1) && peer.exitStatus() == QProcess::NormalExit && peer.exitCode() == 0;
    *lines = peer.readAllStandardOutput().trimmed().split('\n');
    return ran && lines->size() == static_cast<int>(2 * cases.size());
}

/// Milliseconds of one case with one number of threads, the best of all turns.
struct Times {
    double ours = 1e300;
    double log = 1e300;
    double peer[3] = {1e300, 1e300, 1e300}; ///< with the logarithm, without, with it on the whole map
};

void keepSmaller(double *best, double ms)
{
    *best = std::min(*best, ms);
}

void report(int threads, const Times &times)
{
    std::printf("    %d thread%s %7.1f ms, ln %6.1f ms", threads, threads == 1 ? " " : "s", times.ours, times.log);
    if (times.peer[0] < 1e300) {
        std::printf("; numpy with ln %7.1f ms, without %7.1f ms, whole map %7.1f ms; ratios %5.2f, %5.2f, %5.2f; %5.2f",
                    times.peer[0], times.peer[1], times.peer[2], times.peer[0] / times.ours, times.peer[1] / times.ours,
                    times.peer[2] / times.ours, times.peer[0] / (times.ours + times.log));
    }
    std::printf("\n");
}

/// Bytes of the process in memory: "VmRSS:" now, "VmHWM:" at most since forgetPeak(); 0 where the system does not say.
double memoryBytes(const char *what)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0.0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(what))
            return line.mid(6).trimmed().split(' ').first().toDouble() * 1024;
    }
    return 0.0;
}

void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

/// What a calculation into new results needs at most, and what of it stays with the results, in bytes per pixel.
void reportMemory(const Case &c, std::size_t pixels)
{
    forgetPeak();
    const double before = memoryBytes("VmRSS:");
    ResultRecords results;
    (void)c.run(&results, 0);
    const auto perPixel = [before, pixels](const char *what) {
        return (memoryBytes(what) - before) / static_cast<double>(pixels);
    };
    std::printf("    memory: at most %.0f bytes per pixel, %.0f of them the results\n", perPixel("VmHWM:"),
                perPixel("VmRSS:"));
}

/// One turn of the program on every case: one thread, then all. False when a calculation failed.
bool runOurs(const std::vector<Case> &cases, std::vector<A2DData> *maps, numeric::Plane *scratch,
             std::vector<ResultRecords> *results, std::vector<Times> *times)
{
    bool ran = true;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        for (const bool all : {false, true}) {
            const int threads = all ? QThread::idealThreadCount() : 1;
            Times &best = (*times)[all ? i + cases.size() : i];
            keepSmaller(&best.ours, bestMs([&] { ran = cases[i].run(&(*results)[i], threads) && ran; }));
            keepSmaller(&best.log, logarithmMs(cases[i], maps, scratch, threads));
        }
    }
    return ran;
}

/// False when something is wrong with the result.
bool measureSide(int side)
{
    const QTemporaryDir folder;
    QFile counts(folder.filePath("counts.bin"));
    if (!counts.open(QIODevice::WriteOnly))
        return false;
    std::vector<A2DData> maps = makeMaps(side, &counts);
    counts.close();
    std::vector<Case> cases;
    cases.push_back(nonEquivalentCase(maps, 2, NonEquivalentBackground::Linear));
    cases.push_back(nonEquivalentCase(maps, 4, NonEquivalentBackground::Victoreen));
    cases.push_back(fourPointsCase(maps, "three", FourPointsVariant::ThreePoint, {0, 7, 3}));
    cases.push_back(fourPointsCase(maps, "exact", FourPointsVariant::Exact, {0, 6, 7, 3}));
    cases.push_back(fourPointsCase(maps, "least squares", FourPointsVariant::LeastSquares, {0, 1, 2, 4, 5, 6, 7, 3}));

    std::vector<Times> times(2 * cases.size());
    std::vector<ResultRecords> results(cases.size());
    numeric::Plane scratch;
    scratch.resize(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    bool compared = true;
    bool ran = true;
    for (int turn = 0; turn < turns; ++turn) {
        QList<QByteArray> lines;
        compared = compared && runPeer(folder, cases, side, &lines);
        for (std::size_t i = 0; compared && i < times.size(); ++i) {
            const QList<QByteArray> peer = lines[static_cast<int>(i)].split(' ');
            for (int form = 0; form < 3; ++form)
                keepSmaller(&times[i].peer[form], peer.value(form).toDouble());
        }
        ran = runOurs(cases, &maps, &scratch, &results, &times) && ran;
    }
    if (!compared)
        std::printf("no comparison: %s has no numpy\n", BENCH_PYTHON);
    QFile peerResults(folder.filePath("results.bin"));
    (void)peerResults.open(QIODevice::ReadOnly);

    std::printf("%d x %d pixels, 8 energies, best of %d turns of %d rounds\n", side, side, turns, rounds);
    bool good = ran;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const Case &c = cases[i];
        std::printf("  %s\n", qPrintable(c.name));
        report(1, times[i]);
        report(QThread::idealThreadCount(), times[i + cases.size()]);
        reportMemory(c, scratch.size());
        if (compared && ran) {
            const ResultRecords &done = results[i];
            const double *first = c.column1 < 0 ? done.a() : done.quantity(c.column1);
            const double *second = c.column2 < 0 ? done.t() : done.quantity(c.column2);
            double difference = largestDifference(first, done.count(), &peerResults);
            difference = std::max(difference, largestDifference(second, done.count(), &peerResults));
            std::printf("    largest relative difference %.1e\n", difference);
            if (difference >= 1e-6)
                std::printf("    RESULTS DIFFER\n");
            good = good && difference < 1e-6;
        }
    }
    return good;
}

} // namespace

int main()
{
    std::printf(
        "Times of a map calculation, and of ln: forming the absorptions ln(I0 / I) of its maps, which is part of "
        "loading\n"
        "them here. numpy in blocks of 16384 pixels with the logarithm and without, and with it on the whole map at\n"
        "once. Ratios: each of these numpy times over ours without ln; after the semicolon, both sides with ln.\n");
    bool good = true;
    for (const int side : {1024, 2048})
        good = measureSide(side) && good;
    return good ? 0 : 1;
}
