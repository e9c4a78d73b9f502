#include "analysis/methods/FourPoints.h"
#include "analysis/results/ResultWriter.h"
#include "tests/SmallDisk.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

#include <unistd.h>

namespace
{

using Method = ResultRecords::Method;

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
        for (int q = 0; method == Method::NonEquivalent && q < ResultRecords::quantityCount; ++q)
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
    for (int q = 0; method == Method::NonEquivalent && q < ResultRecords::quantityCount; ++q)
        planes.push_back(results.quantity(q));
    for (double *const plane : planes) {
        for (std::size_t i = 0; i < results.count(); ++i)
            plane[i] = (random() % 17 == 0 ? 1e8 : 1.0) * (static_cast<double>(random()) / 4e9 - 0.2);
    }
    return results;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

/// The lines of the pixels as QString::arg makes them.
QByteArray literalText(const ResultRecords &results, const ValencePair &valences, const RecordSelection &selection)
{
    QString text = QStringLiteral("\n");
    for (std::size_t i = 0; i < results.count(); ++i) {
        text += QStringLiteral(" %1 %2").arg(results.x()[i], 10).arg(results.y()[i], 10);
        if (results.method() == Method::FourPoints) {
            const double a = results.a()[i];
            text += QStringLiteral("    %1 %2 %3")
                        .arg(a, 10)
                        .arg(mixedValence(valences.first, valences.second, a), 10)
                        .arg(results.t()[i], 10);
        }
        for (int q = 0; results.method() == Method::NonEquivalent && q < ResultRecords::quantityCount; ++q) {
            if (selection[static_cast<std::size_t>(q)])
                text += QStringLiteral(" %1").arg(results.quantity(q)[i], 10);
        }
        text += '\n';
        if ((i + 1) % static_cast<std::size_t>(results.width()) == 0)
            text += '\n';
    }
    return text.toLatin1();
}

} // namespace

class TestResultWriter : public QObject
{
    Q_OBJECT

private slots:
    void fourPointsFile();
    void fourPointsFileWithoutTwoReferences();
    void everyRecordBox_data();
    void everyRecordBox();
    void nonEquivalentFile();
    void largeFiles_data();
    void largeFiles();
    void mapsWithoutPixels_data();
    void mapsWithoutPixels();
    void devicesAreWrittenInPlace();
    void fullDiskKeepsThePreviousFile_data();
    void fullDiskKeepsThePreviousFile();
    void fileThatCannotBeOpened_data();
    void fileThatCannotBeOpened();
    void readOnlyFile();
    void readOnlyDirectory();
};

void TestResultWriter::fourPointsFile()
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
    QCOMPARE(contents(path), wanted);
    QCOMPARE(writeResultFile(path, ResultRecords(), {}, {}), WriteOutcome::Written); // silently replaces it
    QCOMPARE(contents(path), QByteArray("\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{"result.dat"});
}

void TestResultWriter::fourPointsFileWithoutTwoReferences()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("result");
    writeResultFile(path, smallRecords(Method::FourPoints), {false, 2, 3}, {});
    QCOMPARE(contents(path).split('\n').at(3),
             QByteArray("          0         -1             0          0     -0.125"));
}

void TestResultWriter::everyRecordBox_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QByteArray>("number");
    const char *const numbers[] = {"      0.25", "      1.25", "      2.25", "      3.25", "      4.25",
                                   "      5.25", "      6.25", "      7.25", "      8.25", "      9.25",
                                   "     10.25", "     11.25", "     12.25"};
    for (int position = 0; position < ResultRecords::quantityCount; ++position)
        QTest::newRow(qPrintable(QStringLiteral("only position %1").arg(position)))
            << position << QByteArray(numbers[position]);
}

void TestResultWriter::everyRecordBox()
{
    QFETCH(int, position);
    QFETCH(QByteArray, number);
    QTemporaryDir dir;
    RecordSelection selection = {};
    selection[static_cast<std::size_t>(position)] = true;
    const QString path = dir.filePath("result.dat");
    QCOMPARE(writeResultFile(path, smallRecords(Method::NonEquivalent), {true, 2, 3}, selection),
             WriteOutcome::Written);
    const QList<QByteArray> lines = contents(path).split('\n');
    QCOMPARE(lines.size(), 3 + 4 + 4 + 1);
    QCOMPARE(lines.at(4), "        0.5         -1 " + number);
}

void TestResultWriter::nonEquivalentFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    const ResultRecords results = smallRecords(Method::NonEquivalent);
    RecordSelection selection = {};
    writeResultFile(path, results, {}, selection);
    QCOMPARE(contents(path).split('\n').at(4), QByteArray("        0.5         -1"));
    selection[0] = selection[11] = true;
    writeResultFile(path, results, {}, selection);
    QCOMPARE(contents(path).split('\n').at(4), QByteArray("        0.5         -1       0.25      11.25"));
    selection.fill(true);
    writeResultFile(path, results, {}, selection);
    QCOMPARE(contents(path).split('\n').at(3).size(), 15 * 11);
}

void TestResultWriter::largeFiles_data()
{
    QTest::addColumn<bool>("fourPoints");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("four points") << true << 250 << 91;
    QTest::newRow("non-equivalent") << false << 127 << 131;
    QTest::newRow("rows longer than a block of text") << true << 9001 << 2;
    QTest::newRow("one column") << false << 1 << 9001;
}

/// Nothing is lost or out of order where a block of text ends, and the number of threads does not show.
void TestResultWriter::largeFiles()
{
    QFETCH(bool, fourPoints);
    QFETCH(int, width);
    QFETCH(int, height);
    QTemporaryDir dir;
    const ResultRecords results = largeRecords(fourPoints ? Method::FourPoints : Method::NonEquivalent, width, height);
    const ValencePair valences = {true, 2, 2.75};
    RecordSelection selection;
    selection.fill(true);
    selection[5] = false;
    const QByteArray wanted = literalText(results, valences, selection);
    for (const int threads : {1, 2, 3, 8, 0}) {
        const QString path = dir.filePath(QString::number(threads));
        QCOMPARE(writeResultFile(path, results, valences, selection, threads), WriteOutcome::Written);
        QVERIFY2(contents(path) == wanted, qPrintable(QStringLiteral("%1 threads").arg(threads)));
    }
}

void TestResultWriter::mapsWithoutPixels_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("no columns") << 0 << 1000000000;
    QTest::newRow("no rows") << 7 << 0;
}

void TestResultWriter::mapsWithoutPixels()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QTemporaryDir dir;
    A2DData map;
    map.setSize(width, height);
    ResultRecords results;
    QVERIFY(results.reset(Method::FourPoints, map));
    results.headerLines = QStringList{"# 1301"};
    QCOMPARE(writeResultFile(dir.filePath("r"), results, {}, {}), WriteOutcome::Written);
    QCOMPARE(contents(dir.filePath("r")), QByteArray("# 1301\n\n"));
}

void TestResultWriter::devicesAreWrittenInPlace()
{
    const ResultRecords small = smallRecords(Method::FourPoints);
    QCOMPARE(writeResultFile("/dev/null", small, {}, {}), WriteOutcome::Written);
    QVERIFY(!QFileInfo("/dev/null").isFile());
    if (!QFileInfo::exists("/dev/full"))
        QSKIP("there is no /dev/full");
    QCOMPARE(writeResultFile("/dev/full", small, {}, {}), WriteOutcome::CannotWrite); // fails when it is closed
    const ResultRecords large = largeRecords(Method::FourPoints, 300, 200);
    for (const int threads : {1, 2})
        QCOMPARE(writeResultFile("/dev/full", large, {}, {}, threads), WriteOutcome::CannotWrite); // at the first block
    QVERIFY(!QFileInfo("/dev/full").isFile());
}

void TestResultWriter::fullDiskKeepsThePreviousFile_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("room"); // bytes
    QTest::addColumn<int>("threads");
    QTest::newRow("no room at all") << 250 << 0 << 1;
    QTest::newRow("room for the start") << 250 << 100 << 1;
    QTest::newRow("room for half of it") << 250 << 1500000 << 1;
    QTest::newRow("room for half of it, two threads") << 250 << 1500000 << 2;
    QTest::newRow("a short file, which is written at the end") << 2 << 100 << 1;
}

void TestResultWriter::fullDiskKeepsThePreviousFile()
{
    QFETCH(int, side);
    QFETCH(int, room);
    QFETCH(int, threads);
    QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    QFile previous(path);
    QVERIFY(previous.open(QIODevice::WriteOnly));
    previous.write("yesterday's result\n");
    previous.close();
    const ResultRecords results = largeRecords(Method::FourPoints, side, side);
    {
        const SmallDisk disk(static_cast<rlim_t>(room));
        QCOMPARE(writeResultFile(path, results, {}, {}, threads), WriteOutcome::CannotWrite);
    }
    QCOMPARE(contents(path), QByteArray("yesterday's result\n"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"result.dat"}); // and no half-written one beside it
    QCOMPARE(writeResultFile(path, results, {}, {}, threads), WriteOutcome::Written);
}

void TestResultWriter::fileThatCannotBeOpened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("missing directory") << "missing/result.dat";
    QTest::newRow("a directory") << ".";
}

void TestResultWriter::fileThatCannotBeOpened()
{
    QFETCH(QString, name);
    QTemporaryDir dir;
    const QString path = name.isEmpty() ? name : dir.filePath(name);
    QCOMPARE(writeResultFile(path, smallRecords(Method::FourPoints), {}, {}), WriteOutcome::CannotOpen);
    QVERIFY(QDir(dir.path()).isEmpty());
}

namespace
{

/// While it lives a process of root has the rights of an ordinary user, who owns `path`. The rights of others stay.
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const QStringList &paths)
        : m_isRoot(getuid() == 0)
    {
        if (!m_isRoot)
            return;
        for (const QString &path : paths)
            m_good = chown(QFile::encodeName(path).constData(), user, static_cast<gid_t>(-1)) == 0 && m_good;
        m_good = m_good && setresuid(user, user, 0) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_isRoot && setresuid(0, 0, 0) != 0)
            std::abort();
    }
    Q_DISABLE_COPY(OrdinaryUser)
    bool isGood() const { return m_good; }

private:
    static constexpr uid_t user = 65534; // nobody
    const bool m_isRoot;
    bool m_good = true;
};

} // namespace

void TestResultWriter::readOnlyFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    QCOMPARE(writeResultFile(path, ResultRecords(), {}, {}), WriteOutcome::Written);
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    const OrdinaryUser user({dir.path(), path});
    if (!user.isGood())
        QSKIP("cannot give up the rights of root");
    QCOMPARE(writeResultFile(path, smallRecords(Method::FourPoints), {}, {}), WriteOutcome::CannotOpen);
    QCOMPARE(contents(path), QByteArray("\n"));
}

/// A new file cannot be made there; one that is there is written in place.
void TestResultWriter::readOnlyDirectory()
{
    QTemporaryDir dir;
    const QString path = dir.filePath("result.dat");
    QCOMPARE(writeResultFile(path, ResultRecords(), {}, {}), WriteOutcome::Written);
    const OrdinaryUser user({dir.path(), path});
    if (!user.isGood())
        QSKIP("cannot give up the rights of root");
    QVERIFY(QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(writeResultFile(dir.filePath("new.dat"), ResultRecords(), {}, {}), WriteOutcome::CannotOpen);
    QCOMPARE(writeResultFile(path, smallRecords(Method::FourPoints), {true, 2, 3}, {}), WriteOutcome::Written);
    QVERIFY(contents(path).startsWith("# 1301\n"));
    QVERIFY(QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

QTEST_APPLESS_MAIN(TestResultWriter)
#include "TestResultWriter.moc"
