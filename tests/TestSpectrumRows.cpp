#include "RowTools.h"
#include "display/DispABase.h"
#include "spectrum/ARefFile.h"
#include "spectrum/AXafsFileSelect.h"
#include "spectrum/RefFiles.h"
#include "spectrum/SpectrumDrawing.h"

#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using namespace rowtools;

namespace
{

constexpr double edge = 7105; // eV, the middle of the only step of stepSpectrum()

/// Every 10 eV from 7000 to 7200: mu is 0.1 up to 7100 and 1.1 from 7110 on.
QByteArray stepSpectrum()
{
    QByteArray text = "Mode 0 0 1 2\nOffset 0 0 0 0\n";
    for (int energy = 7000; energy <= 7200; energy += 10) {
        const double angle = std::asin(12398.424360387684 / (2 * 3.1355316 * energy)) * 180 / 3.1415926535;
        const double transmitted = 1e6 * std::exp(energy <= 7100 ? -0.1 : -1.1);
        text += "0 " + QByteArray::number(angle, 'g', 16) + " 0 1e6 " + QByteArray::number(transmitted, 'g', 16) + '\n';
    }
    return text;
}

void setStepEdge(AMutE *spectrum)
{
    spectrum->setPreEdgeEnd(7080);
    spectrum->setEdgeEnergy(edge);
    spectrum->setPostEdgeStart(7130);
    spectrum->fitLines();
}

} // namespace

class TestSpectrumRows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void drops();
    void referenceUse();
    void spectrumAnnouncesItsEdge();
    void notASpectrum();
    void valueAtEnergy_data();
    void valueAtEnergy();
    void energyShift();
    void drawnColumns();
    void placeForText();
    void drawnRange();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestSpectrumRows::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(write(path("step.dat"), stepSpectrum()));
    QVERIFY(write(path("none.dat"), "no line says where the data start\n"));
}

void TestSpectrumRows::drops()
{
    ARefFile reference; // anywhere on the row
    QSignalSpy found(&reference, &ARefFile::foundNewEdge);
    QVERIFY(drop(&reference, QUrl::fromLocalFile(path("step.dat"))));
    QVERIFY(drop(reference.selector(), QUrl::fromLocalFile(path("step.dat"))));
    QCOMPARE(found.count(), 2);
    QCOMPARE(reference.selector()->fileText(), path("step.dat"));
}

void TestSpectrumRows::referenceUse()
{
    QWidget window;
    ARefFile first(&window);
    ARefFile second(&window);
    RefFiles rows;
    rows.add(&first);
    rows.add(&second);
    QSignalSpy changed(&first, &ARefFile::changedUse);
    QSignalSpy anyChanged(&rows, &RefFiles::changedUse);
    QSignalSpy anySelected(&rows, &RefFiles::selectedFile);
    first.setUsed(false);
    QCOMPARE(changed.count(), 0);
    first.setUsed(true);
    second.setUsed(true);
    first.setUsed(true);
    QVERIFY(first.isUsed() && second.isUsed());
    QCOMPARE(changed, QList<QVariantList>({{true}}));
    QTest::keyClick(first.findChild<QRadioButton *>("UseCB"), Qt::Key_Space); // can be switched off again
    QCOMPARE(changed.last(), QVariantList({false}));
    QCOMPARE(anyChanged.count(), 3);
    second.selector()->clearFileName();
    QCOMPARE(anySelected.count(), 1);

    type(field(&first, "Valence"), "2.667");
    QCOMPARE(first.valence(), 2.667);
    first.setValenceText("III");
    QCOMPARE(first.valence(), 0.0);
    first.setRatio(1.0 / 3);
    first.setAmount(2e-7);
    QCOMPARE(field(&first, "RatioDisp")->text() + ' ' + field(&first, "AmountDisp")->text(), QString("0.333333 2e-07"));
}

void TestSpectrumRows::spectrumAnnouncesItsEdge()
{
    AXafsFileSelect select;
    QSignalSpy found(&select, &AXafsFileSelect::foundNewEdge);
    QSignalSpy updated(&select, &AXafsFileSelect::updated);
    QSignalSpy paths(&select, &AFileSelect::newFilePath);
    select.newFile(path("step.dat")); // the selector's own slot: loads, and leaves the name alone
    QCOMPARE(found.count(), 1);
    QCOMPARE(paths.count(), 0);
    static_cast<AFileSelect &>(select).newFile(path("step.dat"));
    QCOMPARE(found.count(), 2);
    QVERIFY(std::abs(found.last().first().toDouble() - edge) < 1e-6);
    QCOMPARE(select.spectrum().edgeEnergy(), 0.0); // the panel decides
    QCOMPARE(select.exInfo(), QString("21 points, 7000-7200 eV"));

    QTest::mouseClick(select.findChild<QPushButton *>("ClearB"), Qt::LeftButton);
    QVERIFY(!select.valid());
    QCOMPARE(select.spectrum().pointCount(), 0);
    QCOMPARE(found.count(), 2);
    QCOMPARE(updated.count(), 1);
}

void TestSpectrumRows::notASpectrum()
{
    AXafsFileSelect select;
    QSignalSpy found(&select, &AXafsFileSelect::foundNewEdge);
    AFileSelect &base = select;
    base.newFile(path("step.dat"));
    base.newFile(path("missing.dat")); // leaves the spectrum, whose edge is announced once more
    QCOMPARE(select.exInfo(), QString("Cannot read missing.dat"));
    QCOMPARE(found.count(), 2);
    QVERIFY(select.valid());
    base.newFile(path("none.dat"));
    QCOMPARE(select.exInfo(), QString("none.dat is not a spectrum"));
    QCOMPARE(found.count(), 2);
    QVERIFY(!select.valid());
}

void TestSpectrumRows::valueAtEnergy_data()
{
    QTest::addColumn<QString>("dE");
    QTest::addColumn<double>("energy");
    QTest::addColumn<bool>("isInside");
    QTest::addColumn<double>("lessPreLine"); // the lines are 0.1 and 1.1 everywhere
    QTest::newRow("before the edge") << "0" << 7042.0 << true << 0.0;
    QTest::newRow("half-way up") << "0" << 7105.0 << true << 0.5;
    QTest::newRow("behind the edge") << "0" << 7199.0 << true << 1.0;
    QTest::newRow("below the first point") << "0" << 6999.0 << false << 0.0;
    QTest::newRow("beyond the last point") << "0" << 7201.0 << false << 0.0;
    QTest::newRow("shifted down") << "2.5" << 7105.0 << true << 0.75;
    QTest::newRow("shifted away") << "2.5" << 7199.0 << false << 0.0;
    QTest::newRow("no number is no shift") << "x" << 7105.0 << true << 0.5;
}

void TestSpectrumRows::valueAtEnergy()
{
    QFETCH(QString, dE);
    QFETCH(double, energy);
    QFETCH(bool, isInside);
    QFETCH(double, lessPreLine);
    AXafsFileSelect select;
    double value = -7;
    QVERIFY(!select.valueAtEnergy(energy, &value));
    select.newFile(path("step.dat"));
    setStepEdge(&select.spectrum());
    type(field(&select, "dE"), "99");
    type(field(&select, "dE"), dE);
    QCOMPARE(select.valueAtEnergy(energy, &value), isInside);
    QVERIFY(isInside ? std::abs(value - lessPreLine) < 1e-6 : value == -7);
    select.setSubtractPostLine(true);
    QCOMPARE(select.valueAtEnergy(energy, &value), isInside);
    QVERIFY(isInside ? std::abs(value - (lessPreLine - 1)) < 1e-6 : value == -7);
}

void TestSpectrumRows::energyShift()
{
    AXafsFileSelect select;
    QSignalSpy updated(&select, &AXafsFileSelect::updated);
    QTest::ignoreMessage(QtDebugMsg, "set new de");
    type(field(&select, "dE"), "1");
    QCOMPARE(updated.count(), 0); // there is nothing to shift
    select.newFile(path("step.dat"));
    QCOMPARE(select.spectrum().dE(), 1.0);
    const double line = select.spectrum().preLine(7050);
    for (int i = 0; i < 2; ++i) {
        QTest::ignoreMessage(QtDebugMsg, "set new de");
        QTest::ignoreMessage(QtDebugMsg, "bb");
        type(field(&select, "dE"), "-3");
    }
    QCOMPARE(select.spectrum().dE(), -3.0);
    QCOMPARE(select.spectrum().preLine(7050), line); // not fitted anew
    QCOMPARE(updated.count(), 1);                    // the same number again changes nothing
}

void TestSpectrumRows::drawnColumns()
{
    AMutE spectrum;
    spectrum.read(path("step.dat"));
    setStepEdge(&spectrum);
    ChCoord cc;
    cc.setScreenArea(0, 300, 440, 0);
    cc.setRealArea(6990, -0.1, 7210, 1.4); // 2 pixels for 1 eV
    QImage image(440, 300, QImage::Format_RGB32);
    image.fill(Qt::cyan);
    QPainter p(&image);
    spectrumdrawing::drawSpectrum(&p, cc, spectrum);
    p.end();
    constexpr int freeRow = 10; // above every curve
    const auto colourAt = [&](double energy) {
        return image.pixelColor(qRound(cc.r2sx(energy)), freeRow);
    };
    QCOMPARE(colourAt(7080), QColor(255, 200, 200));
    QCOMPARE(colourAt(7130), QColor(255, 200, 200));
    QCOMPARE(colourAt(edge), QColor(255, 0, 0));
    QCOMPARE(colourAt(7040), QColor(Qt::white));
    const auto hasIn = [&](double energy, const QColor &colour) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(qRound(cc.r2sx(energy)), y) == colour)
                return true;
        }
        return false;
    };
    QVERIFY(hasIn(7025, QColor(0, 0, 200))); // each line over all energies
    QVERIFY(hasIn(7175, QColor(0, 200, 0)));
    QVERIFY(hasIn(7103, Qt::black));

    spectrum.setValid(false);
    QPainter again(&image);
    spectrumdrawing::drawSpectrum(&again, cc, spectrum);
    again.end();
    QImage blank(image.size(), image.format());
    blank.fill(Qt::white);
    QCOMPARE(image, blank);
}

/// Nothing is drawn where the text goes, not even when the spectrum ends at the lower right.
void TestSpectrumRows::placeForText()
{
    AMutE spectrum;
    spectrum.read(path("step.dat"));
    setStepEdge(&spectrum);
    const double end = spectrum.points().last().mu;
    for (const double bottom : {-0.1, -2.0, end - 0.3, end - 0.275, end - 0.25}) {
        const QRectF real(6990, bottom, 220, 1.5);
        ChCoord cc;
        cc.setScreenArea(0, 300, 440, 0);
        cc.setRealArea(real.left(), real.top(), real.right(), real.bottom());
        QImage image(440, 300, QImage::Format_RGB32);
        QPainter p(&image);
        spectrumdrawing::drawSpectrum(&p, cc, spectrum);
        p.end();
        const QRect place = spectrumdrawing::freePlace(cc, spectrum, QSizeF(60, 20)).toAlignedRect();
        QVERIFY(image.rect().contains(place));
        const QImage text = image.copy(place);
        QImage blank(text.size(), text.format());
        blank.fill(Qt::white);
        QCOMPARE(text, blank);
    }
}

void TestSpectrumRows::drawnRange()
{
    DispABase display;
    display.resize(400, 330);
    AXafsFileSelect select;
    select.setDisplay(display.area());
    static_cast<AFileSelect &>(select).newFile(path("step.dat"));
    setStepEdge(&select.spectrum());
    display.grab();
    const ChCoord &cc = display.area()->cc;
    const auto isClose = [](double value, double expected) {
        return std::abs(value - expected) < 1e-6;
    };
    QVERIFY(isClose(cc.rx0(), 6990) && isClose(cc.rx1(), 7210)); // 5 % of 200 eV
    QVERIFY(isClose(cc.ry0(), 0.05) && isClose(cc.ry1(), 1.15));

    display.area()->cc.setRealX(7100, 7110); // zoomed
    display.grab();
    QCOMPARE(cc.rx0(), 7100.0);
    select.setFullRange(false); // twice the limits of the fits, from the edge
    display.grab();
    QVERIFY(isClose(cc.rx0(), 7055 - 5) && isClose(cc.rx1(), 7155 + 5));

    select.clearFileName();
    const QImage empty = display.area()->grab().toImage();
    QCOMPARE(empty.pixelColor(200, 150), QColor(Qt::white));
    QVERIFY(!display.area()->scaleFixed);

    QVERIFY(write(path("flat.dat"), "Offset\n0 20 0 1 1\n0 19 0 1 1\n")); // mu is 0 everywhere
    static_cast<AFileSelect &>(select).newFile(path("flat.dat"));
    display.grab();
    QVERIFY(cc.ry0() < 0 && cc.ry1() > 0);

    DispABase second;
    select.setDisplay(second.area());
    AXafsFileSelect other;
    other.setDisplay(display.area());
    other.newFile(path("step.dat"));
    display.grab();
    QVERIFY(isClose(cc.rx0(), 6990));
    QVERIFY(!second.area()->scaleFixed); // painting the first display draws nothing into the second
}

QTEST_MAIN(TestSpectrumRows)
#include "TestSpectrumRows.moc"
