#include "display/DispABase.h"
#include "spectrum/ARefFile.h"
#include "spectrum/AXafsFileSelect.h"
#include "spectrum/RefFiles.h"
#include "spectrum/SpectrumDrawing.h"
#include "tests/RowTools.h"

#include <QPainter>

using namespace rowtools;
using tables::writeBytes;

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

/// The spectrum in 440 x 300 pixels: 7210 eV at the right, 2 pixels for 1 eV.
struct Picture {
    Picture(const AMutE &spectrum, double muFrom, double muTo)
    {
        cc.setScreenArea(0, 300, 440, 0);
        cc.setRealArea(6990, muFrom, 7210, muTo);
        image.fill(Qt::cyan);
        QPainter p(&image);
        spectrumdrawing::drawSpectrum(&p, cc, spectrum);
    }
    /// Whether the colour stands somewhere at that energy, in the first `height` pixel rows.
    bool has(double energy, const QColor &colour, int height = 300) const
    {
        int y = 0;
        while (y < height && image.pixelColor(qRound(cc.r2sx(energy)), y) != colour)
            ++y;
        return y < height;
    }
    static bool isBlank(const QImage &part)
    {
        QImage blank(part.size(), part.format());
        blank.fill(Qt::white);
        return part == blank;
    }

    ChCoord cc;
    QImage image = QImage(440, 300, QImage::Format_RGB32);
};

} // namespace

class TestSpectrumRows : public QObject
{
    Q_OBJECT

    QString path(const QString &name) const { return m_dir.filePath(name); }

    AMutE step() const
    {
        AMutE spectrum;
        spectrum.read(path("step.dat"));
        setStepEdge(&spectrum);
        return spectrum;
    }

    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY(writeBytes(path("step.dat"), stepSpectrum()));
        QVERIFY(writeBytes(path("none.dat"), "no line says where the data start\n"));
        QVERIFY(writeBytes(path("flat.dat"), "Offset\n0 20 0 1 1\n0 19 0 1 1\n")); // mu is 0 everywhere
    }

    void drops()
    {
        ARefFile reference; // anywhere on the row
        QSignalSpy found(&reference, &ARefFile::foundNewEdge);
        QVERIFY(drop(&reference, QUrl::fromLocalFile(path("step.dat"))));
        QVERIFY(drop(reference.selector(), QUrl::fromLocalFile(path("step.dat"))));
        QCOMPARE(found.count(), 2);
        QCOMPARE(reference.selector()->fileText(), path("step.dat"));
    }

    void referenceUse()
    {
        QWidget window;
        ARefFile first(&window), second(&window);
        RefFiles rows;
        rows.add(&first);
        rows.add(&second);
        QSignalSpy changed(&first, &ARefFile::changedUse);
        QSignalSpy anyChanged(&rows, &RefFiles::changedUse), anySelected(&rows, &RefFiles::selectedFile);
        first.setUsed(false);
        QCOMPARE(changed.count(), 0);
        first.setUsed(true);
        second.setUsed(true);
        first.setUsed(true);
        QVERIFY(first.isUsed() && second.isUsed());
        QTest::keyClick(first.findChild<QRadioButton *>("UseCB"), Qt::Key_Space); // can be switched off again
        QCOMPARE(changed, QList<QVariantList>({{true}, {false}}));
        QCOMPARE(anyChanged.count(), 3);
        second.selector()->clearFileName();
        QCOMPARE(anySelected.count(), 1);

        type(field(&first, "Valence"), "2.667");
        QCOMPARE(first.valence(), 2.667);
        first.setValenceText("III");
        QCOMPARE(first.valence(), 0.0);
        first.setRatio(1.0 / 3);
        first.setAmount(2e-7);
        QCOMPARE(field(&first, "RatioDisp")->text(), QString("0.333333"));
        QCOMPARE(field(&first, "AmountDisp")->text(), QString("2e-07"));
    }

    void spectrumAnnouncesItsEdge()
    {
        AXafsFileSelect select;
        QSignalSpy found(&select, &AXafsFileSelect::foundNewEdge), updated(&select, &AXafsFileSelect::updated);
        QSignalSpy paths(&select, &AFileSelect::newFilePath);
        select.newFile(path("step.dat")); // the selector's own slot: loads, and leaves the name alone
        QCOMPARE(found.count(), 1);
        QCOMPARE(paths.count(), 0);
        QVERIFY(std::abs(found.last().first().toDouble() - edge) < 1e-6);
        QCOMPARE(select.spectrum().edgeEnergy(), 0.0); // the panel decides

        setStepEdge(&select.spectrum());
        QVERIFY(std::abs(select.spectrum().edgeJump() - 1) < 1e-6);
        QTest::mouseClick(select.findChild<QPushButton *>("ClearB"), Qt::LeftButton);
        QVERIFY(!select.valid() && !select.lastReadSucceeded());
        QCOMPARE(select.spectrum().pointCount(), 0);
        QCOMPARE(select.spectrum().edgeJump(), 0.0); // nothing for the ranges of the results
        QCOMPARE(found.count(), 1);
        QCOMPARE(updated.count(), 1);
    }

    /// Whoever is told an edge can ask whether it is that of the file chosen.
    void filesOneAfterTheOther()
    {
        AXafsFileSelect select;
        QVector<bool> announced;
        connect(&select, &AXafsFileSelect::foundNewEdge, [&] { announced += select.lastReadSucceeded(); });
        QVERIFY(!select.lastReadSucceeded());
        forRows<const char *, const char *, bool, bool, bool>(
            {{"nothing yet", "missing.dat", "Cannot read missing.dat", false, false, false},
             {"a spectrum", "step.dat", "21 points, 7000-7200 eV, E0 7105.0", true, true, true},
             {"its edge is announced once more", "missing.dat", "Cannot read missing.dat", false, true, true},
             {"the spectrum goes", "none.dat", "none.dat is not a spectrum", false, false, false},
             {"a spectrum again", "step.dat", "21 points, 7000-7200 eV, E0 7105.0", true, true, true}},
            [&](const char *file, const char *info, bool isRead, bool isValid, bool isAnnounced) {
                announced.clear();
                select.choose(path(file));
                QCOMPARE(select.exInfo(), QString(info));
                QCOMPARE(announced, isAnnounced ? QVector<bool>{isRead} : QVector<bool>());
                QCOMPARE(select.lastReadSucceeded(), isRead);
                QCOMPARE(select.valid(), isValid);
            });
    }

    /// The lines are 0.1 and 1.1 everywhere; the last column is the value less the pre-edge line.
    void valueAtEnergy()
    {
        forRows<const char *, double, bool, double>(
            {{"half-way up", "0", 7105, true, 0.5},
             {"shifted down", "2.5", 7105, true, 0.75},
             {"shifted away", "2.5", 7199, false, 0},
             {"no number is no shift", "x", 7105, true, 0.5}},
            [this](const char *dE, double energy, bool isInside, double lessPreLine) {
                AXafsFileSelect select;
                double value = -7;
                QVERIFY(!select.valueAtEnergy(energy, &value));
                select.newFile(path("step.dat"));
                setStepEdge(&select.spectrum());
                type(field(&select, "dE"), "99");
                type(field(&select, "dE"), dE);
                for (const int postJump : {0, 1}) {
                    select.setSubtractPostLine(postJump == 1);
                    QCOMPARE(select.valueAtEnergy(energy, &value), isInside);
                    QVERIFY(std::abs(value - (isInside ? lessPreLine - postJump : -7)) < 1e-6);
                }
            });
    }

    void energyShift()
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

    void drawnColumns()
    {
        AMutE spectrum = step();
        const Picture picture(spectrum, -0.1, 1.4);
        QVERIFY(picture.has(7080, QColor(255, 200, 200), 10)); // above every curve
        QVERIFY(picture.has(7130, QColor(255, 200, 200), 10));
        QVERIFY(picture.has(edge, QColor(255, 0, 0), 10));
        QVERIFY(picture.has(7040, Qt::white, 1));
        QVERIFY(picture.has(7025, QColor(0, 0, 200))); // each line over all energies
        QVERIFY(picture.has(7175, QColor(0, 200, 0)));
        QVERIFY(picture.has(7103, Qt::black));

        spectrum.setValid(false);
        QVERIFY(Picture::isBlank(Picture(spectrum, -0.1, 1.4).image));
    }

    /// Nothing is drawn where the text goes, not even when the spectrum ends at the lower right.
    void placeForText()
    {
        const AMutE spectrum = step();
        const double end = spectrum.points().last().mu;
        for (const double bottom : {-0.1, -2.0, end - 0.3, end - 0.275, end - 0.25}) {
            const Picture picture(spectrum, bottom, bottom + 1.5);
            const QRect place = spectrumdrawing::placeForText(picture.cc, spectrum, QSizeF(60, 20)).toAlignedRect();
            QVERIFY(picture.image.rect().contains(place));
            QVERIFY(Picture::isBlank(picture.image.copy(place)));
        }
    }

    void drawnRange()
    {
        DispABase display;
        display.resize(400, 330);
        AXafsFileSelect select;
        select.setDisplay(display.area());
        select.choose(path("step.dat"));
        setStepEdge(&select.spectrum());
        display.grab();
        const ChCoord &cc = display.area()->cc;
        const auto isNear = [](double value, double expected) {
            return std::abs(value - expected) < 1e-6;
        };
        QVERIFY(isNear(cc.rx0(), 6990) && isNear(cc.rx1(), 7210)); // 5 % of 200 eV
        QVERIFY(isNear(cc.ry0(), 0.05) && isNear(cc.ry1(), 1.15));

        display.area()->cc.setRealX(7100, 7110); // zoomed
        display.grab();
        QCOMPARE(cc.rx0(), 7100.0);
        select.setFullRange(false); // twice the limits of the fits, from the edge
        display.grab();
        QVERIFY(isNear(cc.rx0(), 7055 - 5) && isNear(cc.rx1(), 7155 + 5));

        select.clearFileName();
        QCOMPARE(display.area()->grab().toImage().pixelColor(200, 150), QColor(Qt::white));
        QVERIFY(!display.area()->scaleFixed);

        select.choose(path("flat.dat"));
        display.grab();
        QVERIFY(cc.ry0() < 0 && cc.ry1() > 0);

        DispABase second;
        select.setDisplay(second.area());
        AXafsFileSelect other;
        other.setDisplay(display.area());
        other.newFile(path("step.dat"));
        display.grab();
        QVERIFY(isNear(cc.rx0(), 6990));
        QVERIFY(!second.area()->scaleFixed); // painting the first display draws nothing into the second
    }
};

QTEST_MAIN(TestSpectrumRows)
#include "TestSpectrumRows.moc"
