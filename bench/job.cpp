// A whole job: flokluk-batch loads eight maps of 1024 x 1024 pixels, fits them by the non-equivalent method and writes
// the result file and the histograms; the same is done by a script with pandas and numpy. Both are whole processes, the
// start of the program included; they take turns, several runs each, and the best of each counts: a virtual machine may
// have to fetch memory from its host that lay idle while the other one ran.
#include "analysis/methods/NonEquivalent.h"
#include "samples/EdgeModel.h"
#include "samples/SampleTexts.h"
#include "samples/SampleWriter.h"
#include "spectrum/AMutE.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <vector>

namespace
{

constexpr int side = 1024;
constexpr int turns = 3;
constexpr int runs = 3; // per turn
constexpr double failed = 1e300;

/// A process that ran to its end: seconds and the most memory it held.
struct Cost {
    double seconds = failed;
    double megabytes = 0.0;
};

Cost runProcess(const QStringList &command)
{
    std::vector<QByteArray> words;
    for (const QString &word : command)
        words.push_back(QFile::encodeName(word));
    std::vector<char *> arguments;
    for (QByteArray &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    QElapsedTimer timer;
    timer.start();
    const pid_t child = fork();
    if (child == 0) {
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return Cost();
    return {static_cast<double>(timer.nsecsElapsed()) * 1e-9, static_cast<double>(usage.ru_maxrss) / 1024};
}

void keepBetter(Cost *best, const Cost &cost)
{
    if (cost.seconds < best->seconds)
        *best = cost;
}

QJsonArray toJson(const std::vector<double> &values)
{
    QJsonArray array;
    for (const double value : values)
        array.append(value);
    return array;
}

/// What the peer cannot know without reading spectra itself, which takes no time: columns of the fit, edge jumps.
bool writeConditions(const QDir &folder)
{
    std::vector<AMutE> spectra(sample::referenceCount);
    std::vector<const AMutE *> pointers;
    std::vector<double> energies, jumps, valences;
    QJsonArray maps, columns;
    for (int j = 0; j < sample::referenceCount; ++j) {
        AMutE &spectrum = spectra[static_cast<std::size_t>(j)];
        spectrum.setPreEdgeEnd(sample::edgeEnergy + sample::preEdgeEnd);
        spectrum.setEdgeEnergy(sample::edgeEnergy);
        spectrum.setPostEdgeStart(sample::edgeEnergy + sample::postEdgeStart);
        if (!spectrum.read(folder.filePath(QString::fromLatin1(sample::referenceFileName(j)))))
            return false;
        pointers.push_back(&spectrum);
        jumps.push_back(spectrum.edgeJump());
        valences.push_back(sample::valences[j]);
    }
    for (int k = 0; k < sample::mapCount; ++k) {
        energies.push_back(sample::mapEnergies[k]);
        maps.append(folder.filePath(QString::fromLatin1(sample::mapFileName(k))));
    }
    for (const std::vector<double> &column : prepareNonEquivalent(energies, pointers, false).columns)
        columns.append(toJson(column));
    QFile file(folder.filePath("conditions.json"));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(QJsonObject{{"maps", maps},
                                                                                   {"energies", toJson(energies)},
                                                                                   {"columns", columns},
                                                                                   {"jumps", toJson(jumps)},
                                                                                   {"valences", toJson(valences)},
                                                                                   {"side", side}})
                                                             .toJson()) > 0;
}

/// The sample's job without pictures and report.
bool writeJob(const QDir &folder)
{
    QFile file(folder.filePath("non-equivalent.json"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QJsonObject job = QJsonDocument::fromJson(file.readAll()).object();
    job["output"] = QJsonObject{{"result", "ours.dat"}};
    QFile changed(folder.filePath("job.json"));
    return changed.open(QIODevice::WriteOnly) && changed.write(QJsonDocument(job).toJson()) > 0;
}

/// The numbers of a result file.
std::vector<double> numbersOf(const QString &path)
{
    std::vector<double> numbers;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return numbers;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith('#'))
            continue;
        for (const QByteArray &word : line.simplified().split(' ')) {
            if (!word.isEmpty())
                numbers.push_back(word.toDouble());
        }
    }
    return numbers;
}

/// How many numbers differ by more than their sixth digit and the conditioning of the fit explain.
std::size_t differences(const std::vector<double> &ours, const std::vector<double> &theirs)
{
    std::size_t count = ours.size() == theirs.size() ? 0 : 1;
    for (std::size_t i = 0; i < std::min(ours.size(), theirs.size()); ++i)
        count += !(std::abs(ours[i] - theirs[i]) <= 2e-5 * std::max(1.0, std::abs(theirs[i])));
    return count;
}

} // namespace

int main()
{
    const QTemporaryDir temporary;
    const QDir folder(temporary.path());
    sample::SampleOptions options;
    options.directory = temporary.path();
    options.width = options.height = side;
    QStringList written;
    QString error;
    if (!sample::writeSample(options, &written, &error) || !writeJob(folder) || !writeConditions(folder)) {
        std::printf("cannot make the sample: %s\n", qPrintable(error));
        return 1;
    }
    Cost ours, peer;
    const QStringList peerCommand = {QStringLiteral(BENCH_PYTHON), QStringLiteral(BENCH_PEER),
                                     folder.filePath("conditions.json"), folder.filePath("peer.dat")};
    const QStringList ourCommand = {QStringLiteral(FLOKLUK_BATCH), folder.filePath("job.json")};
    for (int turn = 0; turn < turns; ++turn) {
        for (int run = 0; run < runs; ++run)
            keepBetter(&peer, runProcess(peerCommand));
        for (int run = 0; run < runs; ++run)
            keepBetter(&ours, runProcess(ourCommand));
    }
    std::printf("%d x %d pixels, 8 energies, 3 references: load, non-equivalent fit, write; best of %d\n", side, side,
                turns * runs);
    std::printf("  flokluk-batch  %7.2f s, at most %6.0f MB\n", ours.seconds, ours.megabytes);
    if (peer.seconds == failed) {
        std::printf("  no comparison: %s has no pandas\n", BENCH_PYTHON);
        return ours.seconds == failed ? 1 : 0;
    }
    std::printf("  pandas, numpy  %7.2f s, at most %6.0f MB: ratio %.1f\n", peer.seconds, peer.megabytes,
                peer.seconds / ours.seconds);
    const std::vector<double> numbers = numbersOf(folder.filePath("ours.dat"));
    const std::size_t different = differences(numbers, numbersOf(folder.filePath("peer.dat")));
    std::printf("  %zu numbers compared, %zu differ\n", numbers.size(), different);
    return different == 0 && numbers.size() > 15u * side * side - 1 ? 0 : 1;
}
