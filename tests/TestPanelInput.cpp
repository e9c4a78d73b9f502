// How the panel follows what the user chooses and types: values of the energy rows and recalculation.

#include "PanelTools.h"

using namespace paneltools;

namespace
{

const QString mutFields[] = {"MutT", "Mut1", "Mut2", "Mut3", "Mut4"};

/// What the user sees happen when a file is chosen, in order.
class EventLog : public QObject
{
public:
    void watchFile(AFileSelect *select)
    {
        connect(select, &AFileSelect::newDir, this, [this] { log += "directory"; });
        connect(select, &AFileSelect::newFilePath, this, [this] { log += "path"; });
        connect(select, &AFileSelect::selectedFile, this, [this] { log += "selected"; });
    }
    /// The fields of an energy row, the edge and each start of the map calculation, which fails and says so.
    void watch(User *user, int row)
    {
        connect(user->field("EdgeE"), &QLineEdit::textChanged, this, [this] { log += "edge shown"; });
        for (const QString &name : mutFields) {
            connect(user->rowField(row, name.toLatin1()), &QLineEdit::textChanged, this, [this, name] { log += name; });
        }
        connect(user->messageArea(), &QTextEdit::textChanged, this, [this, user] {
            if (user->messageArea()->toPlainText().endsWith("V Point is not selected\n"))
                log += "calculated";
        });
    }
    QString take()
    {
        const QString taken = log.join(", ");
        log.clear();
        return taken;
    }
    QStringList log;
};

/// These lines follow the edge; the pre-edge lines of exact spectra are the same for every range.
void subtractPostLines(User *user)
{
    user->click("SubPostEforRef");
    user->click("SubPostEforTarget");
}

} // namespace

class TestPanelInput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void orderWhenAReferenceIsChosen();
    void orderWhenTheTargetIsChosen();
    void orderWhenAMapIsChosen();
    void valuesOfReferences();
    void valuesFollowTheEnergy_data();
    void valuesFollowTheEnergy();
    void valuesFollowTheShift();
    void valuesFollowTheLineSubtracted();
    void edgeOfTheUser();
    void edgeAppliesToAll();
    void rangesRefit_data();
    void rangesRefit();
    void unknownSenderRecalculates();
    void useRecalculatesWhenLoaded();
    void severalMapsCalculateOnce();
    void tooManyMaps();
    void mapsDropped();
    void clearedSpectra();
    void filesThatAreNoSpectra();

private:
    SampleFiles m_files;
    double m_foundEdges[4] = {}; ///< of the references, from 1 on, as their spectra tell
};

void TestPanelInput::initTestCase()
{
    QVERIFY(m_files.make());
    for (int i = 1; i <= 3; ++i)
        m_foundEdges[i] = spectrumOf(m_files.reference(i), sample::edgeEnergy).findEdge();
}

/// The edge comes first, then the target's values, then each valid reference with a calculation, at last the file's
/// own turn with two more.
void TestPanelInput::orderWhenAReferenceIsChosen()
{
    User user;
    subtractPostLines(&user);
    user.typeEnergy(1, "8400");
    user.click("EdgeFixed");
    user.load(user.target(), m_files.target());
    user.load(user.reference(3), m_files.reference(3));
    user.click("EdgeFixed");
    EventLog events;
    events.watchFile(user.reference(2)->selector());
    events.watch(&user, 1);
    user.load(user.reference(2), m_files.reference(2));
    QCOMPARE(events.take(), QString("directory, edge shown, MutT, Mut2, calculated, Mut3, calculated, calculated, "
                                    "calculated, path, selected"));
    QCOMPARE(user.field("EdgeE")->text(), sixDigits(m_foundEdges[2]));
    QCOMPARE(user.field("EdgeE")->cursorPosition(), 0);
}

void TestPanelInput::orderWhenTheTargetIsChosen()
{
    User user;
    user.typeEnergy(1, "8400");
    user.load(user.reference(1), m_files.reference(1));
    EventLog events;
    events.watchFile(user.target());
    events.watch(&user, 1);
    user.click("EdgeFixed");
    user.load(user.target(), m_files.target());
    QCOMPARE(events.take(), QString("directory, MutT, calculated, calculated, path, selected"));
}

void TestPanelInput::orderWhenAMapIsChosen()
{
    User user;
    user.load(user.reference(1), m_files.reference(1));
    user.load(user.target(), m_files.target());
    EventLog events;
    events.watchFile(user.row(2)->fileSelect());
    events.watch(&user, 2);
    connect(user.row(2), &AEPoint::newEnergy, &events, [&events] { events.log += "energy"; });
    connect(user.row(2), &AEPoint::newData, &events, [&events] { events.log += "data"; });
    user.load(user.row(2), m_files.map(2));
    QCOMPARE(events.take(), QString("directory, Mut1, MutT, energy, calculated, data, path, selected"));
}

void TestPanelInput::valuesOfReferences()
{
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", "8344.5");
    for (int row = 1; row <= 8; ++row)
        user.typeEnergy(row, QString::number(8000 + 100 * row)); // the first before the scan, the last beyond
    user.typeEnergy(8, "99999");
    user.takeMessages();
    user.load(user.reference(2), m_files.reference(2));
    user.load(user.target(), m_files.target());
    const AMutE reference = spectrumOf(m_files.reference(2), 8344.5);
    const AMutE target = spectrumOf(m_files.target(), 8344.5);
    for (int row = 1; row <= 8; ++row) {
        const double energy = user.row(row)->energy();
        QCOMPARE(user.rowText(row, "Mut2"), shownValue(reference, energy));
        QCOMPARE(user.rowText(row, "MutT"), shownValue(target, energy));
        QCOMPARE(user.rowText(row, "Mut1") + user.rowText(row, "Mut3") + user.rowText(row, "Mut4"), QString());
        QCOMPARE(user.rowField(row, "Mut2")->cursorPosition() + user.rowField(row, "MutT")->cursorPosition(), 0);
    }
    QVERIFY(user.rowText(1, "Mut2").isEmpty() && user.rowText(8, "MutT").isEmpty());
    QVERIFY(!user.rowText(4, "Mut2").isEmpty() && !user.rowText(4, "MutT").isEmpty());
}

void TestPanelInput::valuesFollowTheEnergy_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("in the scan") << "8500";
    QTest::newRow("between two points") << "8345.678";
    QTest::newRow("beyond") << "9999";
    QTest::newRow("before") << "12";
    QTest::newRow("no number") << "8e";
    QTest::newRow("empty") << "";
}

void TestPanelInput::valuesFollowTheEnergy()
{
    QFETCH(QString, text);
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", "8345");
    for (int i : {1, 4})
        user.load(user.reference(i), m_files.reference(i));
    user.load(user.target(), m_files.target());
    user.typeEnergy(3, "8400");
    user.typeEnergy(5, "8400");
    QVERIFY(!user.rowText(3, "Mut4").isEmpty());
    user.rowField(3, "Mut2")->setText("kept"); // its reference is not valid
    user.takeMessages();

    QLineEdit *const energy = user.row(3)->energyEdit();
    energy->selectAll();
    QTest::keyClick(energy, Qt::Key_Delete);
    rowtools::type(energy, text);
    const double value = text.toDouble();
    QCOMPARE(user.rowText(3, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), value));
    QCOMPARE(user.rowText(3, "Mut4"), shownValue(spectrumOf(m_files.reference(4), 8345), value));
    QCOMPARE(user.rowText(3, "MutT"), shownValue(spectrumOf(m_files.target(), 8345), value));
    QCOMPARE(user.rowText(3, "Mut2"), QString("kept"));
    QCOMPARE(user.rowText(5, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), 8400));
    QCOMPARE(user.takeMessages(), QString()); // values only, no calculation
}

/// The lines stay those of the unshifted spectrum until the edge is set.
void TestPanelInput::valuesFollowTheShift()
{
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", "8345");
    user.load(user.reference(1), m_files.reference(1));
    user.load(user.target(), m_files.target());
    user.typeEnergy(1, "8400");
    for (const auto &[select, path, name] :
         {std::make_tuple(user.reference(1)->selector(), m_files.reference(1), "Mut1"),
          std::make_tuple(user.target(), m_files.target(), "MutT")}) {
        AMutE spectrum = spectrumOf(path, 8345);
        QCOMPARE(user.rowText(1, name), shownValue(spectrum, 8400));
        rowtools::type(select->findChild<QLineEdit *>("dE"), "1.5");
        spectrum.setDE(1.5);
        QCOMPARE(user.rowText(1, name), shownValue(spectrum, 8400));
    }
    user.type("EdgeE", "8345");
    QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345, -50, 100, 1.5), 8400));
}

void TestPanelInput::valuesFollowTheLineSubtracted()
{
    User user;
    user.click("EdgeFixed");
    user.type("EdgeE", "8345");
    for (int i : {1, 2})
        user.load(user.reference(i), m_files.reference(i));
    user.load(user.target(), m_files.target());
    user.typeEnergy(1, "8300");
    const AMutE second = spectrumOf(m_files.reference(2), 8345);
    const AMutE target = spectrumOf(m_files.target(), 8345);
    user.takeMessages();

    user.click("SubPostEforRef");
    QCOMPARE(user.rowText(1, "Mut2"), shownValue(second, 8300, true));
    QCOMPARE(user.rowText(1, "MutT"), shownValue(target, 8300));
    QVERIFY(user.failedMapRuns() > 0);
    user.click("SubPostEforTarget");
    QCOMPARE(user.rowText(1, "MutT"), shownValue(target, 8300, true));
    QVERIFY(user.failedMapRuns() > 0);
    user.load(user.reference(3), m_files.reference(3)); // loaded later, the same line
    QCOMPARE(user.rowText(1, "Mut3"), shownValue(spectrumOf(m_files.reference(3), 8345), 8300, true));
    user.click("SubPreEforRef");
    QCOMPARE(user.rowText(1, "Mut2"), shownValue(second, 8300));
    QCOMPARE(user.rowText(1, "MutT"), shownValue(target, 8300, true));
}

void TestPanelInput::edgeOfTheUser()
{
    User user;
    subtractPostLines(&user);
    user.typeEnergy(1, "8400");
    user.load(user.reference(1), m_files.reference(1));
    QCOMPARE(user.field("EdgeE")->text(), sixDigits(m_foundEdges[1]));
    const AXafsFileSelect *const first = user.reference(1)->selector();
    QCOMPARE(first->spectrum().edgeEnergy(), user.field("EdgeE")->text().toDouble());

    user.type("EdgeE", "8340");
    user.panel.noticedNewEdge(8347.12345);
    QCOMPARE(user.field("EdgeE")->text(), QString("8347.12"));
    QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8347.12), 8400, true));

    user.click("EdgeFixed");
    user.type("EdgeE", "8341");
    user.load(user.reference(2), m_files.reference(2)); // its lines are fitted with the kept edge
    QCOMPARE(user.field("EdgeE")->text(), QString("8341"));
    QCOMPARE(user.rowText(1, "Mut2"), shownValue(spectrumOf(m_files.reference(2), 8341), 8400, true));
    QCOMPARE(user.reference(2)->selector()->spectrum().edgeEnergy(), 8341.0);
}

/// All spectra are fitted before the first calculation, which runs once for each valid reference.
void TestPanelInput::edgeAppliesToAll()
{
    User user;
    subtractPostLines(&user);
    user.click("EdgeFixed");
    for (int i : {1, 2, 4})
        user.load(user.reference(i), m_files.reference(i));
    user.load(user.target(), m_files.target());
    user.typeEnergy(1, "8400");
    user.type("EdgeE", "8349");
    EventLog events;
    events.watch(&user, 1);
    user.click("EdgeFixed");
    user.panel.noticedNewEdge(8342);
    QCOMPARE(events.take(), QString("edge shown, MutT, Mut1, calculated, Mut2, calculated, Mut4, calculated"));
    QCOMPARE(user.rowText(1, "MutT"), shownValue(spectrumOf(m_files.target(), 8342), 8400, true));
    QCOMPARE(user.rowText(1, "Mut4"), shownValue(spectrumOf(m_files.reference(4), 8342), 8400, true));
    QCOMPARE(user.reference(3)->selector()->spectrum().edgeEnergy(), 8342.0); // for the file to come
}

void TestPanelInput::rangesRefit_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("edge");
    QTest::addColumn<double>("pre");
    QTest::addColumn<double>("post");
    QTest::newRow("edge") << "EdgeE"
                          << "8340.5" << 8340.5 << -50.0 << 100.0;
    QTest::newRow("pre-edge end") << "PreEEndDE"
                                  << "-30" << 8345.0 << -30.0 << 100.0;
    QTest::newRow("post-edge start") << "PostEStartDE"
                                     << "70" << 8345.0 << -50.0 << 70.0;
    QTest::newRow("no number") << "PostEStartDE"
                               << "1OO" << 8345.0 << -50.0 << 0.0;
}

void TestPanelInput::rangesRefit()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(double, edge);
    QFETCH(double, pre);
    QFETCH(double, post);
    User user;
    subtractPostLines(&user);
    user.click("EdgeFixed");
    user.type("EdgeE", "8345");
    user.load(user.reference(1), m_files.reference(1));
    user.typeEnergy(1, "8350");
    const QString before = user.rowText(1, "Mut1");
    user.type(field, text);
    const AMutE expected = spectrumOf(m_files.reference(1), edge, pre, post);
    const AMutE &spectrum = user.reference(1)->selector()->spectrum();
    QCOMPARE(spectrum.edgeJump(), expected.edgeJump());
    QCOMPARE(spectrum.preEdgeEnd(), edge + pre);
    QCOMPARE(spectrum.postEdgeStart(), edge + post);
    QCOMPARE(user.rowText(1, "Mut1"), shownValue(expected, 8350, true));
    QCOMPARE(user.field(field)->text(), text);
    user.type(field, field == "EdgeE" ? "8345" : field == "PreEEndDE" ? "-50" : "100");
    QCOMPARE(user.rowText(1, "Mut1"), before);
}

void TestPanelInput::unknownSenderRecalculates()
{
    User user;
    user.panel.receiveNewFile("somewhere");
    QCOMPARE(user.failedMapRuns(), 1);
    user.panel.receiveNewRef(0); // nothing is loaded
    user.panel.receiveNewRef(-1);
    user.panel.receiveNewRef(4);
    QCOMPARE(user.takeMessages(), QString());
}

void TestPanelInput::useRecalculatesWhenLoaded()
{
    User user;
    user.clickIn(user.reference(3), "UseCB");
    QCOMPARE(user.failedMapRuns(), 0);
    user.load(user.reference(3), m_files.reference(3));
    user.takeMessages();
    user.clickIn(user.reference(3), "UseCB");
    QCOMPARE(user.failedMapRuns(), 1);
    user.clickIn(user.row(1), "UseCB"); // rows wait for the button
    QCOMPARE(user.failedMapRuns(), 0);
}

void TestPanelInput::severalMapsCalculateOnce()
{
    User user;
    user.load(user.row(4), m_files.map(8));
    user.takeMessages();
    user.choose("MapFsSelect", {m_files.map(3), m_files.path("missing.txt"), m_files.map(1)});
    QCOMPARE(user.failedMapRuns(), 1);
    QCOMPARE(user.row(1)->energyText() + ' ' + user.row(3)->energyText(), QString("8345.400 8260.000"));
    QVERIFY(user.row(1)->loaded() && !user.row(2)->loaded() && user.row(3)->loaded());
    QCOMPARE(user.row(3)->fileSelect()->fileText(), m_files.map(1));
    QCOMPARE(user.row(4)->energyText(), QString("8459.700")); // beyond the chosen files: as it was
    QVERIFY(!user.row(1)->isUsed());

    user.load(user.row(2), m_files.map(2)); // alone
    QCOMPARE(user.failedMapRuns(), 1);
}

void TestPanelInput::tooManyMaps()
{
    User user;
    QStringList paths;
    for (int i = 8; i >= 0; --i)
        paths += m_files.map(qMax(i, 1));
    user.choose("MapFsSelect", paths.mid(0, 8));
    QCOMPARE(user.takeMessages().count("map files"), 0);
    user.choose("MapFsSelect", paths);
    const QString messages = user.takeMessages();
    QVERIFY(messages.contains("9 map files were chosen; the first 8 were taken.\n"));
    QCOMPARE(messages.count("V Point is not selected\n"), 1);
    for (int i = 1; i <= 8; ++i)
        QCOMPARE(user.row(i)->fileSelect()->fileText(), paths.at(i - 1));
}

/// A file dropped on a selector for several files counts as one chosen file.
void TestPanelInput::mapsDropped()
{
    User user;
    user.load(user.find<AFileSelect>("MapFsSelect"), m_files.map(5));
    QVERIFY(user.row(1)->loaded());
    QCOMPARE(user.row(1)->energyText(), QString("8352.000"));
    user.load(user.find<AFileSelect>("DispFSelect"), m_files.reference(1));
    QCOMPARE(user.find<QListWidget>("SelectedFs")->count(), 1);
    user.takeMessages();
    for (const char *const selector : {"MapFsSelect", "DispFSelect"})
        user.clickIn(user.find<AFileSelect>(selector), "ClearB"); // takes nothing back
    QVERIFY(user.row(1)->loaded());
    QCOMPARE(user.find<QListWidget>("SelectedFs")->count(), 1);
    QCOMPARE(user.takeMessages(), QString());
}

void TestPanelInput::clearedSpectra()
{
    User user;
    for (int i : {1, 2})
        user.load(user.reference(i), m_files.reference(i));
    user.load(user.target(), m_files.target());
    user.typeEnergy(1, "8400");
    user.typeEnergy(6, "8500");
    user.takeMessages();
    user.clickIn(user.reference(2)->selector(), "ClearB");
    for (int row : {1, 6}) {
        QCOMPARE(user.rowText(row, "Mut2"), QString());
        QVERIFY(!user.rowText(row, "Mut1").isEmpty() && !user.rowText(row, "MutT").isEmpty());
    }
    QVERIFY(!user.reference(2)->selector()->valid());
    QCOMPARE(user.failedMapRuns(), 1);
    user.clickIn(user.target(), "ClearB");
    QCOMPARE(user.rowText(1, "MutT") + user.rowText(6, "MutT"), QString());
    QVERIFY(!user.target()->valid());
    QVERIFY(!user.rowText(1, "Mut1").isEmpty());
}

/// Values of a spectrum that is gone would be taken for those of the file named.
void TestPanelInput::filesThatAreNoSpectra()
{
    User user;
    user.load(user.reference(2), m_files.reference(2));
    user.load(user.target(), m_files.target());
    user.typeEnergy(6, "8500");
    const QString before = user.rowText(6, "Mut2");
    QVERIFY(!before.isEmpty());
    user.load(user.reference(2), m_files.path("nowhere.dat")); // cannot be read: the old one stays
    QCOMPARE(user.rowText(6, "Mut2"), before);
    user.load(user.reference(2), m_files.map(1));
    QCOMPARE(user.rowText(6, "Mut2"), QString());
    QVERIFY(!user.rowText(6, "MutT").isEmpty());
    user.load(user.target(), m_files.map(1));
    QCOMPARE(user.rowText(6, "MutT"), QString());
}

QTEST_MAIN(TestPanelInput)
#include "TestPanelInput.moc"
