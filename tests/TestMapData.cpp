#include "mapdata/MapFileReader.h"
#include "tests/LiteralMapReader.h"
#include "tests/NoThreads.h"
#include "tests/Tables.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <optional>
#include <random>
#include <thread>

using tables::writeBytes;

namespace
{

/// Every line in a segment of its own, and blocks shorter than a line.
MapReadOptions tinyCuts(int threads, int blockBytes)
{
    return {threads, 1, blockBytes};
}

QByteArray axes(const QByteArray &lastX, const QByteArray &lastY)
{
    return "# AXIS 0 um 0.0 0.1 end " + lastX + "\n# AXIS 1 um 0.0 0.1 end " + lastY + "\n";
}

/// Lines of every kind at random: usual and unusual numbers, short lines, header lines between the data.
QByteArray randomMap(unsigned seed)
{
    std::mt19937 random(seed);
    const auto pick = [&random](const QList<QByteArray> &from) {
        return from[static_cast<int>(random() % static_cast<unsigned>(from.size()))];
    };
    const auto numbers = QByteArray("0.10 0 371.0000 901.4840 -3 1e3 nan x 12345678901234567890").split(' ');
    const QList<QByteArray> headers =
        QByteArray(
            "# I0 :1|# I :2|# i :0|#|# ENERGY : 7112.0 eV|# ENERGY 7112.0|  # Energy\t: about|# AXIS 0 a b c d 3|"
            "# axis 1 y mm 1.5 -0.5 2|# AXIS 0 x um 0 0.1 3|# I0 :-3|#\xE8\xA9\xA6\xE6\x96\x99\xE3\x80\x80 x|"
            "# AXIS 1 y um -2 .5 9|# AXIS 1 um 0 0.1 end 9|# AXIS 0 x um 0 0 9|# AXIS 1 y um 0 inf 9 0")
            .split('|');
    QByteArray text = pick({"# 1301\n", "# 2003901\n", "\n", "1 2 3 4\n"});
    for (int i = 0; i < 4; ++i)
        text += pick(headers) + '\n';
    for (int i = 0; i < 60; ++i) {
        if (seed % 2 == 0 && random() % 20 == 0)
            text += pick(headers);
        const auto tokens = random() % 8 == 0 ? random() % 7 : 4;
        for (unsigned k = 0; k < tokens; ++k)
            text += pick({"", "", "", " ", "\t"}) + pick(numbers) + ' ';
        text += pick({"\n", "\n", "\r\n", "\n\n"});
    }
    return random() % 2 == 0 ? text : text + "1 2 3 4";
}

} // namespace

class TestMapData : public QObject
{
    Q_OBJECT

private slots:
    void format()
    {
        const QByteArray plain = "# 1301\n", mapped = "# 2003901\n";
        forRows<QByteArray, const char *, const char *>(
            {{"axes give the last index", plain + axes("99", "49") + "1 2 3 4\n", "100 x 50", "1 2 3 4"},
             {"the last axis line counts", plain + axes("9", "9") + "# axis 0 a b c d 3 f\n", "4 x 10", ""},
             {"an axis line of seven tokens", plain + "# AXIS 0 a b c 9\n1 2 3 4\n", "0 x 0", "1 2 3 4"},
             {"an axis that is neither 0 nor 1", plain + "# AXIS 2 a b c d 9\n", "0 x 0", ""},
             {"keyword glued to the #", plain + "#AXIS 0 a b c d 9 f\n", "0 x 0", ""},
             {"axis indices below 0", axes("-1", "-5") + "1 2 3\n", "0 x -4", "1 2 3 1"},
             {"axis indices at the end of an int", axes("2147483647", "2147483646"), "0 x 2147483647", ""},
             {"axis indices beyond an int", axes("4294967296", "99999999999999999999"), "0 x 0", ""},
             {"axis index that is no number", axes("x", "1.5"), "1 x 1", ""},
             {"token counts", plain + "1\n1 2\n1 2 0.5\n1 2 3 4 5 6\n\n", "0 x 0", "1 2 0.5 1, 1 2 3 4"},
             {"a file without any header", "1 2 3 4", "0 x 0", "1 2 3 4"},
             {"numbers that do not parse", "a 2 3..4 0x10\n1,0 1e1 +5 .5\n", "0 x 0", "0 2 0 0, 0 10 5 0.5"},
             {"a plain file ignores columns", plain + "# I0 :0\n# I :0\n1 2 3 4\n", "0 x 0", "1 2 3 4"},
             {"a header line between the data", plain + "1 2 3 4\n # 5 6 7 8\n1 2 3 5\n", "0 x 0", "1 2 3 4, 1 2 3 5"},
             {"the kind on the second line", "\n" + mapped + "1 2 3 4\n", "0 x 0", "1 2 3 4"},
             {"the kind with other white space", " #\t2003901x\n1 2 3\n", "1 x 1", "1 2 3 3"},
             {"columns by header", mapped + "# I0 :1\n# I :2\n0 0 9 10 11\n0 0 9 10\n", "1 x 1", "0 0 11 10"},
             {"columns with remarks", mapped + "# i0 1st: 1 (a): 5\n# i x : 0\n0 0 9 10\n", "1 x 1", "0 0 9 10"},
             {"a colon in the keyword is another keyword", mapped + "# I0: 1 x\n0 0 9 10\n", "1 x 1", "0 0 9 9"},
             {"columns of x and y", mapped + "# I0 :-1\n# I :-2\n5 6\n7\n\n", "1 x 1", "5 6 5 6"},
             {"columns before x", mapped + "# I0 :-3\n1 2 3 4\n", "0 x 0", ""},
             {"columns beyond any line", mapped + "# I0 :2147483647\n1 2 3 4\n", "0 x 0", ""},
             {"columns far before x", mapped + "# I0 :-99999999999999999999\n1 2 3\n", "0 x 0", ""},
             {"size from positions", mapped + axes("9", "9") + "0 0 1\n0 1 1\n", "1 x 2", "0 0 1 1, 0 1 1 1"},
             {"size of no record in spite of axes", mapped + axes("9", "9") + "1 2\n", "0 x 0", ""},
             {"size of one record", mapped + "nan nan 1\n", "1 x 1", "nan nan 1 1"},
             {"size with NaN as first y", mapped + "0 nan 1\n0 nan 1\n", "0 x 2", "0 nan 1 1, 0 nan 1 1"}},
            [](const QByteArray &text, const char *size, const char *wantedRecords) {
                for (const MapReadOptions &options : {MapReadOptions(), tinyCuts(1, 3), tinyCuts(20, 3)}) {
                    A2DData data;
                    const MapLoadResult result = parseMapText(text, &data, options);
                    QCOMPARE(QStringLiteral("%1 x %2").arg(data.nx()).arg(data.ny()), QString(size));
                    QCOMPARE(result.loaded, data.nx() > 0 && data.ny() > 0 && data.count() > 0);
                    QStringList records;
                    for (qint64 i = 0; i < data.count(); ++i) {
                        const MapRecord r = data.record(i);
                        records << QStringLiteral("%1 %2 %3 %4").arg(r.x).arg(r.y).arg(r.I).arg(r.I0);
                    }
                    QCOMPARE(records.join(", "), QString(wantedRecords));
                }
            });
    }

    /// A transmission ratio, both intensities, I itself where I0 is 0, both 0, I is 0, I is NaN, a negative ratio.
    void absorptionRule()
    {
        const double wanted[] = {0.69314718055994531, 1.3025850929940457, 0.7, 0.0, 1.0, std::nan(""), std::nan("")};
        A2DData data;
        QCOMPARE(data.absorption(0), -1.0);
        parseMapText("1 2 .5\n0 0 271.8281828459045 1000\n0 0 .7 0\n0 0 0 0\n0 0 0 5\n0 0 nan 5\n0 0 -1 5\n", &data);
        QCOMPARE(data.count(), qint64(7));
        for (int i = 0; i < 7; ++i)
            QVERIFY2(tables::isClose(data.absorption(i), wanted[i], 1e-15), qPrintable(QString::number(i)));
        QCOMPARE(data.absorption(-1), -1.0);
        QCOMPARE(data.absorption(7), -1.0);
    }

    void encodings()
    {
        const QString text =
            QStringLiteral("# 2003901\r\n# I0 :1\r\n# I :0\r\n0 0 1 2\r\n\t1\t0\t3\t4\t\r\n 0\u30001\u00A05  6 ");
        QList<QByteArray> texts{text.toUtf8()};
        for (const char *const codec : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}) {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            const QString marked = QChar(QChar::ByteOrderMark) + text;
            texts << QTextCodec::codecForName(codec)->fromUnicode(marked.constData(), marked.size(), &state);
        }
        const LiteralMap wanted = readLiterally(texts[0]);
        QVERIFY(wanted.loaded && wanted.records.size() == 3);
        for (const QByteArray &bytes : qAsConst(texts)) {
            for (const int threads : {1, 9}) {
                A2DData data;
                const MapLoadResult result = parseMapText(bytes, &data, tinyCuts(threads, 4));
                QCOMPARE(differenceTo(wanted, result, data), QString());
            }
        }
    }

    /// The parts of a file that the workers take, and the blocks they read, must not show.
    void anyCutGivesTheSame()
    {
        for (unsigned seed = 0; seed < 150; ++seed) {
            const QByteArray text = randomMap(seed);
            const LiteralMap wanted = readLiterally(text);
            A2DData same, similar; // whose positions are compared with
            parseMapText(text, &same);
            parseMapText(QByteArray(text).replace(text.size() / 2, 1, "4"), &similar);
            for (const int threads : {1, 2, 3, 7, 1000}) {
                for (const int blockBytes : {1, 10, 64, 100000}) {
                    A2DData data;
                    MapReadOptions options = tinyCuts(threads, blockBytes);
                    if (threads != 2)
                        options.others = {blockBytes < 60 ? &same : &similar};
                    const MapLoadResult result = parseMapText(text, &data, options);
                    const QString difference = differenceTo(wanted, result, data);
                    QVERIFY2(difference.isEmpty(), difference.toUtf8() + "\nin blocks of the text\n" + text);
                }
            }
        }
    }

    /// Long enough for several real blocks and segments, and for an estimate of the number of lines: of lines that get
    /// longer and shorter, and of more lines than samples of the file let expect.
    void largeFiles()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("large.txt"));
        for (const bool hasDenseParts : {false, true}) {
            QByteArray text = "# 1301\n" + axes("299", "399");
            text.reserve(8 << 20);
            for (int i = 0; i < 300 * 400; ++i) {
                text += QByteArray::number(i % 300 * 0.1) + ' ' +
                        QByteArray::number(i / 300 * 100000.0, 'f', i < 60000 ? 1 : 9);
                text += ' ' + QByteArray::number(i * 1.25, 'f', 4) + (i % 3 == 0 ? " \n" : " 90000\n");
                if (hasDenseParts && i % 6000 == 3000)
                    text += QByteArray("1 2 3\n").repeated(9000);
            }
            QVERIFY(writeBytes(path, text));
            const LiteralMap wanted = readLiterally(text);
            QVERIFY(wanted.loaded);
            for (const int threads : {0, 1, 2, 5, -5}) { // of -5 none can be had
                std::optional<NoThreads> limit;
                if (threads < 0)
                    limit.emplace();
                A2DData data, again;
                MapReadOptions options;
                options.threads = std::abs(threads);
                const MapLoadResult result = loadMapFile(path, &data, options);
                QCOMPARE(differenceTo(wanted, result, data), QString());
                options.others = {&data};
                QCOMPARE(differenceTo(wanted, loadMapFile(path, &again, options), again), QString());
                QVERIFY(again.sharesPositions(data));
            }
        }
    }

    /// Nothing of that name, a directory, a pipe (opening it would wait for a writer), an endless device.
    void whatCannotBeOpened()
    {
        const QTemporaryDir folder;
        const QString pipe = folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        for (const QString &path :
             {QString(), folder.filePath("missing.txt"), folder.path(), pipe, QStringLiteral("/dev/zero")}) {
            A2DData data;
            const QByteArray text = "# 1301\n" + axes("0", "0") + "1 2 3 4\n";
            MapLoadResult before = parseMapText(text, &data);
            const MapLoadResult result = loadMapFile(path, &data);
            QVERIFY(!result.opened && !result.loaded && result.problem == MapLoadProblem::NotOpened);
            QCOMPARE(differenceTo(readLiterally(text), before, data), QString()); // still there
        }
    }

    /// The system says why a file is not opened; with a descriptor for one thread that one reads all.
    void fewDescriptors()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("map.txt"));
        const QByteArray text = "# 1301\n" + axes("9", "9") + QByteArray("1 2 3 4\n").repeated(100);
        QVERIFY(writeBytes(path, text));
        rlimit before = {};
        getrlimit(RLIMIT_NOFILE, &before);
        const int free = dup(STDIN_FILENO);
        close(free);
        for (const rlim_t left : {0, 1}) {
            const rlimit limit = {static_cast<rlim_t>(free) + left, before.rlim_max};
            setrlimit(RLIMIT_NOFILE, &limit);
            A2DData data;
            const MapLoadResult result = loadMapFile(path, &data, tinyCuts(7, 10));
            setrlimit(RLIMIT_NOFILE, &before);
            QCOMPARE(result.systemText.isEmpty(), left == 1);
            QCOMPARE(result.problem, left == 1 ? MapLoadProblem::None : MapLoadProblem::NotOpened);
            QVERIFY(left == 0 || differenceTo(readLiterally(text), result, data).isEmpty());
        }
    }

    /// A second file must leave nothing of the first, whether it is smaller, larger or no map.
    void loadingAgain()
    {
        A2DData data;
        for (const int count : {3, 1, 100, 0, 2}) {
            for (const QByteArray &text : {"# AXIS 0 x um 0 1 9\n" + QByteArray("0 0 5 0\n").repeated(count),
                                           QByteArray("# 2003901\n0 0 1\n")}) {
                const MapLoadResult result = parseMapText(text, &data);
                QCOMPARE(differenceTo(readLiterally(text), result, data), QString());
            }
        }
    }

    /// Maps of the same points hold them once; neither notices when the other loads another file.
    void sharedPositions()
    {
        A2DData first, second, other;
        MapReadOptions options;
        parseMapText("# 1301\n0 0 1 2\n0.5 0 3 4\n", &first);
        parseMapText("# 1301\n7 7 1 2\n", &other);
        options.others = {&other, &first};
        parseMapText("# 1301\n0 0 5 6\n0.5 0 7 8\n", &second, options);
        parseMapText("# 1301\n0 0 5 6\n0.5 -0 7 8\n", &other, {0, 1, 1, {&first}});
        QVERIFY(second.sharesPositions(first));
        QVERIFY(!other.sharesPositions(first)); // -0 is another position in a result file
        QVERIFY(std::signbit(other.record(1).y) && other.record(1).x == 0.5);
        QCOMPARE(second.record(1).I, 7.0);
        parseMapText("# 1301\n9 9 1 2\n8 8 3 4\n", &first, {0, 1, 1, {&second}});
        QCOMPARE(second.record(1).x, 0.5);
        QCOMPARE(first.record(0).x, 9.0);
    }

    /// Records of the pixels a, b, ... of a map whose rows are "abcd efgh ijkl"; the last column has the records
    /// between which their order breaks.
    void orderOfRecords()
    {
        const QByteArray steps = "# AXIS 0 x um 0 0.5 3\n# AXIS 1 y um 0 -2 2\n", noSteps = axes("3", "2");
        forRows<QByteArray, const char *, double, const char *>(
            {{"as the header says", steps, "abcd efgh ijkl", 0, ""},
             {"reversed", steps, "lkji hgfe dcba", 0, "x 0-1"},
             {"reversed, no steps", noSteps, "lkji hgfe dcba", 0, ""},
             {"y first", steps, "aei bfj cgk dhl", 0, "y 2-6"},
             {"y first, no steps", noSteps, "aei bfj cgk dhl", 0, "y 2-6"},
             {"y first, square", axes("2", "2"), "aei bfj cgk", 0, "x 0-2"},
             {"every other row backwards", noSteps, "abcd hgfe ijkl", 0, "x 4-5"},
             {"measured positions", steps, "abcd efgh ijkl", 0.7, ""},
             {"two pixels exchanged", noSteps, "abcd egfh ijkl", 0, "x 5-6"},
             {"two rows exchanged", noSteps, "abcd ijkl efgh", 0, "y 4-8"},
             {"no positions", noSteps, "aaaa aaaa aaaa", 0, ""},
             {"positions that stay", steps, "aaaa aaaa aaaa", 0, "x 0-3"},
             {"half a map", steps, "lkji hg", 0, ""}},
            [](QByteArray text, const char *pixels, double noise, const char *wanted) {
                for (; *pixels != 0; ++pixels) {
                    const int i = *pixels - 'a';
                    if (*pixels == ' ')
                        continue;
                    text += QByteArray::number(0.5 * (i % 4 + noise * (i % 3))) + ' ' +
                            QByteArray::number(-2 * (i / 4 + noise * (i % 2))) + " 1 2\n";
                }
                A2DData data, second;
                parseMapText(text, &data);
                parseMapText(text, &second, {0, 1, 1, {&data}});
                for (const A2DData *const map : {&data, &second}) {
                    const auto found = map->facts().orderBreak;
                    const char axis = found && found->isAlongX ? 'x' : 'y';
                    QCOMPARE(found ? QStringLiteral("%1 %2-%3").arg(axis).arg(found->from).arg(found->to) : QString(),
                             QString(wanted));
                }
            });
    }

    /// The last column is the number of records, -1 for any.
    void hostileFiles()
    {
        constexpr int megabyte = 1 << 20;
        QByteArray noise(megabyte, '\0');
        std::mt19937 random(1);
        for (char &c : noise)
            c = static_cast<char>(random());
        const QTemporaryDir folder;
        const QString path = folder.filePath(QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99 7112eV.txt"));
        if (QFile::decodeName(QFile::encodeName(path)) != path)
            QSKIP("the encoding of file names here has no Japanese");
        forRows<QByteArray, bool, qint64>(
            {{"empty", "", false, 0},
             {"byte order mark only", "\xEF\xBB\xBF", false, 0},
             {"wide byte order mark only", "\xFF\xFE", false, 0},
             {"2 billion x 2 billion", axes("2000000000", "2000000000") + "0 0 1 2\n", true, 1},
             {"NUL bytes", QByteArray(megabyte, '\0'), false, 0},
             {"a NUL in a number", axes("0", "0") + QByteArray("0 0 1\0002 3\n", 10), true, 1},
             {"1e6 tokens in a line", axes("0", "0") + QByteArray("7 ").repeated(1000000), true, 1},
             {"1e6 tokens in a header line", '#' + QByteArray(" 7").repeated(1000000), false, 0},
             {"line feeds only", QByteArray(10 * megabyte, '\n'), false, 0},
             {"header lines only", QByteArray("#\n").repeated(megabyte / 4), false, 0},
             {"100 MB in one line", axes("0", "0") + QByteArray("123456789 ").repeated(10 * megabyte), false, 0},
             {"20 MB in one number", axes("0", "0") + "1 2 3 " + QByteArray(20 * megabyte, '5'), true, 1},
             {"noise", noise, false, -1},
             {"wide noise", "\xFF\xFE" + noise, false, -1}},
            [&path](const QByteArray &text, bool loaded, qint64 count) {
                QVERIFY(writeBytes(path, text));
                A2DData data;
                const MapLoadResult result = loadMapFile(path, &data);
                QVERIFY(result.opened);
                QCOMPARE(result.loaded, loaded);
                QVERIFY(count < 0 || data.count() == count);
                QVERIFY(data.count() <= text.size() / 4 + 1);
            });
    }

    /// A beamline may rewrite the file meanwhile: whatever is read then, the loader stays within its memory, returns
    /// and has noticed some of it.
    void fileThatChangesMeanwhile()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("map.txt"));
        const QByteArray shortLines = QByteArray("1 2 3\n").repeated(20000);
        const QByteArray longLines = QByteArray("100.00000 200.0000 300.00000\n").repeated(10000);
        QVERIFY(writeBytes(path, longLines));
        std::atomic<bool> stop{false};
        std::thread writer([&] {
            for (int i = 0; !stop; ++i) {
                QFile file(path);
                if (file.open(QIODevice::ReadWrite) && file.write(i % 2 == 0 ? shortLines : longLines) > 0)
                    file.resize(i % 3 == 0 ? 1000 : file.size());
            }
        });
        bool inBounds = true, hasNoticed = false;
        for (int i = 0; i < 200 || (i < 20000 && !hasNoticed); ++i) {
            A2DData data;
            loadMapFile(path, &data, {1 + i % 3, 1000, 4096});
            inBounds = inBounds && data.count() <= longLines.size() / 4;
            hasNoticed = hasNoticed || data.facts().changedMeanwhile;
        }
        stop = true;
        writer.join();
        QVERIFY(inBounds && hasNoticed);
    }
};

QTEST_APPLESS_MAIN(TestMapData)
#include "TestMapData.moc"
