#include "display/CColors.h"
#include "display/ColourBarMenu.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h"

#include <QApplication>
#include <QClipboard>
#include <QStylePainter>
#include <QtTest>

namespace
{

const QColor handleGreen(150, 255, 150);

void dragRows(QWidget *bar, int from, int to)
{
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, QPoint(5, from));
    QMouseEvent move(QEvent::MouseMove, QPointF(5, to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(bar, &move);
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, QPoint(5, to));
    bar->grab(); // painted: it knows its rows
}

struct ShownBar {
    explicit ShownBar(int height = 300)
    {
        bar.resize(40, height);
        bar.show();
        bar.grab();
    }
    void drag(int from, int to) { dragRows(&bar, from, to); }
    QColor row(int y) { return bar.grab().toImage().pixelColor(7, y); }

    cBar bar;
};

/// A display of 2 x 2 cells with the values 0, 1 (bottom row), 2, 3 on a scale from 0 to 4.
struct ShownMap {
    ShownMap()
    {
        QObject::connect(&display, &DispMBase::draw, &display, [this](QStylePainter *p) {
            ++draws;
            ChCoord &cc = display.area()->cc;
            cc.setMargins();
            p->fillRect(display.area()->rect(), Qt::white);
            display.setRealRange(0, 0, 2, 2);
            display.picture.update({values, 2, 2}, bar->colourScale(), bar->colourTable());
            display.picture.draw(p, cc);
            display.area()->drawScale(p, true);
        });
        display.setLimits(0, 4);
        display.resize(460, 330);
        display.show();
    }
    /// The colour in the middle of cell (i, j) on screen.
    QColor cell(int i, int j)
    {
        const QImage image = display.area()->grab().toImage();
        const ChCoord &cc = display.area()->cc;
        return image.pixelColor(qRound(cc.r2sx(i + 0.5)), qRound(cc.r2sy(j + 0.5)));
    }

    const double values[4] = {0, 1, 2, 3};
    DispMBase display;
    cBar *const bar = display.bar();
    int draws = 0;
};

void typeInto(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
}

} // namespace

class TestMapDisplay : public QObject
{
    Q_OBJECT

private slots:
    void barPixels()
    {
        ShownBar shown(768);
        QCOMPARE(shown.row(0), handleGreen);
        QCOMPARE(shown.row(767), handleGreen);
        QCOMPARE(shown.row(1), QColor(255, 255, 255)); // band i starts 768 - i rows from the top
        QCOMPARE(shown.row(100), QColor(255, 255, 156));
        QCOMPARE(shown.row(512), QColor(255, 0, 0)); // band 256, the second red
        QCOMPARE(shown.row(766), QColor(2, 0, 0));

        shown.bar.idxAtBottom = -192; // the colours shrink to half of the bar
        shown.bar.idxAtTop = 1344;
        shown.bar.aboveColor = QColor(1, 2, 3);
        shown.bar.belowColor = QColor(4, 5, 6);
        QCOMPARE(shown.row(0), QColor(1, 2, 3));
        QCOMPARE(shown.row(287), QColor(1, 2, 3));
        QCOMPARE(shown.row(288), handleGreen);
        QCOMPARE(shown.row(480), QColor(255, 128, 0));
        QCOMPARE(shown.row(672), handleGreen);
        QCOMPARE(shown.row(673), QColor(4, 5, 6));
        QCOMPARE(shown.row(767), QColor(4, 5, 6));
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
        QCOMPARE(bar.idxAtTop, 1536.0);
        QCOMPARE(bar.idxAtBottom, 0.0);
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
            QCOMPARE(bar.idxAtTop, 768.0);
            QCOMPARE(bar.idxAtBottom, 0.0);
        }
        shown.drag(291, 250);
        QCOMPARE(bar.grabbed, 1);
        QCOMPARE(bar.bottomPix, 250);
        QVERIFY(!bar.mouse.pressed);
        shown.drag(100, 200); // away from both ends: moves the one grabbed last
        QCOMPARE(bar.grabbed, 1);
        QCOMPARE(bar.bottomPix, 200);
        QCOMPARE(bar.topPix, 0);
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
        QCOMPARE(shown.bar.bottomPix, 153);
        QCOMPARE(shown.bar.topPix, 3 + 39 * 37 % 145);
    }

    void reversedAndTinyBars()
    {
        ShownBar shown;
        cBar &bar = shown.bar;
        shown.drag(298, 100); // the lower end goes up, then the upper one below it
        shown.drag(2, 200);
        QCOMPARE(bar.topPix, 200);
        QCOMPARE(bar.bottomPix, 100);
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
        QCOMPARE(shown.bar.idxAtTop, 768.0);
        QCOMPARE(shown.bar.idxAtBottom, 0.0);
        QCOMPARE(shown.row(150), shown.bar.colors.at(384));
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
        QCOMPARE(CColors().colors.size(), 45);
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
        QCOMPARE(actions.size(), 14); // twelve types, a line, the inversion
        QVERIFY(actions.first()->isChecked() && actions.last()->isChecked());
        const QImage picture = actions.at(3)->icon().pixmap(72, 14).toImage();
        QVERIFY(picture.pixelColor(0, 5).red() > 240); // red, green, blue
        QVERIFY(picture.pixelColor(picture.width() / 2, 5).green() > 240);
        QVERIFY(picture.pixelColor(picture.width() - 1, 5).blue() > 240);

        const QImage inverse = actions.last()->icon().pixmap(72, 14).toImage(); // of what the bar shows
        QVERIFY(inverse.pixelColor(0, 5).blue() > 240);                         // white
        QCOMPARE(inverse.pixelColor(inverse.width() - 1, 5).green(), 0);

        actions.at(9)->trigger();
        QCOMPARE(newScale.count(), 1);
        QCOMPARE(bar.nColors, 256);
        QCOMPARE(bar.getColor(1.0), QColor(255, 0, 0)); // inverted still
        actions.last()->trigger();
        QCOMPARE(newScale.count(), 2);
        QVERIFY(!bar.invert);
        QCOMPARE(shown.row(20), bar.colors.at(238));
    }

    void typedLimits()
    {
        ShownMap shown;
        QLineEdit *const maxV = shown.display.ui.MaxV;
        QLineEdit *const minV = shown.display.ui.MinV;
        QCOMPARE(maxV->text(), QStringLiteral("4"));
        typeInto(maxV, QStringLiteral("-2.5")); // below the minimum: they change places
        QCOMPARE(shown.bar->zmin(), -2.5);
        QCOMPARE(shown.bar->zmax(), 0.0);
        QCOMPARE(maxV->text(), QStringLiteral("0"));
        QCOMPARE(minV->text(), QStringLiteral("-2.5"));
        typeInto(minV, QStringLiteral("10.123456789"));
        QCOMPARE(shown.bar->zmax(), 10.123456789);
        QCOMPARE(maxV->text(), QStringLiteral("10.1235"));
        QCOMPARE(maxV->cursorPosition(), 0);
        QCOMPARE(minV->text(), QStringLiteral("0"));
        QCOMPARE(minV->cursorPosition(), 0);
        typeInto(maxV, QStringLiteral("five"));
        QCOMPARE(shown.bar->zmax(), 0.0);
        QCOMPARE(maxV->text(), QStringLiteral("0"));
    }

    void limitsKeepTheirDigits()
    {
        ShownMap shown;
        DispMBase &display = shown.display;
        display.setLimits(0.1234567891, 1.9876543219);
        display.newZmax(); // as leaving the field without a change does
        display.newZmin();
        QCOMPARE(shown.bar->zmax(), 1.9876543219);
        QCOMPARE(shown.bar->zmin(), 0.1234567891);

        display.activateWindow();
        display.ui.MaxV->setFocus();
        QTRY_VERIFY(display.ui.MaxV->hasFocus());
        display.ui.MaxV->selectAll();
        QTest::keyClicks(display.ui.MaxV, QStringLiteral("12")); // still typing while the colours are dragged
        emit shown.bar->newScale();
        QCOMPARE(display.ui.MaxV->text(), QStringLiteral("12"));
    } // and while the display goes: the field then announces its text to nobody

    void scaleRecoloursTheMap_data()
    {
        QTest::addColumn<bool>("popped");
        QTest::newRow("docked") << false;
        QTest::newRow("popped out") << true;
    }

    void scaleRecoloursTheMap()
    {
        QFETCH(const bool, popped);
        ShownMap shown;
        const QVector<QColor> colors = shown.bar->colors;
        if (popped)
            QTest::mouseClick(shown.display.ui.PopDockB, Qt::LeftButton);
        QTRY_VERIFY(shown.draws > 0);
        int draws = 0;
        do { // until nothing is left to paint: a display must not paint itself for ever
            draws = shown.draws;
            QTest::qWait(50);
        } while (shown.draws > draws && shown.draws < 100);
        QVERIFY(shown.draws < 100);
        QCOMPARE(shown.cell(1, 0), colors.at(192));
        QCOMPARE(shown.cell(1, 1), colors.at(576));

        draws = shown.draws;
        typeInto(shown.display.ui.MaxV, QStringLiteral("2"));
        QTRY_VERIFY(shown.draws > draws); // of itself
        QCOMPARE(shown.cell(0, 0), colors.at(0));
        QCOMPARE(shown.cell(1, 0), colors.at(384));
        QCOMPARE(shown.cell(0, 1), colors.at(767));

        QTest::qWait(50);
        draws = shown.draws;
        shown.bar->grab();
        dragRows(shown.bar, 2, shown.bar->height() / 2);
        QTRY_VERIFY(shown.draws > draws);
        QVERIFY(shown.cell(1, 0).green() > 250); // 1 of 0 ... 2 has come to the top of the colours
        QCOMPARE(shown.cell(0, 0), colors.at(0));
    }

    void squareCells_data()
    {
        QTest::addColumn<QSize>("cells");
        QTest::addColumn<bool>("square");
        QTest::newRow("wide") << QSize(128, 96) << true;
        QTest::newRow("high") << QSize(50, 100) << true;
        QTest::newRow("a few lines of a scan") << QSize(2000, 4) << false; // would be flat
        QTest::newRow("no map") << QSize() << false;
    }

    void squareCells()
    {
        QFETCH(const QSize, cells);
        QFETCH(const bool, square);
        DispMBase display;
        display.resize(600, 500);
        display.grab();
        const QSize room = display.area()->size();
        display.setCells(cells);
        display.grab();
        const QWidget *const area = display.area();
        const double proportions = double(area->width()) * cells.height() / (double(area->height()) * cells.width());
        QCOMPARE(qAbs(proportions - 1) < 0.01, square);
        QVERIFY(area->width() == room.width() || area->height() == room.height()); // as large as it can be
        QVERIFY(qMin(area->width(), area->height()) >= 100);
        QCOMPARE(display.ui.frame_2->y(), area->y()); // the colours stand beside it
        QCOMPARE(display.ui.frame_2->height(), area->height());
        display.setCells(QSize());
        display.grab();
        QCOMPARE(area->size(), room);
    }

    void titleMakesRoom()
    {
        DispMBase display;
        display.setTitle("Result map, Valence");
        for (const int width : {900, 250, 900}) {
            display.resize(width, 400);
            display.grab();
            QCOMPARE(display.ui.Title->isHidden(), width < 300);
            QCOMPARE(display.ui.Title->text(), QString("Result map, Valence")); // pictures carry it
        }
    }

    void popAndDock()
    {
        ShownMap shown;
        DispMBase &display = shown.display;
        display.ui.Title->setText(QStringLiteral("Result map"));
        for (const bool byButton : {true, false}) {
            QTest::mouseClick(display.ui.PopDockB, Qt::LeftButton);
            QVERIFY(!display.docked && display.pop->isVisible());
            QCOMPARE(display.pop->windowTitle(), QStringLiteral("Result map"));
            QVERIFY(display.ui.DispABFrame->window() == display.pop);
            if (byButton)
                QTest::mouseClick(display.ui.PopDockB, Qt::LeftButton);
            else
                display.pop->close();
            QVERIFY(display.docked && !display.pop->isVisible());
            QVERIFY(display.ui.gridLayout->itemAtPosition(1, 0)->widget() == display.ui.DispABFrame);
        }

        QSignalSpy nowPos(&display, &DispMBase::nowPos);
        emit display.area()->nowPos(0.123456789, 1e-7);
        QCOMPARE(nowPos.count(), 1);
        QCOMPARE(display.ui.XPos->text(), QStringLiteral("0.123457"));
        QCOMPARE(display.ui.YPos->text(), QStringLiteral("1e-07"));
        QCOMPARE(display.ui.YPos->cursorPosition(), 0);
    }

    void copiedPictureHasTheBar()
    {
        ShownMap shown;
        DispMBase &display = shown.display;
        display.ui.Title->clear(); // no line for it
        display.area()->grab();
        display.headerMenu()->menu->actions().first()->trigger();
        const QImage image = QApplication::clipboard()->image();
        QCOMPARE(image.width(), 2 * (display.area()->width() + display.ui.frame_2->width()));
        const QPoint corner = display.bar()->mapTo(display.ui.DispABFrame, QPoint(20, 0)) - display.area()->pos();
        QVERIFY(image.pixelColor(2 * (corner + QPoint(0, 2))).blue() > 200);                     // white
        QVERIFY(image.pixelColor(2 * (corner + QPoint(0, shown.bar->height() - 3))).red() < 20); // black
        const ChCoord &cc = display.area()->cc;
        QCOMPARE(image.pixelColor(qRound(2 * cc.r2sx(1.5)), qRound(2 * cc.r2sy(1.5))), shown.bar->colors.at(576));
    }
};

QTEST_MAIN(TestMapDisplay)
#include "TestMapDisplay.moc"
