// The panel's windows, markers and lists of files, and its mark of results that are out of date.

#include "AnalystTools.h"
#include "DisplayHelpers.h"

using namespace paneltools;

class TestPanelControls : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    void displaySpectra();
    void directoryIsShared();
    void staleMark();
    void moreConditions();
    void windowsFollowTheirButtons_data();
    void windowsFollowTheirButtons();
    void energyWindow();
    void edgeMarker();
    void energyMarkers();
    void destroyedWhileTyping_data();
    void destroyedWhileTyping();

private:
    DispArea *shownArea(User *user, Displays::DispId id);

    SampleFiles m_files;
};

void TestPanelControls::displaySpectra()
{
    User user;
    auto *const list = user.find<QListWidget>("SelectedFs");
    user.click("RemoveAFile"); // there is none
    const QStringList names{QFileInfo(m_files.reference(1)).fileName(), QFileInfo(m_files.reference(2)).fileName(),
                            QFileInfo(m_files.target()).fileName()};
    user.choose("DispFSelect", {m_files.reference(1), m_files.map(1), m_files.reference(2)});
    QCOMPARE(user.takeMessages(), QFileInfo(m_files.map(1)).fileName() + " is not a spectrum file.\n");
    user.choose("DispFSelect", {m_files.target()}); // in addition
    QCOMPARE(list->count(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(list->item(i)->text(), names.at(i));
    list->setCurrentRow(1);
    user.click("RemoveAFile");
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(1)->text(), names.at(2));
    user.panel.noticedNewEdge(8345);
    for (int i = 0; i < 3; ++i)
        user.click("RemoveAFile");
    QCOMPARE(list->count(), 0);
    user.panel.noticedNewEdge(8345);
}

void TestPanelControls::directoryIsShared()
{
    User user;
    user.load(user.row(8), m_files.map(1));
    for (const AFileSelect *const selector : user.panel.findChildren<AFileSelect *>())
        QCOMPARE(selector->dir(), m_files.dir());
    QVERIFY(QDir(m_files.path("")).mkdir("other"));
    QVERIFY(QFile::copy(m_files.target(), m_files.path("other/target.dat")));
    user.choose("DispFSelect", {m_files.path("other/target.dat")});
    for (const AFileSelect *const selector : user.panel.findChildren<AFileSelect *>())
        QCOMPARE(selector->dir(), m_files.dir() + "/other");
}

/// On a sample that can be calculated; `marks` starts from a calculation that was done.
void TestPanelControls::staleMark()
{
    Analyst user(m_files, "TypeFourPs");
    const auto isMarked = [&user] {
        return !user.find<QPushButton>("CalcMapB")->icon().isNull();
    };
    QVERIFY(!isMarked());
    const auto marks = [&](const std::function<void()> &change) {
        user.click("CalcMapB");
        const bool wasMarked = isMarked();
        change();
        return !wasMarked && isMarked();
    };
    for (int row : {2, 8}) // which leaves four points, for every variant
        QVERIFY(marks([&] { user.clickIn(user.row(row), "UseCB"); }));
    QVERIFY(marks([&] { user.clickIn(user.row(7), "VPointCB"); }));
    QVERIFY(marks([&] { user.typeEnergy(1, "8400"); }));
    QVERIFY(marks([&] { rowtools::type(user.reference(1)->valenceEdit(), "2"); }));
    QVERIFY(!marks([&] { user.clickIn(user.reference(3), "UseCB"); })); // recalculates at once
    user.clickIn(user.reference(3), "UseCB");
    QVERIFY(marks([&] { user.clickIn(user.reference(4), "UseCB"); })); // not loaded: nothing can be calculated
    user.click("CalcMapB");
    QVERIFY(isMarked()); // nor now
    user.clickIn(user.reference(4), "UseCB");
    for (const char *const option : {"TypeNonEquiv", "TypeFourPs", "TypeTMKisExact", "TypeTMKisLS", "NonEquivBGVic"})
        QVERIFY2(marks([&] { user.click(option); }), option);
    for (const char *const bound : {"HgAFrom", "HgATo", "HgABoxes", "HgTFrom", "HgTTo", "HgTBoxes"})
        QVERIFY2(marks([&] { user.type(bound, "2"); }), bound);

    QVERIFY(!marks([&] { user.load(user.row(1), m_files.map(1)); })); // recalculates at once
    QVERIFY(marks([&] { user.clickIn(user.row(5), "ClearB"); }));     // does not
    QVERIFY(!marks([&] { user.load(user.reference(1), m_files.reference(1)); }));
    QVERIFY(!marks([&] { user.type("EdgeE", "8341"); }));
    QVERIFY(!marks([&] { user.click("MapC1"); }));
    QVERIFY(!marks([&] { QTest::keyClick(user.row(1)->energyEdit(), Qt::Key_Return); })); // nothing was changed

    QVERIFY(marks([&] { user.load(user.reference(2), m_files.map(1)); })); // no spectrum: nothing can be calculated

    User beginner; // whose inputs are not complete yet
    beginner.load(beginner.row(1), m_files.map(1));
    QVERIFY(!beginner.find<QPushButton>("CalcMapB")->icon().isNull());
}

void TestPanelControls::moreConditions()
{
    User user;
    for (const char *const control : {"RecValence", "HgValence", "DispFSelect", "SelectedFs", "ShowM2M3"}) {
        auto *const widget = user.find<QWidget>(control);
        QVERIFY(!widget->isVisibleTo(&user.panel));
        user.click("DispCondsB");
        QVERIFY(widget->isVisibleTo(&user.panel));
        user.click("DispCondsB");
        QVERIFY(!widget->isVisibleTo(&user.panel));
    }
}

void TestPanelControls::windowsFollowTheirButtons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("title");
    QTest::newRow("graphs") << "ShowDAB"
                            << "Graphs";
    QTest::newRow("data map") << "ShowDMap"
                              << "Data map";
    QTest::newRow("scatter plot") << "ShowM2M3"
                                  << "M2/M3";
}

void TestPanelControls::windowsFollowTheirButtons()
{
    QFETCH(QString, button);
    QFETCH(QString, title);
    User user;
    user.panel.show();
    auto *const shows = user.find<QAbstractButton>(button);
    QWidget *window = user.panel.displays();
    if (button == "ShowDMap")
        window = user.panel.dataMap();
    else if (button == "ShowM2M3")
        window = user.panel.displays()->dabs[Displays::M2M3];
    QVERIFY(window->isWindow() && !window->isVisible() && !shows->isChecked());
    shows->click();
    QVERIFY(window->isVisible() && shows->isChecked());
    QCOMPARE(window->windowTitle(), title);
    QVERIFY(window->close()); // as its frame does
    QVERIFY(!window->isVisible() && !shows->isChecked());
    shows->click();
    QVERIFY(window->isVisible());
    shows->click();
    QVERIFY(!window->isVisible());
}

DispArea *TestPanelControls::shownArea(User *user, Displays::DispId id)
{
    user->panel.displays()->resize(1600, 1200);
    user->panel.displays()->grab();
    return user->panel.displays()->dabs[id]->area();
}

/// Without "Full Range" twice the ranges about the edge, with a twentieth of that on either side.
void TestPanelControls::energyWindow()
{
    User user;
    user.load(user.reference(1), m_files.reference(1));
    user.type("EdgeE", "8345");
    const AMutE &spectrum = user.reference(1)->selector()->spectrum();
    const auto range = [&] {
        const ChCoord &cc = shownArea(&user, Displays::Ref1)->cc;
        return QPointF(cc.rx0(), cc.rx1());
    };
    const double span = spectrum.energyMax() - spectrum.energyMin();
    const QPointF whole(spectrum.energyMin() - 0.05 * span, spectrum.energyMax() + 0.05 * span);
    QCOMPARE(range(), whole);
    user.click("FullRangeCB");
    QCOMPARE(range(), QPointF(8245 - 15, 8545 + 15));
    user.type("EdgeE", "8355");
    QCOMPARE(range(), QPointF(8255 - 15, 8555 + 15));
    user.type("PreEEndDE", "-40");
    QCOMPARE(range(), QPointF(8275 - 14, 8555 + 14));
    user.click("FullRangeCB");
    QCOMPARE(range(), whole);
}

void TestPanelControls::edgeMarker()
{
    User user;
    user.load(user.reference(1), m_files.reference(1));
    user.load(user.target(), m_files.target());
    user.type("EdgeE", "8345");
    user.typeEnergy(1, "8400");
    QLineEdit *const edge = user.field("EdgeE");
    const AMutE &spectrum = user.reference(1)->selector()->spectrum();
    const double jump = spectrum.edgeJump();
    for (const auto id : {Displays::Ref1, Displays::Target}) {
        user.type("EdgeE", "8345");
        DispArea *const area = shownArea(&user, id);
        const int y = area->height() / 2;
        const QPoint from(qRound(area->cc.r2sx(8345)), y);
        const QPoint to(from.x() + 15, y);
        const double wanted = sixDigits(area->cc.s2rx(to.x())).toDouble();
        QTest::mousePress(area, Qt::LeftButton, Qt::NoModifier, from);
        moveTo(area, to);
        QCOMPARE(edge->text().toDouble(), wanted);
        QCOMPARE(spectrum.edgeEnergy(), wanted); // the lines of the graph follow
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), 8400));
        user.takeMessages();
        QTest::mouseRelease(area, Qt::LeftButton, Qt::NoModifier, to);
        QCOMPARE(edge->text().toDouble(), wanted);
        QCOMPARE(edge->cursorPosition(), 0);
        QCOMPARE(spectrum.edgeJump(), spectrumOf(m_files.reference(1), wanted).edgeJump());
        QVERIFY(spectrum.edgeJump() != jump);
        QCOMPARE(user.rowText(1, "MutT"), shownValue(spectrumOf(m_files.target(), wanted), 8400));
        QCOMPARE(user.failedMapRuns(), 1);
    }

    // The ranges keep their distance from the edge.
    user.type("EdgeE", "8345");
    DispArea *const area = shownArea(&user, Displays::Ref1);
    const QPoint post(qRound(area->cc.r2sx(8445)), 20);
    const QPoint to(post.x() + 30, 20);
    drag(area, post, to);
    QCOMPARE(user.field("PostEStartDE")->text(), sixDigits(area->cc.s2rx(to.x()) - 8345));
    QCOMPARE(edge->text(), QString("8345"));
    QCOMPARE(spectrum.postEdgeStart(), 8345 + user.field("PostEStartDE")->text().toDouble());
}

void TestPanelControls::energyMarkers()
{
    User user;
    user.load(user.reference(1), m_files.reference(1));
    user.type("EdgeE", "8345");
    user.typeEnergy(1, "8600");
    user.typeEnergy(2, "8800");
    user.clickIn(user.row(1), "UseCB");
    DispArea *const area = shownArea(&user, Displays::Muts);
    area->scaleFixed = true;
    area->cc.setRealArea(8000, 0, 9000, 1);
    const auto at = [area](double energy) {
        return QPoint(qRound(area->cc.r2sx(energy)), area->height() / 2);
    };
    drag(area, at(8800), at(8700)); // not in use: no marker
    QCOMPARE(user.row(2)->energyText(), QString("8800"));
    QCOMPARE(user.row(1)->energyText(), QString("8600"));
    drag(area, at(8600), at(8500));
    const double moved = user.row(1)->energy();
    QVERIFY(qAbs(moved - 8500) < 5);
    QCOMPARE(user.rowText(1, "Mut1"), shownValue(spectrumOf(m_files.reference(1), 8345), moved));
    drag(area, at(8345), at(8300));
    QVERIFY(qAbs(user.field("EdgeE")->text().toDouble() - 8300) < 5);
    QCOMPARE(user.rowText(1, "Mut1"),
             shownValue(spectrumOf(m_files.reference(1), user.field("EdgeE")->text().toDouble()), moved));
}

void TestPanelControls::destroyedWhileTyping_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("field");
    QTest::newRow("edge") << ""
                          << "EdgeE";
    QTest::newRow("energy") << "Energy2"
                            << "Energy";
    QTest::newRow("shift") << "TargetFS"
                           << "dE";
    QTest::newRow("valence") << "Ref1File"
                             << "Valence";
}

/// A field that is being edited reports its text when it loses the keyboard, also because its window goes away.
void TestPanelControls::destroyedWhileTyping()
{
    QFETCH(QString, row);
    QFETCH(QString, field);
    for (const bool isWindow : {true, false}) {
        QWidget window;
        auto user = std::make_unique<User>();
        user->load(user->reference(1), m_files.reference(1));
        user->load(user->target(), m_files.target());
        if (!isWindow)
            user->panel.setParent(&window);
        user->panel.window()->show();
        QApplication::setActiveWindow(user->panel.window());
        auto *const edit = (row.isEmpty() ? &user->panel : user->find<QWidget>(row))->findChild<QLineEdit *>(field);
        edit->setFocus();
        QVERIFY(edit->hasFocus());
        QTest::keyClicks(edit, "5");
        for (const char *const button : {"ShowDAB", "ShowDMap", "ShowM2M3"})
            user->click(button);
        user.reset();
        QVERIFY(window.findChildren<QLineEdit *>().isEmpty());
    }
}

QTEST_MAIN(TestPanelControls)
#include "TestPanelControls.moc"
