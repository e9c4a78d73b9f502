// How the panel follows what the user chooses and types: values of the energy rows and recalculation.

#include "AnalystTools.h"
#include "controls/FieldMark.h"

using namespace paneltools;

namespace
{

/// What the user sees happen, in order: the fields of an energy row, the edge and each start of the map calculation,
/// which fails and says so.
struct EventLog : QObject {
    EventLog(User *user, int row)
    {
        connect(user->field("EdgeE"), &QLineEdit::textChanged, this, [this] { log += "edge shown"; });
        for (const char *const name : {"MutT", "Mut1", "Mut2", "Mut3", "Mut4"})
            connect(user->row(row)->findChild<QLineEdit *>(name), &QLineEdit::textChanged, this,
                    [this, name] { log += name; });
        connect(user->messageArea(), &QTextEdit::textChanged, this, [this, user] {
            if (user->messageArea()->toPlainText().endsWith("V Point is not selected\n"))
                log += "calculated";
        });
        connect(user->row(row), &AEPoint::newEnergy, this, [this] { log += "energy"; });
        connect(user->row(row), &AEPoint::newData, this, [this] { log += "data"; });
    }
    void watchFile(AFileSelect *select)
    {
        connect(select, &AFileSelect::newDir, this, [this] { log += "directory"; });
        connect(select, &AFileSelect::newFilePath, this, [this] { log += "path"; });
        connect(select, &AFileSelect::selectedFile, this, [this] { log += "selected"; });
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

    SampleFiles m_files;

    AMutE reference(int i, double edge, double dE = 0) const
    {
        return spectrumOf(m_files.reference(i), edge, -50, 100, dE);
    }
    AMutE target(double edge, double dE = 0) const { return spectrumOf(m_files.target(), edge, -50, 100, dE); }

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    // --- when what is calculated ---

    /// For a reference the edge comes first, then the target's values, then each valid reference with a calculation,
    /// at last the file's own turn with two more.
    void orderWhenAFileIsChosen()
    {
        forRows<const char *, const char *, bool, bool, QString, QString>(
            {{"reference", "Ref2File/XafsFS", "3", true, false, m_files.reference(2),
              "directory edge shown MutT Mut2 calculated Mut3 calculated calculated calculated path selected"},
             {"target", "TargetFS", "1", false, true, m_files.target(),
              "directory MutT calculated calculated path selected"},
             {"map", "Energy2/FileSelect", "1", true, true, m_files.map(2),
              "directory Mut1 MutT energy calculated data path selected"}},
            [this](const char *control, const char *references, bool hasTarget, bool isEdgeKept, const QString &file,
                   const QString &order) {
                User user;
                subtractPostLines(&user);
                user.keepEdge("8340");
                user.load(m_files, references, hasTarget);
                user.typeEnergy(2, "8400");
                if (!isEdgeKept)
                    user.click("EdgeFixed");
                EventLog events(&user, 2);
                events.watchFile(user.find<AFileSelect>(control));
                user.load(user.find<QWidget>(control), file);
                QCOMPARE(events.log.join(' '), order);
            });
    }

    /// Every spectrum is fitted before the first calculation.
    void orderWhenTheEdgeIsNoticed()
    {
        User user;
        subtractPostLines(&user);
        user.keepEdge("8349");
        user.load(m_files, "124", true);
        user.typeEnergy(1, "8400");
        EventLog events(&user, 1);
        user.click("EdgeFixed");
        user.panel.noticedNewEdge(8342);
        QCOMPARE(events.log.join(' '), QString("edge shown MutT Mut1 calculated Mut2 calculated Mut4 calculated"));
        QCOMPARE(user.rowText(1, "MutT"), shownValue(target(8342), 8400, true));
        QCOMPARE(user.rowText(1, "Mut4"), shownValue(reference(4, 8342), 8400, true));
        QCOMPARE(user.reference(3)->selector()->spectrum().edgeEnergy(), 8342.0); // for the file to come
    }

    /// A change shows at once in what it can change, and what it forbids is not complained about.
    void quietRecalculation()
    {
        Analyst user(m_files);
        const auto runs = [&user] {
            return static_cast<int>(user.panel.analysis().revision());
        };
        const int before = runs();
        const QString status = user.text("StatusLine");
        QVERIFY2(status.startsWith("6 x 4 pixels, 8 energies, "), qPrintable(status));
        user.type("Ref1File/Valence", QString::fromUtf8("２，5"));
        QCOMPARE(user.text("Ref1File/Valence"), QString("2.5"));
        QCOMPARE(user.panel.analysis().run()->references[0].valence, 2.5);
        QCOMPARE(user.takeMessages().count('\n'), 1); // the target's line; nothing was fitted
        user.type("Ref1File/Valence", "2.5");
        QCOMPARE(runs(), before + 1); // as it was
        user.click("TypeFourPs");     // of any number of points, by least squares
        QCOMPARE(runs(), before + 2);
        QCOMPARE(user.takeMessages().count('\n'), 1);
        user.click("Energy3/VPointCB");
        QCOMPARE(runs(), before + 2);
        QCOMPARE(user.takeMessages(), QString());
        QCOMPARE(user.text("StatusLine"), QString("V Point is not selected"));
        user.panel.longestQuietMap = 0;
        user.click("Energy3/VPointCB");
        user.click("TypeNonEquiv");
        QCOMPARE(runs(), before + 2);
        QCOMPARE(user.text("StatusLine"), QString("changed; press Calc. for a new map"));
        QVERIFY(!user.find<QPushButton>("CalcMapB")->icon().isNull());
    }

    /// The fields to look at have a red frame until they are mended.
    void doubtfulFields()
    {
        Analyst user(m_files);
        struct Case {
            const char *name, *typed, *mended; ///< a field, and what is typed there
            const char *reason;                ///< begins with it
        };
        const auto check = [&user](const Case &c) {
            const auto marked = [&user] {
                QStringList names;
                for (const QLineEdit *const field : user.panel.findChildren<QLineEdit *>()) {
                    if (!FieldMark::reasons(field).isEmpty())
                        names << field->objectName() + ": " + FieldMark::reasons(field);
                }
                return names;
            };
            QCOMPARE(marked(), QStringList());
            user.type(c.name, c.typed);
            QVERIFY2(marked().size() == 1 && marked()[0].startsWith(c.reason), qPrintable(marked().join('|')));
            const auto *const status = user.find<QLabel>("StatusLine");
            QVERIFY(status->toolTip().isEmpty() || marked()[0].contains(status->toolTip().section('\n', 0, 0)));
            user.type(c.name, c.mended);
        };
        forEach<Case>({{"Energy1/Energy", "826", "8260", "Energy: Energy 1: 826 eV is outside of Ref 1"},
                       {"Energy1/Energy", "8,260", "8260,0", "Energy: 8260 or 8.260? It counts as 0."},
                       {"Ref1File/Valence", "two", "2", "Valence: This is no number; it counts as 0.\nRef 1: the val"},
                       {"PreEEndDE", "-900", "-50", "PreEEndDE: Ref 1: the pre-edge range holds 0 points"},
                       {"Ref2File/dE", "1..5", "0", "dE: This is no number"}},
                      check);
    }

    /// One user goes through all of it; the references 1, 2 and 4 are loaded.
    void recalculations()
    {
        struct Case {
            const char *name; ///< a button to be clicked, a field that is left as it is, or one and what is typed there
            int runs;
        };
        User user;
        const auto check = [&user](const Case &c) {
            const QStringList words = QString(c.name).split(' ');
            if (words.size() == 1) {
                user.click(c.name);
            } else if (words[0] != "leave") {
                user.type(words[0], words[1]);
            } else { // with Return, then with the keyboard elsewhere
                QTest::keyClick(user.field(words[1]), Qt::Key_Return);
                QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
                QApplication::sendEvent(user.field(words[1]), &out);
            }
            QCOMPARE(user.failedMapRuns(), c.runs);
        };
        user.keepEdge("8345");
        user.load(m_files, "124", true);
        user.takeMessages();
        forEach<Case>({{"EdgeE 8349", 3},          {"leave EdgeE", 0},        {"leave PreEEndDE", 0},
                       {"PostEStartDE 90", 3},     {"leave PostEStartDE", 0}, {"Ref1File/dE 1.5", 1},
                       {"leave Ref1File/dE", 0},   {"TargetFS/dE -2", 1},     {"Ref3File/dE 1", 0}, // has no spectrum
                       {"SubPostEforRef", 1},      {"SubPostEforTarget", 1},  {"Ref4File/UseCB", 1},
                       {"Ref4File/UseCB", 1},      {"Ref3File/UseCB", 0}, // stops every calculation
                       {"Ref3File/UseCB", 0},      {"Energy1/UseCB", 0},  // refused in silence
                       {"Energy1/Energy 8400", 0}, {"Ref1File/Valence 2", 0}, {"MapFsSelect/ClearB", 0},
                       {"Ref2File/ClearB", 1}},
                      check);

        FourPs &panel = user.panel;
        panel.noticedNewEdge(8340); // is kept
        QCOMPARE(user.failedMapRuns(), 2);
        check({"leave EdgeE", 0});
        user.type("EdgeE", "0"); // none that a V mark could follow from
        user.takeMessages();
        const QStringList all = QVector<QString>(9, m_files.map(2)).toList();
        for (const QStringList &maps :
             {QStringList({m_files.map(1), m_files.path("missing.txt"), m_files.map(3)}), all}) {
            user.choose("MapFsSelect", maps);
            QCOMPARE(user.failedMapRuns(), 1);
        }
        for (const char *const onto : {"Energy2", "MapFsSelect"}) {
            user.load(user.find<QWidget>(onto), m_files.map(2));
            QCOMPARE(user.failedMapRuns(), 1);
        }
        panel.load(panel.job());
        QCOMPARE(user.failedMapRuns(), 1);
        panel.receiveNewFile("somewhere"); // from a stranger
        QCOMPARE(user.failedMapRuns(), 1);
        panel.receiveNewRef1();
        QCOMPARE(user.failedMapRuns(), 1);
        for (const int i : {-1, 2, 4}) // of which there is none
            panel.receiveNewRef(i);
        panel.receiveNewTarget();
        QCOMPARE(user.failedMapRuns(), 0);
    }

    // --- values of the energy rows ---

    void valuesFollowTheEnergy()
    {
        User user;
        user.keepEdge("8345");
        for (int row = 1; row <= 7; ++row)
            user.typeEnergy(row, QString::number(8000 + 200 * row)); // the last beyond the scan
        user.load(m_files, "14", true);
        const std::pair<const char *, AMutE> shown[] = {
            {"Mut1", reference(1, 8345)}, {"Mut4", reference(4, 8345)}, {"MutT", target(8345)}};
        const auto check = [&](int row) {
            for (const auto &[name, spectrum] : shown) {
                QCOMPARE(user.rowText(row, name), shownValue(spectrum, user.row(row)->energy()));
                QCOMPARE(user.row(row)->findChild<QLineEdit *>(name)->cursorPosition(), 0);
            }
        };
        for (int row = 1; row <= 8; ++row) {
            check(row);
            QCOMPARE(user.rowText(row, "Mut2") + user.rowText(row, "Mut3"), QString());
        }
        QVERIFY(!user.rowText(4, "Mut4").isEmpty() && !user.rowText(4, "MutT").isEmpty());
        QVERIFY(user.rowText(7, "Mut4").isEmpty() && user.rowText(8, "MutT").isEmpty());

        user.field("Energy3/Mut2")->setText("kept"); // its reference is not valid
        const QString other = user.rowText(5, "Mut1");
        for (const char *const energy : {"8500", "8345.678", "9999", "12", "8e", ""}) {
            user.typeEnergy(3, energy);
            QCOMPARE(user.row(3)->energyText(), QString(energy));
            check(3);
            QCOMPARE(user.rowText(3, "Mut2"), QString("kept"));
            QCOMPARE(user.rowText(5, "Mut1"), other);
        }
    }

    /// Typing dE shifts the spectrum and fits its lines anew, those of the target as well.
    void valuesFollowTheShift()
    {
        User user;
        subtractPostLines(&user);
        user.keepEdge("8345");
        user.load(m_files, "1", true);
        user.typeEnergy(1, "8400");
        user.type("Ref1File/dE", "1.5");
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(reference(1, 8345, 1.5), 8400, true));
        QCOMPARE(user.rowText(1, "MutT"), shownValue(target(8345), 8400, true));
        user.type("TargetFS/dE", "-2");
        QCOMPARE(user.rowText(1, "MutT"), shownValue(target(8345, -2), 8400, true));
        const QString shifted = user.rowText(1, "Mut1") + user.rowText(1, "MutT");
        user.panel.setEdge(); // has nothing left to do
        QCOMPARE(user.rowText(1, "Mut1") + user.rowText(1, "MutT"), shifted);
    }

    void valuesFollowTheLineSubtracted()
    {
        User user;
        user.keepEdge("8345");
        user.load(m_files, "12", true);
        user.typeEnergy(1, "8300");
        const auto check = [&](const char *option, bool isPostOfReferences, bool isPostOfTarget) {
            user.click(option);
            QCOMPARE(user.rowText(1, "Mut1"), shownValue(reference(1, 8345), 8300, isPostOfReferences));
            QCOMPARE(user.rowText(1, "Mut2"), shownValue(reference(2, 8345), 8300, isPostOfReferences));
            QCOMPARE(user.rowText(1, "MutT"), shownValue(target(8345), 8300, isPostOfTarget));
        };
        check("SubPostEforRef", true, false);
        check("SubPostEforTarget", true, true);
        user.load(m_files, "3"); // loaded later, the same line
        QCOMPARE(user.rowText(1, "Mut3"), shownValue(reference(3, 8345), 8300, true));
        check("SubPreEforRef", false, true);
    }

    // --- the edge ---

    void edgeOfTheUser()
    {
        User user;
        subtractPostLines(&user);
        user.typeEnergy(1, "8400");
        user.load(m_files, "1");
        QCOMPARE(user.text("EdgeE"), sixDigits(reference(1, sample::edgeEnergy).findEdge()));
        QCOMPARE(user.field("EdgeE")->cursorPosition(), 0);
        const AXafsFileSelect *const first = user.reference(1)->selector();
        QCOMPARE(first->spectrum().edgeEnergy(), user.text("EdgeE").toDouble());

        user.type("EdgeE", "8340");
        user.load(user.reference(1), m_files.path("nowhere.dat")); // cannot be read: finds no edge
        QCOMPARE(user.text("EdgeE"), QString("8340"));
        user.panel.noticedNewEdge(8347.12345);
        QCOMPARE(user.text("EdgeE"), QString("8347.12"));
        QCOMPARE(user.rowText(1, "Mut1"), shownValue(reference(1, 8347.12), 8400, true));

        user.keepEdge("8341");
        user.load(m_files, "2"); // its lines are fitted with the kept edge
        QCOMPARE(user.text("EdgeE"), QString("8341"));
        QCOMPARE(user.rowText(1, "Mut2"), shownValue(reference(2, 8341), 8400, true));
        QCOMPARE(user.reference(2)->selector()->spectrum().edgeEnergy(), 8341.0);
    }

    void rangesRefit()
    {
        // edge, pre, post: eV, the last two from the edge
        forRows<const char *, const char *, double, double, double>(
            {{"edge", "EdgeE", "8340.5", 8340.5, -50, 100},
             {"pre-edge", "PreEEndDE", "-30", 8345, -30, 100},
             {"post-edge", "PostEStartDE", "70", 8345, -50, 70},
             {"no number", "PostEStartDE", "1OO", 8345, -50, 0}},
            [this](const char *field, const char *text, double edge, double pre, double post) {
                User user;
                subtractPostLines(&user);
                user.keepEdge("8345");
                user.load(m_files, "1");
                user.typeEnergy(1, "8350");
                user.type(field, text);
                const AMutE expected = spectrumOf(m_files.reference(1), edge, pre, post);
                const AMutE &spectrum = user.reference(1)->selector()->spectrum();
                QCOMPARE(spectrum.edgeJump(), expected.edgeJump());
                QCOMPARE(spectrum.preEdgeEnd(), edge + pre);
                QCOMPARE(spectrum.postEdgeStart(), edge + post);
                QCOMPARE(user.rowText(1, "Mut1"), shownValue(expected, 8350, true));
                QCOMPARE(user.text(field), QString(text));
            });
    }

    // --- files ---

    /// A file dropped on a selector for several files counts as one chosen file; "Clear" there takes nothing back.
    void severalFiles()
    {
        User user;
        const auto energies = [&user] {
            QStringList texts;
            for (int i = 1; i <= 8; ++i)
                texts << (user.row(i)->loaded() ? user.row(i)->energyText() : "-");
            return texts.join(' ');
        };
        user.load(user.row(4), m_files.map(8));
        user.choose("MapFsSelect", {m_files.map(3), m_files.path("missing.txt"), m_files.map(1)});
        QCOMPARE(energies(), QString("8345.400 - 8260.000 8459.700 - - - -"));
        QCOMPARE(user.row(3)->fileSelect()->fileText(), m_files.map(1));
        QVERIFY(user.row(1)->isUsed() && !user.row(2)->isUsed() && !user.row(4)->isUsed());
        QVERIFY(user.row(1)->isVPoint() && !user.row(3)->isVPoint()); // 8345.4 eV, the edge is at 8350
        user.load(user.find<AFileSelect>("MapFsSelect"), m_files.map(5));
        user.load(user.find<AFileSelect>("DispFSelect"), m_files.reference(1));
        user.takeMessages();
        for (const char *const button : {"MapFsSelect/ClearB", "DispFSelect/ClearB"})
            user.click(button);
        QCOMPARE(energies(), QString("8352.000 - 8260.000 8459.700 - - - -"));
        QCOMPARE(user.find<QListWidget>("SelectedFs")->count(), 1);
        QCOMPARE(user.takeMessages(), QString());

        QStringList paths;
        for (int i = 8; i >= 0; --i)
            paths << m_files.map(qMax(i, 1));
        for (const int count : {8, 9}) {
            user.choose("MapFsSelect", paths.mid(0, count));
            QCOMPARE(user.takeMessages().contains("9 map files were chosen; the first 8 were taken.\n"), count == 9);
            QCOMPARE(energies(), QString("8459.700 8410.340 8388.560 8352.000 8348.500 8345.400 8310.000 8260.000"));
        }
    }

    /// Values of a spectrum that is gone would be taken for those of the file named.
    void spectraGone()
    {
        User user;
        user.keepEdge("8345");
        user.load(m_files, "12", true);
        for (const int row : {1, 6})
            user.typeEnergy(row, "8400");
        // path: empty: cleared
        forRows<const char *, QString, const char *>(
            {{"unreadable", "Ref2File", m_files.path("nowhere.dat"), "Mut1 Mut2 MutT"},
             {"no spectrum", "Ref2File", m_files.map(1), "Mut1 MutT"},
             {"there again", "Ref2File", m_files.reference(2), "Mut1 Mut2 MutT"},
             {"cleared", "Ref2File", "", "Mut1 MutT"},
             {"target no spectrum", "TargetFS", m_files.map(1), "Mut1"},
             {"target there again", "TargetFS", m_files.target(), "Mut1 MutT"},
             {"target cleared", "TargetFS", "", "Mut1"}},
            [&user](const char *onto, const QString &path, const char *shown) {
                path.isEmpty() ? user.click(QString(onto) + "/ClearB") : user.load(user.find<QWidget>(onto), path);
                for (const char *const name : {"Mut1", "Mut2", "MutT"}) {
                    QCOMPARE(user.rowText(1, name).isEmpty(), !QString(shown).contains(name));
                    QCOMPARE(user.rowText(6, name), user.rowText(1, name));
                }
            });
        QVERIFY(!user.reference(2)->selector()->valid() && !user.target()->valid());
    }
};

QTEST_MAIN(TestPanelInput)
#include "TestPanelInput.moc"
