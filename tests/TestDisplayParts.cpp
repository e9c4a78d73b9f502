#include "DisplayHelpers.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"
#include "display/Histgram.h"
#include "display/MarkLine.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>

#include <memory>

namespace
{

QAction *menuAction(DispABase *dab, int position)
{
    return dab->headerMenu()->menu->actions().at(position);
}
constexpr int copyPicture = 0;
constexpr int savePicture = 1;
constexpr int copyValues = 2;

QStringList warnings;
void keepWarning(QtMsgType, const QMessageLogContext &, const QString &text)
{
    warnings.append(text);
}

} // namespace

class TestDisplayParts : public QObject
{
    Q_OBJECT

private slots:
    void markerPicking_data();
    void markerPicking();
    void markerDragAndRelease();
    void relativeMarker();
    void interruptedMarkerIsReported();
    void markersOfStrangeTexts();
    void textFitsItsBox_data();
    void textFitsItsBox();
    void textWithoutRoom();
    void textsShareTheSmallestSize();
    void takenRectangles();
    void histogramReadsItsFields();
    void headerMenuOpensOnTheHeaderOnly();
    void pictureToClipboard();
    void pictureToFile_data();
    void pictureToFile();
    void pictureThatCannotBeSaved_data();
    void pictureThatCannotBeSaved();
    void valuesToClipboard();
};

void TestDisplayParts::markerPicking_data()
{
    QTest::addColumn<QVector<double>>("vertical"); // x of the vertical markers, 34 pixels per unit from 40 on
    QTest::addColumn<QVector<double>>(
        "horizontal"); // y of the horizontal ones, added after them; 255 pixels from 270 up
    QTest::addColumn<QPoint>("press");
    QTest::addColumn<int>("picked");
    using Positions = QVector<double>;
    QTest::newRow("on it") << Positions{2, 5} << Positions{} << QPoint(210, 100) << 1;
    QTest::newRow("the nearer") << Positions{4, 5} << Positions{} << QPoint(195, 100) << 1;
    QTest::newRow("of equals the first") << Positions{5, 5} << Positions{} << QPoint(205, 100) << 0;
    QTest::newRow("of equals on both sides the first") << Positions{5, 4} << Positions{} << QPoint(193, 100) << 0;
    QTest::newRow("19 pixels away") << Positions{5} << Positions{} << QPoint(229, 100) << 0;
    QTest::newRow("20 pixels are too far") << Positions{5} << Positions{} << QPoint(230, 100) << -1;
    QTest::newRow("horizontal") << Positions{5} << Positions{0.5} << QPoint(350, 140) << 1;
    QTest::newRow("horizontal, too far") << Positions{} << Positions{0} << QPoint(350, 250) << -1;
    QTest::newRow("none there") << Positions{} << Positions{} << QPoint(100, 100) << -1;
}

void TestDisplayParts::markerPicking()
{
    QFETCH(QVector<double>, vertical);
    QFETCH(QVector<double>, horizontal);
    QFETCH(QPoint, press);
    QFETCH(int, picked);
    Plot plot;
    MarkLines marks;
    plot.area.markLines = &marks;
    for (const double x : vertical) {
        marks.marks.append(new MarkLine(0, nullptr, &marks));
        marks.marks.last()->setNumber(x);
    }
    for (const double y : horizontal) {
        marks.marks.append(new MarkLine(1, nullptr, &marks));
        marks.marks.last()->setNumber(y);
    }
    QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, press);
    QCOMPARE(marks.selected, picked);
    QCOMPARE(marks.isMoving, picked >= 0);
    marks.clear();
    QVERIFY(marks.marks.isEmpty() && !marks.isMoving && marks.selected == -1);
}

void TestDisplayParts::markerDragAndRelease()
{
    Plot plot;
    MarkLines marks;
    QLineEdit edit("5");
    MarkLine mark(0, &edit);
    marks.marks.append(&mark);
    plot.area.markLines = &marks;
    QStringList events;
    connect(&marks, &MarkLines::moving, this, [&] { events << edit.text(); });
    connect(&marks, &MarkLines::newPos, this, [&] { events << "new"; });
    connect(&plot.area, &DispArea::mReleased, this, [&] { events << (marks.isMoving ? "still moving" : "released"); });

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

void TestDisplayParts::relativeMarker()
{
    Plot plot;
    MarkLines marks;
    plot.area.markLines = &marks;
    for (const double number : {1.0, 3.0, 4.0}) {
        marks.marks.append(new MarkLine(0, nullptr, &marks));
        marks.marks.last()->setNumber(number);
    }
    marks.marks[1]->relative = marks.marks[2]->relative = true;
    marks.marks[1]->baseIndex = 0;
    marks.marks[2]->baseIndex = 1;
    QCOMPARE(marks.position(1), 4.0);
    QCOMPARE(marks.position(2), 7.0);                     // the base's own number, not its position 4
    drag(&plot.area, QPoint(278, 100), QPoint(210, 100)); // from x = 7 to x = 5
    QCOMPARE(marks.marks[2]->edit->text(), QString("2"));
    marks.marks[2]->baseIndex = 9; // no such marker
    QCOMPARE(marks.position(2), 2.0);
}

void TestDisplayParts::interruptedMarkerIsReported()
{
    Plot plot;
    MarkLines marks;
    plot.area.markLines = &marks;
    for (const double number : {2.0, 5.0}) {
        marks.marks.append(new MarkLine(0, nullptr, &marks));
        marks.marks.last()->setNumber(number);
    }
    QVector<int> selectedThen;
    connect(&marks, &MarkLines::newPos, this, [&] { selectedThen << marks.selected; });
    QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(108, 100));
    QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(350, 100)); // near none: nothing changes
    QCOMPARE(marks.selected, 0);
    QVERIFY(selectedThen.isEmpty());
    QTest::mousePress(&plot.area, Qt::LeftButton, Qt::NoModifier, QPoint(210, 100));
    QCOMPARE(marks.selected, 1);
    QCOMPARE(selectedThen, QVector<int>{0});
}

void TestDisplayParts::markersOfStrangeTexts()
{
    Plot plot;
    MarkLines marks;
    plot.area.markLines = &marks;
    auto edit = std::make_unique<QLineEdit>("abc");
    MarkLine mark(0, edit.get());
    marks.marks.append(&mark);
    QCOMPARE(marks.position(0), 0.0);
    edit->setText("nan");
    drag(&plot.area, QPoint(40, 100), QPoint(74, 100)); // no distance is near
    QCOMPARE(edit->text(), QString("nan"));
    edit.reset(); // its form is gone
    drag(&plot.area, QPoint(40, 100), QPoint(74, 100));
    QCOMPARE(marks.position(0), 0.0);
}

void TestDisplayParts::textFitsItsBox_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("maxSize");
    QTest::newRow("wide box: the height decides") << QRectF(20, 30, 300, 24) << "7112.5 eV" << 0.0;
    QTest::newRow("narrow box: the width decides") << QRectF(20, 30, 60, 60) << "7112.5 eV" << 0.0;
    QTest::newRow("box that extends up and left") << QRectF(320, 90, -300, -60) << "7112.5 eV" << 0.0;
    QTest::newRow("capped") << QRectF(20, 30, 300, 60) << "7112.5 eV" << 12.0;
}

void TestDisplayParts::textFitsItsBox()
{
    QFETCH(QRectF, box);
    QFETCH(QString, text);
    QFETCH(double, maxSize);
    QWidget widget;
    DrawText dt;
    QFont font;
    font.setPointSize(37);
    QRectF bounds;
    const QImage image = painted(&widget, QSize(400, 300), [&](QStylePainter *p) {
        p->setFont(QFont(QString(), 23));
        const QFont before = p->font();
        bounds = dt.drawText(p, box, font, Qt::AlignLeft | Qt::AlignTop, 1, text, maxSize);
        QCOMPARE(p->font(), before);
        if (maxSize == 0) {
            font.setPointSizeF(dt.fitSize(p, box, font, Qt::AlignLeft | Qt::AlignTop, text));
            QVERIFY(font.pointSizeF() > 0);
        }
    });
    const QRectF room = box.normalized();
    QVERIFY(!inkIn(image).isEmpty() && room.adjusted(-2, -2, 2, 2).contains(QRectF(inkIn(image))));
    QCOMPARE(bounds.topLeft(), room.topLeft());
    const double filled = std::max(bounds.width() / room.width(), bounds.height() / room.height());
    if (maxSize == 0)
        QVERIFY2(filled > 0.85 && filled < 1.1, qPrintable(QString::number(filled)));
    else
        QVERIFY(filled < 0.6);
}

void TestDisplayParts::textWithoutRoom()
{
    QWidget widget;
    DrawText dt;
    warnings.clear();
    const QtMessageHandler before = qInstallMessageHandler(keepWarning);
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

void TestDisplayParts::textsShareTheSmallestSize()
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

void TestDisplayParts::takenRectangles()
{
    DrawText dt;
    QVERIFY(!dt.overlaps(QRectF(0, 0, 10, 10)));
    dt.addRect(QRectF(0, 0, 10, 10));
    dt.addRect(QRectF(20, 0, 10, 10));
    QVERIFY(dt.overlaps(QRectF(25, 15, -3, -8)));
    QVERIFY(!dt.overlaps(QRectF(11, 0, 8, 10)));
}

void TestDisplayParts::histogramReadsItsFields()
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

void TestDisplayParts::headerMenuOpensOnTheHeaderOnly()
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

void TestDisplayParts::pictureToClipboard()
{
    DispABase dab;
    dab.resize(420, 330);
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

void TestDisplayParts::pictureToFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("PNG") << "a.png" << QByteArray("\x89PNG");
    QTest::newRow("PDF") << "a.pdf" << QByteArray("%PDF-");
    QTest::newRow("capitals") << "A.PDF" << QByteArray("%PDF-");
}

void TestDisplayParts::pictureToFile()
{
    QFETCH(QString, name);
    const QTemporaryDir directory;
    DispABase dab;
    dab.ui.Title->setText("M2/M3");
    connect(&dab, &DispABase::draw, this, [&](QStylePainter *p) { paintRedPlot(dab.area(), p, true); });
    QString proposed;
    QStringList failures;
    dab.headerMenu()->askFileName = [&](const QString &proposal) {
        proposed = proposal;
        return directory.filePath(name);
    };
    dab.headerMenu()->showFailure = [&](const QString &text) {
        failures << text;
    };
    menuAction(&dab, savePicture)->trigger();
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join('\n')));
    QCOMPARE(proposed, QString("M2_M3.png"));
    QFile file(directory.filePath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QFETCH(QByteArray, start);
    QVERIFY(bytes.startsWith(start));
    if (start.startsWith('%'))
        QVERIFY(bytes.contains("/FontFile2") && !bytes.contains("/Subtype /Image")); // text and lines, not pixels
    else
        QCOMPARE(QImage::fromData(bytes).width(), 2 * dab.area()->width());
}

void TestDisplayParts::pictureThatCannotBeSaved_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("messages");
    QTest::newRow("no such folder, PNG") << "missing/a.png" << 1;
    QTest::newRow("no such folder, PDF") << "missing/a.pdf" << 1;
    QTest::newRow("another kind of file: kept as it is") << "notes.txt" << 1;
    QTest::newRow("no suffix") << "notes" << 1;
    QTest::newRow("changed their mind") << QString() << 0;
}

void TestDisplayParts::pictureThatCannotBeSaved()
{
    QFETCH(QString, name);
    const QTemporaryDir directory;
    QFile notes(directory.filePath("notes.txt"));
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("keep");
    notes.close();
    DispABase dab;
    const QString path = name.isEmpty() ? name : directory.filePath(name);
    QStringList failures;
    dab.headerMenu()->askFileName = [&](const QString &) {
        return path;
    };
    dab.headerMenu()->showFailure = [&](const QString &text) {
        failures << text;
    };
    menuAction(&dab, savePicture)->trigger();
    QTEST(failures.size(), "messages");
    QVERIFY(failures.isEmpty() || failures.first().contains(QDir::toNativeSeparators(path)));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList{"notes.txt"});
    QCOMPARE(notes.size(), qint64(4));
}

void TestDisplayParts::valuesToClipboard()
{
    DispABase dab;
    QVERIFY(!menuAction(&dab, copyValues)->isEnabled());
    dab.headerMenu()->setValues([] { return QString("1\t2\n"); });
    QVERIFY(menuAction(&dab, copyValues)->isEnabled());
    menuAction(&dab, copyValues)->trigger();
    QCOMPARE(QApplication::clipboard()->text(), QString("1\t2\n"));
    dab.headerMenu()->setValues(nullptr);
    QVERIFY(!menuAction(&dab, copyValues)->isEnabled());
}

QTEST_MAIN(TestDisplayParts)
#include "TestDisplayParts.moc"
