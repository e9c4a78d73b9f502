// What dropped files are, and where the spectra among them go.

#include "analysis/model/DroppedFiles.h"
#include "tests/Tables.h"

#include <QDir>

namespace
{

QString names(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names << QFileInfo(path).fileName();
    return names.join(' ');
}

QByteArray map(const QByteArray &lines)
{
    return "# 1301\n# AXIS 0 x um 0 1 1\n# AXIS 1 y um 0 1 0\n" + lines;
}

} // namespace

class TestDroppedFiles : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid() && QDir(m_dir.path()).mkdir("f") && QDir(m_dir.path()).mkdir("f/g"));
    }

    void kinds()
    {
        const QByteArray pixels = "0 0 2 4\n1 0 2 4\n";
        const QByteArray scan = "Mode 0 0 1 2\nOffset 0 0 0 0\n1 20 1 5 6\n";
        forRows<const char *, QByteArray, const char *>(
            {{"a map", "f/a", map("# ENERGY = 7120\n" + pixels), "maps"},
             {"lower energy", "f/b", map("# ENERGY = 7112\n" + pixels), "maps"},
             {"no energy", "f/c", map("\n" + pixels), "maps"},
             {"columns named", "f/d", "# 2003901\n# ENERGY = 7119\n# I :1\n# I0 :2\n0 0 1 2 3\n", "maps"},
             {"longer than is looked at", "f/e", map("# ENERGY = 999\n" + pixels.repeated(9000)), "maps"},
             {"a result has a map's header", "f/r.dat",
              map("\n          0          0        0.5\n          1          0        0.5\n"), "others"},
             {"no axes", "f/q", pixels, "others"},
             {"a spectrum", "f/r10.dat", scan, "spectra"},
             {"before it by number", "f/r9.dat", scan, "spectra"},
             {"no data", "f/s", "Mode 0 0 1 2\nOffset 0 0 0 0\n", "others"},
             {"a job among others", "f/job", " {\"references\": []}", "others"},
             {"not in the folder itself", "f/g/h", scan, ""}},
            [this](const char *name, const QByteArray &bytes, const char *kind) {
                QVERIFY(tables::writeBytes(m_dir.filePath(name), bytes));
                const DroppedFiles one = sortDropped({m_dir.filePath(name)});
                const bool isJob = QString(name) == "f/job";
                QCOMPARE(one.job.isEmpty(), !isJob);
                if (*kind && !isJob)
                    QCOMPARE(kind == QString("maps")      ? one.maps.size()
                             : kind == QString("spectra") ? one.spectra.size()
                                                          : one.others.size(),
                             1);
            });
        const DroppedFiles all = sortDropped({m_dir.filePath("f"), m_dir.filePath("missing")});
        QCOMPARE(names(all.maps), QString("e b d a c"));
        QCOMPARE(names(all.spectra), QString("r9.dat r10.dat"));
        QCOMPARE(names(all.others), QString("job missing q r.dat s"));
        QVERIFY(all.job.isEmpty());
    }

    void placesOfSpectra()
    {
        forRows<QStringList, QStringList, QVector<int>>(
            {{"all empty", {"/a", "/my Target.dat", "/b"}, {"", "", "", "", ""}, {0, 4, 1}},
             {"between", {"/a", "/b"}, {"/1", "", "/3", "", ""}, {1, 3}},
             {"full", {"/a", "/b"}, {"/1", "", "/3", "/4", ""}, {1, -1}},
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
