#include "analysis/methods/FourPoints.h"
#include "analysis/results/ResultWriter.h"
#include "tests/NoThreads.h"
#include "tests/SmallDisk.h"
#include "tests/Tables.h"

#include <limits>
#include <random>

using namespace tables;

namespace
{

using Method = ResultRecords::Method;

constexpr int quantities = ResultPosition::count;

/// Numbers of all sizes.
ResultRecords randomRecords(Method method, int width, int height)
{
    A2DData map;
    const A2DData::Columns columns = map.resize(qint64(width) * height);
    map.setSize(width, height);
    ResultRecords results;
    (void)results.reset(method, map);
    std::mt19937 random(9);
    std::vector<double *> planes = {columns.x, columns.y, results.a(), results.t()};
    for (int q = 0; method == Method::NonEquivalent && q < quantities; ++q)
        planes.push_back(results.quantity(q));
    for (double *const plane : planes) {
        for (std::size_t i = 0; i < results.count(); ++i)
            plane[i] = (random() % 17 == 0 ? 1e8 : 1.0) * (static_cast<double>(random()) / 4e9 - 0.2);
    }
    return results;
}

/// The lines of the pixels as QString::arg makes them.
QByteArray literalText(const ResultRecords &results, const ValencePair &valences, const RecordSelection &selection)
{
    QString text = QStringLiteral("\n");
    for (std::size_t i = 0; i < results.count(); ++i) {
        text += QStringLiteral(" %1 %2").arg(results.x()[i], 10).arg(results.y()[i], 10);
        const double a = results.a()[i];
        if (results.method() == Method::FourPoints)
            text += QStringLiteral("    %1 %2 %3")
                        .arg(a, 10)
                        .arg(mixedValence(valences.first, valences.second, a), 10)
                        .arg(results.t()[i], 10);
        for (int q = 0; results.method() == Method::NonEquivalent && q < quantities; ++q) {
            if (selection[static_cast<std::size_t>(q)])
                text += QStringLiteral(" %1").arg(results.quantity(q)[i], 10);
        }
        text += (i + 1) % static_cast<std::size_t>(results.width()) == 0 ? "\n\n" : "\n";
    }
    return text.toLatin1();
}

/// The file in a folder of its own.
QByteArray writtenFile(const ResultRecords &results, const ValencePair &valences, const RecordSelection &selection = {},
                       int threads = 1)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    const WriteOutcome outcome = writeResultFile(path, results, valences, selection, threads);
    if (outcome != WriteOutcome::Written)
        return outcome == WriteOutcome::CannotWrite ? "cannot write" : "cannot open";
    return QDir(dir.path()).entryList(QDir::Files).size() == 1 ? bytesOf(path) : "something beside it";
}

} // namespace

class TestResultWriter : public QObject
{
    Q_OBJECT

private slots:
    void fourPointsFile()
    {
        A2DData map;
        const A2DData::Columns columns = map.resize(6);
        map.setSize(3, 2);
        ResultRecords results;
        for (int i = 0; i < 6; ++i) {
            columns.x[i] = 0.5 * (i % 3);
            columns.y[i] = i / 3 - 1;
        }
        QVERIFY(results.reset(Method::FourPoints, map));
        results.headerLines = QStringList{"# 1301", QString::fromUtf8("# \xE8\xA9\xA6\xE6\x96\x99")};
        for (int i = 0; i < 6; ++i) {
            results.a()[i] = i == 4 ? std::numeric_limits<double>::quiet_NaN() : 12345678.0 * i;
            results.t()[i] = i == 5 ? -std::numeric_limits<double>::infinity() : -0.125;
        }
        QCOMPARE(writtenFile(results, {true, 2, 3}),
                 QByteArray("# 1301\n# \xE8\xA9\xA6\xE6\x96\x99\n\n"
                            "          0         -1             0          3     -0.125\n"
                            "        0.5         -1    1.23457e+07 -1.23457e+07     -0.125\n"
                            "          1         -1    2.46914e+07 -2.46914e+07     -0.125\n"
                            "\n"
                            "          0          0    3.7037e+07 -3.7037e+07     -0.125\n"
                            "        0.5          0           nan        nan     -0.125\n"
                            "          1          0    6.17284e+07 -6.17284e+07       -inf\n"
                            "\n"));
        QCOMPARE(writtenFile(results, {false, 2, 3}).split('\n').at(4), // fewer than two references
                 QByteArray("        0.5         -1    1.23457e+07          0     -0.125"));
        QCOMPARE(writtenFile(ResultRecords(), {}), QByteArray("\n"));
    }

    /// None, each alone, and from two to all.
    void recordBoxes()
    {
        const ResultRecords results = randomRecords(Method::NonEquivalent, 3, 2);
        RecordSelection several = {};
        QCOMPARE(writtenFile(results, {}, several), literalText(results, {}, several));
        for (std::size_t q = 0; q < several.size(); ++q) {
            RecordSelection one = {};
            one[q] = several[q] = true;
            QCOMPARE(writtenFile(results, {}, one), literalText(results, {}, one));
            QCOMPARE(writtenFile(results, {}, several), literalText(results, {}, several));
        }
    }

    /// Nothing is lost or out of order where a block of text ends, and the number of threads does not show.
    void largeFiles()
    {
        forRows<Method, int, int>({{"four points", Method::FourPoints, 250, 91},
                                   {"non-equivalent", Method::NonEquivalent, 127, 131},
                                   {"rows longer than a block of text", Method::FourPoints, 9001, 2},
                                   {"one column", Method::NonEquivalent, 1, 9001}},
                                  [](Method method, int width, int height) {
                                      const ResultRecords results = randomRecords(method, width, height);
                                      RecordSelection selection;
                                      selection.fill(true);
                                      const QByteArray wanted = literalText(results, {true, 2, 2.75}, selection);
                                      for (const int threads : {1, 2, 3, 8, 0})
                                          QVERIFY(writtenFile(results, {true, 2, 2.75}, selection, threads) == wanted);
                                      const NoThreads limit; // the writing goes on alone
                                      QVERIFY(writtenFile(results, {true, 2, 2.75}, selection, 3) == wanted);
                                  });
    }

    void mapsWithoutPixels()
    {
        for (const QSize size : {QSize(0, 0), QSize(0, 1000000000), QSize(7, 0)}) {
            A2DData map;
            map.setSize(size.width(), size.height());
            ResultRecords results;
            QVERIFY(results.reset(Method::FourPoints, map));
            results.headerLines = QStringList{"# 1301"};
            QCOMPARE(writtenFile(results, {}), QByteArray("# 1301\n\n"));
        }
    }

    /// What the file says of a failure is handed on, with threads that are still at work as well; what can go wrong
    /// with a file in other ways is the file's own affair.
    void failures()
    {
        const ResultRecords large = randomRecords(Method::FourPoints, 250, 250);
        for (const char *path : {"", "/no such directory/result.dat", "/"})
            QCOMPARE(writeResultFile(path, large, {}, {}), WriteOutcome::CannotOpen);
        const ResultRecords small = randomRecords(Method::FourPoints, 3, 2); // written at the end
        for (const int threads : {1, 3}) {
            const SmallDisk half(1500000);
            QCOMPARE(writtenFile(large, {}, {}, threads), QByteArray("cannot write"));
            const SmallDisk few(100);
            QCOMPARE(writtenFile(small, {}, {}, threads), QByteArray("cannot write"));
        }
    }
};

QTEST_APPLESS_MAIN(TestResultWriter)
#include "TestResultWriter.moc"
