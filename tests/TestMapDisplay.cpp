#include "DisplayHelpers.h"
#include "Tables.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h"

#include <QClipboard>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>

#include <optional>

namespace
{

/// A display of 2 x 2 cells with the values 0, 1 (bottom row), 2, 3 on a scale from 0 to 4.
struct ShownMap {
    ShownMap()
    {
        QObject::connect(&display, &DispMBase::draw, &display, [this](QStylePainter *p) {
            ++draws;
            ChCoord &cc = display.area()->cc;
            cc.setMargins();
            p->fillRect(display.area()->rect(), Qt::white);
            display.offerLimits(natural);
            display.offerRange({{0, 2}, {0, 2}});
            display.picture.update({values, 2, 2}, bar->colourScale(), bar->shownTable());
            display.picture.draw(p, cc);
            display.area()->drawScale(p, true);
        });
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
    QString limits() const { return QStringLiteral("%1 to %2").arg(bar->zmin()).arg(bar->zmax()); }

    std::optional<ValueRange> natural = ValueRange{0, 4};
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
    void typedLimits()
    {
        ShownMap shown;
        shown.display.area()->grab();
        QLineEdit *const maxV = shown.display.ui.MaxV;
        QLineEdit *const minV = shown.display.ui.MinV;
        const auto texts = [&] {
            return minV->text() + QStringLiteral(" to ") + maxV->text();
        };
        QCOMPARE(texts(), QString("0 to 4"));
        typeInto(maxV, QStringLiteral("-2.5")); // below the minimum: they change places
        QCOMPARE(shown.limits(), QString("-2.5 to 0"));
        QCOMPARE(texts(), shown.limits());
        typeInto(minV, QStringLiteral("10.123456789"));
        QCOMPARE(shown.bar->zmax(), 10.123456789);
        QCOMPARE(texts(), QString("0 to 10.1235"));
        QCOMPARE(maxV->cursorPosition() + minV->cursorPosition(), 0);
        typeInto(maxV, QStringLiteral("five"));
        QCOMPARE(texts(), QString("0 to 0"));
    }

    /// The limits after a paint that offers natural ones, after what the user did since the last paint.
    void offeredLimits()
    {
        const ValueRange same{0, 4}, other{0, 8};
        // natural: after 0 to 4
        forRows<std::optional<ValueRange>, QString, QString>(
            {{"followed", other, "", "0 to 8"},
             {"typed: survive", same, "typed", "0 to 2"},
             {"typed: go with others", other, "typed", "0 to 8"},
             {"typed: survive where none are offered", {}, "typed", "0 to 2"},
             {"typed, then a double click", same, "typed, right click", "0 to 4"},
             {"chosen: survive", same, "chosen", "1 to 3"},
             {"chosen where none are offered", {}, "chosen", "1 to 3"},
             {"chosen: go with others", other, "chosen", "0 to 8"},
             {"chosen, then another double click", same, "chosen, right click", "1 to 3"},
             {"chosen, then a plain double click", same, "chosen, plain click", "0 to 4"},
             {"another map with the same ones", same, "chosen, same taken", "0 to 4"},
             {"another map without", {}, "typed, none taken", "0 to 2"},
             {"not automatic", other, "fixed", "0 to 4"}},
            [](const std::optional<ValueRange> &natural, const QString &before, const QString &limits) {
                ShownMap shown;
                DispMBase &map = shown.display;
                map.area()->grab();
                QCOMPARE(shown.limits(), QString("0 to 4"));
                shown.natural = natural;
                if (before.contains("typed"))
                    typeInto(map.ui.MaxV, "2");
                if (before.contains("chosen")) {
                    QTest::mouseDClick(map.area(), Qt::LeftButton, Qt::ShiftModifier);
                    map.chooseLimits({1, 3});
                }
                if (before.contains("click"))
                    QTest::mouseDClick(map.area(), before.contains("right") ? Qt::RightButton : Qt::LeftButton);
                if (before.contains("taken"))
                    map.takeLimits(before.contains("same") ? natural : std::nullopt);
                if (before == "fixed")
                    map.bar()->setAutoScale(false);
                map.area()->grab();
                QCOMPARE(shown.limits(), limits);
                QCOMPARE(map.ui.MaxV->text(), shown.limits().section(' ', 2));
            });
    }

    /// The fields keep the ends of the bar; where its handles stand, the tool tips say.
    void handleValues()
    {
        ShownMap shown;
        shown.display.area()->grab();
        shown.bar->grab();
        drag(shown.bar, QPoint(5, 2), QPoint(5, shown.bar->height() / 2));
        shown.bar->grab();
        const auto tip = [](QWidget *widget) {
            QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), widget->mapToGlobal(QPoint(2, 2)));
            QApplication::sendEvent(widget, &event);
            return widget->toolTip();
        };
        const double upper = shown.bar->valueAt(shown.bar->topIndex);
        QVERIFY(upper > 1.9 && upper < 2.1);
        for (QWidget *const widget : std::initializer_list<QWidget *>{shown.display.ui.MaxV, shown.bar}) {
            QVERIFY(tip(widget).contains(QString::number(upper, 'g', 6)));
            QCOMPARE(tip(widget).count(QString::number(upper, 'g', 6)), 1); // not one more each time
        }
        QVERIFY(tip(shown.display.ui.MinV).endsWith(" 0"));
        QCOMPARE(shown.display.ui.MaxV->text(), QString("4"));
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

    void scaleRecoloursTheMap()
    {
        for (const bool isPopped : {false, true}) {
            ShownMap shown;
            const QVector<QColor> colors = shown.bar->colors;
            if (isPopped)
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
            drag(shown.bar, QPoint(5, 2), QPoint(5, shown.bar->height() / 2));
            shown.bar->grab();
            QTRY_VERIFY(shown.draws > draws);
            QVERIFY(shown.cell(1, 0).green() > 250); // 1 of 0 ... 2 has come to the top of the colours
            QCOMPARE(shown.cell(0, 0), colors.at(0));

            QTest::qWait(50);
            draws = shown.draws;
            QTest::mouseDClick(shown.bar, Qt::LeftButton); // of which the bar says nothing
            QTRY_VERIFY(shown.draws > draws);
            QCOMPARE(shown.cell(1, 0), colors.at(384));
        }
    }

    void squareCells()
    {
        forRows<QSize, bool>({{"wide", {128, 96}, true},
                              {"high", {50, 100}, true},
                              {"a few lines of a scan", {2000, 4}, false}, // would be flat
                              {"no map", {}, false}},
                             [](const QSize &cells, bool isSquare) {
                                 DispMBase display;
                                 display.resize(600, 500);
                                 display.grab();
                                 const QWidget *const area = display.area();
                                 const QSize room = area->size();
                                 display.setCells(cells);
                                 display.grab();
                                 const double proportions =
                                     double(area->width()) * cells.height() / (double(area->height()) * cells.width());
                                 QCOMPARE(qAbs(proportions - 1) < 0.01, isSquare);
                                 QVERIFY(area->width() == room.width() ||
                                         area->height() == room.height()); // as large as it can
                                 QVERIFY(qMin(area->width(), area->height()) >= 100);
                                 QCOMPARE(display.ui.frame_2->y(), area->y()); // the colours stand beside it
                                 QCOMPARE(display.ui.frame_2->height(), area->height());
                                 display.setCells(QSize());
                                 display.grab();
                                 QCOMPARE(area->size(), room);
                             });
    }

    void titleMakesRoom()
    {
        DispMBase display;
        display.setTitle("Result map, Valence", "V");
        const auto *const shortTitle = display.findChild<QLabel *>("ShortTitle");
        for (const int width : {900, 250, 900}) {
            display.resize(width, 400);
            display.grab();
            QCOMPARE(display.ui.Title->isHidden(), width < 300);
            QCOMPARE(shortTitle->isHidden(), width > 300);
            QCOMPARE(display.ui.Title->text(), QString("Result map, Valence")); // pictures carry it
        }
    }

    /// As the graphs do, but from a place of its own.
    void popAndDock()
    {
        ShownMap shown;
        DispMBase &display = shown.display;
        display.ui.Title->setText("Result map");
        QTest::mouseClick(display.ui.PopDockB, Qt::LeftButton);
        QCOMPARE(display.pop->windowTitle(), QString("Result map"));
        QVERIFY(display.ui.DispABFrame->window() == display.pop && display.pop->isVisible());
        display.pop->close();
        QVERIFY(display.ui.gridLayout->itemAtPosition(1, 0)->widget() == display.ui.DispABFrame);
    }

    void readOuts()
    {
        DispMBase display;
        QSignalSpy nowPos(&display, &DispMBase::nowPos);
        emit display.area()->nowPos(0.123456789, 1e-7);
        QCOMPARE(nowPos.count(), 1);
        QCOMPARE(display.ui.XPos->text() + ' ' + display.ui.YPos->text(), QString("0.123457 1e-07"));
        QCOMPARE(display.ui.YPos->cursorPosition(), 0);
    }

    void copiedPictureHasTheBar()
    {
        ShownMap shown;
        DispMBase &display = shown.display;
        display.resize(900, 700);
        display.ui.Title->clear(); // no line for it
        display.grab();
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
