#include "analysis/panel/FourPs.h"
#include "app/Body.h"
#include "app/StartUp.h"

#include <QGridLayout>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

class TestStartUp : public QObject
{
    Q_OBJECT

private slots:
    void language_data();
    void language();
    void windowParts();
    void japanese();
    void closingEndsTheProgram_data();
    void closingEndsTheProgram();
};

void TestStartUp::language_data()
{
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<bool>("isJapanese");
    QTest::newRow("none") << QStringList() << true;
    QTest::newRow("Japanese") << QStringList{"-j"} << true;
    QTest::newRow("English") << QStringList{"-e"} << false;
    QTest::newRow("the last one wins, Japanese") << QStringList{"-e", "-j"} << true;
    QTest::newRow("the last one wins, English") << QStringList{"-j", "-e"} << false;
    QTest::newRow("English among others") << QStringList{"file.dat", "-e", "--help"} << false;
    QTest::newRow("upper case") << QStringList{"-E"} << true;
    QTest::newRow("two dashes") << QStringList{"--e"} << true;
    QTest::newRow("part of a word") << QStringList{"-en", "e", " -e"} << true;
    QTest::newRow("upper case does not undo") << QStringList{"-e", "-J"} << false;
}

void TestStartUp::language()
{
    QFETCH(QStringList, switches);
    QFETCH(bool, isJapanese);
    QCOMPARE(wantsJapanese(QStringList("flokluk") + switches), isJapanese);
    QCOMPARE(wantsJapanese(QStringList("-e") + switches), isJapanese); // the program's own name is no switch
}

void TestStartUp::windowParts()
{
    Body body;
    QCOMPARE(body.objectName(), QString("Body"));
    QCOMPARE(body.windowTitle(), QString("flokluk"));
    QCOMPARE(body.centralWidget()->objectName(), QString("centralwidget"));
    auto *const outer = qobject_cast<QGridLayout *>(body.centralWidget()->layout());
    QVERIFY(outer);
    QCOMPARE(outer->objectName(), QString("gridLayout_2"));
    auto *const inner = body.findChild<QGridLayout *>("bodyLayout");
    QVERIFY(inner);
    QCOMPARE(outer->itemAtPosition(0, 0)->layout(), inner);
    QVERIFY(inner->indexOf(body.panel()) >= 0);
    QCOMPARE(body.panel()->parentWidget(), body.centralWidget());
    QCOMPARE(body.menuBar()->objectName(), QString("menubar"));
    QVERIFY(body.menuBar()->actions().isEmpty());
    QCOMPARE(body.statusBar()->objectName(), QString("statusbar"));
    QCOMPARE(body.findChildren<FourPs *>().size(), 1);
}

/// The program finds the catalogue that it carries, and keeps its title.
void TestStartUp::japanese()
{
    QTranslator carried;
    QVERIFY(carried.load(QStringLiteral(":/zelt_ja_JP.qm")));
    QTranslator translator;
    installJapanese(&translator);
    QCOMPARE(translator.isEmpty(), carried.isEmpty());
    const QString title = carried.translate("FourPs", "Graphs");
    Body body;
    QCOMPARE(body.windowTitle(), QString("flokluk"));
    QCOMPARE(body.panel()->displays()->windowTitle(), title.isEmpty() ? QString("Graphs") : title);
    QVERIFY(QCoreApplication::removeTranslator(&translator)); // it was installed
}

void TestStartUp::closingEndsTheProgram_data()
{
    QTest::addColumn<QStringList>("others");
    QTest::newRow("alone") << QStringList();
    QTest::newRow("with its windows open") << QStringList{"ShowDAB", "ShowDMap", "ShowM2M3"};
}

void TestStartUp::closingEndsTheProgram()
{
    QFETCH(QStringList, others);
    Body body;
    body.show();
    for (const QString &button : others)
        body.findChild<QAbstractButton *>(button)->click();
    bool hadClosedOthers = false;
    QTimer::singleShot(0, &body, [&] {
        if (!others.isEmpty()) {
            body.panel()->displays()->close(); // one of the others alone ends nothing
            body.findChild<QAbstractButton *>("ShowDAB")->click();
        }
        hadClosedOthers = true;
        QTimer::singleShot(50, &body, &QWidget::close);
    });
    QTimer::singleShot(20000, &body, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(hadClosedOthers);
    QVERIFY(!body.isVisible());
    QCOMPARE(body.panel()->displays()->isVisible(), !others.isEmpty()); // it was not the last window that ended it
}

QTEST_MAIN(TestStartUp)
#include "TestStartUp.moc"
