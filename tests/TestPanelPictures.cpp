// What the panel's maps and graphs show of results whose truth is known.

#include "AnalystTools.h"
#include "DisplayHelpers.h"
#include "analysis/results/ResultQuantities.h"
#include "numeric/RealToInt.h"

using namespace paneltools;

namespace
{

/// A display's drawing area as it is on screen.
QImage shot(DispArea *area)
{
    return area->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The screen position of the middle of a map's cell.
QPoint cellOf(DispArea *area, int column, int row)
{
    return {numeric::truncToInt(area->cc.r2sx(column + 0.5)), numeric::truncToInt(area->cc.r2sy(row + 0.5))};
}

/// What the map of a four-points result shows for valences 2 and 3.
double fourPointsValue(const ResultRecord &pixel, int quantity)
{
    switch (quantity) {
    case 0:
        return pixel.a;
    case 1:
        return 1 - pixel.a;
    case ResultPosition::valence:
        return 2 * pixel.a + 3 * (1 - pixel.a);
    default:
        return pixel.t;
    }
}

} // namespace

class TestPanelPictures : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void mapRanges_data();
    void mapRanges();
    void limitsFollowTheirRange();
    void graphRangesFollow();
    void doubleClickedLimits();
    void doubleClickFourPoints();
    void mapColours_data();
    void mapColours();
    void hiddenPixels();
    void valueUnderMouse();
    void dataMap();
    void graphs_data();
    void graphs();

private:
    SampleFiles m_files;
    QVector<TruePixel> m_truth;
};

void TestPanelPictures::initTestCase()
{
    QVERIFY(m_files.make());
    m_truth = readTruth(m_files.path("truth.txt"));
    QCOMPARE(m_truth.size(), 24);
}

void TestPanelPictures::mapRanges_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<double>("fromPerJump"); // NaN: as it was
    QTest::addColumn<double>("toPerJump");
    QTest::addColumn<QString>("range"); // where it does not depend on the edge jumps
    const double none = qQNaN();
    for (const char *const name : {"MapRatio1", "MapRatio2", "MapRatio3", "MapRatio4"})
        QTest::newRow(name) << QByteArray(name) << none << none << "-0.1 to 1.1";
    for (const char *const name : {"MapDMut1", "MapDMut2", "MapDMut3", "MapDMut4", "MapMut0", "MapAmount"})
        QTest::newRow(name) << QByteArray(name) << -0.1 << 1.1 << QString();
    QTest::newRow("MapValence") << QByteArray("MapValence") << none << none << "1.5 to 4.5";
    for (const char *const name : {"MapC1", "MapC2"})
        QTest::newRow(name) << QByteArray(name) << none << none << QString();
}

void TestPanelPictures::mapRanges()
{
    QFETCH(QByteArray, button);
    QFETCH(double, fromPerJump);
    QFETCH(double, toPerJump);
    QFETCH(QString, range);
    Analyst user(m_files);
    user.map()->setLimits(-7, 7);
    if (button == "MapValence")
        user.click("MapC1"); // it was chosen at the start
    QCOMPARE(user.limits(), QString("-7 to 7"));
    user.click(button);
    const bool isSet = !range.isEmpty() || !qIsNaN(fromPerJump);
    if (range.isEmpty() && isSet) {
        const double jumps = user.jump(1) + user.jump(2) + user.jump(3);
        QVERIFY(qAbs(jumps - 3.28) < 1e-3);
        range = sixDigits(fromPerJump * jumps) + " to " + sixDigits(toPerJump * jumps);
    }
    QCOMPARE(user.limits(), isSet ? range : QString("-7 to 7"));
    QCOMPARE(user.panel.selectedNewMap(), isSet);
}

/// The next calculation would be shown in the colours of the one before.
void TestPanelPictures::limitsFollowTheirRange()
{
    Analyst user(m_files);
    user.panel.show();
    shot(user.map()->area());
    QCOMPARE(user.limits(), QString("1.5 to 4.5"));
    const auto recalculated = [&user](const QString &valence) {
        rowtools::type(user.reference(3)->valenceEdit(), valence);
        user.click("CalcMapB");
        shot(user.map()->area());
        return user.limits();
    };
    QCOMPARE(recalculated("5"), QString("1.5 to 5.5"));
    user.map()->setLimits(2, 3); // the user's own
    QCOMPARE(recalculated("5"), QString("2 to 3"));
    QCOMPARE(recalculated("6"), QString("1.5 to 6.5")); // another range
    user.click("MapRatio1");
    QCOMPARE(user.limits(), QString("-0.1 to 1.1"));
    QVERIFY(user.map()->ui.Title->text().endsWith("Ratio 1"));
}

void TestPanelPictures::graphRangesFollow()
{
    Analyst user(m_files);
    const auto top = [&user](Displays::DispId id) {
        user.panel.displays()->grab();
        return user.panel.displays()->dabs[id]->area()->cc.ry1();
    };
    const double spread = top(Displays::HistA);
    QVERIFY(spread < 1.1 * 24);
    user.click("HgAAuto");
    for (int i = 1; i <= 3; ++i)
        rowtools::type(user.reference(i)->valenceEdit(), "3");
    user.click("CalcMapB"); // every pixel is in one box
    QCOMPARE(top(Displays::HistA), 1.1 * 24);
    QVERIFY(top(Displays::Muts) > 2); // as measured
    user.click("NBy2Vics");
    QVERIFY(top(Displays::Muts) < 1.9);
}

void TestPanelPictures::doubleClickedLimits()
{
    SampleFiles larger;
    QVERIFY(larger.make(12, 8));
    Analyst user(larger);
    user.click("MapDMut1");
    user.panel.show();
    DispArea *const area = user.map()->area();
    const QString own = user.limits();
    const double *const values = user.results().quantity(ResultPosition::dMut);
    std::vector<double> sorted(values, values + 96);
    std::sort(sorted.begin(), sorted.end());
    const auto doubleClick = [&](Qt::KeyboardModifiers modifiers, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseDClick(area, button, modifiers, area->rect().center());
        shot(area); // drawing leaves them
        return user.limits();
    };
    const QString all = sixDigits(sorted.front()) + " to " + sixDigits(sorted.back());
    QCOMPARE(doubleClick(Qt::ShiftModifier), all);
    QCOMPARE(doubleClick(Qt::NoModifier, Qt::RightButton), all);
    QCOMPARE(doubleClick(Qt::NoModifier), own);
    // Of 96 values: 95 * 0.02 and 95 * 0.98, rounded.
    const QString most = sixDigits(sorted[2]) + " to " + sixDigits(sorted[93]);
    QVERIFY(most != all);
    QCOMPARE(doubleClick(Qt::ControlModifier), most);
    user.click("MapDMut2");
    user.click("MapDMut1"); // its own range again
    QCOMPARE(user.limits(), own);
}

void TestPanelPictures::doubleClickFourPoints()
{
    Analyst user(m_files, "TypeFourPs");
    user.panel.show();
    DispArea *const area = user.map()->area();
    shot(area);
    const QString own = user.limits();
    QCOMPARE(own, QString("1.5 to 3.5"));
    for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
        QTest::mouseDClick(area, Qt::LeftButton, modifier, area->rect().center());
        shot(area);
        QCOMPARE(user.limits(), own);
    }
}

void TestPanelPictures::mapColours_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QVector<int>>("quantities");
    QTest::newRow("non-equivalent") << QByteArray("TypeNonEquiv")
                                    << QVector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    QTest::newRow("four points") << QByteArray("TypeFourPs")
                                 << QVector<int>{0, 1, ResultPosition::valence, ResultPosition::amount};
}

void TestPanelPictures::mapColours()
{
    QFETCH(QByteArray, method);
    QFETCH(QVector<int>, quantities);
    Analyst user(m_files, method);
    user.panel.show();
    DispArea *const area = user.map()->area();
    for (const int quantity : quantities) {
        const char *const button = resultQuantities[std::size_t(quantity)].mapButton;
        user.click(button);
        const QImage image = shot(area);
        for (int i = 0; i < 24; ++i) {
            const ResultRecord pixel = user.results().record(std::size_t(i));
            double value = pixel.values.value(quantity);
            if (method == "TypeFourPs")
                value = fourPointsValue(pixel, quantity);
            const QColor expected = user.map()->bar()->getColor(value);
            QVERIFY2(image.pixelColor(cellOf(area, i % 6, i / 6)) == expected, button);
        }
    }
}

void TestPanelPictures::hiddenPixels()
{
    Analyst user(m_files);
    user.panel.show();
    DispArea *const area = user.map()->area();
    const QImage open = shot(area);
    std::vector<double> thicknesses;
    for (const TruePixel &pixel : m_truth)
        thicknesses.push_back(pixel.thickness);
    std::sort(thicknesses.begin(), thicknesses.end());
    const double limit = (thicknesses[19] + thicknesses[20]) / 2; // four pixels stay
    QVERIFY(thicknesses[20] - thicknesses[19] > 1e-3);
    user.find<QLineEdit>("MaskBelow")->setText(sixDigits(limit));
    const QImage masked = shot(area);
    for (int i = 0; i < 24; ++i) {
        const QPoint cell = cellOf(area, i % 6, i / 6);
        const QColor expected = m_truth.at(i).thickness < limit ? QColor(215, 215, 215) : open.pixelColor(cell);
        QCOMPARE(masked.pixelColor(cell), expected);
    }
    QCOMPARE(user.writeTo(m_files.path("masked.dat")), QString());
    user.find<QLineEdit>("MaskBelow")->setText(QString());
    QVERIFY(shot(area) == open);
    QCOMPARE(user.writeTo(m_files.path("open.dat")), QString());
    QCOMPARE(bytesOf(m_files.path("masked.dat")), bytesOf(m_files.path("open.dat")));
}

void TestPanelPictures::valueUnderMouse()
{
    Analyst user(m_files);
    user.panel.show();
    user.click("MapAmount");
    DispArea *const area = user.map()->area();
    shot(area);
    const QLineEdit *const shown = user.map()->findChild<QLineEdit *>("Val");
    for (int i = 0; i < 24; ++i) {
        moveTo(area, cellOf(area, i % 6, i / 6));
        QCOMPARE(shown->text(), sixDigits(user.results().t()[i]));
    }
    moveTo(area, QPointF(1, 1));
    QCOMPARE(shown->text(), QString());
}

void TestPanelPictures::dataMap()
{
    Analyst user(m_files);
    DispMBase *const map = user.panel.dataMap();
    const auto button = [&user](int row) {
        return user.row(row)->findChild<QAbstractButton *>("ShowMapB");
    };
    const auto pressed = [&button] {
        QString rows;
        for (int i = 1; i <= sample::mapCount; ++i)
            rows += button(i)->isChecked() ? QString::number(i) : QString();
        return rows;
    };
    QCOMPARE(pressed(), QString());
    for (const int i : {3, 8}) {
        button(i)->click();
        QCOMPARE(pressed(), QString::number(i));
        QVERIFY(map->isVisible());
        const QString title = map->findChild<QLabel *>("Title")->text();
        QVERIFY2(title.endsWith(user.row(i)->energyText() + " eV"), qPrintable(title));
        const QImage image = shot(map->area());
        const std::vector<double> values(user.row(i)->data().absorptions().data(),
                                         user.row(i)->data().absorptions().data() + 24);
        QCOMPARE(map->ui.MinV->text(), sixDigits(*std::min_element(values.begin(), values.end())));
        QCOMPARE(map->ui.MaxV->text(), sixDigits(*std::max_element(values.begin(), values.end())));
        for (int k = 0; k < 24; ++k) {
            QCOMPARE(image.pixelColor(cellOf(map->area(), k % 6, k / 6)), map->bar()->getColor(values[std::size_t(k)]));
        }
        moveTo(map->area(), cellOf(map->area(), 4, 2));
        QCOMPARE(map->findChild<QLineEdit *>("Val")->text(), sixDigits(values[2 * 6 + 4]));
    }
    button(8)->click();
    QCOMPARE(pressed(), QString());
    QVERIFY(!map->findChild<QLabel *>("Title")->text().contains("eV"));
}

/// What is drawn without and with results.
void TestPanelPictures::graphs_data()
{
    QTest::addColumn<Displays::DispId>("id");
    QTest::newRow("Muts") << Displays::Muts;
    QTest::newRow("LCF vs MPS") << Displays::LcfVsMps;
    QTest::newRow("Histgram of a") << Displays::HistA;
    QTest::newRow("Histgram of dMut") << Displays::HistDMut;
    QTest::newRow("dMut/v or a") << Displays::DMutVorA;
    QTest::newRow("M2/M3") << Displays::M2M3;
}

void TestPanelPictures::graphs()
{
    QFETCH(Displays::DispId, id);
    const auto inside = [id](FourPs *panel) {
        DispABase *const display = panel->displays()->dabs.at(id);
        panel->displays()->show();
        display->resize(400, 300);
        const QImage image = shot(display->area());
        const ChCoord &cc = display->area()->cc;
        return image.copy(
            QRect(QPoint(int(cc.isx0()) + 2, int(cc.isy1()) + 2), QPoint(int(cc.isx1()) - 2, int(cc.isy0()) - 2)));
    };
    User empty;
    const QImage before = inside(&empty.panel);
    QVERIFY(before.width() > 50 && before.height() > 30);
    if (id != Displays::Muts) // which has the edge's markers
        QVERIFY(inkIn(before).isNull());

    Analyst user(m_files, "TypeFourPs");
    for (int i : {3, 4})
        user.clickIn(user.row(i), "LCFCB");
    user.click("LCFB");
    const QImage after = inside(&user.panel);
    const QRect ink = inkIn(after);
    QVERIFY(ink.width() > 30 && ink.height() > 20);
    int white = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x)
            white += after.pixelColor(x, y) == Qt::white ? 1 : 0;
    }
    QVERIFY(white > after.width() * after.height() / 4);
}

QTEST_MAIN(TestPanelPictures)
#include "TestPanelPictures.moc"
