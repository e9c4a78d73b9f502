// The panel's controls, its checks before a calculation and their messages.

#include "PanelTools.h"

#include <QScrollBar>

using namespace paneltools;

class TestPanel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    void textsAtStart();
    void checkedAtStart();
    void groupsAreExclusive();
    void checks_data();
    void checks();
    void targetMessages_data();
    void targetMessages();
    void lastVPointCounts();
    void stoppedRunsKeepResults();
    void messagesEndInOneLineFeed();
    void messagesAreAppended();
    void automaticRanges_data();
    void automaticRanges();
    void automaticThicknessTakesUsedRows();
    void automaticRangesAreShownFromTheirStart();

private:
    SampleFiles m_files;
};

void TestPanel::textsAtStart()
{
    const QVector<QPair<const char *, const char *>> texts{{"EdgeE", "8350"},
                                                           {"PreEEndDE", "-50"},
                                                           {"PostEStartDE", "100"},
                                                           {"HgAFrom", "1.5"},
                                                           {"HgATo", "3.5"},
                                                           {"HgABoxes", "51"},
                                                           {"HgTFrom", "-0.2"},
                                                           {"HgTTo", "1.2"},
                                                           {"HgTBoxes", "51"},
                                                           {"EdgeLabel", "Edge[eV]"},
                                                           {"PreLabel", "Pre Edge End [eV]"},
                                                           {"PostLabel", "Post Edge Start [eV]"},
                                                           {"TypeFourPs", "4 Points Meth."},
                                                           {"TMKLabel", "Calc. Type for t, mu0, and k: "},
                                                           {"TypeTMKisExact", "Exact 4 points"},
                                                           {"TypeTMKisLS", "Least Square"},
                                                           {"SubPreEforRef", "Pre E. Line"},
                                                           {"SubPostEforRef", "Post E. Line"},
                                                           {"SubPreEforTarget", "Pre E. Line"},
                                                           {"SubPostEforTarget", "Post E. Line"},
                                                           {"NNone", "No normalize"},
                                                           {"NByEJ", "Normalized by edge jump"},
                                                           {"NBySubPre", "Sub pre Vic."},
                                                           {"NBy2Vics", "Normalized by 2 Vics "},
                                                           {"FullRangeCB", "Full Range"},
                                                           {"EdgeFixed", "Keep"},
                                                           {"HgAAuto", "Auto"},
                                                           {"HgTAuto", "Auto"},
                                                           {"CalcMapB", "Calc."},
                                                           {"WriteB", "Write"},
                                                           {"CalcWriteB", "Calc. && Write"},
                                                           {"LCFB", "LCF"},
                                                           {"ShowDAB", "Show Graphs"},
                                                           {"ShowDMap", "Show Data Map"},
                                                           {"RemoveAFile", "Remove"},
                                                           {"DispCondsB", "More Conds"},
                                                           {"RecDMut3", "dMut 3"},
                                                           {"MapMut0", "mut0"},
                                                           {"HgdMut4", "dMut 4"}};
    User user;
    for (const auto &[name, text] : texts)
        QCOMPARE(QString(name) + ": " + user.find<QWidget>(name)->property("text").toString(),
                 QString(name) + ": " + text);
}

void TestPanel::checkedAtStart()
{
    User user;
    QStringList checked;
    for (const QAbstractButton *const button : user.panel.findChildren<QAbstractButton *>()) {
        if (!button->isChecked())
            continue;
        const QWidget *row = button->parentWidget();
        while (row && !qobject_cast<const ARefFile *>(row) && !qobject_cast<const AEPoint *>(row))
            row = row->parentWidget();
        checked += (row ? row->objectName() + '.' : QString()) + button->objectName();
    }
    QStringList expected{"TypeFourPs",    "TypeTMKisLS", "NonEquivBGLinear", "SubPreEforRef", "SubPreEforTarget",
                         "NNone",         "FullRangeCB", "HgAAuto",          "HgTAuto",       "HgValence",
                         "MapValence",    "RecRatio1",   "RecRatio2",        "RecRatio3",     "RecRatio4",
                         "RecDMut1",      "RecDMut2",    "RecDMut3",         "RecDMut4",      "RecMut0",
                         "RecC1",         "RecC2",       "RecValence",       "RecAmount",     "Ref1File.UseCB",
                         "Ref2File.UseCB"};
    checked.sort();
    expected.sort();
    QCOMPARE(checked, expected);
    QVERIFY(user.messageArea()->isReadOnly());
    for (const char *const name : {"Ref1File", "Ref2File", "Ref3File", "Ref4File"})
        QCOMPARE(user.find<ARefFile>(name)->findChild<QLabel *>("RefName")->text(), QString("Ref %1").arg(name[3]));
    for (int i = 1; i <= 8; ++i)
        QCOMPARE(user.row(i)->findChild<QLabel *>("NumDisp")->text(), QString::number(i));
    QCOMPARE(user.takeMessages(), QString());
}

void TestPanel::groupsAreExclusive()
{
    User user;
    const QList<QStringList> groups{{"TypeFourPs", "TypeNonEquiv"},
                                    {"TypeTMKisExact", "TypeTMKisLS"},
                                    {"NonEquivBGVic", "NonEquivBGLinear"},
                                    {"SubPreEforRef", "SubPostEforRef"},
                                    {"SubPreEforTarget", "SubPostEforTarget"},
                                    {"NNone", "NByEJ", "NBySubPre", "NBy2Vics"}};
    for (int turn = 0; turn < 4; ++turn) {
        for (const QStringList &group : groups)
            user.click(group.at(turn % group.size()));
        for (const QStringList &group : groups) {
            for (int i = 0; i < group.size(); ++i)
                QCOMPARE(user.find<QAbstractButton>(group.at(i))->isChecked(), i == turn % group.size());
        }
    }
}

/// Rows and references are named by their numbers from 1. An empty message: that calculation gets past its checks.
void TestPanel::checks_data()
{
    QTest::addColumn<QString>("referencesUsed");
    QTest::addColumn<QString>("referencesLoaded");
    QTest::addColumn<bool>("hasTarget");
    QTest::addColumn<QString>("rowsUsed");
    QTest::addColumn<QString>("rowsWithMap");
    QTest::addColumn<QString>("vPoints");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("mapMessage");
    QTest::addColumn<QString>("targetMessage");
    const auto situation = [](const char *name, const QStringList &references, const QStringList &rows,
                              const QStringList &options, const char *map, const char *target) {
        QTest::newRow(name) << references.at(0) << references.at(1) << (references.value(2) == "target") << rows.at(0)
                            << rows.at(1) << rows.at(2) << options << QString(map) << QString(target);
    };
    const QStringList linear{"TypeNonEquiv", "NonEquivBGLinear"};
    const QStringList victoreen{"TypeNonEquiv", "NonEquivBGVic"};
    const QStringList exact{"TypeTMKisExact"};
    const QStringList both{"12", "12", "target"};

    situation("nothing chosen", {"12", ""}, {"", "", ""}, {}, "V Point is not selected", "V Point is not selected.");
    situation("V point not used", both, {"1236", "1236", "7"}, {}, "V Point is not selected",
              "V Point is not selected.");
    situation("V point without map", {"12", ""}, {"3", "", "3"}, {}, "V Point is not selected",
              "Number of valied Ref Files is 0, which is less than 2.");
    situation("V point before references", {"", ""}, {"12", "12", ""}, {}, "V Point is not selected",
              "V Point is not selected.");
    situation("no V point, the other method", both, {"1236", "1236", ""}, linear, "", "V Point is not selected.");
    situation("one reference", {"12", "2"}, {"1236", "1236", "3"}, {},
              "Number of valied Ref Files is 1, which is less than 2.",
              "Number of valied Ref Files is 1, which is less than 2.");
    situation("loaded but not used", {"1", "1234"}, {"1236", "1236", "3"}, linear,
              "Number of valied Ref Files is 1, which is less than 2.",
              "Number of valied Ref Files is 1, which is less than 2.");
    situation("first of three not loaded", {"123", "23", "target"}, {"1236", "1236", "3"}, {},
              "Ref File 0 is not valid.", "The 1st Ref File is not valid.");
    situation("first used one not loaded", {"234", "34"}, {"1236", "1236", "3"}, linear, "Ref File 1 is not valid.",
              "The 1st Ref File is not valid.");
    situation("second of three not loaded", {"124", "14"}, {"1236", "1236", "3"}, {}, "Ref File 1 is not valid.",
              "The 2nd Ref File is not valid.");
    situation("third not loaded", {"1234", "124"}, {"1236", "1236", "3"}, {}, "Ref File 2 is not valid.",
              "Target File1 is not valid.");
    situation("fourth not loaded, target is", {"124", "12", "target"}, {"1236", "1236", "3"}, {},
              "Ref File 3 is not valid.", "");
    situation("no target", {"12", "12"}, {"1236", "1236", "3"}, {}, "", "Target File1 is not valid.");

    situation("too few points", both, {"13", "13", "3"}, {}, "Number of selected data sets 2 is not 4.",
              "Number of selected data sets 2 is not 4.");
    situation("three points", both, {"136", "136", "3"}, exact, "", "");
    situation("five points, exact", both, {"12367", "12367", "3"}, exact, "Number of selected data sets 5 is not 4.",
              "Number of selected data sets 5 is not 4.");
    situation("five points, least squares", both, {"12367", "12367", "3"}, {}, "", "");
    situation("a row without map counts for the target only", both, {"12367", "1236", "3"}, exact, "",
              "Number of selected data sets 5 is not 4.");
    situation("a map that is not used does not count", both, {"1236", "12345678", "3"}, exact, "", "");
    situation("two V points of three", both, {"136", "136", "36"}, {}, "", "");
    situation("four V points of four, exact", both, {"1236", "1236", "1236"}, exact, "", "");
    situation("eight V points", both, {"12345678", "12345678", "12345678"}, {}, "", "");

    situation("linear, two references, three points", both, {"123", "123", "3"}, linear,
              "Number of selected data sets 3 is less than 4.", "Number of selected data sets 3 is not 4.");
    situation("linear, two references, four points", both, {"1236", "1236", "3"}, linear, "", "");
    situation("linear, three references, four points", {"123", "123", "target"}, {"1236", "1236", "3"}, linear,
              "Number of selected data sets 4 is less than 5.", "");
    situation("Victoreen, two references, four points", both, {"1236", "1236", "3"}, victoreen,
              "Number of selected data sets 4 is less than 5.", "Number of selected data sets 4 is not 5.");
    situation("Victoreen, two references, five points", both, {"12367", "12367", "3"}, victoreen, "", "");
    situation("Victoreen, four references, six points", {"1234", "1234", "target"}, {"123678", "123678", "3"},
              victoreen, "Number of selected data sets 6 is less than 7.", "");
}

void TestPanel::checks()
{
    QFETCH(QString, referencesUsed);
    QFETCH(QString, referencesLoaded);
    QFETCH(bool, hasTarget);
    QFETCH(QString, rowsUsed);
    QFETCH(QString, rowsWithMap);
    QFETCH(QString, vPoints);
    QFETCH(QStringList, options);
    QFETCH(QString, mapMessage);
    QFETCH(QString, targetMessage);
    User user;
    user.useReferences(referencesUsed);
    for (const QChar i : referencesLoaded)
        user.load(user.reference(i.digitValue()), m_files.reference(i.digitValue()));
    if (hasTarget)
        user.load(user.target(), m_files.target());
    for (const QChar i : rowsWithMap)
        user.load(user.row(i.digitValue()), m_files.map(i.digitValue()));
    for (const QChar i : rowsUsed)
        user.clickIn(user.row(i.digitValue()), "UseCB");
    for (const QChar i : vPoints)
        user.clickIn(user.row(i.digitValue()), "VPointCB");
    for (const QString &option : options)
        user.click(option);

    const QRegularExpression anyCheck("not selected|valied|not valid|Number of selected");
    user.takeMessages();
    user.click("CalcMapB");
    if (mapMessage.isEmpty()) {
        QVERIFY(!user.takeMessages().contains(anyCheck));
    } else {
        QCOMPARE(user.takeMessages(), mapMessage + '\n');
        QCOMPARE(user.panel.analysis().results().count(), std::size_t(0));
    }

    user.panel.calcTarget();
    if (targetMessage.isEmpty())
        QVERIFY(!user.takeMessages().contains(anyCheck));
    else
        QCOMPARE(user.takeMessages(), targetMessage + '\n');
}

void TestPanel::targetMessages_data()
{
    QTest::addColumn<QString>("rowsUsed");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("start");
    QTest::newRow("three points") << "136"
                                  << "TypeTMKisLS"
                                  << "3ps: a = ";
    QTest::newRow("exact") << "1236"
                           << "TypeTMKisExact"
                           << "a = ";
    QTest::newRow("least squares") << "123678"
                                   << "TypeTMKisLS"
                                   << "4ps2: a = ";
}

/// The second reference as the target: nothing of the first, the valence of the second.
void TestPanel::targetMessages()
{
    QFETCH(QString, rowsUsed);
    QFETCH(QString, option);
    QFETCH(QString, start);
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", QString::number(sample::edgeEnergy));
    for (int i = 1; i <= 2; ++i) {
        user.load(user.reference(i), m_files.reference(i));
        rowtools::type(user.reference(i)->valenceEdit(), QString::number(i + 1));
    }
    user.load(user.target(), m_files.reference(2));
    for (const QChar i : rowsUsed) {
        user.typeEnergy(i.digitValue(), QString::number(sample::mapEnergies[i.digitValue() - 1]));
        user.clickIn(user.row(i.digitValue()), "UseCB");
    }
    user.clickIn(user.row(3), "VPointCB");
    user.click(option);
    user.takeMessages();
    user.panel.calcTarget();

    // The references' fields hold six digits, and they cross at the anchor points within 1e-5.
    QVERIFY2(qAbs(user.panel.analysis().fourPointsTarget()->result.a) < 1e-3,
             qPrintable(QString::number(user.panel.analysis().fourPointsTarget()->result.a)));
    QVERIFY(qAbs(user.panel.analysis().fourPointsTarget()->valence - 3) < 1e-3);
    const QString message = user.takeMessages();
    const QString values = QString("%1, Valence = %2")
                               .arg(user.panel.analysis().fourPointsTarget()->result.a)
                               .arg(user.panel.analysis().fourPointsTarget()->valence);
    QVERIFY2(message.startsWith(start + values), qPrintable(message));
    QCOMPARE(message.contains(", t/ts = "), !start.startsWith("3ps"));
}

void TestPanel::lastVPointCounts()
{
    User user;
    for (int i = 1; i <= 2; ++i)
        user.load(user.reference(i), m_files.reference(i));
    // The third row's map is larger than the others.
    QFile copy(m_files.map(3));
    QVERIFY(copy.open(QIODevice::ReadOnly));
    QByteArray larger = copy.readAll();
    QVERIFY(larger.contains("AXIS 1 y um 0.00 0.50 3"));
    larger.replace("AXIS 1 y um 0.00 0.50 3", "AXIS 1 y um 0.00 0.50 4");
    QVERIFY(rowtools::write(m_files.path("larger.txt"), larger));
    for (int i : {1, 2, 3, 6}) {
        user.load(user.row(i), i == 3 ? m_files.path("larger.txt") : m_files.map(i));
        user.clickIn(user.row(i), "UseCB");
    }
    user.clickIn(user.row(1), "VPointCB");
    user.click("CalcMapB");
    QCOMPARE(user.panel.analysis().results().height(), 4); // the V point's
    user.clickIn(user.row(3), "VPointCB");
    user.click("CalcMapB");
    QCOMPARE(user.panel.analysis().results().height(), 5);
}

void TestPanel::stoppedRunsKeepResults()
{
    User user;
    for (int i = 1; i <= 2; ++i)
        user.load(user.reference(i), m_files.reference(i));
    for (int i : {1, 3, 6}) {
        user.load(user.row(i), m_files.map(i));
        user.clickIn(user.row(i), "UseCB");
    }
    user.clickIn(user.row(3), "VPointCB");
    user.click("CalcMapB");
    QCOMPARE(user.panel.analysis().results().count(), std::size_t(24));
    user.clickIn(user.row(3), "VPointCB");
    user.click("CalcMapB");
    QCOMPARE(user.panel.analysis().results().count(), std::size_t(24));
}

void TestPanel::messagesEndInOneLineFeed()
{
    User user;
    const QString name = QStringLiteral("two  blanks.txt");
    QVERIFY(rowtools::write(m_files.path(name), "no spectrum\n"));
    user.choose("DispFSelect", {m_files.path(name)});
    user.click("CalcMapB");
    QCOMPARE(user.takeMessages(), QString("two blanks.txt is not a spectrum file.\nV Point is not selected\n"));
    QCOMPARE(user.find<QListWidget>("SelectedFs")->count(), 0);
}

/// Wherever the user has clicked, and whatever he has selected.
void TestPanel::messagesAreAppended()
{
    User user;
    user.panel.show();
    for (int i = 0; i < 100; ++i)
        user.panel.calcTarget();
    QTextEdit *const area = user.messageArea();
    area->verticalScrollBar()->setValue(0);
    QTest::mouseClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
    area->selectAll();
    const QString before = area->toPlainText();
    user.click("CalcMapB");
    QCOMPARE(area->toPlainText(), before + "V Point is not selected\n");
    QVERIFY(area->verticalScrollBar()->value() > 0);
    QVERIFY(area->viewport()->rect().contains(area->cursorRect())); // the newest line is in sight
}

void TestPanel::automaticRanges_data()
{
    QTest::addColumn<QString>("used");
    QTest::addColumn<QStringList>("valences");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("none used") << "" << QStringList{"2", "3"} << "9.5"
                               << "0.5";
    QTest::newRow("of used rows, loaded or not") << "24" << QStringList{"1", "2", "8", "2.6666667"} << "1.5"
                                                 << "3.16667";
    QTest::newRow("no number counts as 0") << "123" << QStringList{"2", "III", ""} << "-0.5"
                                           << "2.5";
    QTest::newRow("limits") << "12" << QStringList{"12", "-3"} << "-3.5"
                            << "12.5";
    QTest::newRow("beyond the limits") << "1" << QStringList{"12"} << "9.5"
                                       << "12.5";
}

void TestPanel::automaticRanges()
{
    QFETCH(QString, used);
    QFETCH(QStringList, valences);
    QFETCH(QString, from);
    QFETCH(QString, to);
    User user;
    user.useReferences(used);
    for (int i = 0; i < valences.size(); ++i)
        user.reference(i + 1)->valenceEdit()->setText(valences.at(i));
    user.panel.calcBoth();
    QCOMPARE(user.field("HgAFrom")->text() + " to " + user.field("HgATo")->text(), from + " to " + to);
    QCOMPARE(user.field("HgTFrom")->text() + " to " + user.field("HgTTo")->text(), QString("-0.5 to 0.5"));

    for (const char *const box : {"HgAAuto", "HgTAuto"})
        user.click(box);
    for (const char *const bound : {"HgAFrom", "HgATo", "HgTFrom", "HgTTo"})
        user.type(bound, "7");
    user.panel.calcBoth();
    for (const char *const bound : {"HgAFrom", "HgATo", "HgTFrom", "HgTTo"})
        QCOMPARE(user.field(bound)->text(), QString("7"));
}

/// As many jumps are added as used references are valid, but of the first used ones: a file that failed to load before
/// a valid one is taken in its place, with the lines of the spectrum that it replaced.
void TestPanel::automaticThicknessTakesUsedRows()
{
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", QString::number(sample::edgeEnergy));
    double jumps[4] = {};
    for (int i = 1; i <= 3; ++i) {
        user.load(user.reference(i), m_files.reference(i));
        jumps[i] = spectrumOf(m_files.reference(i), sample::edgeEnergy).edgeJump();
    }
    user.useReferences("13");
    user.panel.calcBoth();
    QCOMPARE(user.field("HgTTo")->text(), sixDigits(jumps[1] + jumps[3] + 0.5));

    QVERIFY(rowtools::write(m_files.path("none.txt"), "no spectrum\n"));
    user.load(user.reference(1), m_files.path("none.txt"));
    user.useReferences("123");
    user.panel.calcBoth();
    QCOMPARE(user.field("HgTTo")->text(), sixDigits(jumps[1] + jumps[2] + 0.5));
    QCOMPARE(user.field("HgTFrom")->text(), QString("-0.5"));
}

void TestPanel::automaticRangesAreShownFromTheirStart()
{
    User user;
    user.reference(1)->valenceEdit()->setText("2.123456789");
    for (const char *const bound : {"HgAFrom", "HgATo", "HgTFrom", "HgTTo"})
        user.field(bound)->setText("12345678");
    user.panel.calcBoth();
    for (const char *const bound : {"HgAFrom", "HgATo", "HgTFrom", "HgTTo"})
        QCOMPARE(user.field(bound)->cursorPosition(), 0);
}

QTEST_MAIN(TestPanel)
#include "TestPanel.moc"
