#include "DisplayHelpers.h"
#include "Tables.h"
#include "display/DispABase.h"

namespace
{

void turnWheel(QWidget *widget, const QPointF &position, const QPoint &eighthsOfADegree)
{
    moveTo(widget, position);
#if QT_VERSION >= QT_VERSION_CHECK(5, 12, 0)
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), eighthsOfADegree, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
#else
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), eighthsOfADegree,
                      eighthsOfADegree.y(), Qt::Vertical, Qt::NoButton, Qt::NoModifier);
#endif
    QApplication::sendEvent(widget, &event);
}

} // namespace

class TestDisplay : public QObject
{
    Q_OBJECT

private slots:
    void wheelZooms()
    {
        constexpr double in = 1 / 1.1, out = 1.1;
        const QPoint forward(0, 120), back(0, -120);
        // x, y: factors of the range
        forRows<QPointF, QPoint, double, double>(
            {{"left band, along the y axis", {60, 150}, forward, 1, in},
             {"right band", {360, 150}, back, 1, out},
             {"in the left margin", {5, 150}, forward, 1, in},
             {"bottom band, along the x axis", {200, 260}, forward, in, 1},
             {"top band", {200, 20}, back, out, 1},
             {"corner", {60, 260}, forward, in, in},
             {"middle", {200, 150}, back, out, out},
             {"border of the left band", {74, 150}, forward, in, in},
             {"two notches at once count once", {200, 150}, {0, 240}, in, in},
             {"no turn at all zooms in", {200, 150}, {0, 0}, in, in},
             {"a slanting swipe", {200, 150}, {300, -10}, out, out},
             {"a swipe to the side is ignored", {200, 150}, {120, 0}, 1, 1}},
            [](const QPointF &position, const QPoint &turn, double x, double y) {
                Plot plot;
                const ChCoord &cc = plot.area.cc;
                const QPointF real(cc.s2rx(position.x()), cc.s2ry(position.y()));
                turnWheel(&plot.area, position, turn);
                QCOMPARE(cc.rx1() - cc.rx0(), 10 * x);
                QCOMPARE(cc.ry1() - cc.ry0(), y);
                // The point under the mouse stays there.
                QCOMPARE(QPointF(cc.r2sx(real.x()), cc.r2sy(real.y())), position);
                plot.area.scaleFixed = false;
                turnWheel(&plot.area, position, turn);
                QVERIFY(!plot.area.scaleFixed); // the next draw still takes its natural range
            });
    }

    void buttonsAndModifiers()
    {
        const Qt::KeyboardModifiers none = Qt::NoModifier, shift = Qt::ShiftModifier, control = Qt::ControlModifier;
        forRows<Qt::MouseButton, Qt::KeyboardModifiers, bool, bool>(
            {{"left", Qt::LeftButton, none, true, false},
             {"Shift and left", Qt::LeftButton, shift, false, true},
             {"Control and left", Qt::LeftButton, control, false, false},
             {"Alt and left", Qt::LeftButton, Qt::AltModifier, false, false},
             {"Shift, Control and left", Qt::LeftButton, shift | control, false, false},
             {"keypad flag and left", Qt::LeftButton, Qt::KeypadModifier, true, false},
             {"right", Qt::RightButton, none, false, false},
             {"Shift and right", Qt::RightButton, shift, false, false}},
            [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers, bool isReported, bool pans) {
                Plot plot;
                QStringList events;
                const MouseC *const record = &plot.area.mouse;
                connect(&plot.area, &DispArea::mPressed, this,
                        [&](MouseC *m) { events << (m == record ? "press" : "other"); });
                connect(&plot.area, &DispArea::mDragging, this, [&] { events << "drag"; });
                connect(&plot.area, &DispArea::mReleased, this, [&] { events << "release"; });
                connect(&plot.area, &DispArea::nowPos, this, [&] { events << "pos"; });

                drag(&plot.area, QPoint(100, 100), QPoint(134, 100), modifiers, button);
                moveTo(&plot.area, QPointF(150, 100)); // no button any more
                QCOMPARE(events.join(' '), QString(isReported ? "press pos drag release pos" : "pos release pos"));
                QCOMPARE(plot.area.cc.rx0(), pans ? -1.0 : 0.0);
                QCOMPARE(plot.area.cc.rx1(), pans ? 9.0 : 10.0);
                QVERIFY(plot.area.cc.ry0() == 0.0 && plot.area.cc.ry1() == 1.0);
                QCOMPARE((QVector<int>{record->pressX, record->pressY, record->releaseX, record->releaseY,
                                       record->pressButton, record->releaseButton, record->pressModifiers,
                                       record->moveButton}),
                         (QVector<int>{100, 100, 134, 100, int(button), int(button), int(modifiers), 0}));
                QVERIFY(!record->pressed);
            });
    }

    void panFollowsTheMouse()
    {
        Plot plot;
        QTest::mousePress(&plot.area, Qt::LeftButton, Qt::ShiftModifier, QPoint(100, 100));
        const double x = plot.area.cc.s2rx(100);
        const double y = plot.area.cc.s2ry(100);
        for (const QPointF &position : {QPointF(120, 90), QPointF(300, 200), QPointF(90, 130)}) {
            moveTo(&plot.area, position);
            QCOMPARE(plot.area.cc.r2sx(x), position.x());
            QCOMPARE(plot.area.cc.r2sy(y), position.y());
        }
    }

    void positionsRoundHalvesAwayFromZero()
    {
        DispArea area;
        moveTo(&area, QPointF(10.5, 10.49));
        QCOMPARE(QPoint(area.mouse.nowX, area.mouse.nowY), QPoint(11, 10));
        moveTo(&area, QPointF(-0.5, -1.5));
        QCOMPARE(QPoint(area.mouse.nowX, area.mouse.nowY), QPoint(-1, -2));
        QCOMPARE(QPoint(area.mouse.prevX, area.mouse.prevY), QPoint(11, 10));
    }

    void doubleClickKeepsPositions()
    {
        DispArea area;
        moveTo(&area, QPointF(10, 20));
        moveTo(&area, QPointF(30, 40));
        int reports = 0;
        connect(&area, &DispArea::mDClicked, this, [&] { ++reports; });
        area.scaleFixed = true;
        QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(50, 60), Qt::RightButton, Qt::RightButton,
                          Qt::ControlModifier);
        QApplication::sendEvent(&area, &event);
        const MouseC &m = area.mouse;
        QCOMPARE(
            (QVector<int>{m.prevX, m.prevY, m.nowX, m.nowY, m.dClickX, m.dClickY, m.dClickButton, m.dClickModifiers}),
            (QVector<int>{10, 20, 30, 40, 50, 60, Qt::RightButton, Qt::ControlModifier}));
        QCOMPARE(reports, 1);
        QVERIFY(!m.pressed);
        QVERIFY(!area.scaleFixed);
    }

    void scaleWipesMarginsAndOutlines()
    {
        Plot plot;
        const QImage wiped = plot.area.grab().toImage();
        const QImage kept =
            painted(&plot.area, plot.area.size(), [&plot](QStylePainter *p) { paintRedPlot(&plot.area, p, false); });
        for (const QPoint &point : {QPoint(40, 100), {380, 100}, {200, 15}, {200, 270}, {40, 15}}) {
            QCOMPARE(wiped.pixelColor(point), outlineColour());
            QCOMPARE(kept.pixelColor(point), outlineColour());
        }
        for (const QPoint &point : {QPoint(41, 16), {379, 269}, {200, 150}})
            QCOMPARE(wiped.pixelColor(point), QColor(Qt::red));
        for (const QPoint &margin :
             {QPoint(20, 150), {39, 150}, {200, 271}, {200, 299}, {200, 14}, {200, 0}, {381, 150}, {399, 150}}) {
            QCOMPARE(wiped.pixelColor(margin), QColor(Qt::white));
            QCOMPARE(kept.pixelColor(margin), QColor(Qt::red));
        }
    }

    /// Compared as pictures: the same texts drawn into the same boxes.
    void labelsAreCut()
    {
        forRows<RealRange, const char *, const char *, const char *, const char *>(
            {{"short", {{0, 10}, {-0.1, 1.6}}, "0", "10", "-0.1", "1.6"},
             {"long", {{7112.25, 7212.75}, {0.12345, 1.23456}}, "7112.2", "7212.7", "0.123", "1.234"},
             {"exponents", {{1.5e-05, 2.5e-05}, {1.5e-05, 1e+20}}, "1.5e-0", "2.5e-0", "1.5e-", "1e+20"}},
            [](const RealRange &range, const char *left, const char *right, const char *bottom, const char *top) {
                DispArea area;
                area.cc.setScreenArea(0, 300, 400, 0);
                area.cc.setMargins();
                area.setRealRange(range);
                const QImage scale = painted(&area, area.size(), [&](QStylePainter *p) { area.drawScale(p, true); });
                const QImage expected = painted(&area, area.size(), [&](QStylePainter *p) {
                    p->setPen(outlineColour());
                    p->drawRect(40, 15, 340, 255);
                    p->setPen(Qt::black);
                    const auto draw = [&](const QRectF &box, Qt::Alignment side, const char *text) {
                        area.dt.drawText(p, box, QFont(), int(side | Qt::AlignVCenter), 1, text, 12);
                    };
                    draw(QRectF(0, 15, 38, 10), Qt::AlignRight, top);
                    draw(QRectF(0, 260, 38, 10), Qt::AlignRight, bottom);
                    draw(QRectF(40, 271, 80, 10), Qt::AlignLeft, left);
                    draw(QRectF(300, 271, 80, 10), Qt::AlignRight, right);
                });
                QVERIFY(inkIn(scale).contains(inkIn(expected)));
                QCOMPARE(scale, expected);
            });
    }

    /// What a paint shows of the range that it offers, after what happened since the last paint.
    void offeredRanges()
    {
        const RealRange natural{{0, 10}, {0, 1}}, higher{{0, 10}, {0, 2}}, wider{{0, 20}, {0, 1}};
        const RealRange zoomed{{4, 5}, {0, 0.5}}, reversed{{10, 0}, {0, 1}};
        MarkLines marks;
        const Follow both = Follow::BothAxes, x = Follow::XAxis;
        // second: after {0 to 10, 0 to 1}
        forRows<RealRange, Follow, QString, RealRange>(
            {{"followed", higher, both, "", higher},
             {"followed the wrong way round", reversed, both, "", reversed},
             {"a zoom survives the same range", natural, both, "zoom", zoomed},
             {"a zoom goes with another range", higher, both, "zoom", higher},
             {"a zoom goes with another x range", wider, x, "zoom", wider},
             {"a zoom survives another y range", higher, x, "zoom", zoomed},
             {"another y range is followed without a zoom", higher, x, "", higher},
             {"double click", natural, both, "zoom, double click", natural},
             {"double click, another y range", higher, x, "zoom, double click", higher},
             {"while a marker is dragged", wider, both, "drag", natural},
             {"when it is released", wider, both, "drag, release", wider}},
            [&](const RealRange &second, Follow follow, const QString &before, const RealRange &shown) {
                DispABase dab;
                RealRange offered = natural;
                connect(&dab, &DispABase::draw, this, [&] { dab.offerRange(offered, follow); });
                dab.area()->grab();
                QVERIFY(dab.area()->shownRange() == natural);
                offered = second;
                if (before.contains("zoom"))
                    dab.area()->cc.setRealArea(4, 0, 5, 0.5);
                if (before.contains("double click"))
                    QTest::mouseDClick(dab.area(), Qt::LeftButton);
                marks.isMoving = before.contains("drag");
                dab.area()->markLines = &marks;
                dab.area()->grab();
                if (before.contains("release"))
                    QTest::mouseRelease(dab.area(), Qt::LeftButton);
                dab.area()->grab();
                QVERIFY(dab.area()->shownRange() == shown);
            });
    }

    void rangeIsTakenOnce()
    {
        DispABase dab;
        RealRange atDraw;
        connect(&dab, &DispABase::draw, this, [&] { atDraw = dab.area()->shownRange(); });
        dab.area()->cc.setRealArea(7, 7, 8, 8);
        dab.area()->grab();
        QVERIFY((atDraw == RealRange{{0, 1}, {0, 1}})); // no range given yet
        dab.setRealRange(1, 2, 3, 4);
        dab.setRealRange(5, 6, 7, 8);
        dab.area()->grab();
        QVERIFY((atDraw == RealRange{{1, 3}, {2, 4}}));
        dab.clearScale();
        dab.setRealRange(5, 6, 7, 8);
        QVERIFY((dab.area()->shownRange() == RealRange{{5, 7}, {6, 8}}));
    }

    void doubleClickRepaints()
    {
        DispABase dab;
        connect(&dab, &DispABase::draw, this, [&] { dab.offerRange({{0, 10}, {0, 1}}); });
        QSignalSpy reports(&dab, &DispABase::mDClicked);
        dab.show();
        dab.area()->grab();
        dab.area()->cc.setRealArea(4, 0, 5, 0.5);
        QTest::mouseDClick(dab.area(), Qt::LeftButton);
        QTRY_COMPARE(dab.area()->cc.rx1(), 10.0); // by the repaint it asks for
        QCOMPARE(reports.count(), 1);
    }

    void readOuts()
    {
        DispABase dab;
        dab.area()->grab();
        dab.area()->cc.setRealArea(0, 0, 1e7, 1);
        dab.area()->cc.setInnerArea(0, 300, 300, 0);
        moveTo(dab.area(), QPointF(100, 200));
        QCOMPARE(dab.ui.XPos->text(), QString("3.33333e+06"));
        QCOMPARE(dab.ui.YPos->text(), QString("0.333333"));
        QCOMPARE(dab.ui.XPos->cursorPosition(), 0); // a narrow field shows the first digits
        QCOMPARE(dab.ui.YPos->cursorPosition(), 0);
    }

    void titlesInAreaOrHeader()
    {
        // place: of the ink in the area
        forRows<bool, bool, QString, QRect>(
            {{"both in the header", false, false, "energy mut", {}},
             {"x in the area", true, false, " mut", {40, 270, 340, 12}},
             {"y in the area", false, true, "energy ", {9, 0, 12, 300}}},
            [this](bool xInArea, bool yInArea, const QString &header, const QRect &place) {
                DispABase dab;
                dab.xTitleInArea = xInArea;
                dab.yTitleInArea = yInArea;
                dab.setXYTitle("energy", "mut");
                QCOMPARE(dab.ui.XTitle->text() + ' ' + dab.ui.YTitle->text(), header);
                dab.area()->resize(400, 300);
                bool isShown = true;
                connect(&dab, &DispABase::draw, this, [&] {
                    dab.area()->cc.setMargins();
                    dab.area()->cc.showXYTitle = isShown;
                });
                const auto ink = [&dab] {
                    return inkIn(painted(&dab, QSize(400, 300), [&dab](QStylePainter *p) {
                        dab.area()->renderArea(p);
                        QVERIFY(p->transform().isIdentity()); // turned for the y title and back
                    }));
                };
                QCOMPARE(ink().isEmpty(), place.isEmpty());
                QVERIFY(place.isEmpty() || place.contains(ink()));
                QVERIFY((ink().center() - place.center()).manhattanLength() <= (yInArea ? 4 : 3));
                QCOMPARE(ink().height() > ink().width(), yInArea); // reads upwards
                isShown = false;
                QVERIFY(ink().isEmpty());
            });
    }
};

QTEST_MAIN(TestDisplay)
#include "TestDisplay.moc"
