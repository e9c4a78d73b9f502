// The colour bar: its pixels, the stretch by dragging, limits and the menu.

#include "DisplayHelpers.h"
#include "display/CColors.h"
#include "display/ColourBarMenu.h"
#include "display/cBar.h"

namespace
{

const QColor handleGreen(150, 255, 150);

struct ShownBar {
    explicit ShownBar(int height = 300)
    {
        bar.resize(40, height);
        bar.show();
        bar.grab();
    }
    void drag(int from, int to)
    {
        ::drag(&bar, QPoint(5, from), QPoint(5, to));
        bar.grab(); // painted: it knows its rows
    }
    /// Which of the rows have another colour; an empty text when all are right.
    QString wrongRows(const QMap<int, QColor> &rows)
    {
        QStringList others;
        const QImage image = bar.grab().toImage();
        for (const int y : rows.keys()) {
            if (image.pixelColor(7, y) != rows[y])
                others << QStringLiteral("%1: %2").arg(y).arg(image.pixelColor(7, y).name());
        }
        return others.join(QStringLiteral(", "));
    }

    QPointF indices() const { return {bar.idxAtBottom, bar.idxAtTop}; } ///< of the colours at the ends
    QPoint handles() const { return {bar.bottomPix, bar.topPix}; }      ///< their rows

    cBar bar;
};

} // namespace

class TestColourBar : public QObject
{
    Q_OBJECT

private slots:
    void barPixels()
    {
        ShownBar shown(768);
        QCOMPARE(shown.wrongRows({{0, handleGreen},
                                  {767, handleGreen},
                                  {1, QColor(255, 255, 255)}, // band i starts 768 - i rows from the top
                                  {100, QColor(255, 255, 156)},
                                  {512, QColor(255, 0, 0)}, // band 256, the second red
                                  {766, QColor(2, 0, 0)}}),
                 QString());
        shown.bar.idxAtBottom = -192; // the colours shrink to half of the bar
        shown.bar.idxAtTop = 1344;
        const QColor above = shown.bar.aboveColor = QColor(1, 2, 3), below = shown.bar.belowColor = QColor(4, 5, 6);
        QCOMPARE(shown.wrongRows({{0, above},
                                  {287, above},
                                  {288, handleGreen},
                                  {480, QColor(255, 128, 0)},
                                  {672, handleGreen},
                                  {673, below},
                                  {767, below}}),
                 QString());
    }

    void barHasNoGaps()
    {
        ShownBar shown(701);
        for (const bool invert : {false, true}) {
            shown.bar.setCBarType(11); // 256 colours, blue to yellow, on 701 rows
            shown.bar.setInvertCBar(invert);
            const QImage image = shown.bar.grab().toImage();
            int previous = 256;
            for (int y = 1; y < 700; ++y) {
                const int red = image.pixelColor(7, y).red();
                const int index = invert ? 255 - red : red;
                QCOMPARE(image.pixelColor(7, y), QColor(red, red, 255 - red));
                QVERIFY(index == previous || index == previous - 1);
                previous = index;
            }
        }
    }

    void dragUpperEndToTheMiddle()
    {
        ShownBar shown;
        cBar &bar = shown.bar;
        QSignalSpy newScale(&bar, &cBar::newScale);
        shown.drag(4, 150);
        QCOMPARE(newScale.count(), 1);
        QCOMPARE(shown.indices(), QPointF(0.0, 1536.0));
        QCOMPARE(bar.topPix, 150);
        for (const double value : {0.5, 0.51, 1.0})
            QCOMPARE(bar.getColor(value), bar.colors.last());
        QCOMPARE(bar.getColor(0.25), bar.colors.at(384));
        QCOMPARE(bar.getColor(0.0), bar.colors.first());
    }

    void grabbing()
    {
        ShownBar shown;
        cBar &bar = shown.bar;
        for (const int row : {12, 288, 10, 290}) { // ten pixels or more from an end: nothing is grabbed
            shown.drag(row, 150);
            QCOMPARE(bar.grabbed, 2);
            QCOMPARE(shown.indices(), QPointF(0.0, 768.0));
        }
        shown.drag(291, 250);
        QCOMPARE(bar.grabbed, 1);
        QCOMPARE(bar.bottomPix, 250);
        QVERIFY(!bar.mouse.pressed);
        shown.drag(100, 200); // away from both ends: moves the one grabbed last
        QCOMPARE(bar.grabbed, 1);
        QCOMPARE(shown.handles(), QPoint(200, 0));
        QMouseEvent hover(QEvent::MouseMove, QPointF(5, 30), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&bar, &hover); // no button held
        bar.grab();
        QCOMPARE(bar.bottomPix, 200);

        ShownBar low(16);
        low.drag(8, 8); // near both
        QCOMPARE(low.bar.grabbed, 1);
    }

    void otherEndStays()
    {
        ShownBar shown;
        shown.drag(295, 153); // rounding alone would move it up by three rows in what follows
        for (int i = 0; i < 40; ++i)
            shown.drag(shown.bar.topPix, 3 + i * 37 % 145);
        QCOMPARE(shown.handles(), QPoint(153, 3 + 39 * 37 % 145));
    }

    void reversedAndTinyBars()
    {
        ShownBar shown;
        cBar &bar = shown.bar;
        shown.drag(298, 100); // the lower end goes up, then the upper one below it
        shown.drag(2, 200);
        QCOMPARE(shown.handles(), QPoint(100, 200));
        QCOMPARE(bar.getColor(1.0), bar.colors.first());
        QCOMPARE(bar.getColor(0.0), bar.colors.last());
        shown.drag(200, 100); // onto the other end: no scale, so nothing changes
        QCOMPARE(bar.topPix, 200);
        shown.drag(200, 101); // one row for all colours
        for (const int height : {0, 1}) {
            bar.resize(40, height);
            shown.drag(0, -5000);
        }
        QVERIFY(bar.colors.contains(bar.getColor(0.5)));
    }

    void doubleClickUndoesStretchSilently()
    {
        ShownBar shown;
        shown.drag(4, 150);
        QSignalSpy newScale(&shown.bar, &cBar::newScale);
        QTest::mouseDClick(&shown.bar, Qt::LeftButton, Qt::NoModifier, QPoint(5, 70));
        QCOMPARE(newScale.count(), 0);
        QCOMPARE(shown.indices(), QPointF(0.0, 768.0));
        QCOMPARE(shown.wrongRows({{150, shown.bar.colors.at(384)}}), QString());
    }

    void signalsOfTheScale()
    {
        cBar bar;
        QSignalSpy newScale(&bar, &cBar::newScale);
        bar.newZmin(0.5);
        bar.newZmax(0.25); // passes the other limit
        QCOMPARE(bar.zmin(), 0.25);
        QCOMPARE(bar.zmax(), 0.5);
        QCOMPARE(newScale.count(), 2);
        bar.setLimits(5, 3); // silent, as given
        QCOMPARE(newScale.count(), 2);
        bar.checkZOrder();
        QCOMPARE(bar.zmin(), 3.0);
        QCOMPARE(newScale.count(), 3);
        QVERIFY(bar.autoScale());
        bar.setAutoScale(false);
        QVERIFY(!bar.autoScale());
        QCOMPARE(newScale.count(), 4);
        QCOMPARE(CColors(48).colors.last(), QColor(96, 132, 168));
        QCOMPARE(CColors({Qt::blue, Qt::red}, 3).colors.last(), QColor(255, 0, 170)); // red with blue
    }

    void invertIsSilentMenuIsNot()
    {
        ShownBar shown;
        cBar &bar = shown.bar;
        QSignalSpy newScale(&bar, &cBar::newScale);
        bar.setInvertCBar(true);
        QCOMPARE(newScale.count(), 0);
        QCOMPARE(bar.getColor(1.0), QColor(0, 0, 0));

        QTest::mousePress(&bar, Qt::RightButton, Qt::NoModifier, QPoint(5, 150));
        QContextMenuEvent ask(QContextMenuEvent::Mouse, QPoint(5, 150), bar.mapToGlobal(QPoint(5, 150)));
        QApplication::sendEvent(&bar, &ask);
        auto *const menu = bar.findChild<ColourBarMenu *>();
        QVERIFY(menu && menu->isVisible());
        QVERIFY(!bar.mouse.pressed); // the release goes to the menu: nothing is being dragged
        const QList<QAction *> actions = menu->actions();
        QCOMPARE(actions.size(), 18); // twelve types, two more, a line, the inversion, a line, percentiles
        QAction *const inversion = actions.at(15);
        QVERIFY(actions.first()->isChecked() && inversion->isChecked());
        const QImage picture = actions.at(3)->icon().pixmap(72, 14).toImage();
        QVERIFY(picture.pixelColor(0, 5).red() > 240); // red, green, blue
        QVERIFY(picture.pixelColor(picture.width() / 2, 5).green() > 240);
        QVERIFY(picture.pixelColor(picture.width() - 1, 5).blue() > 240);

        const QImage inverse = inversion->icon().pixmap(72, 14).toImage(); // of what the bar shows
        QVERIFY(inverse.pixelColor(0, 5).blue() > 240);                    // white
        QCOMPARE(inverse.pixelColor(inverse.width() - 1, 5).green(), 0);

        actions.at(9)->trigger();
        QCOMPARE(newScale.count(), 1);
        QCOMPARE(bar.nColors, 256);
        QCOMPARE(bar.getColor(1.0), QColor(255, 0, 0)); // inverted still
        inversion->trigger();
        QCOMPARE(newScale.count(), 2);
        QVERIFY(!bar.invert);
        QCOMPARE(shown.wrongRows({{20, bar.colors.at(238)}}), QString());

        actions.at(12)->trigger();
        QCOMPARE(newScale.count(), 3);
        QCOMPARE(bar.getColor(1.0), QColor(0xfde725));
        actions.at(13)->trigger();
        QCOMPARE(bar.getColor(0.25), QColor(64, 64, 64));
        QApplication::sendEvent(&bar, &ask);
        QVERIFY(actions.at(13)->isChecked());
        bar.setCBarType(12); // no number of theirs
        QCOMPARE(bar.nColors, 768);
        QCOMPARE(bar.maxCBarTypes(), 12);
        QSignalSpy percentiles(&bar, &cBar::percentilesWanted);
        actions.last()->trigger();
        QCOMPARE(percentiles.count(), 1);
    }
};

QTEST_MAIN(TestColourBar)
#include "TestColourBar.moc"
