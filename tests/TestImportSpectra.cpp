#include "import/AthenaReader.h"
#include "import/Gunzip.h"
#include "spectrum/SpectrumReader.h"
#include "tests/ImportTools.h"

#ifdef FLOKLUK_HAVE_ZLIB
#include <zlib.h>
#endif

using namespace importtools;
using namespace tables;

namespace
{

QByteArray xdi(const QByteArray &columns, const QByteArray &rest, const QByteArray &numbers)
{
    QByteArray text = "# XDI/1.0 GSE/1.0\n# Element.symbol: Cu\n# Element.edge: K\n# Mono.d_spacing: 3.13553\n";
    int number = 1;
    for (const QByteArray &column : columns.split(','))
        text += "# Column." + QByteArray::number(number++) + ": " + column + '\n';
    return text + rest + "# ///\n# a comment: with Mode and Offset\n#----\n# labels\n" + numbers;
}

QByteArray group(const QByteArray &name, const QByteArray &args, const QByteArray &x, const QByteArray &y)
{
    return "$old_group = '" + name + "';\n@args = ('label','" + name + "\\'s'," + args + ");\n@x = (" + x +
           ");\n@y = (" + y + ");\n[record]   # create object and set arrays in ifeffit\n\n";
}

const QByteArray head = "# Athena project file -- version 0.9\n\n";

/// "energy mu ..." of the points of a file that was written, as a reader has them.
QString pointsOf(const QByteArray &file)
{
    const SpectrumScan scan = parseSpectrum({file.constData(), static_cast<std::size_t>(file.size())});
    QStringList points;
    for (const SpectrumPoint &point : scan.points)
        points << QString("%1:%2").arg(point.energy, 0, 'g', 8).arg(point.mu, 0, 'g', 6);
    return points.join(' ');
}

} // namespace

class TestImportSpectra : public QObject
{
    Q_OBJECT

private slots:
    /// One input each; the points "energy:mu" that the program's reader finds in what was written, or the error.
    void forms()
    {
        struct Case {
            const char *name; ///< of the file
            QByteArray text;
            QString option;
            QString points;
            int mode;
            QString said;
        };
        const QByteArray two = "7000 2 1\n7001 4 1\n";
        const QByteArray mu = "7000 0.5\n7001 0.75\n";
        const QString logs = "7000:0.693147 7001:1.38629", plain = "7000:0.5 7001:0.75", ratios = "7000:0.5 7001:0.25";
        forEach<Case>(
            {{"counts.xdi", xdi("energy eV,i0,itrans", "", two), "", logs, 2, ""},
             {"kev.xdi", xdi("energy keV,mutrans", "", "7.0 0.5\n7.001 0.75\n"), "", plain, 2, ""},
             {"fluor.xdi", xdi("energy eV,i0,ifluor", "", two), "", ratios, 3, ""},
             {"mufluor-first.xdi", xdi("energy eV,i0,ifluor,mufluor", "", "7000 2 1 0.5\n7001 4 1 0.75\n"), "", plain,
              3, ""},
             {"mufluor.xdi", xdi("energy eV,mufluor", "", mu), "", plain, 3, ""},
             {"norm.xdi", xdi("energy eV,normtrans", "", mu), "", plain, 3, ""},
             {"chosen.xdi", xdi("energy eV,i0,itrans,mutrans", "", "7000 2 1 0.5\n7001 4 1 0.75\n"), "::itrans", logs,
              2, ""},
             {"mu-first.xdi", xdi("energy eV,i0,itrans,mutrans", "", "7000 2 1 0.5\n7001 4 1 0.75\n"), "", plain, 2,
              ""},
             {"angle.xdi", xdi("angle degrees,mutrans", "", "16 0.5\n15 0.75\n"), "", "7172.7793:0.5 7638.8734:0.75", 2,
              ""},
             {"radians.xdi", xdi("angle radians,mutrans", "", "0.2792526803 0.5\n0.2617993878 0.75\n"), "",
              "7172.7793:0.5 7638.8734:0.75", 2, ""},
             {"cr.xdi", xdi("energy eV,mutrans", "", mu).replace('\n', '\r'), "", plain, 2, ""},
             {"crlf.xdi", xdi("energy eV,mutrans", "", mu).replace("\n", "\r\n"), "", plain, 2, ""},
             {"falls.xdi", xdi("energy eV,mutrans", "", "7001 0.75\n7000 0.25\n7000 0.75\n"), "", plain, 2,
              "sorted|1 points of equal energy were averaged"},
             {"no-value.xdi", xdi("energy eV,mutrans", "# Family.key:\n", mu), "", "", 0, "no value"},
             {"two-dots.xdi", xdi("energy eV,mutrans", "# Family.key.sub: 1\n", mu), "", "", 0, "Family.key.sub"},
             {"digit.xdi", xdi("energy eV,mutrans", "# 1Family.key: 1\n", mu), "", "", 0, "1Family.key"},
             {"word.xdi", xdi("energy eV,mutrans", "", "7000 0.5\n7001 STRING\n"), "", "", 0, "\"STRING\" in line 12"},
             {"longer.xdi", xdi("energy eV,mutrans", "", "7000 0.5\n7001 1 2\n"), "", "", 0,
              "another number of columns"},
             {"position.xdi", xdi("x mm,mutrans", "", mu), "", "", 0, "\"x\" in mm"},
             {"pixels.xdi", xdi("energy pixel,mutrans", "", mu), "", "", 0, "pixel, not in eV"},
             {"zero.xdi", xdi("energy eV,i0,itrans", "", "7000 0 1\n7001 1 1\n"), "", "", 0, "i0 is zero or negative"},
             {"nan.xdi", xdi("energy eV,mutrans", "", "7000 nan\n7001 1\n"), "", "", 0, "no finite number"},
             {"empty.xdi", xdi("energy eV,mutrans", "", ""), "", "", 0, "no numbers"},
             {"one.xdi", xdi("energy eV,mutrans", "", "7000 1\n"), "", "", 0, "fewer than two points"},
             {"a.xmu", "# Athena data file\n#----\n#  energy   xmu   bkg\n7000 0.5 9\n7001 0.75 9\n", "", plain, 2, ""},
             {"a.nor", "#  energy   norm   nbkg\n7000 0.5 9\n7001 0.75 9\n", "", plain, 3, ""},
             {"many.nor", "#  energy  foil  oxide\n7000 9 0.5\n7001 9 0.75\n", "::oxide", plain, 3, ""},
             {"unknown.nor", "#  energy  foil  oxide\n7000 0.5 9\n7001 0.75 9\n", "", plain, 3, "foil was taken"},
             {"none.nor", "#  energy  foil  oxide\n7000 0.5 9\n", "::iron", "", 0, "foil, oxide"},
             {"number.txt", "* two\n7000 9 0.5\n7001 9 0.75\n", "::3", plain, 3, ""},
             {"a.csv", "Energy (keV),mu\n7.0,0.5\n7.001,0.75\n", "", plain, 2, ""},
             {"semi.csv", "energy;\"i0\";\"itrans\"\n7000;2;1\n7001;4;1\n", "", logs, 2, ""},
             {"bare.dat", mu, "", plain, 2, ""},
             {"columns.dat", "7000 " + QByteArray(100000, ' ').replace(" ", "1 ") + "\n", "", "", 0,
              "more than 4096 columns"},
             {"commas.csv", "energy,mu\n7000,5,0,5\n7001,5,0,75\n", "", "", 0, "2 names for 4 columns"},
             {"below.dat", "7.0 0.5\n7.001 0.75\n", "", plain, 2, "taken for keV"},
             {"energy.csv", "energy,mu\n7000,0.5\n7001,0.75\n", "::energy", "", 0, "cannot be the absorption"},
             {"i0.nor", "# energy  i0  xmu\n7000 0.5 9\n7001 0.75 9\n", "::i0", plain, 3, "an incident intensity"},
             {"map.txt", "# 1301\n# ENERGY = 7000\n0 0 1 2\n0 1 1 2\n", "", "", 0, "a map, not a spectrum"},
             {"image.txt", "100 110 9\n120 130 9\n90 80 9\n", "", "", 0, "an image, not a spectrum"},
             {"grid.dat", QByteArray("1 2\n").repeated(11), "", "", 0, "only 1 different energies"},
             {"prose.txt", "no numbers at all\n", "", "", 0, "no spectrum and no stack"},
             {"p.prj", head + group("foil", "'datatype','xmu'", "'7000','7001'", "0.5,0.75"), "", plain, 2, ""},
             {"n.prj", head + group("foil", "'datatype','norm'", "7000,7001", "0.5,0.75"), "", plain, 3, ""},
             {"shift.prj", head + group("foil", "'bkg_eshift','-2'", "7002,7003", "0.5,0.75"), "", plain, 2, "-2 eV"},
             {"chi.prj",
              head + group("k", "'datatype','chi'", "1,2", "3,4") + group("f", "'a',1", "7000,7001", ".5,.75"), "",
              plain, 2, ""},
             {"pick.prj", head + group("a", "'a',1", "1,2", "3,4") + group("b", "'a',1", "7000,7001", ".5,.75"),
              "::b's", plain, 2, ""},
             {"cut.prj", (head + group("foil", "'a','b'", "7000,7001", "0.5,0.75")).chopped(60), "", "", 0, "cut off"},
             {"empty.prj", head + "1;\n", "", "", 0, "no groups"},
             {"uneven.prj", head + group("foil", "'a','b'", "7000,7001", "0.5"), "", "", 0, "2 energies and 1 values"},
             {"json.prj",
              R"({"_____header1": "# Athena project file", "_____order": ["q"], "q": {"args": {"label": "foil",
                 "bkg_eshift": 1}, "x": ["6999", "7000"], "y": [0.5, 0.75]}})",
              "", plain, 2, "1 eV"},
             {"broken.prj", R"({"_____header1": "# Athena project file", "_____order": ["q")", "", "", 0,
              "no whole JSON"}},
            [](const Case &c) {
                ImportFolder folder;
                QVERIFY(folder.write(c.name, c.text));
                const int code = folder.run(QString(c.name) + c.option);
                for (const QString &part : c.said.split('|'))
                    QVERIFY2(folder.err.contains(part), qPrintable(folder.err));
                if (c.points.isEmpty()) {
                    QCOMPARE(code, 2);
                    QCOMPARE(folder.err.count('\n'), 1);
                    QVERIFY(folder.err.contains(c.name));
                    QCOMPARE(folder.written(), QStringList("none"));
                    return;
                }
                QVERIFY2(code == 0, qPrintable(folder.err));
                const QJsonObject record = folder.json("import.json")["spectra"].toArray()[0].toObject();
                QCOMPARE(pointsOf(bytesOf(folder.path("out/" + record["file"].toString()))), c.points);
                QCOMPARE(record["mode"].toInt(), c.mode);
            });
    }

    /// Whatever the size of the numbers, the absorption comes back to 1e-9 of its largest; a form that loses it is not
    /// taken. Soft X-rays need another crystal.
    void absorptionIsKept()
    {
        struct Case {
            const char *name;
            double energy, size, offset;
            ImportedSpectrum::Kind kind;
            bool isRatio;
        };
        using Kind = ImportedSpectrum::Kind;
        forEach<Case>({{"usual", 7000, 1, 0.5, Kind::Absorption, false},
                       {"negative", 7000, -3, -1, Kind::Absorption, false},
                       {"too thin for counts", 7000, 1e-12, 0, Kind::Absorption, true},
                       {"too thick for counts", 7000, 500, 800, Kind::Absorption, true},
                       {"fluorescence", 7000, 1e5, 0, Kind::Ratio, true},
                       {"soft X-rays", 280, 1, 0.5, Kind::Absorption, false}},
                      [](const Case &c) {
                          ImportedSpectrum spectrum;
                          spectrum.kind = c.kind;
                          double largest = 0;
                          for (int i = 0; i < 50; ++i) {
                              spectrum.energy << c.energy + 0.37 * i;
                              spectrum.mu << c.offset + c.size * std::sin(i);
                              largest = std::max(largest, std::abs(spectrum.mu.last()));
                          }
                          const SpectrumFileText file = spectrumFileText(spectrum, "a Mode and an Offset");
                          const SpectrumScan scan = parseSpectrum(file.text.toStdString());
                          QCOMPARE(scan.points.size(), 50);
                          QCOMPARE(file.isRatio, c.isRatio);
                          for (int i = 0; i < 50; ++i) {
                              QVERIFY(std::abs(scan.points[i].mu - spectrum.mu[i]) <= 1e-9 * largest);
                              QVERIFY(isClose(scan.points[i].energy, spectrum.energy[i], 1e-12));
                          }
                      });
    }

    /// A packed project is that project; damage and a bomb are found.
    void packedProjects()
    {
#ifdef FLOKLUK_HAVE_ZLIB
        ImportFolder folder;
        const auto pack = [&folder](const char *name, const QByteArray &text) {
            const gzFile file = gzopen(folder.path(name).toLocal8Bit().constData(), "wb9");
            QVERIFY(gzwrite(file, text.constData(), static_cast<unsigned>(text.size())) == text.size());
            gzclose(file);
        };
        pack("two.prj",
             head + group("a", "'k',1", "7000,7001", "1,2") + group("a", "'k',1", "7000,7001", "3,4") + "1;\n");
        QCOMPARE(folder.run("two.prj"), 0);
        QCOMPARE(pointsOf(bytesOf(folder.path("out/a_s.dat"))), QString("7000:1 7001:2"));
        QCOMPARE(pointsOf(bytesOf(folder.path("out/a_s_2.dat"))), QString("7000:3 7001:4"));
        QVERIFY(folder.write("cut.prj", bytesOf(folder.path("two.prj")).chopped(20)));
        QCOMPARE(folder.run("cut.prj"), 2);
        QVERIFY2(folder.err.contains("damaged or end too early"), qPrintable(folder.err));
        pack("bomb.prj", QByteArray(100 << 20, ' '));
        QCOMPARE(folder.run("bomb.prj"), 2);
        QVERIFY2(folder.err.contains("far more"), qPrintable(folder.err));
#else
        QSKIP("without zlib");
#endif
    }

    /// The job takes four spectra with their valences, a file of the program's own format as it is, and says what is
    /// missing; a job that is opened is not an input that is written over.
    void spectraAlone()
    {
        ImportFolder folder;
        for (const char *name : {"a.dat", "b.dat", "c.dat", "d.dat", "result.dat"})
            QVERIFY(folder.write(name, "7000 0.5\n7001 0.75\n"));
        const QByteArray own = "Mode 0 0 1 2\nOffset\n0 16 1 2 1\n0 15 1 4 1\n";
        QVERIFY(folder.write("own.dat", own));
        QCOMPARE(folder.run("own.dat --refs a.dat b.dat --valences 2,3 --refs c.dat d.dat result.dat"), 2);
        QVERIFY2(folder.err.contains("valences is 2, that of spectra 6"), qPrintable(folder.err));
        QCOMPARE(folder.run("own.dat --refs a.dat --bin 2"), 2);
        QVERIFY2(folder.err.contains("--bin is for images"), qPrintable(folder.err));
        QCOMPARE(folder.run("own.dat --refs a.dat b.dat --valences 2,3,4,5 --refs c.dat d.dat result.dat"), 0);
        QCOMPARE(folder.written().join(' '),
                 QString("a.dat b.dat c.dat d.dat import.json job.json own.dat result_spectrum.dat"));
        QCOMPARE(bytesOf(folder.path("out/own.dat")), own);
        const QJsonArray references = folder.json("job.json")["references"].toArray();
        QCOMPARE(references.size(), 4);
        QCOMPARE(references[1].toObject()["file"].toString(), QString("a.dat"));
        QCOMPARE(references[1].toObject()["valence"].toDouble(), 3.0);
        QVERIFY(folder.err.contains("first 4 of 6") && !folder.out.contains("open with"));
        const QByteArray before = bytesOf(folder.path("out/a.dat"));
        QCOMPARE(folder.run("--refs out/a.dat"), 2);
        QVERIFY2(folder.err.contains("would be written over"), qPrintable(folder.err));
        QCOMPARE(bytesOf(folder.path("out/a.dat")), before);
        QVERIFY(folder.written().filter("import-").isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestImportSpectra)

#include "TestImportSpectra.moc"
