// What the panel calculates from a sample whose truth is known, and what it writes.

#include "AnalystTools.h"
#include "analysis/results/ResultQuantities.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace paneltools;

class TestPanelResults : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    // --- numbers ---

    /// It is told and nothing else, unless it is wanted; there is nothing to be wanted where it cannot be told.
    void energyShift()
    {
        SampleFiles noisy;
        QVERIFY(noisy.make(12, 8, 40000));
        Analyst user(noisy);
        user.panel.show();
        user.panel.shiftReferences(0.4);
        const auto ask = [&user](const char *answer) {
            user.chooseInMap("Energy shift of the maps...");
            auto *const dialog = user.panel.findChild<QDialog *>("ShiftDialog");
            const auto buttons = dialog->findChildren<QPushButton *>();
            const auto button = [&buttons](const QString &text) {
                return *std::find_if(buttons.begin(), buttons.end(), [&](auto *b) { return b->text() == text; });
            };
            [&] {
                QTRY_VERIFY(button("Close")->isEnabled());
            }();
            const QString text = dialog->findChild<QLabel *>("ShiftText")->text();
            const bool isOffered = button("Apply")->isEnabled();
            button(answer)->click();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return text.left(text.indexOf(':')) + (isOffered ? " offered" : "");
        };
        const auto dE = [&user] {
            return user.reference(2)->selector()->spectrum().dE();
        };
        QCOMPARE(ask("Close"), QString("Energy shift of the maps offered"));
        QCOMPARE(dE(), 0.4);
        ask("Apply");
        QVERIFY(qAbs(dE()) < 0.1 && dE() != 0.0);
        QVERIFY(user.takeMessages().contains("The dE of all references was changed by -0."));
        user.tick("123456", "UseCB");
        QCOMPARE(ask("Close"), QString("The energy shift of the maps cannot be told"));
    }

    void nonEquivalentTarget()
    {
        Analyst user(m_files);
        user.panel.calcTarget();
        QCOMPARE(user.takeMessages(), QString("Result of NEQ :: 0.350 : 0.500 : 0.150, Valence = 2.800, t = 0.900\n"));
        const auto check = [&user](const QString &field, double expected) {
            const double value = user.text(field).toDouble();
            QVERIFY2(tables::isClose(value, expected, 1e-5), qPrintable(field));
            QCOMPARE(user.text(field), sixDigits(value));
            QCOMPARE(user.field(field)->cursorPosition(), 0);
        };
        for (int j = 0; j < 3; ++j) {
            check(QString("Ref%1File/RatioDisp").arg(j + 1), sample::targetFractions[j]);
            check(QString("Ref%1File/AmountDisp").arg(j + 1), sample::targetFractions[j] * sample::targetThickness);
        }
        check("TargetDMut", sample::targetThickness);
        // Only the four-points method's target enters the comparison: it was found before the method was changed.
        QVERIFY(tables::isClose(user.panel.analysis().fourPointsTarget()->result.a, 0.2, 0.5));
    }

    /// A run for the target shows those that took part in it, and nothing of the others.
    void fieldsOfTheOthersAreEmptied()
    {
        Analyst user(m_files);
        forRows<const char *, const char *, const char *>(
            {{"three references", "123", "TypeNonEquiv", "123 t"},
             {"one left", "13", "TypeNonEquiv", "13 t"},
             {"another one", "23", "TypeNonEquiv", "23 t"},
             {"four points", "12", "TypeFourPs", ""},
             {"non-equivalent again", "12", "TypeNonEquiv", "12 t"},
             {"a spectrum was cleared", "12", "Ref2File/ClearB", "1 t"}},
            [&user](const char *references, const char *button, const char *expected) {
                user.useReferences(references);
                user.click(button);
                user.panel.calcTarget();
                QString filled;
                for (int i = 1; i <= 4; ++i)
                    filled += user.ratio(i).isEmpty() && user.amount(i).isEmpty() ? QString() : QString::number(i);
                QCOMPARE(filled + (user.text("TargetDMut").isEmpty() ? "" : " t"), QString(expected));
            });
        user.click("TargetFS/ClearB");
        QCOMPARE(user.text("TargetDMut"), QString());
    }

    /// Not quite the truth: the target holds some of the third reference.
    void fourPointsTarget()
    {
        forRows<const char *, const char *, const char *, double>(
            {{"least squares", "123678", "TypeTMKisLS", "4ps2: ", 0.01},
             {"exact", "1236", "TypeTMKisExact", "", 0.04},
             {"three points", "136", "TypeTMKisLS", "3ps: ", 0.2}},
            [this](const char *rows, const char *option, const char *start, double tolerance) {
                Analyst user(m_files, "TypeFourPs");
                user.tick("123678", "UseCB");
                user.tick(rows, "UseCB");
                user.tick("34", "LCFCB");
                user.click(option);
                user.takeMessages();
                user.panel.calcTarget();
                const FourPointsTarget target = *user.panel.analysis().fourPointsTarget();
                QVERIFY2(tables::isClose(target.valence, 2.8, tolerance), qPrintable(QString::number(target.valence)));
                QVERIFY(user.takeMessages().startsWith(start + QString("a = %1, Valence = ").arg(target.result.a)));
                user.click("LCFB");
                const QStringList fields = user.comparisons().last().split('\t');
                QCOMPARE(fields.value(0), sixDigits(target.valence));
                QCOMPARE(fields.value(2), sixDigits(target.result.a));
            });
    }

    void linearCombination()
    {
        Analyst user(m_files);
        user.tick("2", "LCFCB");
        auto *const text = user.find<QLineEdit>("LCFRes");
        QCOMPARE(user.comparisons().size(), 1); // the titles
        user.tick("6", "LCFCB");
        QCOMPARE(text->text(), user.panel.analysis().outcome(Step::Fit).message);
        QCOMPARE(user.takeMessages(), text->text().simplified() + '\n');
        QCOMPARE(text->cursorPosition(), 0);
        // The tool tip solves the puzzle that V is not that of the fractions.
        const LinearCombination &fit = *user.panel.analysis().fit();
        QCOMPARE(text->toolTip().count(QString::number(fit.valence / fit.sum, 'g', 4)), 1);
        auto *const quality = user.find<QLabel>("LCFQuality");
        QVERIFY(QRegularExpression("^R = [-+.e\\d]+, \\d+ points$").match(quality->text()).hasMatch());
        QVERIFY(quality->toolTip().contains(QString::number(fit.coefficients[0], 'g', 4)));

        // Each action of the user that calculates anew adds one point to the others.
        QStringList points = user.comparisons();
        for (const char *const action : {"Ref3File/UseCB", "LCFB", "SubPostEforRef", "SubPreEforRef"}) {
            user.click(action);
            QCOMPARE(user.comparisons().size(), points.size() + 1);
            QCOMPARE(user.comparisons().mid(0, points.size()), points);
            points = user.comparisons();
        }
        user.tick("45", "LCFCB"); // within the range
        user.tick("1", "UseCB");
        QCOMPARE(user.comparisons(), points);
        QCOMPARE(text->text().count(" : "), 1); // of two references
        QTest::keyClick(user.field("EdgeE"), Qt::Key_Return);
        QCOMPARE(user.comparisons(), points);
    }

    /// The rows whose maps have another size than the result's are coloured, as long as they take part.
    void otherMapSizes()
    {
        SampleFiles larger;
        QVERIFY(larger.make(12, 8));
        Analyst user(m_files, "TypeFourPs");
        const auto warned = [&user] {
            QString rows;
            for (int i = 1; i <= sample::mapCount; ++i) {
                const auto *const size = user.find<QLabel>(QString("Energy%1/ExInfo").arg(i));
                rows += size->palette() == user.panel.palette() ? QString() : QString::number(i);
            }
            return rows;
        };
        QCOMPARE(warned(), QString());
        user.load(larger, "", false, "3"); // the V point's
        QCOMPARE(user.results().width(), 12);
        QCOMPARE(warned(), QString("12678"));
        user.click("Energy8/UseCB");
        user.click("CalcMapB");
        QCOMPARE(warned(), QString("1267"));
        user.load(m_files, "", false, "3");
        QCOMPARE(warned(), QString());
    }

    // --- files ---

    void writtenFourPoints()
    {
        Analyst user(m_files, "TypeFourPs");
        QCOMPARE(user.writeTo(m_files.path("four.points.dat")), QString());
        const QString info = user.text("SaveFSelect/ExInfo");
        QVERIFY2(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d: wrote four.points.dat and its histograms$")
                     .match(info)
                     .hasMatch(),
                 qPrintable(info));
        user.click("Energy3/VPointCB"); // nothing can be calculated
        QCOMPARE(user.writeTo(m_files.path("later.dat")), QString());
        QVERIFY(user.text("SaveFSelect/ExInfo").endsWith(": wrote later.dat (inputs changed since)"));
        for (const char *const tag : {"Alpha", "Thick"}) {
            const auto lines = bytesOf(m_files.path(QString("four.points_HG%1.dat").arg(tag))).split('\n');
            QCOMPARE(lines.size(), 51 + 2 + 1); // after the last line feed there is nothing
            int sum = 0;
            for (const QByteArray &line : lines)
                sum += line.split(' ').last().toInt();
            QCOMPARE(sum, 24);
            // Valences from 1.5 to 3.5, the first box centred on the end.
            QCOMPARE(lines.at(1).startsWith("1.48 1.5 1.52  "), QString(tag) == "Alpha");
        }
    }

    /// Each record box alone.
    void writtenSelections()
    {
        Analyst user(m_files);
        const QString path = m_files.path("selection.dat");
        for (const ResultQuantity &only : resultQuantities) {
            for (const ResultQuantity &quantity : resultQuantities)
                user.find<QCheckBox>(quantity.recordBox)->setChecked(&quantity == &only);
            QCOMPARE(user.writeTo(path), QString());
            const QString lastLine = QString(bytesOf(path)).trimmed().section('\n', -1).simplified();
            QCOMPARE(lastLine.count(' '), 2); // x, y and the one
            QCOMPARE(lastLine.section(' ', 2), sixDigits(user.results().record(23).values.at(only.position)));
        }
    }

    void writtenWithoutResult()
    {
        User user;
        const QString path = m_files.path("nothing");
        user.type("SaveFSelect/FileName", path);
        user.click("WriteB");
        QCOMPARE(bytesOf(path), QByteArray("\n"));
        QCOMPARE(user.takeMessages(), QString());
    }

    void failingWrites()
    {
        Analyst user(m_files);
        for (const QString &path : {m_files.path("missing/result.dat"), QString()}) {
            QCOMPARE(user.writeTo(m_files.path("fine.dat")), QString());
            QVERIFY(!user.text("SaveFSelect/ExInfo").isEmpty());
            QCOMPARE(user.writeTo(path), "Can't open the file [" + path + "]\n");
            QCOMPARE(user.text("SaveFSelect/ExInfo"), QString());
        }
    }

    void calculateAndWrite()
    {
        Analyst user(m_files);
        const QString path = m_files.path("both.dat");
        QVERIFY(rowtools::write(path, QByteArray(100000, 'x'))); // is replaced without a question
        QCOMPARE(user.writeTo(path), QString());
        const QByteArray before = bytesOf(path);
        QVERIFY(before.size() < 50000);
        user.reference(1)->valenceEdit()->setText("5");
        user.click("WriteB"); // the results are as they were
        QCOMPARE(bytesOf(path), before);
        user.click("CalcWriteB");
        QVERIFY(bytesOf(path) != before);
    }

    void mapsSavedAsText()
    {
        Analyst user(m_files);
        user.click("Energy4/ShowMapB");
        user.field("MaskBelow")->setText("0.6");
        const QLabel &line = *user.find<QLabel>("StatusLine");
        const auto saveTo = [&](DispMBase *map, const QString &path) {
            user.panel.askMapFile = [path] {
                return path;
            };
            for (QAction *const action : map->headerMenu()->menu->actions()) {
                if (action->text().startsWith("Save shown map"))
                    action->trigger();
            }
            return user.takeMessages();
        };
        const QString path = m_files.path("map.txt"), missing = m_files.path("missing/map.txt");
        for (const auto &[map, values] : {std::pair(user.map(), user.results().quantity(ResultPosition::valence)),
                                          std::pair(user.panel.dataMap(), user.row(4)->data().absorptions().data())}) {
            QByteArray expected;
            int hidden = 0;
            for (int i = 0; i < 24; ++i) {
                const bool isHidden = map == user.map() && user.results().t()[i] < 0.6;
                hidden += isHidden;
                expected += (isHidden ? QString("nan") : sixDigits(values[i])).toLatin1() + (i % 6 == 5 ? '\n' : ' ');
            }
            QCOMPARE(hidden > 0 && hidden < 24, map == user.map());
            QVERIFY(rowtools::write(path, QByteArray(10000, 'x')));
            QCOMPARE(saveTo(map, m_files.path("map")), QString("saved map.txt\n"));
            QCOMPARE(bytesOf(path), expected);
            user.copied(map->headerMenu());
            QCOMPARE(QApplication::clipboard()->text().replace('\t', ' ').toLatin1(), expected);
            QVERIFY(line.text().startsWith("saved the values of"));
            QCOMPARE(saveTo(map, QString()), QString()); // a change of mind
            QCOMPARE(saveTo(map, missing), "Can't open the file [" + missing + "]\n");
        }
    }

    void scatterCopied()
    {
        Analyst user(m_files, "TypeFourPs");
        HeaderMenu *const menu = user.panel.displays()->display(Displays::M2M3)->headerMenu();
        const auto step = [&user](int row) { // from the first anchor point, which is row 1, in the last pixel
            return sixDigits(user.row(row)->data().absorptions().data()[23] -
                             user.row(1)->data().absorptions().data()[23]);
        };
        const QStringList lines = user.copied(menu);
        QCOMPARE(lines.size(), 1 + 24);
        QCOMPARE(lines.last(), step(2) + '\t' + step(3));
        user.click("Energy3/VPointCB");
        QCOMPARE(user.copied(menu), QStringList("M2\tM3")); // nothing is drawn, either
    }
};

QTEST_MAIN(TestPanelResults)
#include "TestPanelResults.moc"
