#include "analysis/methods/FourPoints.h"
#include "analysis/results/ResultWriter.h"
#include "tests/SmallDisk.h"
#include "tests/Tables.h"

#include <QtTest>

#include <limits>
#include <random>

using namespace tables;

namespace
{

using Method = ResultRecords::Method;

constexpr int quantities = ResultPosition::count;

/// 3 x 2 pixels; quantity q of pixel i is q + i / 4.
ResultRecords smallRecords(Method method)
{
    A2DData map;
    const A2DData::Columns columns = map.resize(6);
    map.setSize(3, 2);
    for (int i = 0; i < 6; ++i) {
        columns.x[i] = 0.5 * (i % 3);
        columns.y[i] = i / 3 - 1;
    }
    ResultRecords results;
    (void)results.reset(method, map);
    results.headerLines = QStringList{"# 1301", QString::fromUtf8("# \xE8\xA9\xA6\xE6\x96\x99")};
    for (std::size_t i = 0; i < 6; ++i) {
        results.a()[i] = i == 4 ? std::numeric_limits<double>::quiet_NaN() : 12345678.0 * static_cast<double>(i);
        results.t()[i] = i == 5 ? -std::numeric_limits<double>::infinity() : -0.125;
        for (int q = 0; method == Method::NonEquivalent && q < quantities; ++q)
            results.quantity(q)[i] = q + 0.25 * static_cast<double>(i);
    }
    return results;
}

/// Several blocks of text, with numbers of all sizes.
ResultRecords largeRecords(Method method, int width, int height)
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

} // namespace

class TestResultWriter : public QObject
{
    Q_OBJECT

private slots:
    void fourPointsFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("result.dat");
        QCOMPARE(writeResultFile(path, smallRecords(Method::FourPoints), {true, 2, 3}, {}), WriteOutcome::Written);
        const QByteArray wanted = "# 1301\n# \xE8\xA9\xA6\xE6\x96\x99\n\n"
                                  "          0         -1             0          3     -0.125\n"
                                  "        0.5         -1    1.23457e+07 -1.23457e+07     -0.125\n"
                                  "          1         -1    2.46914e+07 -2.46914e+07     -0.125\n"
                                  "\n"
                                  "          0          0    3.7037e+07 -3.7037e+07     -0.125\n"
                                  "        0.5          0           nan        nan     -0.125\n"
                                  "          1          0    6.17284e+07 -6.17284e+07       -inf\n"
                                  "\n";
        QCOMPARE(bytesOf(path), wanted);
        writeResultFile(path, smallRecords(Method::FourPoints), {false, 2, 3}, {}); // fewer than two references
        QCOMPARE(bytesOf(path).split('\n').at(4),
                 QByteArray("        0.5         -1    1.23457e+07          0     -0.125"));
        QCOMPARE(writeResultFile(path, ResultRecords(), {}, {}), WriteOutcome::Written); // silently replaces it
        QCOMPARE(bytesOf(path), QByteArray("\n"));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"result.dat"});
    }

    /// The second pixel's line for every single record box, for none, two and all.
    void recordBoxes()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("result.dat");
        const auto secondLine = [&path](const RecordSelection &selection) {
            const ResultRecords results = smallRecords(Method::NonEquivalent);
            const bool good = writeResultFile(path, results, {true, 2, 3}, selection) == WriteOutcome::Written;
            const QList<QByteArray> lines = bytesOf(path).split('\n');
            return good && lines.size() == 3 + 4 + 4 + 1 ? lines.at(4) : QByteArray("no file of two rows");
        };
        const QByteArray position = "        0.5         -1";
        QByteArray all = position;
        for (int q = 0; q < quantities; ++q) {
            RecordSelection selection = {};
            selection[static_cast<std::size_t>(q)] = true;
            const QByteArray number = ' ' + (QByteArray::number(q) + ".25").rightJustified(10);
            QCOMPARE(secondLine(selection), position + number);
            all += number;
        }
        RecordSelection selection = {};
        QCOMPARE(secondLine(selection), position);
        selection[ResultPosition::ratio] = selection[ResultPosition::valence] = true;
        QCOMPARE(secondLine(selection), position + "       0.25      11.25");
        selection.fill(true);
        QCOMPARE(secondLine(selection), all);
    }

    /// Nothing is lost or out of order where a block of text ends, and the number of threads does not show.
    void largeFiles()
    {
        struct Case {
            const char *name;
            Method method;
            int width, height;
        };
        forEach<Case>({{"four points", Method::FourPoints, 250, 91},
                       {"non-equivalent", Method::NonEquivalent, 127, 131},
                       {"rows longer than a block of text", Method::FourPoints, 9001, 2},
                       {"one column", Method::NonEquivalent, 1, 9001}},
                      [](const Case &c) {
                          QTemporaryDir dir;
                          const ResultRecords results = largeRecords(c.method, c.width, c.height);
                          const ValencePair valences = {true, 2, 2.75};
                          RecordSelection selection;
                          selection.fill(true);
                          selection[ResultPosition::dMut + 1] = false;
                          const QByteArray wanted = literalText(results, valences, selection);
                          for (const int threads : {1, 2, 3, 8, 0}) {
                              const QString path = dir.filePath(QString::number(threads));
                              QCOMPARE(writeResultFile(path, results, valences, selection, threads),
                                       WriteOutcome::Written);
                              QVERIFY2(bytesOf(path) == wanted, qPrintable(QString("%1 threads").arg(threads)));
                          }
                      });
    }

    void mapsWithoutPixels()
    {
        QTemporaryDir dir;
        for (const QSize size : {QSize(0, 0), QSize(0, 1000000000), QSize(7, 0)}) {
            A2DData map;
            map.setSize(size.width(), size.height());
            ResultRecords results;
            QVERIFY(results.reset(Method::FourPoints, map));
            results.headerLines = QStringList{"# 1301"};
            QCOMPARE(writeResultFile(dir.filePath("r"), results, {}, {}), WriteOutcome::Written);
            QCOMPARE(bytesOf(dir.filePath("r")), QByteArray("# 1301\n\n"));
        }
    }

    /// What the file says of a failure is handed on, with threads that are still at work as well; what can go wrong
    /// with a file in other ways is the file's own affair.
    void failures()
    {
        const ResultRecords large = largeRecords(Method::FourPoints, 250, 250);
        for (const char *path : {"", "/no such directory/result.dat", "/"})
            QCOMPARE(writeResultFile(path, large, {}, {}), WriteOutcome::CannotOpen);
        struct Case {
            const char *name;
            const ResultRecords &results;
            rlim_t room; ///< bytes
            int threads;
        };
        const ResultRecords small = smallRecords(Method::FourPoints);
        forEach<Case>({{"room for half of it", large, 1500000, 1},
                       {"room for half of it, several threads", large, 1500000, 3},
                       {"a short file, which is written at the end", small, 100, 1}},
                      [](const Case &c) {
                          QTemporaryDir dir;
                          const QString path = dir.filePath("result.dat");
                          QVERIFY(writeBytes(path, "yesterday's result\n"));
                          {
                              const SmallDisk disk(c.room);
                              QCOMPARE(writeResultFile(path, c.results, {}, {}, c.threads), WriteOutcome::CannotWrite);
                          }
                          QCOMPARE(bytesOf(path), QByteArray("yesterday's result\n"));
                      });
    }
};

QTEST_APPLESS_MAIN(TestResultWriter)
#include "TestResultWriter.moc"
