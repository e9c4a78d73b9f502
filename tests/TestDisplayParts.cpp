#include "DisplayHelpers.h"
#include "Tables.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/Histgram.h"
#include "display/MarkLine.h"
#include "display/ScaleBar.h"

#include <QCheckBox>
#include <QClipboard>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QToolButton>

namespace
{

QAction *menuAction(DispABase *dab, int position)
{
    return dab->headerMenu()->menu->actions().at(position);
}
enum { copyPicture, savePicture, copyValues };

/// Saves a display's picture by its menu, as a user who names that file.
struct SavedPicture {
    SavedPicture(DispABase *dab, const QString &path)
    {
        dab->headerMenu()->askFileName = [this, path](const QString &proposal) {
            proposed = proposal;
            return path;
        };
        dab->headerMenu()->showFailure = [this](const QString &text) {
            failures << text;
        };
        menuAction(dab, savePicture)->trigger();
    }
    QString proposed;
    QStringList failures;
};

/// A plot with markers.
struct MarkedPlot : Plot {
    explicit MarkedPlot(const QVector<double> &vertical, const QVector<double> &horizontal = {})
    {
        area.markLines = &marks;
        for (const double position : vertical + horizontal) {
            const int kind = marks.marks.size() < vertical.size() ? 0 : 1;
            marks.marks.append(new MarkLine(kind, nullptr, &marks));
            marks.marks.last()->setNumber(position);
        }
    }
    MarkLines marks;
};

} // namespace

class TestDisplayParts : public QObject
{
    Q_OBJECT

private slots:
    void markerPicking()
    {
        // vertical: x of the vertical markers; horizontal: y of those that are added after them
        forRows<QVector<double>, QVector<double>, QPoint, int>(
            {{"on it", {2, 5}, {}, {210, 100}, 1},
             {"the nearer", {4, 5}, {}, {195, 100}, 1},
             {"of equals the first", {5, 5}, {}, {205, 100}, 0},
             {"of equals on both sides the first", {5, 4}, {}, {193, 100}, 0},
             {"19 pixels away", {5}, {}, {229, 100}, 0},
             {"20 pixels are too far", {5}, {}, {230, 100}, -1},
             {"horizontal", {5}, {0.5}, {350, 140}, 1},
             {"horizontal, too far", {}, {0}, {350, 250}, -1},
             {"none there", {}, {}, {100, 100}, -1}},
            [](const QVector<double> &vertical, const QVector<double> &horizontal, const QPoint &press, int picked) {
                MarkedPlot plot(vertical, horizontal);
                QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, press);
                QCOMPARE(plot.marks.selected, picked);
                QCOMPARE(plot.marks.isMoving, picked >= 0);
                plot.marks.clear();
                QVERIFY(plot.marks.marks.isEmpty() && !plot.marks.isMoving && plot.marks.selected == -1);
            });
    }

    void markerDragAndRelease()
    {
        MarkedPlot plot({5});
        const MarkLines &marks = plot.marks;
        const QLineEdit &edit = *marks.marks[0]->edit;
        QStringList events;
        connect(&marks, &MarkLines::moving, this, [&] { events << edit.text(); });
        connect(&marks, &MarkLines::newPos, this, [&] { events << "new"; });
        connect(&plot.area, &DispArea::mReleased, this,
                [&] { events << (marks.isMoving ? "still moving" : "released"); });

        drag(&plot.area, QPoint(215, 100), QPoint(250, 100));
        QCOMPARE(events.join(' '), QString("6.17647 6.17647 new released"));
        QCOMPARE(edit.cursorPosition(), 0);
        QVERIFY(!marks.isMoving && marks.selected == -1);

        events.clear();
        drag(&plot.area, QPoint(300, 100), QPoint(250, 100)); // picks nothing on the way
        drag(&plot.area, QPoint(250, 100), QPoint(300, 100), Qt::ControlModifier);
        drag(&plot.area, QPoint(250, 100), QPoint(300, 100), Qt::NoModifier, Qt::RightButton);
        QCOMPARE(events.join(' '), QString("released released released"));
        QCOMPARE(edit.text(), QString("6.17647"));
    }

    void relativeMarker()
    {
        MarkedPlot plot({1, 3, 4});
        const QVector<MarkLine *> &marks = plot.marks.marks;
        marks[1]->relative = marks[2]->relative = true;
        marks[1]->baseIndex = 0;
        marks[2]->baseIndex = 1;
        QCOMPARE(plot.marks.position(1), 4.0);
        QCOMPARE(plot.marks.position(2), 7.0);                // the base's own number, not its position 4
        drag(&plot.area, QPoint(278, 100), QPoint(210, 100)); // from x = 7 to x = 5
        QCOMPARE(marks[2]->edit->text(), QString("2"));
        marks[2]->baseIndex = 9; // no such marker
        QCOMPARE(plot.marks.position(2), 2.0);
    }

    void interruptedMarkerIsReported()
    {
        MarkedPlot plot({2, 5});
        QVector<int> selectedThen;
        connect(&plot.marks, &MarkLines::newPos, this, [&] { selectedThen << plot.marks.selected; });
        QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(108, 100));
        QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(350, 100)); // near none: nothing changes
        QCOMPARE(plot.marks.selected, 0);
        QVERIFY(selectedThen.isEmpty());
        QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(210, 100));
        QCOMPARE(plot.marks.selected, 1);
        QCOMPARE(selectedThen, QVector<int>{0});
    }

    void markersOfStrangeTexts()
    {
        MarkedPlot plot({5});
        QPointer<QLineEdit> &edit = plot.marks.marks[0]->edit;
        edit->setText("abc");
        QCOMPARE(plot.marks.position(0), 0.0);
        edit->setText("nan");
        drag(&plot.area, QPoint(40, 100), QPoint(74, 100)); // no distance is near
        QCOMPARE(edit->text(), QString("nan"));
        delete edit; // its form is gone
        drag(&plot.area, QPoint(40, 100), QPoint(74, 100));
        QCOMPARE(plot.marks.position(0), 0.0);
    }

    void textFitsItsBox()
    {
        forRows<QRectF, double>({{"wide box: the height decides", {20, 30, 300, 24}, 0},
                                 {"narrow box: the width decides", {20, 30, 60, 60}, 0},
                                 {"box that extends up and left", {320, 90, -300, -60}, 0},
                                 {"capped", {20, 30, 300, 60}, 12}},
                                [](const QRectF &box, double maxSize) {
                                    QWidget widget;
                                    DrawText dt;
                                    const QFont font(QString(), 37);
                                    const QString text("7112.5 eV");
                                    QRectF bounds;
                                    const QImage image = painted(&widget, QSize(400, 300), [&](QStylePainter *p) {
                                        p->setFont(QFont(QString(), 23));
                                        const QFont before = p->font();
                                        bounds =
                                            dt.drawText(p, box, font, Qt::AlignLeft | Qt::AlignTop, 1, text, maxSize);
                                        QCOMPARE(p->font(), before);
                                    });
                                    const QRectF room = box.normalized();
                                    QVERIFY(!inkIn(image).isEmpty());
                                    QVERIFY(room.adjusted(-2, -2, 2, 2).contains(QRectF(inkIn(image))));
                                    QCOMPARE(bounds.topLeft(), room.topLeft());
                                    const double filled =
                                        std::max(bounds.width() / room.width(), bounds.height() / room.height());
                                    QVERIFY(maxSize == 0 ? filled > 0.85 && filled < 1.1 : filled < 0.6);
                                });
    }

    void textWithoutRoom()
    {
        QWidget widget;
        DrawText dt;
        static QStringList warnings;
        const QtMessageHandler before = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { warnings.append(text); });
        const QImage image = painted(&widget, QSize(100, 100), [&](QStylePainter *p) {
            dt.drawText(p, QRectF(10, 10, 0, 0), QFont(), 0, 1, "text", 12);
            dt.drawText(p, QRectF(10, 10, qQNaN(), 10), QFont(), 0, 1, "text", 12);
            dt.drawTexts(p, QRectF(10, 10, 1, 1), QFont(), 0, 0, {"text"}, 12); // less than a point
            dt.drawText(p, QRectF(10, 10, 50, 50), QFont(), 0, 1, QString(), 12);
            dt.drawTexts(p, QRectF(10, 10, 50, 50), QFont(), 0, 0, {}, 12);
        });
        qInstallMessageHandler(before);
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n'))); // of fonts without a size
        QVERIFY(inkIn(image).isEmpty());
        painted(&widget, QSize(100, 100), [&](QStylePainter *p) {
            QCOMPARE(dt.fitSize(p, QRectF(0, 0, 50, 0), QFont(), 0, QString()), 10.0); // a text that takes no width
            QCOMPARE(dt.drawText(p, QRectF(0, 0, 50, 50), QFont(), 0, 0, "text", 0), QRectF());
        });
    }

    void textsShareTheSmallestSize()
    {
        QWidget widget;
        DrawText dt;
        const QRectF box(0, 0, 200, 100);
        const auto ink = [&](const QStringList &texts, int fit) {
            return inkIn(painted(&widget, QSize(300, 200), [&](QStylePainter *p) {
                dt.drawTexts(p, box, QFont(), Qt::AlignLeft | Qt::AlignVCenter, fit, texts, 0);
            }));
        };
        const QRect alone = ink({"HH"}, 0);
        const QRect beside = ink({"HH", QString(12, 'H')}, 0);
        QVERIFY(box.contains(beside));
        QVERIFY(beside.height() < alone.height() / 2);
        QVERIFY(beside.width() > 0.75 * box.width());
        QVERIFY(ink({"HH"}, 1).height() > alone.height()); // a tenth is spared with fit 0 only
    }

    void takenRectangles()
    {
        DrawText dt;
        QVERIFY(!dt.overlaps(QRectF(0, 0, 10, 10)));
        dt.addRect(QRectF(0, 0, 10, 10));
        dt.addRect(QRectF(20, 0, 10, 10));
        QVERIFY(dt.overlaps(QRectF(25, 15, -3, -8)));
        QVERIFY(!dt.overlaps(QRectF(11, 0, 8, 10)));
    }

    void histogramReadsItsFields()
    {
        Histgram histogram;
        histogram.setUp(); // no fields yet
        QVERIFY(!histogram.isSet());
        QLineEdit from("0"), to("1"), boxes("11.9");
        QCheckBox automatic;
        automatic.setChecked(true);
        histogram.minEdit = &from;
        histogram.maxEdit = &to;
        histogram.numEdit = &boxes;
        histogram.check = &automatic;
        histogram.setUp();
        QCOMPARE((QVector<double>{histogram.min, histogram.max, histogram.width}), (QVector<double>{-0.05, 1.05, 0.1}));
        QCOMPARE(histogram.n, 11);
        QVERIFY(histogram.checkState);
        boxes.setText("many");
        histogram.setUp();
        histogram.add(0.5);
        QCOMPARE(histogram.n, 0);
    }

    void headerMenuOpensOnTheHeaderOnly()
    {
        DispABase dab;
        dab.show();
        QMenu &menu = *dab.headerMenu()->menu;
        const auto rightClick = [](QWidget *widget) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(2, 2), widget->mapToGlobal(QPoint(2, 2)));
            QApplication::sendEvent(widget, &event);
        };
        rightClick(dab.area()); // its right button has other uses
        QVERIFY(!menu.isVisible());
        rightClick(dab.ui.Title);
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void pictureToClipboard()
    {
        DispABase dab;
        dab.resize(820, 660);
        dab.ui.Title->clear();
        connect(&dab, &DispABase::draw, this, [&](QStylePainter *p) { paintRedPlot(dab.area(), p, true); });
        dab.show();
        dab.area()->grab();
        menuAction(&dab, copyPicture)->trigger();
        const QImage bare = QApplication::clipboard()->image();
        const ChCoord &cc = dab.area()->cc;
        QCOMPARE(bare.size(), dab.area()->size() * 2);
        QCOMPARE(bare.pixelColor(int(2 * cc.isx0()), int(cc.isy0() + cc.isy1())), outlineColour());
        QCOMPARE(bare.pixelColor(bare.rect().center()), QColor(Qt::red));
        QCOMPARE(bare.pixelColor(2, 2), QColor(Qt::white));

        dab.ui.Title->setText("Spectrum");
        menuAction(&dab, copyPicture)->trigger();
        const QImage titled = QApplication::clipboard()->image();
        const int line = titled.height() - bare.height();
        QVERIFY(line > 0);
        QVERIFY(!inkIn(titled.copy(0, 0, titled.width(), line)).isEmpty());
        QCOMPARE(titled.copy(0, line, bare.width(), bare.height()), bare);
    }

    /// Below a map of 34 pixels a cell, at most 68 pixels long.
    void scaleBar()
    {
        const Plot plot;
        forRows<double, QString, int>({{"half a micrometre", 0.3, "um", 57},
                                       {"just a round length", 0.25, "um", 68},
                                       {"from right to left", -0.3, "um", 57},
                                       {"millimetres", 1e-3, "mm", 68},
                                       {"no unit", 0.3, "", 0},
                                       {"no width", 0, "um", 0}},
                                      [&plot](double width, const QString &unit, int pixels) {
                                          QImage image(400, 300, QImage::Format_RGB32);
                                          image.fill(Qt::white);
                                          QPainter p(&image);
                                          drawScaleBar(&p, plot.area.cc, width, unit);
                                          const QRect ink = inkIn(image);
                                          int longest = 0;
                                          for (int y = ink.top(); y <= ink.bottom(); ++y) {
                                              int run = 0;
                                              while (image.pixelColor(ink.left() + run, y) == Qt::black)
                                                  ++run;
                                              longest = std::max(longest, run);
                                          }
                                          QVERIFY(qAbs(longest - pixels) <= 1);
                                          QVERIFY(ink.isNull() ||
                                                  (ink.top() > 270 && ink.left() > 116 && ink.right() < 304));
                                      });
        DispMBase map;
        connect(&map, &DispMBase::draw, this, [&](QStylePainter *p) { paintRedPlot(map.area(), p, true); });
        map.area()->grab();
        const QImage before = map.headerMenu()->picture().toImage(1);
        map.setCellWidth(2, "um");
        QVERIFY(map.headerMenu()->picture().toImage(1) != before);
    }

    void pictureToFile()
    {
        forRows<QString, QByteArray>(
            {{"PNG", "a.png", "\x89PNG"}, {"PDF", "a.pdf", "%PDF-"}, {"as others write it", "A.PDF", "%PDF-"}},
            [this](const QString &name, const QByteArray &start) {
                const QTemporaryDir directory;
                DispABase dab;
                dab.ui.Title->setText("M2/M3");
                connect(&dab, &DispABase::draw, this, [&](QStylePainter *p) { paintRedPlot(dab.area(), p, true); });
                const SavedPicture saved(&dab, directory.filePath(name));
                QCOMPARE(saved.failures, QStringList());
                QCOMPARE(saved.proposed, QString("M2_M3.png"));
                dab.headerMenu()->proposedName = [] {
                    return QString("cell 1_M2");
                };
                QCOMPARE(SavedPicture(&dab, QString()).proposed, QString("cell_1_M2.png"));
                const QByteArray bytes = tables::bytesOf(directory.filePath(name));
                QVERIFY(bytes.startsWith(start));
                if (start.startsWith('%'))
                    // Text and lines, not pixels.
                    QVERIFY(bytes.contains("/FontFile2") && !bytes.contains("/Subtype /Image"));
                else
                    QCOMPARE(QImage::fromData(bytes).width(), std::max(1500, 2 * dab.area()->width()));
            });
    }

    void pictureThatCannotBeSaved()
    {
        forRows<QString, int>({{"no such folder, PNG", "missing/a.png", 1},
                               {"no such folder, PDF", "missing/a.pdf", 1},
                               {"another kind of file: kept as it is", "notes.txt", 1},
                               {"no suffix", "notes", 1},
                               {"changed their mind", QString(), 0}},
                              [](const QString &file, int messages) {
                                  const QTemporaryDir directory;
                                  QVERIFY(tables::writeBytes(directory.filePath("notes.txt"), "keep"));
                                  DispABase dab;
                                  const QString path = file.isEmpty() ? file : directory.filePath(file);
                                  const SavedPicture saved(&dab, path);
                                  QCOMPARE(saved.failures.size(), messages);
                                  QVERIFY(saved.failures.join("").contains(QDir::toNativeSeparators(path)));
                                  QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{"notes.txt"});
                                  QCOMPARE(tables::bytesOf(directory.filePath("notes.txt")), QByteArray("keep"));
                              });
    }

    /// By the button as well as by a right click; its last entry tells what the mouse does.
    void headerMenuButton()
    {
        DispABase graph;
        DispMBase map;
        for (const auto &[display, menu] : {std::pair<QWidget *, HeaderMenu *>(&graph, graph.headerMenu()),
                                            std::pair<QWidget *, HeaderMenu *>(&map, map.headerMenu())}) {
            const auto *const button = display->findChild<QToolButton *>("HeaderMenuB");
            QVERIFY(button && button->menu() == menu->menu);
            menu->add("more");
            menu->menu->actions().last()->trigger();
            const auto *const box = display->findChild<QMessageBox *>();
            QVERIFY(box && box->isVisible() && !box->isModal());
            QVERIFY(box->text().contains("Shift") && box->text().contains("Wheel over an axis"));
        }
    }

    void valuesToClipboard()
    {
        DispABase dab;
        QVERIFY(!menuAction(&dab, copyValues)->isEnabled());
        dab.headerMenu()->setValues([] { return QString("1\t2\n"); });
        QVERIFY(menuAction(&dab, copyValues)->isEnabled());
        QSignalSpy copied(dab.headerMenu(), &HeaderMenu::copiedValues);
        menuAction(&dab, copyValues)->trigger();
        QCOMPARE(QApplication::clipboard()->text(), QString("1\t2\n"));
        QCOMPARE(copied.count(), 1);
        dab.headerMenu()->setValues(nullptr);
        QVERIFY(!menuAction(&dab, copyValues)->isEnabled());
    }
};

QTEST_MAIN(TestDisplayParts)
#include "TestDisplayParts.moc"
