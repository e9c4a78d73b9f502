#include "DisplayHelpers.h"
#include "display/DispABase.h"
#include "display/Displays.h"
#include "display/PopBase.h"

#include <cmath>
#include <memory>

namespace
{

void turnWheel(QWidget *widget, const QPointF &position, int eighthsOfADegree)
{
    moveTo(widget, position);
    const QPoint angle(0, eighthsOfADegree);
#if QT_VERSION >= QT_VERSION_CHECK(5, 12, 0)
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
#else
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), angle, eighthsOfADegree,
                      Qt::Vertical, Qt::NoButton, Qt::NoModifier);
#endif
    QApplication::sendEvent(widget, &event);
}

QVector<double> rounded(QVector<double> values)
{
    for (double &value : values)
        value = std::round(value * 1e9) / 1e9 + 0.0;
    return values;
}

} // namespace

class TestDisplay : public QObject
{
    Q_OBJECT

private slots:
    void wheelZooms_data();
    void wheelZooms();
    void wheelBackAndForth();
    void buttonsAndModifiers_data();
    void buttonsAndModifiers();
    void panFollowsTheMouse();
    void positionsRoundHalvesAwayFromZero();
    void doubleClickKeepsPositions();
    void scaleWipesMarginsAndOutlines();
    void labelsAreCut_data();
    void labelsAreCut();
    void rangeIsTakenOnce();
    void doubleClickRestoresTheNaturalRange();
    void readOuts();
    void titlesInAreaOrHeader();
    void popOutAndDock();
    void poppedGraphRests();
    void onlyTheMainWindowKeepsTheProgramAlive();
    void displaysRelay();
    void displayRegisteredTwice();
    void unplacedDisplay();
};

void TestDisplay::wheelZooms_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("delta");
    QTest::addColumn<bool>("zoomsX");
    QTest::addColumn<bool>("zoomsY");
    QTest::addColumn<double>("factor");
    QTest::newRow("left band, along the y axis") << QPointF(60, 150) << 120 << false << true << 1 / 1.1;
    QTest::newRow("right band") << QPointF(360, 150) << -120 << false << true << 1.1;
    QTest::newRow("in the left margin") << QPointF(5, 150) << 120 << false << true << 1 / 1.1;
    QTest::newRow("bottom band, along the x axis") << QPointF(200, 260) << 120 << true << false << 1 / 1.1;
    QTest::newRow("top band") << QPointF(200, 20) << -120 << true << false << 1.1;
    QTest::newRow("corner") << QPointF(60, 260) << 120 << true << true << 1 / 1.1;
    QTest::newRow("middle") << QPointF(200, 150) << -120 << true << true << 1.1;
    QTest::newRow("border of the left band") << QPointF(74, 150) << 120 << true << true << 1 / 1.1;
    QTest::newRow("two notches at once count once") << QPointF(200, 150) << 240 << true << true << 1 / 1.1;
    QTest::newRow("no turn at all zooms in") << QPointF(200, 150) << 0 << true << true << 1 / 1.1;
}

void TestDisplay::wheelZooms()
{
    QFETCH(QPointF, position);
    QFETCH(bool, zoomsX);
    QFETCH(bool, zoomsY);
    QFETCH(double, factor);
    QFETCH(int, delta);
    Plot plot;
    const double x = plot.area.cc.s2rx(position.x());
    const double y = plot.area.cc.s2ry(position.y());
    turnWheel(&plot.area, position, delta);
    QCOMPARE(plot.area.cc.rx1() - plot.area.cc.rx0(), zoomsX ? 10 * factor : 10.0);
    QCOMPARE(plot.area.cc.ry1() - plot.area.cc.ry0(), zoomsY ? factor : 1.0);
    QCOMPARE(plot.area.cc.r2sx(x), position.x()); // stays under the mouse
    QCOMPARE(plot.area.cc.r2sy(y), position.y());
}

void TestDisplay::wheelBackAndForth()
{
    Plot plot;
    turnWheel(&plot.area, QPointF(100, 100), 120);
    turnWheel(&plot.area, QPointF(100, 100), -120);
    QCOMPARE(rounded(plot.range()), (QVector<double>{0, 0, 10, 1}));
    plot.area.scaleFixed = false;
    turnWheel(&plot.area, QPointF(100, 100), 120);
    QVERIFY(!plot.area.scaleFixed); // the next draw still takes its natural range
}

void TestDisplay::buttonsAndModifiers_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<bool>("reported");
    QTest::addColumn<bool>("pans");
    const auto row = [](const char *name, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, bool reported,
                        bool pans) {
        QTest::newRow(name) << int(button) << int(modifiers) << reported << pans;
    };
    row("left", Qt::LeftButton, Qt::NoModifier, true, false);
    row("Shift and left", Qt::LeftButton, Qt::ShiftModifier, false, true);
    row("Control and left", Qt::LeftButton, Qt::ControlModifier, false, false);
    row("Alt and left", Qt::LeftButton, Qt::AltModifier, false, false);
    row("Shift, Control and left", Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier, false, false);
    row("keypad flag and left", Qt::LeftButton, Qt::KeypadModifier, true, false);
    row("right", Qt::RightButton, Qt::NoModifier, false, false);
    row("Shift and right", Qt::RightButton, Qt::ShiftModifier, false, false);
}

void TestDisplay::buttonsAndModifiers()
{
    QFETCH(int, button);
    QFETCH(int, modifiers);
    QFETCH(bool, reported);
    QFETCH(bool, pans);
    Plot plot;
    QStringList events;
    const MouseC *const record = &plot.area.mouse;
    connect(&plot.area, &DispArea::mPressed, this, [&](MouseC *m) { events << (m == record ? "press" : "other"); });
    connect(&plot.area, &DispArea::mDragging, this, [&] { events << "drag"; });
    connect(&plot.area, &DispArea::mReleased, this, [&] { events << "release"; });
    connect(&plot.area, &DispArea::nowPos, this, [&] { events << "pos"; });

    drag(&plot.area, QPoint(100, 100), QPoint(134, 100), Qt::KeyboardModifiers(modifiers), Qt::MouseButton(button));
    moveTo(&plot.area, QPointF(150, 100)); // no button any more
    QCOMPARE(events.join(' '), QString(reported ? "press pos drag release pos" : "pos release pos"));
    QCOMPARE(rounded(plot.range()), pans ? (QVector<double>{-1, 0, 9, 1}) : (QVector<double>{0, 0, 10, 1}));
    QCOMPARE((QVector<int>{record->pressX, record->pressY, record->releaseX, record->releaseY, record->pressButton,
                           record->releaseButton, record->pressModifiers, record->moveButton}),
             (QVector<int>{100, 100, 134, 100, button, button, modifiers, 0}));
    QVERIFY(!record->pressed);
}

void TestDisplay::panFollowsTheMouse()
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

void TestDisplay::positionsRoundHalvesAwayFromZero()
{
    DispArea area;
    moveTo(&area, QPointF(10.5, 10.49));
    QCOMPARE(QPoint(area.mouse.nowX, area.mouse.nowY), QPoint(11, 10));
    moveTo(&area, QPointF(-0.5, -1.5));
    QCOMPARE(QPoint(area.mouse.nowX, area.mouse.nowY), QPoint(-1, -2));
    QCOMPARE(QPoint(area.mouse.prevX, area.mouse.prevY), QPoint(11, 10));
}

void TestDisplay::doubleClickKeepsPositions()
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
    QCOMPARE((QVector<int>{m.prevX, m.prevY, m.nowX, m.nowY, m.dClickX, m.dClickY, m.dClickButton, m.dClickModifiers}),
             (QVector<int>{10, 20, 30, 40, 50, 60, Qt::RightButton, Qt::ControlModifier}));
    QCOMPARE(reports, 1);
    QVERIFY(!m.pressed);
    QVERIFY(!area.scaleFixed);
}

void TestDisplay::scaleWipesMarginsAndOutlines()
{
    Plot plot;
    const QImage wiped = plot.area.grab().toImage();
    for (const QPoint &point : {QPoint(40, 100), QPoint(380, 100), QPoint(200, 15), QPoint(200, 270), QPoint(40, 15)})
        QCOMPARE(wiped.pixelColor(point), outlineColour());
    for (const QPoint &point : {QPoint(41, 16), QPoint(379, 269), QPoint(200, 150)})
        QCOMPARE(wiped.pixelColor(point), QColor(Qt::red));
    const QPoint margins[] = {QPoint(20, 150), QPoint(39, 150), QPoint(200, 271), QPoint(200, 299),
                              QPoint(200, 14), QPoint(200, 0),  QPoint(381, 150), QPoint(399, 150)};
    for (const QPoint &point : margins)
        QCOMPARE(wiped.pixelColor(point), QColor(Qt::white));

    const QImage kept =
        painted(&plot.area, plot.area.size(), [&plot](QStylePainter *p) { paintRedPlot(&plot.area, p, false); });
    for (const QPoint &point : margins)
        QCOMPARE(kept.pixelColor(point), QColor(Qt::red));
    QCOMPARE(kept.pixelColor(40, 100), outlineColour());
}

void TestDisplay::labelsAreCut_data()
{
    QTest::addColumn<QVector<double>>("range"); // x0, y0, x1, y1
    QTest::addColumn<QStringList>("labels");    // in the same order
    QTest::newRow("short") << QVector<double>{0, -0.1, 10, 1.6} << QStringList{"0", "-0.1", "10", "1.6"};
    QTest::newRow("six and five characters")
        << QVector<double>{7112.25, 0.12345, 7212.75, 1.23456} << QStringList{"7112.2", "0.123", "7212.7", "1.234"};
    QTest::newRow("an exponent is cut too")
        << QVector<double>{1.5e-05, 1.5e-05, 2.5e-05, 1e+20} << QStringList{"1.5e-0", "1.5e-", "2.5e-0", "1e+20"};
}

// Compared as pictures: the same texts drawn into the same boxes.
void TestDisplay::labelsAreCut()
{
    QFETCH(QVector<double>, range);
    QFETCH(QStringList, labels);
    DispArea area;
    area.cc.setScreenArea(0, 300, 400, 0);
    area.cc.setMargins();
    area.cc.setRealArea(range[0], range[1], range[2], range[3]);
    const QImage scale = painted(&area, area.size(), [&](QStylePainter *p) { area.drawScale(p, true); });
    const QImage expected = painted(&area, area.size(), [&](QStylePainter *p) {
        p->setPen(outlineColour());
        p->drawRect(40, 15, 340, 255);
        p->setPen(Qt::black);
        constexpr int right = Qt::AlignRight | Qt::AlignVCenter;
        area.dt.drawText(p, QRectF(0, 15, 38, 10), QFont(), right, 1, labels[3], 12);
        area.dt.drawText(p, QRectF(0, 260, 38, 10), QFont(), right, 1, labels[1], 12);
        area.dt.drawText(p, QRectF(40, 271, 80, 10), QFont(), Qt::AlignLeft | Qt::AlignVCenter, 1, labels[0], 12);
        area.dt.drawText(p, QRectF(300, 271, 80, 10), QFont(), right, 1, labels[2], 12);
    });
    QVERIFY(inkIn(scale).contains(inkIn(expected)));
    QCOMPARE(scale, expected);
}

void TestDisplay::rangeIsTakenOnce()
{
    DispABase dab;
    QVector<double> atDraw;
    connect(&dab, &DispABase::draw, this, [&] { atDraw = {dab.area()->cc.rx0(), dab.area()->cc.rx1()}; });
    dab.area()->cc.setRealArea(7, 7, 8, 8);
    dab.area()->grab();
    QCOMPARE(atDraw, (QVector<double>{0, 1})); // no range given yet
    dab.setRealRange(1, 2, 3, 4);
    dab.setRealRange(5, 6, 7, 8);
    dab.area()->grab();
    QCOMPARE(atDraw, (QVector<double>{1, 3}));
    QCOMPARE(dab.area()->cc.ry1(), 4.0);
    dab.clearScale();
    dab.setRealRange(5, 6, 7, 8);
    QCOMPARE(dab.area()->cc.ry1(), 8.0);
}

void TestDisplay::doubleClickRestoresTheNaturalRange()
{
    DispABase dab;
    connect(&dab, &DispABase::draw, this, [&] {
        dab.area()->cc.setMargins();
        dab.setRealRange(0, 0, 10, 1);
    });
    QStringList reports;
    connect(&dab, &DispABase::mPressed, this, [&] { reports << "press"; });
    connect(&dab, &DispABase::mDragging, this, [&] { reports << "drag"; });
    connect(&dab, &DispABase::mReleased, this, [&] { reports << "release"; });
    connect(&dab, &DispABase::mDClicked, this, [&] { reports << "double"; });
    dab.show();
    dab.area()->grab();
    turnWheel(dab.area(), dab.area()->rect().center(), 120);
    drag(dab.area(), QPoint(100, 100), QPoint(120, 120), Qt::ShiftModifier);
    dab.area()->grab();
    QVERIFY(dab.area()->cc.rx1() != 10.0);
    QTest::mouseDClick(dab.area(), Qt::LeftButton);
    QTRY_COMPARE(dab.area()->cc.rx1(), 10.0); // by the repaint it asks for
    QCOMPARE(reports.count("double"), 1);
    reports.clear();
    drag(dab.area(), QPoint(100, 100), QPoint(120, 120));
    QCOMPARE(reports.join(' '), QString("press drag release"));
}

void TestDisplay::readOuts()
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

void TestDisplay::titlesInAreaOrHeader()
{
    DispABase dab;
    dab.setXYTitle("energy", "mut");
    QCOMPARE(dab.ui.XTitle->text() + ' ' + dab.ui.YTitle->text(), QString("energy mut"));
    dab.ui.DispA->resize(400, 300);
    connect(&dab, &DispABase::draw, this, [&dab](QStylePainter *) { dab.area()->cc.setMargins(); });
    const auto ink = [&dab] {
        return inkIn(painted(&dab, QSize(400, 300), [&dab](QStylePainter *p) {
            dab.area()->renderArea(p);
            QVERIFY(p->transform().isIdentity()); // turned for the y title and back
        }));
    };
    QVERIFY(ink().isEmpty());

    dab.xTitleInArea = true;
    dab.setXYTitle("energy", "mut");
    QCOMPARE(dab.ui.XTitle->text() + ' ' + dab.ui.YTitle->text(), QString(" mut"));
    QVERIFY(!ink().isEmpty() && QRect(40, 271, 340, 10).adjusted(0, -1, 0, 1).contains(ink()));
    QVERIFY(std::abs(ink().center().x() - 210) <= 2);

    dab.xTitleInArea = false;
    dab.yTitleInArea = true;
    dab.setXYTitle("energy", "mut");
    QCOMPARE(dab.ui.XTitle->text() + ' ' + dab.ui.YTitle->text(), QString("energy "));
    QVERIFY(!ink().isEmpty() && QRect(10, 0, 10, 300).adjusted(-1, 0, 1, 0).contains(ink()));
    QVERIFY(std::abs(ink().center().y() - 150) <= 2);
    QVERIFY(ink().height() > ink().width()); // reads upwards

    connect(&dab, &DispABase::draw, this, [&dab] { dab.area()->cc.showXYTitle = false; });
    QVERIFY(ink().isEmpty());
}

void TestDisplay::popOutAndDock()
{
    DispABase dab;
    dab.ui.Title->setText("Ref1");
    dab.show();
    QTest::mouseClick(dab.ui.PopDockB, Qt::LeftButton);
    QVERIFY(!dab.docked && dab.pop->isVisible());
    QCOMPARE(dab.ui.DispABFrame->window(), static_cast<QWidget *>(dab.pop));
    QCOMPARE(dab.popLayout->indexOf(dab.ui.DispABFrame), 0);
    QCOMPARE(dab.pop->windowTitle(), QString("Ref1"));
    QCOMPARE(dab.pop->size(), QSize(800, 600));
    QTest::mouseClick(dab.ui.PopDockB, Qt::LeftButton); // the button went with it
    QVERIFY(dab.docked && !dab.pop->isVisible());

    dab.popDock();
    dab.pop->close();
    QVERIFY(dab.docked && !dab.pop->isVisible());
    int row, column, rowSpan, columnSpan;
    dab.ui.gridLayout->getItemPosition(dab.ui.gridLayout->indexOf(dab.ui.DispABFrame), &row, &column, &rowSpan,
                                       &columnSpan);
    QCOMPARE(QPoint(column, row), QPoint(0, 1));
    QTRY_VERIFY(dab.ui.DispA->isVisible());
}

// A paint that asks the window to repaint everything would be answered by the next paint, and so on.
void TestDisplay::poppedGraphRests()
{
    DispABase dab;
    dab.show();
    dab.popDock();
    QVERIFY(QTest::qWaitForWindowExposed(dab.pop));
    QTest::qWait(50);
    int draws = 0;
    connect(&dab, &DispABase::draw, this, [&draws] { ++draws; });
    dab.area()->update();
    QTest::qWait(100);
    QCOMPARE(draws, 1);
}

void TestDisplay::onlyTheMainWindowKeepsTheProgramAlive()
{
    QWidget mainWindow;
    DispABase popped(&mainWindow);
    Displays displays;
    mainWindow.show();
    displays.show();
    popped.popDock();
    displays.dabs.at(0)->popDock();
    displays.dabs.at(Displays::M2M3)->show();
    displays.dabs.at(1)->popDock();

    QTimer::singleShot(0, displays.dabs.at(1)->pop, &QWidget::close); // ends nothing by itself
    QTimer::singleShot(50, &mainWindow, &QWidget::close);
    QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });
    QCOMPARE(QCoreApplication::exec(), 0);
    QVERIFY(!mainWindow.isVisible());
}

void TestDisplay::displaysRelay()
{
    Displays displays;
    QStringList reports;
    const auto report = [&](const char *what, int id, DispABase *dab) {
        reports << QString("%1 %2 %3").arg(what).arg(id).arg(dab->ui.Title->text());
    };
    connect(&displays, &Displays::draw, this,
            [&](Displays::DispId id, DispABase *dab, QStylePainter *) { report("draw", id, dab); });
    connect(&displays, &Displays::mPressed, this, [&](DispABase *dab, MouseC *) { report("press", -1, dab); });
    connect(&displays, &Displays::mDragging, this, [&](DispABase *dab, MouseC *) { report("drag", -1, dab); });
    connect(&displays, &Displays::mReleased, this, [&](DispABase *dab, MouseC *) { report("release", -1, dab); });

    DispABase *const muts = displays.dabs.at(Displays::Muts);
    muts->area()->grab();
    QCOMPARE(reports.join(", "), QString("draw 5 Muts"));
    reports.clear();
    drag(muts->area(), QPoint(50, 50), QPoint(60, 60));
    QCOMPARE(reports.join(", "), QString("press -1 Muts, drag -1 Muts, release -1 Muts"));
    reports.clear();

    displays.show();
    QVERIFY(QTest::qWaitForWindowExposed(&displays));
    const QStringList shown{"draw 0 Ref1",       "draw 1 Ref2",          "draw 2 Ref3",
                            "draw 3 Ref4",       "draw 4 Target",        "draw 5 Muts",
                            "draw 6 LCF vs MPS", "draw 7 Histgram of a", "draw 8 Histgram of dMut",
                            "draw 9 dMut/v or a"};
    const auto drawn = [&reports] {
        QStringList sorted = reports;
        sorted.sort();
        sorted.removeDuplicates();
        return sorted;
    };
    QTRY_COMPARE(drawn(), shown);
    reports.clear();
    displays.resize(1000, 900);
    QTRY_COMPARE(drawn(), shown); // not the hidden "M2/M3"
}

void TestDisplay::displayRegisteredTwice()
{
    Displays displays;
    DispABase *const dab = displays.dabs.at(0);
    displays.addDisp(dab, "again", Displays::M2M3, -1, -1, 1, 1);
    QVector<int> ids;
    connect(&displays, &Displays::draw, this, [&](Displays::DispId id) { ids << id; });
    dab->area()->grab();
    QCOMPARE(ids, (QVector<int>{Displays::Ref1, Displays::M2M3}));
}

void TestDisplay::unplacedDisplay()
{
    auto displays = std::make_unique<Displays>();
    QCOMPARE(displays->ids.size(), 11);
    const QPointer<DispABase> dab = displays->dabs.at(displays->ids.indexOf(Displays::M2M3));
    QVERIFY(!dab->parent() && !dab->isVisible());
    QWidget owner;
    const QPointer<DispABase> adopted = new DispABase;
    displays->addDisp(adopted, "adopted", Displays::M2M3, -1, 0, 1, 1);
    adopted->setParent(&owner);
    displays.reset();
    QVERIFY(!dab);
    QVERIFY(adopted);
}

QTEST_MAIN(TestDisplay)
#include "TestDisplay.moc"
