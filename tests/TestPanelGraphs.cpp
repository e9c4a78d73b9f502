// What the panel's graphs show, what follows from a mouse in them, and their markers.

#include "AnalystTools.h"
#include "DisplayHelpers.h"

#include <QLabel>

#include <functional>

using namespace paneltools;

namespace
{

/// The drawing area of a graph, on a screen that is large enough for all of them.
DispArea *shownArea(User *user, Displays::DispId id)
{
    user->panel.displays()->resize(1600, 1200);
    user->panel.displays()->grab();
    return user->panel.displays()->display(id)->area();
}

} // namespace

class TestPanelGraphs : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    /// Nothing without results, something with them.
    void contents()
    {
        struct Case {
            const char *name;
            Displays::DispId id;
        };
        User empty;
        Analyst user(m_files, "TypeFourPs");
        user.tick("34", "LCFCB");
        user.click("LCFB");
        const auto inkOf = [](User *shownTo, Displays::DispId id) {
            DispArea *const area = shownArea(shownTo, id);
            area->grab(); // also of one in a window of its own
            const QRectF plot(QPointF(area->cc.isx0(), area->cc.isy1()), QPointF(area->cc.isx1(), area->cc.isy0()));
            return inkIn(area->grab(plot.toRect().adjusted(2, 2, -2, -2)).toImage()).size();
        };
        const auto check = [&](const Case &c) {
            if (c.id != Displays::Muts) // which has the edge's markers
                QVERIFY(inkOf(&empty, c.id).isEmpty());
            QVERIFY(inkOf(&user, c.id).width() > 30 && inkOf(&user, c.id).height() > 20);
        };
        forEach<Case>({{"Muts", Displays::Muts},
                       {"LCF vs MPS", Displays::LcfVsMps},
                       {"Histgram of a", Displays::HistA},
                       {"Histgram of dMut", Displays::HistDMut},
                       {"dMut/v or a", Displays::DMutVorA},
                       {"M2/M3", Displays::M2M3}},
                      check);
    }

    /// The comparison's follow the valences at once, the others the results and the choice of what is drawn.
    void rangesFollow()
    {
        Analyst user(m_files);
        user.tick("26", "LCFCB");
        user.click("LCFB");
        const auto range = [&user](Displays::DispId id) {
            const ChCoord &cc = shownArea(&user, id)->cc;
            return QString("%1 to %2").arg(cc.rx0()).arg(cc.rx1());
        };
        const auto top = [&user](Displays::DispId id) {
            return shownArea(&user, id)->cc.ry1();
        };
        QCOMPARE(range(Displays::LcfVsMps), QString("1.8 to 3.2"));
        user.type("Ref1File/Valence", "1");
        QCOMPARE(range(Displays::LcfVsMps), QString("0.8 to 3.2"));
        user.click("Ref1File/UseCB");
        QCOMPARE(range(Displays::LcfVsMps), QString("2.8 to 4.2"));
        user.click("Ref1File/UseCB");
        user.type("Ref1File/Valence", "2");
        QVERIFY(top(Displays::HistA) < 1.1 * 24);
        user.click("HgAAuto");
        for (const char *const valence : {"Ref1File/Valence", "Ref2File/Valence", "Ref3File/Valence"})
            user.type(valence, "3");
        user.click("CalcMapB"); // every pixel is in one box
        QCOMPARE(top(Displays::HistA), 1.1 * 24);
        user.type("HgAFrom", "1");
        QCOMPARE(range(Displays::HistA), "1 to " + user.text("HgATo"));
        QVERIFY(top(Displays::Muts) > 2); // as measured
        user.click("NBy2Vics");
        QVERIFY(top(Displays::Muts) < 1.9);
    }

    /// The outlines of single references are named after those of the run, whatever stands in the rows now.
    void outlinesAreOfTheRun()
    {
        Analyst user(m_files);
        const auto names = [&user] {
            QStringList found;
            for (const HistogramPart &part : user.panel.graphs().thicknessHistogram().parts)
                found << part.name;
            return found;
        };
        QCOMPARE(names(), QStringList());
        user.click("HgTPerRef");
        const QStringList before = names();
        QCOMPARE(before.size(), 3);
        QCOMPARE(before[1], QFileInfo(m_files.reference(2)).fileName());
        user.click("Ref2File/ClearB"); // nothing can be calculated
        QCOMPARE(names(), before);
        user.useReferences("");
        QCOMPARE(names(), before);
        user.useReferences("13");
        QCOMPARE(names(), QStringList({before[0], before[2]}));
    }

    /// A release gives later comparisons another colour, a double click takes all of them away.
    void mouseInTheComparison()
    {
        Analyst user(m_files);
        DispArea *const area = shownArea(&user, Displays::LcfVsMps);
        const Comparisons &comparisons = user.panel.analysis().comparisons;
        user.tick("26", "LCFCB");
        QTest::mouseClick(area, Qt::LeftButton, Qt::NoModifier, area->rect().center());
        user.click("LCFB");
        QCOMPARE(comparisons.records.size(), 2);
        QCOMPARE(comparisons.records[1].colourIndex, comparisons.records[0].colourIndex + 1);
        for (int i = 0; i < 2; ++i) {
            user.panel.clearLCFvs4PS(nullptr);
            QCOMPARE(comparisons.records.size(), 0);
            QCOMPARE(comparisons.colourIndex, 0);
        }
        user.click("LCFB");
        QTest::mouseDClick(area, Qt::LeftButton, Qt::NoModifier, area->rect().center());
        QCOMPARE(comparisons.records.size(), 0);
    }

    /// A click tells the values there and leaves all fields to the last digit, at a marker too; what becomes a double
    /// click or a drag tells nothing.
    void clicksAmongAllSpectra()
    {
        QApplication::setDoubleClickInterval(20);
        User user;
        user.load(m_files, "1");
        user.tick("1", "UseCB");
        user.typeEnergy(1, "8600.125678");
        user.type("EdgeE", "8345.123456");
        DispArea *const area = shownArea(&user, Displays::Muts);
        using Gesture = std::function<void(const QPoint &)>;
        const Gesture click = [area](const QPoint &at) {
            QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, at);
            moveTo(area, at + QPoint(1, 1), Qt::LeftButton);
            QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, at + QPoint(1, 1));
        };
        const Gesture doubleClick = [area](const QPoint &at) {
            QTest::mouseDClick(area, Qt::LeftButton, Qt::NoModifier, at);
        };
        const Gesture dragAway = [area](const QPoint &at) {
            drag(area, at, at + QPoint(30, 0));
        };
        forRows<double, Gesture, bool>(
            {{"beside the markers", 8900, click, true},
             {"at the edge", 8346, click, true},
             {"at an energy in use", 8599, click, true},
             {"twice", 8346, doubleClick, false},
             {"drag beside the markers", 8900, dragAway, false}},
            [&](double energy, const Gesture &gesture, bool isReported) {
                const QPoint place(qRound(area->cc.r2sx(energy)), area->height() / 2);
                const double exact = area->cc.s2rx(place.x());
                const double value = user.reference(1)->selector()->spectrum().valueAtEnergy(AMutE::Raw, exact);
                const QString values =
                    QString("%1 eV: %2 %3\n")
                        .arg(sixDigits(exact), QFileInfo(m_files.reference(1)).fileName(), sixDigits(value));
                user.takeMessages();
                gesture(place);
                QTest::qWait(60);
                QCOMPARE(user.takeMessages(), isReported ? values : QString());
                QCOMPARE(user.text("EdgeE") + ' ' + user.rowText(1, "Energy"), QString("8345.123456 8600.125678"));
            });
    }

    // --- the edge and the energies in the graphs ---

    /// Without "Full Range" twice the ranges about the edge, with a twentieth of that on either side.
    void energyWindow()
    {
        User user;
        user.load(m_files, "1");
        user.type("EdgeE", "8345");
        const AMutE &spectrum = user.reference(1)->selector()->spectrum();
        const auto range = [&] {
            const ChCoord &cc = shownArea(&user, Displays::Ref1)->cc;
            return QPointF(cc.rx0(), cc.rx1());
        };
        const double span = spectrum.energyMax() - spectrum.energyMin();
        const QPointF whole(spectrum.energyMin() - 0.05 * span, spectrum.energyMax() + 0.05 * span);
        QCOMPARE(range(), whole);
        user.click("FullRangeCB");
        QCOMPARE(range(), QPointF(8245 - 15, 8545 + 15));
        user.type("EdgeE", "8355");
        QCOMPARE(range(), QPointF(8255 - 15, 8555 + 15));
        user.type("PreEEndDE", "-40");
        QCOMPARE(range(), QPointF(8275 - 14, 8555 + 14));
        user.click("FullRangeCB");
        QCOMPARE(range(), whole);
    }

    /// Moving: the graph's lines follow; let go: everything does. The ranges keep their distance from the edge.
    void edgeMarker()
    {
        User user;
        user.load(m_files, "1", true);
        user.typeEnergy(1, "8400");
        const QLabel &line = *user.find<QLabel>("StatusLine");
        const AMutE &spectrum = user.reference(1)->selector()->spectrum();
        for (const auto id : {Displays::Ref1, Displays::Target}) {
            user.type("EdgeE", "8345");
            DispArea *const area = shownArea(&user, id);
            const QPoint from(qRound(area->cc.r2sx(8345)), area->height() / 2), to = from + QPoint(15, 0);
            const QString edge = sixDigits(area->cc.s2rx(to.x()));
            QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, from);
            moveTo(area, to);
            QCOMPARE(user.text("EdgeE"), edge);
            QCOMPARE(spectrum.edgeEnergy(), edge.toDouble());
            QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), 8400));
            user.takeMessages();
            QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, to);
            QCOMPARE(user.failedMapRuns(), 1);
            QCOMPARE(line.text(), "edge 8345 -> " + edge);
            QCOMPARE(user.text("EdgeE"), edge);
            QCOMPARE(user.field("EdgeE")->cursorPosition(), 0);
            QCOMPARE(spectrum.edgeJump(), spectrumOf(m_files.reference(1), edge.toDouble()).edgeJump());
            QCOMPARE(user.rowText(1, "MutT"), shownValue(spectrumOf(m_files.target(), edge.toDouble()), 8400));
        }
        user.type("EdgeE", "8345");
        DispArea *const area = shownArea(&user, Displays::Ref1);
        const QPoint from(qRound(area->cc.r2sx(8445)), 20), to = from + QPoint(30, 0);
        drag(area, from, to);
        QCOMPARE(user.text("PostEStartDE"), sixDigits(area->cc.s2rx(to.x()) - 8345));
        QCOMPARE(user.text("EdgeE"), QString("8345"));
        QCOMPARE(spectrum.postEdgeStart(), 8345 + user.text("PostEStartDE").toDouble());
    }

    void energyMarkers()
    {
        User user;
        user.load(m_files, "1");
        user.type("EdgeE", "8345");
        user.typeEnergy(1, "8600");
        user.typeEnergy(2, "8800");
        user.tick("1", "UseCB");
        DispArea *const area = shownArea(&user, Displays::Muts);
        area->scaleFixed = true;
        area->cc.setRealArea(8000, 0, 9000, 1);
        const auto dragged = [&](double from, double to, const char *field) {
            const int y = area->height() / 2;
            drag(area, QPoint(qRound(area->cc.r2sx(from)), y), QPoint(qRound(area->cc.r2sx(to)), y));
            return user.text(field).toDouble();
        };
        const auto cursorAt = [&](double energy) {
            moveTo(area, QPointF(area->cc.r2sx(energy), 20));
            return area->cursor().shape();
        };
        QCOMPARE(cursorAt(8600), Qt::SplitHCursor);
        QCOMPARE(cursorAt(8800), Qt::ArrowCursor);
        QCOMPARE(dragged(8800, 8700, "Energy2/Energy"), 8800.0); // not in use: no marker
        QCOMPARE(user.row(1)->energy(), 8600.0);
        const double energy = dragged(8600, 8500, "Energy1/Energy");
        QVERIFY(qAbs(energy - 8500) < 5);
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), energy));
        const double edge = dragged(8345, 8300, "EdgeE");
        QVERIFY(qAbs(edge - 8300) < 5);
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), edge), energy));
        user.load(user.row(1), m_files.map(7)); // whose energy is a fact
        QCOMPARE(dragged(user.row(1)->energy(), 8500, "Energy1/Energy"), user.row(1)->energy());
        user.click("Energy1/FileSelect/ClearB");
        QVERIFY(qAbs(dragged(user.row(1)->energy(), 8500, "Energy1/Energy") - 8500) < 5);
    }

    /// While a marker moves only the spectra are drawn again, for an energy only the picture of all of them.
    void movingMarkersRepaintSpectra()
    {
        Analyst user(m_files);
        user.tick("345", "UseCB"); // whose markers are close to the edge's
        user.click("Energy8/FileSelect/ClearB");
        user.panel.show();
        Displays *const displays = user.panel.displays();
        displays->resize(1600, 1200);
        displays->show();
        QSet<int> drawn;
        connect(displays, &Displays::draw, this, [&drawn](Displays::DispId id) { drawn.insert(id); });
        connect(user.map(), &DispMBase::draw, this, [&drawn] { drawn.insert(-1); });
        QTRY_VERIFY(drawn.contains(Displays::Muts) && drawn.contains(Displays::Ref1) && drawn.contains(-1));
        struct Case {
            const char *name;
            Displays::DispId id;
            double energy;
            QSet<int> drawn;
        };
        const auto check = [&](const Case &c) {
            DispArea *const area = displays->display(c.id)->area();
            const QPoint from(qRound(area->cc.r2sx(c.energy)), area->height() / 2);
            QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, from);
            do { // until what came before is drawn, however busy the machine is
                drawn.clear();
                QTest::qWait(50);
            } while (!drawn.isEmpty());
            moveTo(area, from + QPoint(20, 0));
            QTRY_COMPARE(drawn, c.drawn);
            QTest::qWait(50);
            QCOMPARE(drawn, c.drawn);
            moveTo(area, from);
            QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, from);
        };
        const QSet<int> all{Displays::Ref1, Displays::Ref2,   Displays::Ref3,
                            Displays::Ref4, Displays::Target, Displays::Muts};
        forEach<Case>({{"edge among all spectra", Displays::Muts, 8345, all},
                       {"edge of one spectrum", Displays::Ref2, 8345, all},
                       {"an energy without a map", Displays::Muts, 8459.7, {Displays::Muts}}},
                      check);
    }
};

QTEST_MAIN(TestPanelGraphs)
#include "TestPanelGraphs.moc"
