// What dropped files are, and where the spectra among them go.

#include "analysis/model/DroppedFiles.h"
#include "tests/Tables.h"

#include <QDir>

class TestDroppedFiles : public QObject
{
    Q_OBJECT

private slots:
    void kinds()
    {
        const QByteArray head = "# 1301\n# AXIS 0 x um 0 1 1\n# AXIS 1 y um 0 1 0\n", pixels = "0 0 2 4\n1 0 2 4\n";
        const QByteArray cells = "\n          0          0        0.5\n          1          0        0.5\n";
        const QByteArray scan = "Mode 0 0 1 2\nOffset 0 0 0 0\n1 20 1 5 6\n";
        const QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath("sub"));
        const std::pair<const char *, QByteArray> files[] = {
            {"b7120", head + "# ENERGY = 7120\n" + pixels},
            {"a7121", head + "# ENERGY = 7121\n" + pixels},
            {"columns7119", "# 2003901\n# ENERGY = 7119\n# I :1\n# I0 :2\n0 0 1 2 3\n"},
            {"large999", head + "# ENERGY = 999\n" + pixels.repeated(9000)},
            {"no-energy", head + '\n' + pixels},
            {"no-axes", pixels},
            {"result.dat", head + cells}, // has a map's header
            {"r10.dat", scan},
            {"r9.dat", scan},
            {"no-scan", "Mode 0 0 1 2\nOffset 0 0 0 0\n"},
            {"job", " {\"references\": []}"},
            {"sub/r.dat", scan}};
        for (const auto &[name, bytes] : files)
            QVERIFY(tables::writeBytes(dir.filePath(name), bytes));
        const auto names = [&dir](const QStringList &paths) {
            return paths.join(' ').remove(dir.path() + '/');
        };
        const DroppedFiles all = sortDropped({dir.path(), dir.filePath("missing")});
        QCOMPARE(names(all.maps), QString("large999 columns7119 b7120 a7121 no-energy"));
        QCOMPARE(names(all.spectra), QString("r9.dat r10.dat"));
        QCOMPARE(names(all.others), QString("job missing no-axes no-scan result.dat"));
        QCOMPARE(all.job, QString());
        QCOMPARE(sortDropped({dir.filePath("job")}).job, dir.filePath("job"));
    }

    void placesOfSpectra()
    {
        forRows<QStringList, QStringList, QVector<int>>(
            {{"all empty", {"/a", "/my Target.dat", "/b"}, {"", "", "", "", ""}, {0, 4, 1}},
             {"between, then full", {"/a", "/b"}, {"/1", "", "/3", "/4", ""}, {1, -1}},
             {"there already", {"/3", "/a", "/t"}, {"/1", "", "/3", "", "/t"}, {2, 1, 4}},
             {"twice", {"/a", "/a"}, {"", "", "", "", ""}, {0, 0}},
             {"another target", {"/target2", "/a"}, {"", "", "", "", "/target"}, {-1, 0}}},
            [](const QStringList &spectra, const QStringList &present, const QVector<int> &places) {
                QCOMPARE(placesForSpectra(spectra, present), places);
            });
    }
};

QTEST_APPLESS_MAIN(TestDroppedFiles)
#include "TestDroppedFiles.moc"
