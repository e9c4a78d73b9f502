#include "PanelTools.h"
#include "app/Body.h"
#include "app/StartUp.h"
#include "controls/PathField.h"
#include "plan/window/PlanPage.h"

#include <QFileDialog>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTranslator>

#include <algorithm>

using namespace paneltools;

namespace
{

/// The window as it is when everything is loaded: the rows of the spectra have their second lines.
void fill(Body *body)
{
    for (AXafsFileSelect *const selector : body->findChildren<AXafsFileSelect *>()) {
        selector->setFileText("/a/directory/with/a/long/name/that/no/field/has/the/room/for/spectrum.dat");
        selector->setExInfo("2048 points, 8145-9145 eV, E0 8342.9");
    }
    for (NumberField *const field : body->findChildren<NumberField *>())
        field->setText("-1.23456e-05");
}

/// Nested layouts tell each other of a change one after the other.
void settle()
{
    for (int i = 0; i < 4; ++i)
        QApplication::processEvents();
}

bool isScrolled(const Body &body)
{
    const auto *const area = body.findChild<QScrollArea *>("ScrollArea");
    return area->verticalScrollBar()->isVisible() || area->horizontalScrollBar()->isVisible();
}

} // namespace

class TestWindow : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase()
    {
        QVERIFY(m_files.make());
        QFont usual(QStringLiteral("Sans")); // of a desktop with 96 dots an inch
        usual.setPointSizeF(9 * 96 / QApplication::primaryScreen()->logicalDotsPerInch());
        QApplication::setFont(usual);
    }

    /// The sizes are those that a window manager's frame and panel leave of 1366 x 768 and 1920 x 1080; the shares
    /// those that the map needs of the screen to be what the window is looked at for.
    void fitsTheScreen()
    {
        struct Case {
            const char *name;
            bool isJapanese;
            QSize size;
            int leastMap; // square pixels, with header and colour bar
            bool isScrolled;
        };
        forEach<Case>({{"laptop", false, {1362, 700}, 1366 * 728 * 33 / 100, false},
                       {"laptop, Japanese", true, {1362, 700}, 1366 * 728 * 33 / 100, false},
                       {"desk", false, {1916, 1012}, 1920 * 1080 * 45 / 100, false},
                       {"desk, Japanese", true, {1916, 1012}, 1920 * 1080 * 45 / 100, false},
                       {"smaller", false, {1000, 600}, 0, true}},
                      [](const Case &c) {
                          QTranslator translator;
                          if (c.isJapanese)
                              installJapanese(&translator);
                          Body body;
                          fill(&body);
                          body.resize(c.size);
                          body.show();
                          for (const bool hasMore : {false, true}) {
                              body.findChild<QPushButton *>("DispCondsB")->setChecked(hasMore);
                              settle();
                              QCOMPARE(body.size(), c.size);
                              QCOMPARE(isScrolled(body), c.isScrolled);
                              const QSize map = body.panel()->resultMap()->size();
                              QVERIFY2(map.width() * map.height() >= c.leastMap,
                                       qPrintable(QString("%1 x %2").arg(map.width()).arg(map.height())));
                              const auto *const messages = body.findChild<QTextEdit *>("Messages");
                              QVERIFY(c.isScrolled ||
                                      messages->viewport()->height() >= 5 * messages->fontMetrics().lineSpacing());
                          }
                      });
    }

    void moreConditionsTakeThePlaceOfTheOthers()
    {
        User user;
        user.panel.show();
        const auto *const usual = user.find<QTabWidget>("Conditions"), *const more = user.find<QTabWidget>("MorePages");
        settle();
        const QPoint place = usual->mapTo(&user.panel, QPoint());
        for (const bool hasMore : {true, false}) {
            user.click("DispCondsB");
            settle();
            QCOMPARE(more->isVisible(), hasMore);
            QCOMPARE(usual->isVisible(), !hasMore);
            QVERIFY(!hasMore || more->mapTo(&user.panel, QPoint()) == place);
            QCOMPARE(more->height(), usual->height());
        }
    }

    void windowsOpenOnTheScreen()
    {
        User user;
        user.panel.displays()->resize(5000, 4000);
        user.click("ShowDAB");
        const QSize least = user.panel.displays()->minimumSizeHint();
        const QRect room = user.panel.screen()->availableGeometry(); // of a laptop at least
        QVERIFY2(least.width() <= 1366 && least.height() <= 700,
                 qPrintable(QString("%1 x %2").arg(least.width()).arg(least.height())));
        QVERIFY(room.contains(user.panel.displays()->frameGeometry()) || least.width() > room.width());
    }

    /// From the button to the energy rows: only empty ones are filled, and only when there are enough.
    void plannedEnergies()
    {
        Body body;
        FourPs &panel = *body.panel();
        const auto rows = panel.findChildren<AEPoint *>();
        panel.findChild<QAbstractButton *>("TypeNonEquiv")->click();
        panel.findChild<QAbstractButton *>("PlanEnergies")->click();
        QWidget &page = *body.planPage();
        QVERIFY(page.isVisible());
        auto *const plan = page.findChild<QPushButton *>("PlanB"), *const use =
                                                                       page.findChild<QPushButton *>("PlanUseB");
        const auto outcome = [&page, plan](const char *field, const char *text) {
            page.findChild<QLineEdit *>(field)->setText(text);
            plan->click();
            [plan] {
                QTRY_COMPARE_WITH_TIMEOUT(plan->text(), QString("Plan"), 60000);
            }();
            return page.findChild<QLabel *>("PlanText")->text();
        };
        QVERIFY(outcome("PlanCount", "6").contains("at least two references"));
        for (int i = 1; i <= 2; ++i) {
            auto *const reference = panel.findChild<ARefFile *>(QString("Ref%1File").arg(i));
            reference->setValenceText(QString::number(i + 1));
            reference->selector()->choose(m_files.reference(i));
        }
        QVERIFY(outcome("PlanCounts", "many").contains("\"Counts\" must be a number above 0"));
        QVERIFY(outcome("PlanCounts", "").startsWith("planned with one background term more"));
        QVERIFY(use->isEnabled());
        rows[1]->setEnergyText("8346.5");
        rows[3]->fileSelect()->choose(m_files.map(4));
        const QString kept = rows[3]->energyText();
        use->click();
        QCOMPARE(rows[1]->energyText() + ' ' + rows[3]->energyText(), "8346.5 " + kept);
        QVector<double> energies;
        for (const int row : {0, 2, 4, 5, 6, 7})
            energies << rows[row]->energy();
        QVERIFY(energies[0] > 8000 && std::is_sorted(energies.begin(), energies.end()));
        QCOMPARE(page.findChild<QTableWidget *>("PlanEnergyTable")->item(5, 0)->text(), rows[7]->energyText());
        QVERIFY(!use->isEnabled());
    }

    void dataMapIsTheFirstLoaded()
    {
        User user;
        user.load(m_files, "", false, "35");
        user.click("ShowDMap");
        QVERIFY(user.row(3)->showMapButton()->isChecked());
        user.click("Energy5/ShowMapB");
        user.panel.dataMap()->ui.PopDockB->click(); // its window is all it can go back to
        QVERIFY(!user.panel.dataMap()->isVisible() && !user.find<QPushButton>("ShowDMap")->isChecked());
        user.click("ShowDMap");
        QVERIFY(user.row(5)->showMapButton()->isChecked()); // the one asked for last stays
    }

    void dialogsSayWhatTheyChoose()
    {
        User user;
        forRows<QString, QString>({{"reference", "Ref2File/XafsFS", "Ref 2: choose a spectrum"},
                                   {"target", "TargetFS", "Target: choose a spectrum"},
                                   {"map", "Energy3/FileSelect", "Energy 3: choose a map"},
                                   {"maps", "MapFsSelect", "Several maps: choose their files"},
                                   {"display", "DispFSelect", "Spectra for display: choose their files"},
                                   {"results", "SaveFSelect", "Results: name a file to write"}},
                                  [&user](const QString &selector, const QString &title) {
                                      const QFileDialog *const dialog = user.find<AFileSelect>(selector)->dialog();
                                      QCOMPARE(dialog->windowTitle(), title);
                                      QCOMPARE(dialog->windowModality(), Qt::WindowModal);
                                  });
    }

    void longPathsShowTheirEnds()
    {
        PathField field;
        field.setText("/a/long/directory/map3.txt");
        forRows<int, QString, bool>(
            {{"room for all", 400, "/a/long/directory/map3.txt", false}, {"narrow", 100, "map3.txt", true}},
            [&field](int width, const QString &end, bool isElided) {
                field.resize(width, 22);
                QVERIFY(field.shown().text.endsWith(end));
                QCOMPARE(field.shown().text.startsWith(QChar(0x2026)), isElided);
                QCOMPARE(field.text(), QString("/a/long/directory/map3.txt"));
            });
    }

    /// By the keyboard: down the left column, then down the right one, with no stop at what cannot be changed.
    void tabOrder()
    {
        Body body;
        body.resize(1362, 700);
        body.show();
        settle();
        QPoint last;
        const auto *const area = body.findChild<QScrollArea *>("ScrollArea");
        const int middle = body.panel()->resultMap()->mapTo(&body, QPoint()).x();
        int stops = 0;
        for (QWidget *at = body.findChild<QWidget *>("Ref1File"); at && at != area; at = at->nextInFocusChain()) {
            const auto *const field = qobject_cast<QLineEdit *>(at);
            if (!at->isVisible() || at->focusProxy() || !(at->focusPolicy() & Qt::TabFocus) ||
                body.panel()->resultMap()->isAncestorOf(at))
                continue;
            QVERIFY2(!field || !field->isReadOnly(), qPrintable(at->objectName()));
            const QPoint place = at->mapTo(&body, at->rect().center());
            const bool isRight = place.x() > middle, wasRight = last.x() > middle;
            QVERIFY2(isRight == wasRight ? place.y() > last.y() - 8 : isRight,
                     qPrintable(QString("%1 at %2, %3").arg(at->objectName()).arg(place.x()).arg(place.y())));
            last = place;
            ++stops;
        }
        QVERIFY(stops > 80);
    }

    void labelsHaveBuddies()
    {
        User user;
        const QStringList ofTheirOwn{"NumDisp", "LCFQuality", "ExInfo", "StatusLine"};
        for (const QLabel *const label : user.panel.findChildren<QLabel *>()) {
            if (!user.panel.resultMap()->isAncestorOf(label) && !ofTheirOwn.contains(label->objectName()))
                QVERIFY2(label->buddy(), qPrintable(label->objectName()));
        }
    }
};

QTEST_MAIN(TestWindow)
#include "TestWindow.moc"
