#include "analysis/panel/FourPs.h"
#include "app/Body.h"
#include "app/StartUp.h"
#include "tests/Tables.h"

#include <QGridLayout>
#include <QMenuBar>
#include <QStatusBar>

class TestStartUp : public QObject
{
    Q_OBJECT

private slots:
    void language()
    {
        forRows<const char *, bool>({{"none", "flokluk", true},
                                     {"Japanese", "flokluk -j", true},
                                     {"English", "flokluk -e", false},
                                     {"the last one wins, Japanese", "flokluk -e -j", true},
                                     {"the last one wins, English", "flokluk -j -e", false},
                                     {"English among others", "flokluk file.dat -e --help", false},
                                     {"upper case", "flokluk -E", true},
                                     {"two dashes, part of a word", "flokluk --e -en e", true},
                                     {"upper case does not undo", "flokluk -e -J", false},
                                     {"the program's own name is no switch", "-e file.dat", true}},
                                    [](const char *arguments, bool isJapanese) {
                                        QCOMPARE(wantsJapanese(QString(arguments).split(' ')), isJapanese);
                                    });
    }

    void windowParts()
    {
        Body body;
        QCOMPARE(body.objectName() + ' ' + body.centralWidget()->objectName(), QString("Body centralwidget"));
        QCOMPARE(body.menuBar()->objectName() + ' ' + body.statusBar()->objectName(), QString("menubar statusbar"));
        QVERIFY(body.menuBar()->actions().isEmpty());
        auto *const outer = qobject_cast<QGridLayout *>(body.centralWidget()->layout());
        QVERIFY(outer);
        QCOMPARE(outer->objectName(), QString("gridLayout_2"));
        auto *const inner = body.findChild<QGridLayout *>("bodyLayout");
        QVERIFY(inner && outer->itemAtPosition(0, 0)->layout() == inner);
        QVERIFY(inner->indexOf(body.panel()) >= 0);
        QCOMPARE(body.findChildren<FourPs *>(), QList<FourPs *>{body.panel()});
    }

    /// The program finds the catalogue that it carries, and keeps its title.
    void japanese()
    {
        QTranslator carried, translator;
        QVERIFY(carried.load(QStringLiteral(":/zelt_ja_JP.qm")));
        installJapanese(&translator);
        QCOMPARE(translator.isEmpty(), carried.isEmpty());
        const QString title = carried.translate("FourPs", "Graphs");
        Body body;
        QCOMPARE(body.windowTitle(), QString("flokluk"));
        QCOMPARE(body.panel()->displays()->windowTitle(), title.isEmpty() ? QString("Graphs") : title);
        QVERIFY(QCoreApplication::removeTranslator(&translator)); // it was installed
    }

    void closingEndsTheProgram()
    {
        for (const QStringList &others : {QStringList(), QStringList{"ShowDAB", "ShowDMap", "ShowM2M3"}}) {
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
            QVERIFY(hadClosedOthers && !body.isVisible());
            QCOMPARE(body.panel()->displays()->isVisible(),
                     !others.isEmpty()); // it was not the last window that ended it
        }
    }
};

QTEST_MAIN(TestStartUp)
#include "TestStartUp.moc"
