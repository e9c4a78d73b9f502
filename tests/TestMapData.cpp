#include "LiteralMapReader.h"
#include "mapdata/MapFileReader.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <sys/stat.h>

#include <atomic>
#include <random>
#include <thread>

namespace
{

constexpr int maxInt = std::numeric_limits<int>::max();
const double notANumber = std::nan("");

/// Records as rows {x, y, I, I0}.
using Rows = QVector<QVector<double>>;

/// Every line in a segment of its own, and blocks shorter than a line.
MapReadOptions tinyCuts(int threads, int blockBytes)
{
    MapReadOptions options;
    options.threads = threads;
    options.segmentBytes = 1;
    options.blockBytes = blockBytes;
    return options;
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
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
    const QList<QByteArray> numbers{
        "0.10", "0", "371.0000", "901.4840", "-3", "1e3", "nan", "x", "12345678901234567890"};
    const QList<QByteArray> headers{
        "# I0 :1", "# I :2", "# i :0", "#", "# ENERGY : 7112.0 eV", "# AXIS 0 a b c d 3", "# axis 1 a b c d 2",
        "# I0 :-3"};
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
    void format_data();
    void format();
    void energy_data();
    void energy();
    void headerLinesAreKeptSimplified();
    void absorptionRule_data();
    void absorptionRule();
    void encodings_data();
    void encodings();
    void anyCutGivesTheSame();
    void largeFiles_data();
    void largeFiles();
    void whatCannotBeOpened_data();
    void whatCannotBeOpened();
    void loadingAgain();
    void sharedPositions();
    void hostileFiles_data();
    void hostileFiles();
    void fileThatChangesMeanwhile();
    void japanesePath();
};

void TestMapData::format_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("nx");
    QTest::addColumn<int>("ny");
    QTest::addColumn<Rows>("rows");

    const QByteArray plain = "# 1301\n";
    const QByteArray mapped = "# 2003901\n";
    const Rows none;
    QTest::newRow("axes give the last index") << plain + axes("99", "49") + "1 2 3 4\n"
                                              << 100 << 50 << Rows{{1, 2, 3, 4}};
    QTest::newRow("the last axis line counts") << plain + axes("9", "9") + "# axis 0 a b c d 3 f\n" << 4 << 10 << none;
    QTest::newRow("an axis line of seven tokens") << plain + "# AXIS 0 a b c 9\n" + "1 2 3 4\n"
                                                  << 0 << 0 << Rows{{1, 2, 3, 4}};
    QTest::newRow("an axis that is neither 0 nor 1") << plain + "# AXIS 2 a b c d 9\n" << 0 << 0 << none;
    QTest::newRow("keyword glued to the #") << plain + "#AXIS 0 a b c d 9 f\n" << 0 << 0 << none;
    QTest::newRow("axis indices below 0") << axes("-1", "-5") + "1 2 3\n" << 0 << -4 << Rows{{1, 2, 3, 1}};
    QTest::newRow("axis indices at the end of an int") << axes("2147483647", "2147483646") << 0 << maxInt << none;
    QTest::newRow("axis indices beyond an int") << axes("4294967296", "99999999999999999999") << 0 << 0 << none;
    QTest::newRow("axis index that is no number") << axes("x", "1.5") << 1 << 1 << none;

    QTest::newRow("token counts of a plain file") << plain + "1\n1 2\n1 2 0.5\n1 2 3 4\n1 2 3 4 5 6\n\n"
                                                  << 0 << 0 << Rows{{1, 2, 0.5, 1}, {1, 2, 3, 4}, {1, 2, 3, 4}};
    QTest::newRow("a file without any header") << QByteArray("1 2 3 4") << 0 << 0 << Rows{{1, 2, 3, 4}};
    QTest::newRow("numbers that do not parse")
        << QByteArray("a 2 3..4 0x10\n1,0 1e1 +5 .5\n") << 0 << 0 << Rows{{0, 2, 0, 0}, {0, 10, 5, 0.5}};
    QTest::newRow("a plain file ignores columns") << plain + "# I0 :0\n# I :0\n1 2 3 4\n"
                                                  << 0 << 0 << Rows{{1, 2, 3, 4}};
    QTest::newRow("a header line between the data") << plain + "1 2 3 4\n # 5 6 7 8\n1 2 3 5\n"
                                                    << 0 << 0 << Rows{{1, 2, 3, 4}, {1, 2, 3, 5}};
    QTest::newRow("the kind on the second line") << "\n" + mapped + "1 2 3 4\n" << 0 << 0 << Rows{{1, 2, 3, 4}};
    QTest::newRow("the kind with other white space")
        << QByteArray(" #\t2003901x\n1 2 3\n") << 1 << 1 << Rows{{1, 2, 3, 3}};

    QTest::newRow("columns by header") << mapped + "# I0 :1\n# I :2\n0 0 9 10 11\n1 0 9 20 21\n0 0 9 10\n"
                                       << 2 << 1 << Rows{{0, 0, 11, 10}, {1, 0, 21, 20}};
    QTest::newRow("columns in lower case, behind a blank, with a remark")
        << mapped + "# i0 first: 1 (chamber): 5\n# i x : 0\n0 0 9 10\n"
        << 1 << 1 << Rows{{0, 0, 9, 10}};
    QTest::newRow("a colon in the keyword is another keyword") << mapped + "# I0: 1 x\n0 0 9 10\n"
                                                               << 1 << 1 << Rows{{0, 0, 9, 9}};
    QTest::newRow("columns change between the data")
        << mapped + "# I0 :0\n# I :1\n0 0 1 2 3\n1 0 1 2 3\n# I :2\n0 1 1 2 3\n1 1 1 2 3\n"
        << 2 << 2 << Rows{{0, 0, 2, 1}, {1, 0, 2, 1}, {0, 1, 3, 1}, {1, 1, 3, 1}};
    QTest::newRow("columns of x and y") << mapped + "# I0 :-1\n# I :-2\n5 6\n7\n\n" << 1 << 1 << Rows{{5, 6, 5, 6}};
    QTest::newRow("columns before x") << mapped + "# I0 :-3\n1 2 3 4\n" << 0 << 0 << none;
    QTest::newRow("columns beyond any line")
        << mapped + "# I0 :2147483647\n1 2 3 4\n# I0 :-99999999999999999999\n1 2 3\n"
        << 0 << 0 << none;
    QTest::newRow("size from the positions, not from the axes")
        << mapped + axes("9", "9") + "0 0 1\n1 0 1\n2 0 1\n0 1 1\n1 1 1\n2 1 1\n"
        << 3 << 2 << Rows{{0, 0, 1, 1}, {1, 0, 1, 1}, {2, 0, 1, 1}, {0, 1, 1, 1}, {1, 1, 1, 1}, {2, 1, 1, 1}};
    QTest::newRow("size of no record in spite of axes") << mapped + axes("9", "9") + "1 2\n" << 0 << 0 << none;
    QTest::newRow("size of one record") << mapped + "nan nan 1\n" << 1 << 1 << Rows{{notANumber, notANumber, 1, 1}};
    QTest::newRow("size with NaN as first y") << mapped + "0 nan 1\n0 nan 1\n"
                                              << 0 << 2 << Rows{{0, notANumber, 1, 1}, {0, notANumber, 1, 1}};
}

void TestMapData::format()
{
    QFETCH(QByteArray, text);
    QFETCH(int, nx);
    QFETCH(int, ny);
    QFETCH(Rows, rows);
    for (const MapReadOptions &options : {MapReadOptions(), tinyCuts(1, 3), tinyCuts(20, 3)}) {
        A2DData data;
        const MapLoadResult result = parseMapText(text, &data, options);
        QCOMPARE(result.nx, nx);
        QCOMPARE(result.ny, ny);
        QCOMPARE(result.loaded, nx > 0 && ny > 0 && !rows.isEmpty());
        QCOMPARE(data.count(), qint64(rows.size()));
        for (int i = 0; i < rows.size(); ++i) {
            const MapRecord r = data.record(i);
            const double got[] = {r.x, r.y, r.I, r.I0};
            for (int k = 0; k < 4; ++k)
                QVERIFY2(sameValue(got[k], rows[i][k]),
                         qPrintable(QStringLiteral("record %1, value %2").arg(i).arg(k)));
        }
    }
}

void TestMapData::energy_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("energy"); // null: none
    QTest::newRow("none") << QByteArray("# 1301\n1 2 3 4\n") << QString();
    QTest::newRow("as it stands") << QByteArray("# ENERGY : 7112.0 eV\n") << QStringLiteral("7112.0");
    QTest::newRow("three tokens") << QByteArray("# ENERGY 7112.0\n") << QString();
    QTest::newRow("the last of two, one between the data")
        << QByteArray("# energy : 7112.0\n1 2 3 4\n# Energy : about\n1 2 3 4\n") << QStringLiteral("about");
}

void TestMapData::energy()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, energy);
    for (const int threads : {1, 9}) {
        A2DData data;
        const MapLoadResult result = parseMapText(text, &data, tinyCuts(threads, 5));
        QCOMPARE(result.energyText, energy);
        QCOMPARE(result.energyText.isNull(), energy.isNull());
    }
}

void TestMapData::headerLinesAreKeptSimplified()
{
    const QByteArray text = "# 1301\r\n  # AXIS\t0  1\r\n1 2 3\n#\xE8\xA9\xA6\xE6\x96\x99\xE3\x80\x80 x\n";
    const QStringList wanted{"# 1301", "# AXIS 0 1", QString::fromUtf8("#\xE8\xA9\xA6\xE6\x96\x99 x")};
    for (const int threads : {1, 9}) {
        A2DData data;
        QVERIFY(data.headerLines().isEmpty());
        parseMapText(text, &data, tinyCuts(threads, 5));
        QCOMPARE(data.headerLines(), wanted);
    }
}

void TestMapData::absorptionRule_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<double>("absorption");
    QTest::newRow("a transmission ratio") << QByteArray("1.0 2.0 0.5") << 0.69314718055994531;
    QTest::newRow("both intensities") << QByteArray("0 0 271.8281828459045 1000") << 1.3025850929940457;
    QTest::newRow("I0 is 0: I is the absorption") << QByteArray("0 0 0.7 0") << 0.7;
    QTest::newRow("both are 0") << QByteArray("0 0 0 0") << 0.0;
    QTest::newRow("I is 0") << QByteArray("0 0 0 5") << 1.0;
    QTest::newRow("I is NaN") << QByteArray("0 0 nan 5") << notANumber;
    QTest::newRow("a negative ratio") << QByteArray("0 0 -1 5") << notANumber;
}

void TestMapData::absorptionRule()
{
    QFETCH(QByteArray, line);
    QFETCH(double, absorption);
    A2DData data;
    QCOMPARE(data.absorption(0), -1.0);
    parseMapText(line, &data);
    QCOMPARE(data.count(), qint64(1));
    if (std::isnan(absorption))
        QVERIFY(std::isnan(data.absorption(0)));
    else
        QVERIFY(std::fabs(data.absorption(0) - absorption) < 1e-15);
    QCOMPARE(data.absorption(-1), -1.0);
    QCOMPARE(data.absorption(1), -1.0);
    QVERIFY(data.record(0).extra.isEmpty());
}

void TestMapData::encodings_data()
{
    const QString text =
        QStringLiteral("# 2003901\r\n# I0 :1\r\n# I :0\r\n0 0 1 2\r\n\t1\t0\t3\t4\t\r\n 0\u30001\u00A05  6 ");
    const auto encoded = [&text](const char *codec) {
        QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
        const QString marked = QChar(QChar::ByteOrderMark) + text;
        return QTextCodec::codecForName(codec)->fromUnicode(marked.constData(), marked.size(), &state);
    };
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("UTF-8") << text.toUtf8();
    for (const char *const codec : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
        QTest::newRow(qPrintable(QLatin1String(codec) + QStringLiteral(" with byte order mark"))) << encoded(codec);
}

void TestMapData::encodings()
{
    QFETCH(QByteArray, bytes);
    for (const int threads : {1, 9}) {
        A2DData data;
        const MapLoadResult result = parseMapText(bytes, &data, tinyCuts(threads, 4));
        QVERIFY(result.loaded);
        QCOMPARE(result.nx, 2);
        QCOMPARE(result.ny, 2);
        QCOMPARE(data.count(), qint64(3));
        QCOMPARE(data.I()[2], 5.0);
        QCOMPARE(data.I0()[2], 6.0);
        QCOMPARE(data.headerLines().at(1), QStringLiteral("# I0 :1"));
    }
}

/// The parts of a file that the workers take, and the blocks they read, must not show.
void TestMapData::anyCutGivesTheSame()
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        const QByteArray text = randomMap(seed);
        const LiteralMap wanted = readLiterally(text);
        for (const int threads : {1, 2, 3, 7, 1000}) {
            for (const int blockBytes : {1, 10, 64, 100000}) {
                A2DData data;
                const MapLoadResult result = parseMapText(text, &data, tinyCuts(threads, blockBytes));
                const QString difference = differenceTo(wanted, result, data);
                QVERIFY2(
                    difference.isEmpty(),
                    qPrintable(
                        QStringLiteral("%1 threads, blocks of %2: %3\n").arg(threads).arg(blockBytes).arg(difference) +
                        text));
            }
        }
    }
}

void TestMapData::largeFiles_data()
{
    QTest::addColumn<bool>("hasDenseParts");
    QTest::newRow("lines that get longer and shorter") << false;
    QTest::newRow("more lines than samples of the file let expect") << true;
}

/// Long enough for several real blocks and segments, and for an estimate of the number of lines.
void TestMapData::largeFiles()
{
    QFETCH(bool, hasDenseParts);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("large.txt"));
    QByteArray text = "# 1301\n" + axes("299", "399");
    text.reserve(8 << 20);
    for (int i = 0; i < 300 * 400; ++i) {
        text +=
            QByteArray::number(i % 300 * 0.1) + ' ' + QByteArray::number(i / 300 * 100000.0, 'f', i < 60000 ? 1 : 9);
        text += ' ' + QByteArray::number(i * 1.25, 'f', 4) + (i % 3 == 0 ? " \n" : " 90000\n");
        if (hasDenseParts && i % 6000 == 3000)
            text += QByteArray("1 2 3\n").repeated(9000);
    }
    QVERIFY(write(path, text));
    const LiteralMap wanted = readLiterally(text);
    QVERIFY(wanted.result.loaded);
    for (const int threads : {0, 1, 2, 5}) {
        A2DData data;
        MapReadOptions options;
        options.threads = threads;
        const MapLoadResult result = loadMapFile(path, &data, options);
        const QString difference = differenceTo(wanted, result, data);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
}

void TestMapData::whatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("an empty path") << QString();
    QTest::newRow("nothing of that name") << QStringLiteral("missing.txt");
    QTest::newRow("a directory") << QStringLiteral(".");
    QTest::newRow("a pipe") << QStringLiteral("pipe"); // opening it would wait for a writer
    QTest::newRow("an endless device") << QStringLiteral("/dev/zero");
}

void TestMapData::whatCannotBeOpened()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    QCOMPARE(mkfifo(qPrintable(folder.filePath(QStringLiteral("pipe"))), 0600), 0);
    A2DData data;
    parseMapText("# 1301\n" + axes("0", "0") + "1 2 3 4\n", &data);
    const MapLoadResult result = loadMapFile(name.isEmpty() ? name : folder.filePath(name), &data);
    QVERIFY(!result.opened);
    QVERIFY(!result.loaded);
    QCOMPARE(data.count(), qint64(1));
    QCOMPARE(data.nx(), 1);
    QCOMPARE(data.headerLines().size(), 3);
}

/// A second file must leave nothing of the first, whether it is smaller, larger or no map.
void TestMapData::loadingAgain()
{
    A2DData data;
    for (const int count : {3, 1, 100, 0, 2}) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += "0 0 " + QByteArray::number(i) + " 0\n";
        const MapLoadResult result = parseMapText(text, &data);
        QVERIFY(!result.loaded); // without axis lines
        QCOMPARE(data.count(), qint64(count));
        QVERIFY(count == 0 || data.absorption(count - 1) == count - 1);
        QVERIFY(data.headerLines().isEmpty());
        QVERIFY(parseMapText("# 2003901\n0 0 1\n", &data).loaded);
        QCOMPARE(data.headerLines().size(), 1);
    }
}

/// Maps of the same points hold them once; neither notices when the other loads another file.
void TestMapData::sharedPositions()
{
    A2DData first, second, other;
    parseMapText("# 1301\n0 0 1 2\n0.5 0 3 4\n", &first);
    parseMapText("# 1301\n0 0 5 6\n0.5 0 7 8\n", &second);
    parseMapText("# 1301\n0 0 5 6\n0.5 -0 7 8\n", &other);
    second.sharePositions(first);
    other.sharePositions(first); // -0 is another position in a result file
    QCOMPARE(second.x().data(), first.x().data());
    QCOMPARE(second.y().data(), first.y().data());
    QVERIFY(other.x().data() != first.x().data());
    QCOMPARE(second.record(1).I, 7.0);
    parseMapText("# 1301\n9 9 1 2\n8 8 3 4\n", &first);
    QCOMPARE(second.record(1).x, 0.5);
    QCOMPARE(first.record(0).x, 9.0);
}

void TestMapData::hostileFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<int>("count");
    constexpr int megabyte = 1 << 20;
    QByteArray noise(megabyte, '\0');
    std::mt19937 random(1);
    for (char &c : noise)
        c = static_cast<char>(random());
    QTest::newRow("empty") << QByteArray() << false << 0;
    QTest::newRow("byte order mark only") << QByteArray("\xEF\xBB\xBF") << false << 0;
    QTest::newRow("wide byte order mark only") << QByteArray("\xFF\xFE") << false << 0;
    QTest::newRow("2 billion x 2 billion") << axes("2000000000", "2000000000") + "0 0 1 2\n" << true << 1;
    QTest::newRow("NUL bytes") << QByteArray(megabyte, '\0') << false << 0;
    QTest::newRow("a NUL in a number") << axes("0", "0") + QByteArray("0 0 1\0002 3\n", 10) << true << 1;
    QTest::newRow("1e6 tokens in a line") << axes("0", "0") + QByteArray("7 ").repeated(1000000) << true << 1;
    QTest::newRow("1e6 tokens in a header line") << '#' + QByteArray(" 7").repeated(1000000) << false << 0;
    QTest::newRow("line feeds only") << QByteArray(10 * megabyte, '\n') << false << 0;
    QTest::newRow("header lines only") << QByteArray("#\n").repeated(megabyte / 4) << false << 0;
    QTest::newRow("100 MB in one line") << QByteArray("123456789 ").repeated(10 * megabyte) << false << 1;
    QTest::newRow("20 MB in one number") << axes("0", "0") + "1 2 3 " + QByteArray(20 * megabyte, '5') << true << 1;
    QTest::newRow("noise") << noise << false << -1;
    QTest::newRow("wide noise") << "\xFF\xFE" + noise << false << -1;
}

void TestMapData::hostileFiles()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, loaded);
    QFETCH(int, count); // -1: any
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("map.txt"));
    QVERIFY(write(path, text));
    A2DData data;
    const MapLoadResult result = loadMapFile(path, &data);
    QVERIFY(result.opened);
    QCOMPARE(result.loaded, loaded);
    if (count >= 0)
        QCOMPARE(data.count(), qint64(count));
    QVERIFY(data.count() <= text.size() / 4 + 1);
}

/// A beamline may rewrite the file meanwhile: whatever is read then, the loader stays within its memory and returns.
void TestMapData::fileThatChangesMeanwhile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("map.txt"));
    const QByteArray shortLines = QByteArray("1 2 3\n").repeated(20000);
    const QByteArray longLines = QByteArray("100.00000 200.0000 300.00000\n").repeated(10000);
    QVERIFY(write(path, longLines));
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        for (int i = 0; !stop; ++i) {
            QFile file(path);
            if (file.open(QIODevice::ReadWrite) && file.write(i % 2 == 0 ? shortLines : longLines) > 0)
                file.resize(i % 3 == 0 ? 1000 : file.size());
        }
    });
    bool inBounds = true;
    for (int i = 0; i < 200; ++i) {
        A2DData data;
        MapReadOptions options;
        options.threads = 1 + i % 3;
        options.segmentBytes = 1000;
        options.blockBytes = 4096;
        loadMapFile(path, &data, options);
        inBounds = inBounds && data.count() <= longLines.size() / 4;
    }
    stop = true;
    writer.join();
    QVERIFY(inBounds);
}

void TestMapData::japanesePath()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromUtf8("\xE8\xA9\xA6\xE6\x96\x99 7112eV.txt"));
    if (QFile::decodeName(QFile::encodeName(path)) != path)
        QSKIP("the encoding of file names here has no Japanese");
    QVERIFY(write(path, "# 2003901\n0 0 1\n"));
    A2DData data;
    QVERIFY(loadMapFile(path, &data).loaded);
}

QTEST_APPLESS_MAIN(TestMapData)
#include "TestMapData.moc"
