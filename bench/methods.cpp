// The map calculations with one and with all threads, against numpy in the same run on the same counts. Every time is
// the best of several rounds into memory that the first round has made; both sides take turns several times, because a
// machine shared with others is slower at some times than at others.
#include "bench/MethodCases.h"
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
#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

constexpr int rounds = 5;
constexpr int turns = 4;
constexpr int peerForms = 4;

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

/// The largest difference of one of our planes from the peer's, relative to the larger of `least` and the value.
double largestDifference(const double *ours, std::size_t count, QIODevice *peer, double least = 1.0)
{
    const QByteArray bytes = peer->read(static_cast<qint64>(count * sizeof(double)));
    if (bytes.size() != static_cast<qint64>(count * sizeof(double)))
        return 1.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        double theirs;
        std::memcpy(&theirs, bytes.constData() + i * sizeof(double), sizeof theirs);
        const double difference = std::abs(ours[i] - theirs) / std::max(least, std::abs(theirs));
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
    conditions.write(
        QJsonDocument(
            QJsonObject{{"pixels", side * side}, {"rounds", rounds}, {"energies", mapEnergies()}, {"methods", methods}})
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
    double errors = 1e300; ///< standard errors and misfit
    /// With the logarithm, without, with it on the whole map; standard errors and misfit.
    double peer[peerForms] = {1e300, 1e300, 1e300, 1e300};
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

void reportErrors(int threads, const Times &times)
{
    std::printf("    %d thread%s standard errors and misfit %7.1f ms, %4.2f of the map calculation", threads,
                threads == 1 ? " " : "s", times.errors, times.errors / times.ours);
    if (times.peer[3] < 1e300)
        std::printf("; numpy %7.1f ms, ratio %5.2f", times.peer[3], times.peer[3] / times.errors);
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
    UncertaintyMap errors;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        for (const bool all : {false, true}) {
            const int threads = all ? QThread::idealThreadCount() : 1;
            Times &best = (*times)[all ? i + cases.size() : i];
            keepSmaller(&best.ours, bestMs([&] { ran = cases[i].run(&(*results)[i], threads) && ran; }));
            keepSmaller(&best.errors,
                        bestMs([&] { ran = cases[i].findErrors((*results)[i], &errors, threads) && ran; }));
            keepSmaller(&best.log, logarithmMs(cases[i], maps, scratch, threads));
        }
    }
    return ran;
}

/// Whether results, standard errors and misfit are the peer's.
bool isSame(const Case &c, const ResultRecords &done, QIODevice *peer)
{
    UncertaintyMap errors;
    if (!c.findErrors(done, &errors, 0))
        return false;
    const double *first = c.column1 < 0 ? done.a() : done.quantity(c.column1);
    const double *second = c.column2 < 0 ? done.t() : done.quantity(c.column2);
    double difference = largestDifference(first, done.count(), peer);
    difference = std::max(difference, largestDifference(second, done.count(), peer));
    constexpr double smallError = 1e-3;
    double ofErrors = largestDifference(errors.valence.data(), done.count(), peer, smallError);
    ofErrors = std::max(ofErrors, largestDifference(errors.amount.data(), done.count(), peer, smallError));
    if (errors.degrees > 0)
        ofErrors = std::max(ofErrors, largestDifference(errors.misfit.data(), done.count(), peer));
    std::printf("    largest relative difference %.1e, of the errors %.1e\n", difference, ofErrors);
    const bool isGood = difference < 1e-6 && ofErrors < 1e-6;
    if (!isGood)
        std::printf("    RESULTS DIFFER\n");
    return isGood;
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
    const std::vector<Case> cases = makeCases(maps);

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
            for (int form = 0; form < peerForms; ++form)
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
        reportErrors(1, times[i]);
        reportErrors(QThread::idealThreadCount(), times[i + cases.size()]);
        good = (!compared || !ran || isSame(c, results[i], &peerResults)) && good;
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
        "once. Ratios: each of these numpy times over ours without ln; after the semicolon, both sides with ln.\n"
        "Standard errors and misfit: numpy in blocks, with the absorptions and the results at hand.\n");
    bool good = true;
    for (const int side : {1024, 2048})
        good = measureSide(side) && good;
    return good ? 0 : 1;
}
