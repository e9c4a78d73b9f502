// Colouring the values of a map and drawing them, with one thread and with all, against numpy's index-and-take on the
// same values in the same run. Every time is the best of several rounds.
#include "display/ChCoord.h"
#include "display/MapPicture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

constexpr int rounds = 15;
constexpr int side = 2048;
constexpr std::size_t count = std::size_t(side) * side;

/// Uniform from a tenth below to a tenth above 0 ... 1, without order: the worst case for a branch.
std::vector<double> randomValues()
{
    std::vector<double> values(count);
    std::uint64_t state = 1;
    for (double &value : values) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        value = static_cast<double>(state >> 11) / 9007199254740992.0 * 1.2 - 0.1;
    }
    return values;
}

ColourScale scaleOf(const ColourTable &table)
{
    ColourScale scale;
    scale.idxAtTop = table.size();
    return scale;
}

template <class Work>
double bestMs(Work work)
{
    double best = 0.0;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        const double ms = static_cast<double>(timer.nsecsElapsed()) * 1e-6;
        best = round == 0 ? ms : std::min(best, ms);
    }
    return best;
}

template <class Items>
bool write(const QString &path, const Items &items)
{
    QFile file(path);
    const qint64 bytes = static_cast<qint64>(items.size()) * static_cast<qint64>(sizeof *items.data());
    return file.open(QIODevice::WriteOnly) && file.write(reinterpret_cast<const char *>(items.data()), bytes) == bytes;
}

bool sameBytes(const QString &path, const std::vector<quint32> &pixels)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    return static_cast<std::size_t>(bytes.size()) == pixels.size() * sizeof(quint32) &&
           std::memcmp(bytes.constData(), pixels.data(), pixels.size() * sizeof(quint32)) == 0;
}

struct Peer {
    bool ran = false;
    double expressionMs = 0.0;
    double keptMs = 0.0;
};

Peer runPeer(const QTemporaryDir &folder)
{
    QProcess process;
    process.start(QStringLiteral(BENCH_PYTHON),
                  {QStringLiteral(BENCH_PEER), folder.filePath(QStringLiteral("values")),
                   folder.filePath(QStringLiteral("table")), QStringLiteral("0"), QStringLiteral("1"),
                   QString::number(rounds), folder.filePath(QStringLiteral("pixels"))},
                  QIODevice::ReadOnly);
    Peer peer;
    peer.ran = process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    const QList<QByteArray> figures = process.readAllStandardOutput().trimmed().split(' ');
    peer.expressionMs = figures.value(0).toDouble();
    peer.keptMs = figures.value(1).toDouble();
    return peer;
}

void report(const char *what, double ms, const Peer &peer)
{
    std::printf("  %-38s %7.2f ms", what, ms);
    if (peer.ran)
        std::printf("   %5.1f x numpy, %5.1f x numpy with kept arrays", peer.expressionMs / ms, peer.keptMs / ms);
    std::printf("\n");
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QTemporaryDir folder;
    const std::vector<double> values = randomValues();
    const ColourTable table = colourTable(0);
    const ColourScale scale = scaleOf(table);
    if (!write(folder.filePath(QStringLiteral("values")), values) ||
        !write(folder.filePath(QStringLiteral("table")), table)) {
        std::printf("cannot write into %s\n", qUtf8Printable(folder.path()));
        return 1;
    }

    std::vector<quint32> pixels(count);
    const auto colour = [&](int threads) {
        colourPlane(values.data(), count, scale, table, pixels.data(), nullptr, threads);
    };
    const double one = bestMs([&] { colour(1); });
    const double all = bestMs([&] { colour(0); });

    MapPicture picture;
    const auto draw = [&](QImage *image) {
        ChCoord cc;
        cc.setScreenArea(0, image->height(), image->width(), 0);
        cc.setRealArea(0, 0, side, side);
        picture.update({values.data(), side, side}, scale, table);
        QPainter painter(image);
        picture.draw(&painter, cc);
    };
    QImage part(600, 600, QImage::Format_RGB32);
    QImage screen(1920, 1080, QImage::Format_RGB32);
    const double both = bestMs([&] {
        picture.invalidate();
        draw(&part);
    });
    const double again = bestMs([&] { draw(&part); });
    const double large = bestMs([&] { draw(&screen); });

    const Peer peer = runPeer(folder);
    std::printf("%d x %d values, best of %d rounds\n", side, side, rounds);
    report("coloured, one thread", one, peer);
    report("coloured, all threads", all, peer);
    report("coloured and drawn, 600 x 600", both, peer);
    report("drawn again, 600 x 600", again, Peer());
    report("drawn again, 1920 x 1080", large, Peer());
    if (peer.ran)
        std::printf("  numpy %.2f ms, with kept arrays %.2f ms\n", peer.expressionMs, peer.keptMs);
    else
        std::printf("  no comparison: %s has no numpy\n", BENCH_PYTHON);
    const bool agree = !peer.ran || sameBytes(folder.filePath(QStringLiteral("pixels")), pixels);
    std::printf("  %s\n", !agree ? "COLOURS DIFFER" : peer.ran ? "all colours agree" : "colours not compared");
    return agree ? 0 : 1;
}
