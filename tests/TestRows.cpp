#include "RowTools.h"
#include "mapdata/AEPoint.h"
#include "mapdata/AFileSelect.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace rowtools;

namespace
{

QByteArray map(const QByteArray &energyLine, int lastX, int records)
{
    QByteArray text = "# 1301\n# AXIS 0 a b c d " + QByteArray::number(lastX) + "\n# AXIS 1 a b c d 0\n" + energyLine;
    for (int i = 0; i < records; ++i)
        text += QByteArray::number(i) + " 0 2 4\n";
    return text;
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

void chooseInDialog(AFileSelect *select, const QString &path)
{
    auto *const dialog = select->dialog();
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    QTest::mouseClick(select->findChild<QPushButton *>("SelectB"), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    dialog->selectFile(path);
    static_cast<QDialog *>(dialog)->accept();
    QVERIFY(!dialog->isVisible());
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
    void narrowFieldsShowTheWholeNumber();
    void ticksAreAnnouncedWhenClicked();

private:
    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
};

void TestRows::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath("maps"));
    QVERIFY(write(path("one.dat"), "1") && write(path("two.dat"), "2"));
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
    QCOMPARE(select.dialog()->directory(), QDir(last));
}

void TestRows::clearing()
{
    AFileSelect select;
    select.newFile(path("one.dat"));
    select.setExInfo("4 x 1");
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
    chooseInDialog(&select, path("one.dat"));
    QCOMPARE(select.fileText(), path("one.dat"));
    QCOMPARE(signalsOf.log.filter("path "), QStringList("path " + path("one.dat")));

    select.setMultiple(true);
    signalsOf.log.clear();
    chooseInDialog(&select, path("two.dat"));
    QCOMPARE(select.fileText(), QString("two.dat "));
    QCOMPARE(signalsOf.log.filter("path "), QStringList());
}

void TestRows::dialogNamesAFile()
{
    AFileSelect select;
    select.setMode(AFileSelect::Write);
    select.show();
    chooseInDialog(&select, path("result"));
    QCOMPARE(select.fileText(), path("result.dat"));
    QCOMPARE(select.dialog()->acceptMode(), QFileDialog::AcceptSave);
}

void TestRows::directoriesAreSilent()
{
    AFileSelect select;
    SignalLog signalsOf(&select);
    select.setDir(path("maps"));
    select.selectingFile(path("missing.dat"));
    select.selectingFile(path("maps")); // a directory is no file
    QCOMPARE(signalsOf.log, QStringList());
    QCOMPARE(select.dialog()->directory(), QDir(path("maps")));
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

/// A number cut before its exponent reads as another one.
void TestRows::narrowFieldsShowTheWholeNumber()
{
    AEPoint row;
    row.resize(row.minimumSizeHint());
    row.grab(); // lays it out
    QLineEdit *const shown = field(&row, "Mut1");
    const int width = shown->width();
    const QFont font = shown->font();
    row.setReferenceValue(0, -4.07114e-05);
    row.grab();
    QCOMPARE(shown->width(), width); // the columns stay where they are
    QVERIFY(QFontMetrics(shown->font()).horizontalAdvance(shown->text()) < width);
    row.setReferenceValue(0, 1);
    QCOMPARE(shown->font(), font);
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

QTEST_MAIN(TestRows)
#include "TestRows.moc"
