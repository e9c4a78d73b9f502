// The panel of displays, and displays that are popped out into windows of their own.

#include "DisplayHelpers.h"
#include "display/DispABase.h"
#include "display/Displays.h"
#include "display/PopBase.h"

#include <memory>

class TestDisplays : public QObject
{
    Q_OBJECT

private slots:
    void popOutAndDock()
    {
        DispABase dab;
        dab.ui.Title->setText("Ref1");
        dab.show();
        QTest::mouseClick(dab.ui.PopDockB, Qt::LeftButton);
        QVERIFY(!dab.docked && dab.pop->isVisible());
        QCOMPARE(dab.ui.DispABFrame->window(), static_cast<QWidget *>(dab.pop));
        QCOMPARE(dab.pop->windowTitle(), QString("Ref1"));
        QCOMPARE(dab.pop->size(), QSize(800, 600));
        QTest::mouseClick(dab.ui.PopDockB, Qt::LeftButton); // the button went with it
        QVERIFY(dab.docked && !dab.pop->isVisible());

        dab.popDock();
        dab.pop->close();
        QVERIFY(dab.docked && !dab.pop->isVisible());
        QVERIFY(dab.ui.gridLayout->itemAtPosition(1, 0)->widget() == dab.ui.DispABFrame);
        QTRY_VERIFY(dab.ui.DispA->isVisible());
    }

    // A paint that asks the window to repaint everything would be answered by the next paint, and so on.
    void poppedGraphRests()
    {
        DispABase dab;
        dab.show();
        dab.popDock();
        QVERIFY(QTest::qWaitForWindowExposed(dab.pop));
        QTest::qWait(50);
        int draws = 0;
        connect(&dab, &DispABase::draw, this, [&draws] { ++draws; });
        dab.area()->update();
        QTest::qWait(100);
        QCOMPARE(draws, 1);
    }

    void onlyTheMainWindowKeepsTheProgramAlive()
    {
        QWidget mainWindow;
        DispABase popped(&mainWindow);
        Displays displays;
        mainWindow.show();
        displays.show();
        popped.popDock();
        displays.dabs.at(0)->popDock();
        displays.dabs.at(Displays::M2M3)->show();
        displays.dabs.at(1)->popDock();

        QTimer::singleShot(0, displays.dabs.at(1)->pop, &QWidget::close); // ends nothing by itself
        QTimer::singleShot(50, &mainWindow, &QWidget::close);
        QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!mainWindow.isVisible());
    }

    void displaysRelay()
    {
        Displays displays;
        QStringList reports;
        const auto report = [&](const char *what, int id, DispABase *dab) {
            reports << QString("%1 %2 %3").arg(what).arg(id).arg(dab->ui.Title->text());
        };
        connect(&displays, &Displays::draw, this,
                [&](Displays::DispId id, DispABase *dab, QStylePainter *) { report("draw", id, dab); });
        connect(&displays, &Displays::mPressed, this, [&](DispABase *dab, MouseC *) { report("press", -1, dab); });
        connect(&displays, &Displays::mDragging, this, [&](DispABase *dab, MouseC *) { report("drag", -1, dab); });
        connect(&displays, &Displays::mReleased, this, [&](DispABase *dab, MouseC *) { report("release", -1, dab); });

        DispABase *const muts = displays.dabs.at(Displays::Muts);
        muts->area()->grab();
        QCOMPARE(reports.join(", "), QString("draw 5 Muts"));
        reports.clear();
        drag(muts->area(), QPoint(50, 50), QPoint(60, 60));
        QCOMPARE(reports.join(", "), QString("press -1 Muts, drag -1 Muts, release -1 Muts"));
        reports.clear();

        displays.show();
        QVERIFY(QTest::qWaitForWindowExposed(&displays));
        const QStringList shown{"draw 0 Ref1",       "draw 1 Ref2",          "draw 2 Ref3",
                                "draw 3 Ref4",       "draw 4 Target",        "draw 5 Muts",
                                "draw 6 LCF vs MPS", "draw 7 Histgram of a", "draw 8 Histgram of dMut",
                                "draw 9 dMut/v or a"};
        const auto drawn = [&reports] {
            QStringList sorted = reports;
            sorted.sort();
            sorted.removeDuplicates();
            return sorted;
        };
        QTRY_COMPARE(drawn(), shown);
        reports.clear();
        displays.resize(1000, 900);
        QTRY_COMPARE(drawn(), shown); // not the hidden "M2/M3"
    }

    void displayRegisteredTwice()
    {
        Displays displays;
        DispABase *const dab = displays.dabs.at(0);
        displays.addDisp(dab, "again", Displays::M2M3, -1, -1, 1, 1);
        QVector<int> ids;
        connect(&displays, &Displays::draw, this, [&](Displays::DispId id) { ids << id; });
        dab->area()->grab();
        QCOMPARE(ids, (QVector<int>{Displays::Ref1, Displays::M2M3}));
    }

    void unplacedDisplay()
    {
        auto displays = std::make_unique<Displays>();
        QCOMPARE(displays->ids.size(), 11);
        const QPointer<DispABase> dab = displays->dabs.at(displays->ids.indexOf(Displays::M2M3));
        QVERIFY(!dab->parent() && !dab->isVisible());
        QWidget owner;
        const QPointer<DispABase> adopted = new DispABase;
        displays->addDisp(adopted, "adopted", Displays::M2M3, -1, 0, 1, 1);
        adopted->setParent(&owner);
        displays.reset();
        QVERIFY(!dab);
        QVERIFY(adopted);
    }
};

QTEST_MAIN(TestDisplays)
#include "TestDisplays.moc"
