#include "analysis/model/Findings.h"
#include "mapdata/MapFileReader.h"
#include "tests/ModelSamples.h"
#include "tests/Tables.h"

#include <deque>
#include <functional>
#include <memory>

/// What is said about inputs that a result should not be trusted with.
class TestFindings : public QObject
{
    Q_OBJECT

    using Change = std::function<void(AnalysisInput &)>;
    struct Case {
        const char *name;
        const char *situation;
        Change change;
        /// How all findings begin: "E" for an error, "W" for a warning, and m, t, f for the calculations concerned
        const char *texts;
    };

    void check(std::initializer_list<Case> cases)
    {
        forEach<Case>(cases, [this](const Case &c) {
            AnalysisInput input = m_sample.input(QStringLiteral("refs=12 rows=1236 ") + c.situation);
            c.change(input);
            QStringList texts;
            for (const Finding &finding : findings(input)) {
                QString head = finding.severity == Finding::Severity::Error ? "E" : "W";
                head += QLatin1String(finding.concerns.testFlag(Finding::Map) ? "m" : "");
                head += QLatin1String(finding.concerns.testFlag(Finding::Target) ? "t" : "");
                head += QLatin1String(finding.concerns.testFlag(Finding::Fit) ? "f" : "");
                texts << head + ' ' + finding.text;
            }
            const QString found = texts.join('|');
            const QString wanted(c.texts);
            QVERIFY2(wanted.isEmpty() ? found.isEmpty() : found.startsWith(wanted), qPrintable(found));
        });
    }

private slots:
    void spectraAndEnergies()
    {
        check(
            {{"nothing", "", [](AnalysisInput &) {}, ""},
             {"typing slip", "", [](AnalysisInput &i) { i.points[1].energy = 826; },
              "Emt Energy 2: 826 eV is outside of Ref 1 (7000-7300 eV)|Emt Energy 2: 826 eV is outside of Ref 2 "
              "(7000-7300 eV)|Et Energy 2: 826 eV is outside of Target (7000-7300 eV)"},
             {"no map there", "rows=1236/136", [](AnalysisInput &i) { i.points[1].energy = 826; }, "Et Energy 2: 826"},
             {"the method does not know it", "refs=123 no-target lcf=",
              [](AnalysisInput &i) { i.references[2].spectrum.setDE(-50); }, "E Energy 1: 7000 eV is outside of Ref 3"},
             {"beyond the shifted scan",
              "no-target lcf=", [](AnalysisInput &i) { i.references[0].spectrum.setDE(300); },
              "Wmf Ref 1: the post-edge range holds 0 points (data 6700-7000 eV)|Em Energy 2: 7060 eV"},
             {"an unused energy does not matter", "", [](AnalysisInput &i) { i.points[7].energy = 826; }, ""},
             {"just beyond it", "", [](AnalysisInput &i) { i.points[0].energy = 6999.99999; },
              "Emt Energy 1: 6999.99999 eV is outside of Ref 1 (7000-7300 eV)"},
             {"just beyond it, continued", "linear", [](AnalysisInput &i) { i.points[0].energy = 6999.96; }, ""},
             {"too far beyond it", "linear", [](AnalysisInput &i) { i.points[0].energy = 6999.94; }, "Emt Energy 1: 6"},
             {"no absorption", "no-target lcf=",
              [](AnalysisInput &i) {
                  i.points[1].energy = 7300.5;
                  i.references[1].spectrum.addPoint({0, 7301, std::nan("")});
              },
              "Em Energy 2: 7300.5 eV is outside of Ref 1 (7000-7300 eV)|Em Energy 2: at 7300.5 eV Ref 2 has no"},
             {"a short range", "", [](AnalysisInput &i) { i.references[1].spectrum.setPreEdgeEnd(7000.5); },
              "Wmtf Ref 2: the pre-edge range holds 1 points (data 7000-7300 eV)"},
             {"a short fit", "lcf=23",
              [](AnalysisInput &i) {
                  i.points[1].energy = 7060.2;
                  i.points[2].energy = 7060.9;
              },
              "Wf Target: the range of the LCF holds 0 points"},
             {"no valence", "", [](AnalysisInput &i) { i.references[0].hasValence = false; },
              "Wmtf Ref 1: the valence is no number and counts as 0"},
             {"a fit without a target", "no-target lcf=2", [](AnalysisInput &) {},
              "Wf Target: energies are marked LCF, but there is no spectrum"},
             {"two V points", "v=36 no-target lcf=", [](AnalysisInput &) {},
              "Em Energies 3 and 6 are both marked as V Point"},
             {"two V points, one for the target only", "v=36 rows=1236/123", [](AnalysisInput &) {},
              "Et Energies 3 and 6"},
             {"two V points do not matter", "v=36 linear", [](AnalysisInput &) {}, "W Energies 3 and 6"},
             {"one energy twice", "", [](AnalysisInput &i) { i.points[2].energy = 7060.05; },
              "Wmt Energy 3: 7060.05 eV is nearly that of energy 2"},
             {"neighbours", "", [](AnalysisInput &i) { i.points[2].energy = 7060.06; }, ""},
             {"one file twice", "",
              [](AnalysisInput &i) {
                  i.target.file = i.references[1].file;
                  i.points[5].mapFile.path = i.points[7].mapFile.path = "/maps/1.txt"; // 8 is not used
              },
              "Wmtf Target: the same file as Ref 2|Wmtf Energy 6: the same file as Energy 1"},
             {"keV", "lcf=4",
              [](AnalysisInput &i) {
                  i.points[3].energy = 7.119;
                  i.conditions.edge.edge = 7.12;
              },
              "Wmtf Edge: 7.12 eV looks like keV|Wmtf Energy 4: 7.119 eV looks like keV"},
             {"a spectrum in keV",
              "refs=1 rows= no-target lcf=", [](AnalysisInput &i) { i.references[0].spectrum.setDE(7290); },
              "Wmf Ref 1: the energies look like keV"}});
    }

    void maps()
    {
        const auto given = [this](int row, const QString &axes, const QString &intensity = "1 0") -> Change {
            return [this, row, axes, intensity](AnalysisInput &i) {
                i.points[row].map = map(axes, intensity);
            };
        };
        check({{"another size", "", given(2, "2 1 0 0 2"),
                "Em Energy 3: the map has 2 x 1 pixels, that of energy 1 3 x 2"},
               {"reversed rows", "", given(2, "3 2 0 2 -2"),
                "Em Energy 3: the pixels lie up to 1 of their steps from those of"},
               {"another pixel", "", given(2, "3 2 0.6 0 2"), "Em Energy 3: the pixels lie up to 0.6"},
               {"a stage with play", "", given(2, "3 2 0 0.4 2"), "Wm Energy 3: the pixels lie up to 0.2"},
               {"rounded positions", "", given(2, "3 2 0.09 0 2"), ""},
               {"positions that are none", "", given(2, "3 2 nan 0 2"), "Em Energy 3: the pixels lie up to inf"},
               {"a row of pixels", "rows=1",
                [this](AnalysisInput &i) {
                    i.points[0].map = map("3 1 0 0 0", "1 0");
                    i.points[1].map = map("3 1 0 0.6 0", "1 0");
                    i.points[1].isUsed = true;
                },
                "Em Energy 2: the pixels lie up to 0.6"},
               {"decimal commas", "", given(2, "3 2 0 0 2", "0,5 1"), "Em Energy 3: the intensity of every pixel is 0"},
               {"one of them with I0", "", given(2, "3 2 0 0 2", "1 2"), "Wm Energy 3: either this map"},
               {"no logarithm", "", given(2, "3 2 0 0 2", "-1 1"), "Em Energy 3: no pixel of the map has a finite"}});
    }

    /// What reading them has shown.
    void readMaps()
    {
        const auto parsed = [](const char *records) { // 3 x 2 pixels as the sample's, all absorbing ln 2
            auto map = std::make_shared<A2DData>();
            parseMapText(QByteArray("# AXIS 0 x um 0 1 2\n# AXIS 1 y um 0 2 1\n") + records, map.get());
            return map;
        };
        const auto changed = parsed("0 0 1 2\n1 0 1 2\n2 0 1 2\n0 2 1 2\n1 2 1 2\n2 2 1 2\n");
        MapLoadFacts facts;
        facts.changedMeanwhile = true;
        changed->setFacts(facts);
        const auto third = [](const std::shared_ptr<A2DData> &map) -> Change {
            return [map](AnalysisInput &i) {
                i.points[2].map = map.get();
            };
        };
        const auto half = parsed("0 0 1 2\n1 0 1 2\n2 0 1 2\n");
        check({{"half a map", "", third(half), "Em Energy 3: the map has 3 records, not 3 x 2 = 6"},
               {"pixels in another order", "", third(parsed("2 2 1 2\n1 2 1 2\n0 2 1 2\n2 0 1 2\n1 0 1 2\n0 0 1 2\n")),
                "Em Energy 3: the pixels lie up to 2 of their steps from those of energy 1|Em Energy 3: the records "
                "are in "
                "another "
                "order than the header says: x is 2 in record 1 and 1 in record 2"},
               {"decimal commas", "", third(parsed("0 0 1 2\n1 0 1,5 2,5\n2 0 1 2\n0 2 1 2\n1 2 1 2,5\n2 2 1 2\n")),
                "Em Energy 3: 2 of 6 records have a value that is no number and counts as 0 (decimals take a point)"},
               {"an unused map does not matter", "", [half](AnalysisInput &i) { i.points[7].map = half.get(); }, ""},
               {"written to while it was read", "", third(changed),
                "Em Energy 3: the map file changed while it was read"}});
    }

private:
    /// "columns, rows, first x, first y, step along y"; neighbours in a row are 1 apart.
    const A2DData *map(const QString &axes, const QString &intensity)
    {
        const QStringList axis = axes.split(' ');
        const int nx = axis[0].toInt(), ny = axis[1].toInt();
        QString text = QStringLiteral("# AXIS 0 x um 0 1 %1\n# AXIS 1 y um 0 1 %2\n").arg(nx - 1).arg(ny - 1);
        for (int i = 0; i < nx * ny; ++i)
            text += QStringLiteral("%1 %2 %3\n")
                        .arg(axis[2].toDouble() + i % nx)
                        .arg(axis[3].toDouble() + axis[4].toDouble() * (i / nx))
                        .arg(intensity);
        m_maps.emplace_back();
        parseMapText(text.toUtf8(), &m_maps.back());
        return &m_maps.back();
    }

    modelsamples::Sample m_sample;
    std::deque<A2DData> m_maps;
};

QTEST_GUILESS_MAIN(TestFindings)
#include "TestFindings.moc"
