#include "display/DispABase.h"
#include "mapdata/AEPoint.h"
#include "mapdata/AFileSelect.h"
#include "spectrum/ARefFile.h"
#include "spectrum/AXafsFileSelect.h"
#include "spectrum/RefFiles.h"
#include "spectrum/SpectrumDrawing.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace
{

constexpr double edge = 7105; // eV, the middle of the only step of stepSpectrum()

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

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

QByteArray map(const QByteArray &energyLine, int lastX, int records)
{
    QByteArray text = "# 1301\n# AXIS 0 a b c d " + QByteArray::number(lastX) + "\n# AXIS 1 a b c d 0\n" + energyLine;
    for (int i = 0; i < records; ++i)
        text += QByteArray::number(i) + " 0 2 4\n";
    return text;
}

void setStepEdge(AMutE *spectrum)
{
    spectrum->setPreEdgeEnd(7080);
    spectrum->setEdgeEnergy(edge);
    spectrum->setPostEdgeStart(7130);
    spectrum->fitLines();
}

/// The signals of a selector in the order of their emission, each with its argument.
class SignalLog : public QObject
{
public:
    explicit SignalLog(AFileSelect *from)
    {
        connect(from, &AFileSelect::newDir, this, [this](const QString &dir) { log += "dir " + dir; });
        connect(from, &AFileSelect::newFilePath, this, [this](const QString &path) { log += "path " + path; });
        connect(from, &AFileSelect::newFilePaths, this,
                [this](const QStringList &paths) { log += "paths " + paths.join(';'); });
        connect(from, &AFileSelect::selectedFile, this, [this] { log += "selected"; });
        connect(from, &AFileSelect::newDE, this, [this] { log += "dE"; });
    }
    QStringList log;
};

/// Drags the URL over a widget and drops it there; whether it was taken.
bool drop(QWidget *onto, const QUrl &url)
{
    QMimeData data;
    data.setUrls({url});
    const QPoint middle = onto->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(onto, &enter);
    QDropEvent event(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QApplication::sendEvent(onto, &event);
    return enter.isAccepted() && event.isAccepted();
}

void chooseInDialog(AFileSelect *select, const QString &path)
{
    auto *const dialog = select->findChild<QFileDialog *>();
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    QTest::mouseClick(select->findChild<QPushButton *>("SelectB"), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    dialog->selectFile(path);
    static_cast<QDialog *>(dialog)->accept();
    QVERIFY(!dialog->isVisible());
}

QLineEdit *field(QWidget *row, const char *name)
{
    return row->findChild<QLineEdit *>(name);
}

void type(QLineEdit *into, const QString &text)
{
    into->selectAll();
    QTest::keyClicks(into, text);
    QTest::keyClick(into, Qt::Key_Return);
}

} // namespace

class TestRows : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void suffixOfFilesToWrite_data();
    void suffixOfFilesToWrite();
    void fieldFollowsTheMode();
    void severalFiles();
    void clearing();
    void dialogLoadsAFile();
    void dialogNamesAFile();
    void directoriesAreSilent();
    void drops_data();
    void drops();

    void mapAnnouncesEnergyThenData();
    void mapReports_data();
    void mapReports();
    void energyRowFields();
    void ticksAreAnnouncedWhenClicked();

    void referenceUse();
    void spectrumAnnouncesItsEdge();
    void notASpectrum();
    void valueAtEnergy_data();
    void valueAtEnergy();
    void energyShift();
    void drawnColumns();
    void drawnRange();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestRows::initTestCase()
{
    // The temporary directory may itself be reached through a link.
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath("maps"));
    QVERIFY(write(path("step.dat"), stepSpectrum()));
    QVERIFY(write(path("none.dat"), "no line says where the data start\n"));
    QVERIFY(write(path("maps/map.txt"), map("# ENERGY : 7112.0 eV\n", 3, 4)));
}

void TestRows::suffixOfFilesToWrite_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none yet") << "dat"
                              << "result"
                              << "result.dat";
    QTest::newRow("there already") << "dat"
                                   << "result.dat"
                                   << "result.dat";
    QTest::newRow("another is kept") << "dat"
                                     << "result.txt"
                                     << "result.txt.dat";
    QTest::newRow("case counts") << "dat"
                                 << "result.DAT"
                                 << "result.DAT.dat";
    QTest::newRow("none wanted") << ""
                                 << "result"
                                 << "result";
}

void TestRows::suffixOfFilesToWrite()
{
    QFETCH(QString, suffix);
    QFETCH(QString, chosen);
    QFETCH(QString, shown);
    AFileSelect select;
    select.setMode(AFileSelect::Write);
    select.setDefaultSuffix(suffix);
    SignalLog signalsOf(&select);
    select.newFile(path(chosen));
    QCOMPARE(select.fileText(), path(shown));
    QCOMPARE(select.fileName(), shown);
    const QString dir = QDir(m_dir.path()).canonicalPath(); // also of a file that does not exist
    QCOMPARE(signalsOf.log, QStringList({"dir " + dir, "path " + path(shown), "selected"}));

    AFileSelect reader;
    reader.newFile(path(chosen));
    QCOMPARE(reader.fileText(), path(chosen));
}

void TestRows::fieldFollowsTheMode()
{
    AFileSelect select;
    QLineEdit *const name = field(&select, "FileName");
    type(name, "typed");
    QVERIFY(name->text().isEmpty());
    QCOMPARE(name->styleSheet(), QString("background-color: rgb(255, 255, 220);"));
    select.setMode(1);
    type(name, "typed");
    QCOMPARE(select.fileText(), QString("typed"));
    QCOMPARE(name->styleSheet(), QString("background-color: rgb(255, 255, 255);"));
}

void TestRows::severalFiles()
{
    AFileSelect select;
    SignalLog signalsOf(&select);
    const QStringList paths{path("maps/a.dat"), path("b.dat"), path("maps/c.dat")};
    select.newFiles(paths);
    QCOMPARE(select.fileText(), QString("a.dat b.dat c.dat "));
    const QString last = QDir(path("maps")).canonicalPath();
    QCOMPARE(signalsOf.log, QStringList({"dir " + last, "paths " + paths.join(';'), "selected"}));
    QCOMPARE(select.findChild<QFileDialog *>()->directory(), QDir(last));
}

void TestRows::clearing()
{
    AFileSelect select;
    select.newFile(path("step.dat"));
    select.setExInfo("21 points");
    SignalLog signalsOf(&select);
    QTest::mouseClick(select.findChild<QPushButton *>("ClearB"), Qt::LeftButton);
    QCOMPARE(signalsOf.log, QStringList({"path ", "selected"}));
    QCOMPARE(select.fileText() + select.fileName() + select.exInfo(), QString());
}

void TestRows::dialogLoadsAFile()
{
    AFileSelect select;
    select.show();
    SignalLog signalsOf(&select);
    chooseInDialog(&select, path("step.dat"));
    QCOMPARE(select.fileText(), path("step.dat"));
    QCOMPARE(signalsOf.log.filter("path "), QStringList("path " + path("step.dat")));

    select.setMultiple(true);
    signalsOf.log.clear();
    chooseInDialog(&select, path("none.dat"));
    QCOMPARE(select.fileText(), QString("none.dat "));
    QCOMPARE(signalsOf.log.filter("path "), QStringList());
}

void TestRows::dialogNamesAFile()
{
    AFileSelect select;
    select.setMode(AFileSelect::Write);
    select.show();
    chooseInDialog(&select, path("result"));
    QCOMPARE(select.fileText(), path("result.dat"));
    QCOMPARE(select.findChild<QFileDialog *>()->acceptMode(), QFileDialog::AcceptSave);
}

void TestRows::directoriesAreSilent()
{
    AFileSelect select;
    SignalLog signalsOf(&select);
    select.setDir(path("maps"));
    select.selectingFile(path("missing.dat"));
    select.selectingFile(path("maps")); // a directory is no file
    QCOMPARE(signalsOf.log, QStringList());
    QCOMPARE(select.findChild<QFileDialog *>()->directory(), QDir(path("maps")));
    QCOMPARE(select.dir(), path("maps"));

    select.showDE(false);
    QVERIFY(select.findChild<QWidget *>("dEBase")->isHidden());
    select.showDE(true);
    QVERIFY(!select.findChild<QWidget *>("dEBase")->isHidden());
    type(field(&select, "dE"), "1.5");
    QCOMPARE(signalsOf.log, QStringList("dE"));
}

void TestRows::drops_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("plain") << "plain.txt";
    QTest::newRow("blanks, one after the other") << "two  blanks.txt";
    QTest::newRow("percent signs") << "50%20.txt";
    QTest::newRow("Japanese") << QString::fromUtf8("\xe9\x89\x84.txt");
}

void TestRows::drops()
{
    QFETCH(QString, file);
    QVERIFY(write(path(file), map("", 1, 2)));
    AEPoint row;
    QVERIFY(drop(row.fileSelect(), QUrl::fromLocalFile(path(file))));
    QCOMPARE(row.fileSelect()->fileText(), path(file));
    QVERIFY(row.loaded());
    QVERIFY(!drop(row.fileSelect(), QUrl("https://example.org/" + file)));
    QCOMPARE(row.fileSelect()->fileText(), path(file));

    row.fileSelect()->clearFileName();
    QVERIFY(drop(&row, QUrl::fromLocalFile(path(file)))); // beside the selector
    QVERIFY(row.loaded());

    ARefFile reference;
    QSignalSpy found(&reference, &ARefFile::foundNewEdge);
    QVERIFY(drop(&reference, QUrl::fromLocalFile(path("step.dat"))));
    QCOMPARE(found.count(), 1);
    QCOMPARE(reference.selector()->fileText(), path("step.dat"));
}

void TestRows::mapAnnouncesEnergyThenData()
{
    AEPoint row;
    QStringList log;
    connect(&row, &AEPoint::newDir, this, [&log] { log += "dir"; });
    connect(&row, &AEPoint::newEnergy, this, [&](double e) { log += QString("energy %1").arg(e); });
    connect(&row, &AEPoint::newData, this, [&] {
        log += QString("data, loaded %1, %2").arg(row.loaded()).arg(row.energyText());
        QVERIFY(!QApplication::overrideCursor());
    });
    row.fileSelect()->newFile(path("maps/map.txt"));
    QCOMPARE(log, QStringList({"dir", "energy 7112", "data, loaded 1, 7112.0"}));
    QCOMPARE(row.data().nx(), 4);
    QCOMPARE(field(&row, "Energy")->cursorPosition(), 0);

    log.clear();
    row.fileSelect()->clearFileName();
    row.fileSelect()->newFile(path("maps/missing.txt"));
    QCOMPARE(log, QStringList("dir"));
    QVERIFY(!row.loaded());
    QCOMPARE(row.energyText(), QString("7112.0"));
}

void TestRows::mapReports_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("report");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<bool>("isWarning");
    QTest::newRow("whole map") << map("", 3, 4) << "4 x 1" << true << false;
    QTest::newRow("a record short") << map("", 3, 3) << "3 points, not 4 x 1" << true << true;
    QTest::newRow("no axes") << QByteArray("1 2 3 4\n") << "No map size in report.txt" << false << true;
    QTest::newRow("no records") << map("", 3, 0) << "No map data in report.txt" << false << true;
}

void TestRows::mapReports()
{
    QFETCH(QByteArray, contents);
    QVERIFY(write(path("report.txt"), contents));
    AEPoint row;
    QSignalSpy announced(&row, &AEPoint::newData);
    row.fileSelect()->newFile(path("report.txt"));
    QTEST(row.fileSelect()->exInfo(), "report");
    QTEST(row.loaded(), "isLoaded");
    QTEST(announced.count() == 1, "isLoaded");
    const auto *const info = row.findChild<QLabel *>("ExInfo");
    const bool hasOwnColour = info->palette().windowText().color() != row.palette().windowText().color();
    QTEST(hasOwnColour, "isWarning");
}

void TestRows::energyRowFields()
{
    AEPoint row;
    QSignalSpy energies(&row, &AEPoint::newEnergy);
    type(field(&row, "Energy"), "7130.5");
    type(field(&row, "Energy"), "edge");
    QCOMPARE(energies, QList<QVariantList>({{7130.5}, {0.0}}));

    row.setTargetValue(-0.123456789);
    QCOMPARE(field(&row, "MutT")->text(), QString("-0.123457"));
    QCOMPARE(field(&row, "MutT")->cursorPosition(), 0);
    QCOMPARE(row.targetValue(), -0.123457); // what is calculated with is what is shown
    for (int i = -1; i <= 4; ++i)
        row.setReferenceValue(i, i + 1);
    QCOMPARE(field(&row, "Mut1")->text() + field(&row, "Mut4")->text(), QString("14"));
    row.clearReferenceValue(3);
    row.clearReferenceValue(4);
    row.clearTargetValue();
    QVERIFY(field(&row, "Mut4")->text().isEmpty());
    QCOMPARE(QVector<double>({row.targetValue(), row.referenceValue(2), row.referenceValue(3), row.referenceValue(4)}),
             QVector<double>({0, 3, 0, 0}));
    type(field(&row, "Mut1"), "7"); // only shown
    QCOMPARE(row.referenceValue(0), 1.0);
}

void TestRows::ticksAreAnnouncedWhenClicked()
{
    AEPoint row;
    row.resize(row.sizeHint());
    QSignalSpy changed(&row, &AEPoint::changedCB);
    row.setUsed(true);
    row.setVPoint(true);
    row.setForLCF(true);
    QCOMPARE(changed.count(), 0);
    for (const char *const name : {"UseCB", "VPointCB", "LCFCB"})
        QTest::keyClick(row.findChild<QCheckBox *>(name), Qt::Key_Space);
    QCOMPARE(changed.count(), 3);
    QVERIFY(!row.isUsed() && !row.isVPoint() && !row.isForLCF());
}

void TestRows::referenceUse()
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

void TestRows::spectrumAnnouncesItsEdge()
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

void TestRows::notASpectrum()
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

void TestRows::valueAtEnergy_data()
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

void TestRows::valueAtEnergy()
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

void TestRows::energyShift()
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

void TestRows::drawnColumns()
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

void TestRows::drawnRange()
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

    const double low = cc.rx0();
    select.setDisplay(nullptr); // from now on another draws there
    AXafsFileSelect other;
    other.setDisplay(display.area());
    other.newFile(path("step.dat"));
    display.grab();
    QVERIFY(cc.rx0() != low && isClose(cc.rx0(), 6990));
}

QTEST_MAIN(TestRows)
#include "TestRows.moc"
