#include "controls/FieldMark.h"
#include "controls/NumberField.h"
#include "mapdata/AEPoint.h"
#include "mapdata/AFileSelect.h"
#include "tests/RowTools.h"

#include <QLabel>

using namespace rowtools;
using tables::writeBytes;

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

/// Types a name into the dialog and accepts; whether that closed the dialog.
bool chooseInDialog(AFileSelect *select, const QString &path)
{
    auto *const dialog = select->dialog();
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    QTest::mouseClick(select->findChild<QPushButton *>("SelectB"), Qt::LeftButton);
    const bool isOpen = dialog->isVisible();
    dialog->selectFile(path);
    static_cast<QDialog *>(dialog)->accept();
    return isOpen && !dialog->isVisible();
}

} // namespace

class TestRows : public QObject
{
    Q_OBJECT

    QString path(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid() && QDir(m_dir.path()).mkpath("maps"));
        for (const char *const name : {"one.dat", "two.dat", "spec", "spec.dat", "bare.txt", "old.txt", "old.txt.dat"})
            QVERIFY(writeBytes(path(name), "1"));
        QVERIFY(writeBytes(path("maps/map.txt"), map("# ENERGY : 7112.0 eV\n", 3, 4)));
    }

    void onlyNamesToWriteAreTyped()
    {
        AFileSelect select;
        QLineEdit *const name = field(&select, "FileName");
        type(name, "typed");
        QVERIFY(name->text().isEmpty());
        select.setMode(1);
        type(name, "typed");
        QCOMPARE(select.fileText(), QString("typed"));
    }

    void typedNumbers()
    {
        forRows<const char *, const char *, const char *>(
            {{"plain", "8345.6", "8345.6", ""},
             {"full width", "−８３４５．６ｅ２", "-8345.6e2", ""},
             {"decimal comma", "-0,25", "-0.25", ""},
             {"full-width comma", "８，5", "8.5", ""},
             {"three digits", "8,345", "8,345", "8345 or 8.345? "},
             {"two commas", "1,2,3", "1,2,3", "This is no number"},
             {"nothing", "", "", ""}},
            [](const char *typed, const char *text, const char *mark) {
                AEPoint row;
                type(row.energyEdit(), QString::fromUtf8(typed));
                QCOMPARE(row.energyText(), QString(text));
                const QString reasons = FieldMark::reasons(row.energyEdit());
                QVERIFY(*mark ? reasons.startsWith(mark) : reasons.isEmpty());
                if (*mark)
                    QCOMPARE(row.energy(), 0.0);
            });
    }

    void severalFiles()
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

    void clearing()
    {
        AFileSelect select;
        SignalLog signalsOf(&select);
        select.choose(path("one.dat"));
        select.setExInfo("4 x 1");
        QTest::mouseClick(select.findChild<QPushButton *>("ClearB"), Qt::LeftButton);
        QCOMPARE(signalsOf.log.mid(1), QStringList({"path " + path("one.dat"), "selected", "path ", "selected"}));
        QCOMPARE(select.fileText() + select.fileName() + select.exInfo(), QString());
    }

    void dialogReadsTheFileThatWasNamed()
    {
        AFileSelect select;
        select.show();
        SignalLog signalsOf(&select);
        select.setMode(AFileSelect::Write);
        select.dialog();
        select.setMode(AFileSelect::Read);
        QVERIFY(chooseInDialog(&select, path("spec"))); // not spec.dat
        QCOMPARE(select.fileText(), path("spec"));
        QCOMPARE(signalsOf.log.filter("path "), QStringList("path " + path("spec")));

        select.setMultiple(true);
        signalsOf.log.clear();
        QVERIFY(chooseInDialog(&select, path("two.dat")));
        QCOMPARE(select.fileText(), QString("two.dat "));
        QCOMPARE(signalsOf.log.filter("path "), QStringList());
    }

    /// The dialog gives the name its suffix as the row itself does, and asks before that file is replaced.
    void filesToWrite()
    {
        forRows<const char *, const char *, bool, const char *>(
            {{"a new file", "result", "", false, "result.dat"},
             {"its suffix is there already", "result.dat", "", false, "result.dat"},
             {"case counts", "result.DAT", "", false, "result.DAT.dat"},
             {"an old one, replaced", "one", "one.dat", true, "one.dat"},
             {"an old one, kept", "one.dat", "one.dat", false, "one.dat"},
             {"old only with its suffix", "old.txt", "old.txt.dat", false, "old.txt.dat"},
             {"old only without its suffix", "bare.txt", "", false, "bare.txt.dat"}},
            [this](const char *typed, const char *wantedAsked, bool mayReplace, const char *written) {
                AFileSelect select, silent;
                QStringList asked;
                select.setOverwriteQuestion([&](const QString &existing) {
                    asked += QFileInfo(existing).fileName();
                    return mayReplace;
                });
                select.setMode(AFileSelect::Write);
                select.show();
                SignalLog signalsOf(&select), silentOnes(&silent);
                const bool isTaken = mayReplace || !*wantedAsked; // refused, nothing has been chosen
                QCOMPARE(chooseInDialog(&select, path(typed)), isTaken);
                QCOMPARE(asked.join(' '), QString(wantedAsked));
                QCOMPARE(signalsOf.log.isEmpty(), !isTaken);
                QCOMPARE(select.fileText(), isTaken ? path(written) : QString());

                silent.setMode(AFileSelect::Write);
                silent.choose(path(typed));
                const QString dir = QDir(m_dir.path()).canonicalPath(); // also of a file that does not exist
                QCOMPARE(silentOnes.log, QStringList({"dir " + dir, "path " + path(written), "selected"}));
                QCOMPARE(silent.fileText(), path(written));
                QCOMPARE(silent.fileName(), QString(written));
                silent.setDefaultSuffix(QString());
                silent.choose(path(typed));
                QCOMPARE(silent.fileText(), path(typed));
            });
    }

    void directoriesAreSilent()
    {
        AFileSelect select;
        SignalLog signalsOf(&select);
        select.setDir(path("maps"));
        select.selectingFile(path("missing.dat"));
        select.selectingFile(path("maps")); // a directory is no file
        QCOMPARE(signalsOf.log, QStringList());
        QCOMPARE(select.dialog()->directory(), QDir(path("maps")));
        QCOMPARE(select.dir(), path("maps"));

        for (const bool isShown : {false, true}) {
            select.showDE(isShown);
            QCOMPARE(select.findChild<QWidget *>("dEBase")->isHidden(), !isShown);
        }
        type(field(&select, "dE"), "1.5");
        QCOMPARE(signalsOf.log, QStringList("dE"));
    }

    void drops()
    {
        for (const QString name : {"plain.txt", "two  blanks.txt", "50%20.txt", "\xe9\x89\x84.txt"}) { // Japanese
            QVERIFY(writeBytes(path(name), map("", 1, 2)));
            for (const bool isBeside : {false, true}) { // the selector
                AEPoint row;
                QWidget *const onto = isBeside ? static_cast<QWidget *>(&row) : row.fileSelect();
                QVERIFY(drop(onto, QUrl::fromLocalFile(path(name))));
                QVERIFY(!drop(onto, QUrl("https://example.org/" + name)));
                QCOMPARE(row.fileSelect()->fileText(), path(name));
                QVERIFY(row.loaded());
            }
        }
    }

    void mapAnnouncesEnergyThenData()
    {
        AEPoint row;
        QStringList log;
        connect(&row, &AEPoint::newDir, this, [&log] { log += "dir"; });
        connect(&row, &AEPoint::newEnergy, this, [&](double e) { log += QString("energy %1").arg(e); });
        connect(&row, &AEPoint::newData, this, [&] {
            log += QString("data, loaded %1, %2").arg(row.loaded()).arg(row.energyText());
            QVERIFY(!QApplication::overrideCursor());
        });
        row.fileSelect()->choose(path("maps/map.txt"));
        QCOMPARE(log, QStringList({"dir", "energy 7112", "data, loaded 1, 7112.0"}));
        QCOMPARE(row.data().nx(), 4);
        QCOMPARE(field(&row, "Energy")->cursorPosition(), 0);

        log.clear();
        row.fileSelect()->clearFileName();
        row.fileSelect()->choose(path("maps/missing.txt"));
        QCOMPARE(log, QStringList("dir"));
        QVERIFY(!row.loaded());
        QCOMPARE(row.energyText(), QString("7112.0"));
    }

    void mapReports()
    {
        forRows<QByteArray, const char *, bool, bool>(
            {{"whole map", map("", 3, 4), "4 x 1", true, false},
             {"a record short", map("", 3, 3), "3 points, not 4 x 1", true, true},
             {"no axes", "1 2 3 4\n", "No map size in report.txt", false, true},
             {"no records", map("", 3, 0), "No map data in report.txt", false, true}},
            [this](const QByteArray &contents, const char *report, bool isLoaded, bool isWarning) {
                QVERIFY(writeBytes(path("report.txt"), contents));
                AEPoint row;
                QSignalSpy announced(&row, &AEPoint::newData);
                row.fileSelect()->choose(path("report.txt"));
                QCOMPARE(row.fileSelect()->exInfo(), QString(report));
                QCOMPARE(row.loaded(), isLoaded);
                QCOMPARE(announced.count(), isLoaded ? 1 : 0);
                const QColor colour = row.findChild<QLabel *>("ExInfo")->palette().windowText().color();
                QCOMPARE(colour != row.palette().windowText().color(), isWarning);
            });
    }

    void energyRowFields()
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
        const QVector<double> left = {row.targetValue(), row.referenceValue(2), row.referenceValue(3)};
        QCOMPARE(left, QVector<double>({0, 3, 0}));
        QCOMPARE(row.referenceValue(4), 0.0);
        type(field(&row, "Mut1"), "7"); // only shown
        QCOMPARE(row.referenceValue(0), 1.0);
    }

    /// A number cut before its exponent reads as another one.
    void narrowFieldsShowTheWholeNumber()
    {
        AEPoint row;
        row.resize(row.minimumSizeHint());
        row.grab(); // lays it out
        auto *const field = row.findChild<NumberField *>("Mut1");
        const int width = field->width();
        for (const double value : {-4.07114e-05, 1.0, 0.863028, 123456.0, -9.87654e+123}) {
            row.setReferenceValue(0, value);
            row.grab();
            QCOMPARE(field->width(), width); // the columns stay where they are
            QCOMPARE(field->text(), QString::number(value, 'g', 6));
            const NumberField::Fit shown = field->shown();
            QVERIFY2(QFontMetrics(shown.font).horizontalAdvance(shown.text) < width, qPrintable(shown.text));
            QVERIFY(shown.font.pointSizeF() >= 8);
            QVERIFY2(std::abs(shown.text.toDouble() / value - 1) < 0.05, qPrintable(shown.text));
        }
    }

    void ticksAreAnnouncedWhenClicked()
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
};

QTEST_MAIN(TestRows)
#include "TestRows.moc"
