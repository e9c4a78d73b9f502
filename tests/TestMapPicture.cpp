#include "Tables.h"
#include "display/ChCoord.h"
#include "display/MapPicture.h"

#include <QPainter>
#include <QPicture>

namespace
{

const QColor gridGrey(200, 200, 200);

/// A map whose cells count up from 0 row by row, each in a colour of its own.
struct CountingMap {
    CountingMap(int nx, int ny)
        : values(static_cast<std::size_t>(nx * ny))
        , map{values.data(), nx, ny}
    {
        for (int i = 0; i < nx * ny; ++i) {
            values[static_cast<std::size_t>(i)] = i;
            table.append(0xff000000u | static_cast<quint32>(i + 1));
        }
        scale.zmax = scale.idxAtTop = nx * ny;
        update();
    }
    bool update() { return picture.update(map, scale, table); }
    QColor colour(int i, int j) const { return QColor(table.at(j * map.nx + i)); }

    std::vector<double> values;
    MapValues map;
    ColourScale scale;
    ColourTable table;
    MapPicture picture;
};

QImage whiteImage(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

/// Coordinates without margins on which `real` (its second edges may come first) covers an area of that size.
void setCoord(ChCoord *cc, const QSize &size, const QRectF &real)
{
    cc->setScreenArea(0, size.height(), size.width(), 0);
    cc->setRealArea(real.x(), real.y(), real.x() + real.width(), real.y() + real.height());
}

QImage drawn(MapPicture *picture, const QSize &size, const QRectF &real)
{
    QImage image = whiteImage(size);
    ChCoord cc;
    setCoord(&cc, size, real);
    QPainter painter(&image);
    picture->draw(&painter, cc);
    return image;
}

/// The same by way of vectors, as for a printer.
QImage drawnAsVectors(MapPicture *picture, const QSize &size, const QRectF &real)
{
    QPicture vectors;
    ChCoord cc;
    setCoord(&cc, size, real);
    QPainter painter(&vectors);
    picture->draw(&painter, cc);
    painter.end();
    QImage image = whiteImage(size);
    painter.begin(&image);
    painter.drawPicture(0, 0, vectors);
    return image;
}

/// A part of a large map, pixel by pixel.
void comparePixels(const QRectF &real)
{
    CountingMap counting(700, 300);
    QImage image = whiteImage(QSize(191, 83));
    ChCoord cc;
    setCoord(&cc, image.size(), real);
    cc.setInnerArea(11, 70, 180, 7);
    QPainter painter(&image);
    counting.picture.draw(&painter, cc);
    painter.end();
    const bool outlined = std::abs(cc.r2sdx(1)) >= 10 && std::abs(cc.r2sdy(1)) >= 10;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double i = std::floor(cc.s2rx(x + 0.5)); // real y grows upwards
            const double j = std::floor(cc.s2ry(y + 0.5));
            const bool shown = x >= 11 && x < 180 && y >= 7 && y < 70 && i >= 0 && i < 700 && j >= 0 && j < 300;
            const QColor wanted = shown ? counting.colour(int(i), int(j)) : QColor(Qt::white);
            const QColor got = image.pixelColor(x, y);
            QVERIFY2(got == wanted || (outlined && got == gridGrey),
                     qPrintable(QStringLiteral("pixel %1, %2: %3").arg(x).arg(y).arg(got.name())));
        }
    }
}

bool contains(const QImage &image, const QColor &colour)
{
    for (int i = 0; i < image.width() * image.height(); ++i) {
        if (image.pixelColor(i % image.width(), i / image.width()) == colour)
            return true;
    }
    return false;
}

} // namespace

class TestMapPicture : public QObject
{
    Q_OBJECT

private slots:
    void everyPixelShowsItsCell()
    {
        forRows<QRectF>({{"whole map", {0, 0, 700, 300}},
                         {"part", {100.3, 17.9, 311.1, 99.7}},
                         {"beyond the map", {-50, -20, 800, 400}},
                         {"right to left, upside down", {700, 300, -700, -300}},
                         {"within one cell", {333.2, 42.6, 1e-7, 1e-7}},
                         {"edge between columns, deep", {332.9999, 41.9, 1e-3, 200}},
                         {"cells with outlines", {332.9, 41.9, 16, 6}}},
                        [](const QRectF &real) { comparePixels(real); });
    }

    void oddRangesDrawNothing()
    {
        const QSize size(30, 20);
        CountingMap counting(2, 2);
        for (const QRectF &real : {QRectF(1, 0, 0, 2), QRectF(0, 0, 0, 0), QRectF(qQNaN(), 0, 2, 2),
                                   QRectF(0, 0, qInf(), 2), QRectF(10, 10, 5, 5), QRectF(1e300, 0, 1e300, 2)}) {
            QCOMPARE(drawn(&counting.picture, size, real), whiteImage(size));
            QCOMPARE(drawnAsVectors(&counting.picture, size, real), whiteImage(size));
        }
        MapPicture never;
        QCOMPARE(drawn(&never, size, QRectF(0, 0, 2, 2)), whiteImage(size));
    }

    void drawnSharplyAndTranslated()
    {
        CountingMap counting(60, 40);
        QImage image = whiteImage(QSize(80, 60)); // 40 x 30 units of two pixels: a cell is one pixel
        image.setDevicePixelRatio(2);
        ChCoord cc;
        setCoord(&cc, QSize(30, 20), QRectF(0, 0, 60, 40));
        QPainter painter(&image);
        painter.translate(5, 4);
        counting.picture.draw(&painter, cc);
        painter.end();
        for (int x = 0; x < 80; ++x) {
            for (int y = 0; y < 60; ++y) {
                const bool inside = x >= 10 && x < 70 && y >= 8 && y < 48;
                QCOMPARE(image.pixelColor(x, y), inside ? counting.colour(x - 10, 47 - y) : QColor(Qt::white));
            }
        }
    }

    void drawnAsVectorsToo()
    {
        CountingMap counting(3, 2);
        const QImage image = drawnAsVectors(&counting.picture, QSize(300, 200), QRectF(0.5, 0, 3, 2));
        QCOMPARE(image.pixelColor(25, 150), counting.colour(0, 0)); // its left half is outside
        QCOMPARE(image.pixelColor(100, 150), counting.colour(1, 0));
        QCOMPARE(image.pixelColor(200, 50), counting.colour(2, 1));
        QCOMPARE(image.pixelColor(280, 50), QColor(Qt::white)); // right of the map
        QVERIFY(contains(image, gridGrey));

        counting.map.count = 4; // the second row has one value
        counting.scale.notFinite = 0xff808080u;
        counting.update();
        const QImage part = drawnAsVectors(&counting.picture, QSize(300, 200), QRectF(0, 0, 3, 2));
        QCOMPARE(part.pixelColor(50, 50), counting.colour(0, 1));
        QCOMPARE(part.pixelColor(150, 50), QColor(128, 128, 128));
        QCOMPARE(part.pixelColor(150, 150), counting.colour(1, 0));
    }

    void outlines()
    {
        // size: for 10 x 10 cells
        forRows<QSize, bool>({{"10 x 10 pixels", {100, 100}, true},
                              {"9.9 pixels wide", {99, 100}, false},
                              {"9.9 pixels high", {100, 99}, false},
                              {"17 x 14 pixels", {170, 140}, true}},
                             [](const QSize &size, bool isOutlined) {
                                 CountingMap counting(10, 10);
                                 const QImage image = drawn(&counting.picture, size, QRectF(0, 0, 10, 10));
                                 QCOMPARE(contains(image, gridGrey), isOutlined);
                                 const int width = size.width() / 10;
                                 const int height = size.height() / 10;
                                 for (int y = 0; isOutlined && y < size.height(); ++y) {
                                     for (int x = 0; x < size.width(); ++x) {
                                         const bool edge = x % width == 0 || y % height == 0;
                                         QCOMPARE(image.pixelColor(x, y),
                                                  edge ? gridGrey : counting.colour(x / width, 9 - y / height));
                                     }
                                 }
                             });
    }

    void colouredOnlyWhenNeeded()
    {
        CountingMap counting(4, 3);
        QVERIFY(!counting.update());
        counting.values[0] = 11; // where it stands
        QVERIFY(!counting.update());
        counting.picture.invalidate();
        QVERIFY(counting.update());
        QCOMPARE(counting.picture.image().pixelColor(0, 0), counting.colour(3, 2));

        counting.scale.zmax = 5;
        QVERIFY(counting.update());
        counting.scale.notFinite = 0xff808080u;
        QVERIFY(counting.update());
        counting.table[0] = 0xff123456u;
        QVERIFY(counting.update());
        counting.map.count = 9;
        QVERIFY(counting.update());
        QCOMPARE(counting.picture.image().size(), QSize(4, 3));
        counting.map.count = 3; // no room for rows without values
        QVERIFY(counting.update());
        QCOMPARE(counting.picture.image().size(), QSize(3, 1));
        counting.map.count = 12;
        counting.map.ny = 2;
        QVERIFY(counting.update());
        QCOMPARE(counting.picture.image().size(), QSize(4, 2));
        const std::vector<double> others(8, 0.0);
        counting.map.values = others.data();
        QVERIFY(counting.update());
        counting.map = MapValues();
        QVERIFY(counting.update());
        QVERIFY(counting.picture.image().isNull());
    }
};

QTEST_MAIN(TestMapPicture)
#include "TestMapPicture.moc"
