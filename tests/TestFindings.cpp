#include "analysis/model/Findings.h"
#include "mapdata/MapFileReader.h"
#include "tests/ModelSamples.h"
#include "tests/Tables.h"

#include <functional>

/// What is said about inputs that a result should not be trusted with.
class TestFindings : public QObject
{
    Q_OBJECT

private slots:
    void findingsOfInputs()
    {
        A2DData other;
        parseMapText("# AXIS 0 x um 0 1 1\n# AXIS 1 y um 0 1 0\n0 0 1 1\n1 0 1 1\n", &other);
        struct Case {
            const char *name;
            const char *situation;
            std::function<void(AnalysisInput &)> change;
            QString texts; ///< with "E" before an error, "W" before a warning
        };
        forEach<Case>(
            {{"nothing", "refs=12", [](AnalysisInput &) {}, ""},
             {"typing slip", "refs=12 rows=1236", [](AnalysisInput &i) { i.points[1].energy = 826; },
              "E Energy 2: 826 eV is outside of Ref 1 (7000-7300 eV)|E Energy 2: 826 eV is outside of Ref 2 (7000-7300 "
              "eV)|E Energy 2: 826 eV is outside of Target (7000-7300 eV)"},
             {"beyond the shifted scan", "refs=12 rows=1236",
              [](AnalysisInput &i) {
                  i.references[0].spectrum.setDE(300);
                  i.target.spectrum.clear();
                  for (PointInput &point : i.points)
                      point.isForLcf = false;
              },
              "W Ref 1: the post-edge range holds 0 points (data 6700-7000 eV)|E Energy 2: 7060 eV"},
             {"an unused energy does not matter", "refs=12", [](AnalysisInput &i) { i.points[7].energy = 826; }, ""},
             {"a short range", "refs=12", [](AnalysisInput &i) { i.references[1].spectrum.setPreEdgeEnd(7000.5); },
              "W Ref 2: the pre-edge range holds 1 points (data 7000-7300 eV)"},
             {"no valence", "refs=12", [](AnalysisInput &i) { i.references[0].hasValence = false; },
              "W Ref 1: the valence is no number and counts as 0"},
             {"a fit without a target", "refs=12 no-target lcf=2", [](AnalysisInput &) {},
              "W Target: energies are marked LCF, but there is no spectrum"},
             {"another map size", "refs=12 rows=1236", [&other](AnalysisInput &i) { i.points[2].map = &other; },
              "E Energy 3: the map has 2 x 1 pixels, that of energy 1 3 x 2"}},
            [this](const Case &c) {
                AnalysisInput input = m_sample.input(c.situation);
                c.change(input);
                QStringList texts;
                for (const Finding &finding : findings(input))
                    texts << (finding.severity == Finding::Severity::Error ? "E " : "W ") + finding.text;
                const QString found = texts.join('|');
                QVERIFY2(c.texts.isEmpty() ? found.isEmpty() : found.startsWith(c.texts), qPrintable(found));
            });
    }

private:
    modelsamples::Sample m_sample;
};

QTEST_GUILESS_MAIN(TestFindings)
#include "TestFindings.moc"
