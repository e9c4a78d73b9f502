// The panel's controls: what they say at the start, what is refused, reported and marked, and the lists and windows
// that belong to them.

#include "AnalystTools.h"

#include <QGroupBox>
#include <QScrollBar>

using namespace paneltools;

namespace
{

/// `Energy3/Mut1 "" read-only`: a control with its text and what else it starts with; empty for one without a text.
QString stateOf(const QWidget *control, const QWidget *panel)
{
    const bool isGroup = qobject_cast<const QGroupBox *>(control);
    QVariant text = control->property(isGroup ? "title" : "text");
    if (const auto *const pages = qobject_cast<const QTabWidget *>(control)) {
        QStringList titles;
        for (int i = 0; i < pages->count(); ++i)
            titles << pages->tabText(i);
        text = titles.join(" | ");
    }
    if (!text.isValid() || qobject_cast<const QTabBar *>(control->parentWidget()) || control->objectName().isEmpty() ||
        control->objectName().startsWith("qt_"))
        return QString();
    QString name = control->objectName();
    for (const QWidget *row = control->parentWidget(); row != panel; row = row->parentWidget()) {
        if (row->inherits("AFileSelect") || row->inherits("ARefFile") || row->inherits("AEPoint") ||
            row->inherits("DispMBase"))
            name.prepend(row->objectName() + '/');
    }
    QString state = name + " \"" + text.toString().replace('\n', ' ') + '"';
    const auto add = [&state](bool isSo, const char *word) {
        state += isSo ? QString(' ') + word : QString();
    };
    add(control->property("readOnly").toBool(), "read-only");
    add(!isGroup && control->property("checkable").toBool(), "checkable");
    add(!isGroup && control->property("checked").toBool(), "checked");
    add(!control->isVisibleTo(control->parentWidget()), "hidden");
    add(!control->isEnabled(), "disabled");
    return state + ' ' + control->styleSheet().simplified();
}

} // namespace

class TestPanel : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    /// With FLOKLUK_WRITE_GOLDEN set the file is written anew: review the difference.
    void defaults()
    {
        User user;
        QStringList lines;
        for (const QWidget *const control : user.panel.findChildren<QWidget *>())
            lines << stateOf(control, &user.panel).trimmed();
        lines.removeAll(QString());
        lines.sort();
        if (qEnvironmentVariableIsSet("FLOKLUK_WRITE_GOLDEN"))
            QVERIFY(tables::writeBytes(PANEL_DEFAULTS, (lines.join('\n') + '\n').toUtf8()));
        const QStringList wanted = QString::fromUtf8(bytesOf(PANEL_DEFAULTS)).trimmed().split('\n');
        for (int i = 0; i < qMin(lines.size(), wanted.size()); ++i)
            QVERIFY2(lines[i] == wanted[i],
                     qPrintable(
                         QString("%1:%2 has <%3>, not <%4>").arg(PANEL_DEFAULTS).arg(i + 1).arg(wanted[i], lines[i])));
        QCOMPARE(lines.size(), wanted.size());
        QVERIFY(user.messageArea()->isReadOnly());
        QCOMPARE(user.takeMessages(), QString());
        for (int i = QFrame::staticMetaObject.methodCount(); i < FourPs::staticMetaObject.methodCount(); ++i)
            QVERIFY2(FourPs::staticMetaObject.method(i).methodType() != QMetaMethod::Signal,
                     "the panel has no signals");
    }

    void groupsAreExclusive()
    {
        User user;
        for (const char *const group :
             {"TypeFourPs TypeNonEquiv", "TypeTMKisExact TypeTMKisLS", "NonEquivBGVic NonEquivBGLinear",
              "SubPreEforRef SubPostEforRef", "SubPreEforTarget SubPostEforTarget", "NNone NByEJ NBySubPre NBy2Vics"}) {
            const QStringList buttons = QString(group).split(' ');
            for (const QString &chosen : buttons + buttons) {
                user.click(chosen);
                for (const QString &button : buttons)
                    QCOMPARE(user.find<QAbstractButton>(button)->isChecked(), button == chosen);
            }
        }
    }

    /// What is set reaches the checks, and they the user. An empty message: that calculation gets past its checks.
    void checks()
    {
        struct Case {
            const char *name, *used, *loaded;
            bool hasTarget;
            const char *rows, *maps, *vPoints;
            QStringList options;
            QString map, target;
        };
        const QString noV = "V Point is not selected", none = "Number of valied Ref Files is 0, which is less than 2.";
        const QString sets = "Number of selected data sets ", first = "The 1st Ref File is not valid.",
                      second = "The 2nd Ref File is not valid.", third = "Target File1 is not valid.";
        const auto check = [this](const Case &c) {
            User user;
            user.panel.longestQuietMap = 0;
            user.useReferences(c.used);
            user.load(m_files, c.loaded, c.hasTarget, c.maps);
            user.tick(c.rows, "UseCB");
            user.tick(c.vPoints, "VPointCB");
            for (const QString &option : c.options)
                user.click(option);
            user.takeMessages();
            user.click("CalcMapB");
            QCOMPARE(user.takeMessages(), c.map.isEmpty() ? QString() : c.map + '\n');
            QCOMPARE(user.panel.analysis().run() != nullptr, c.map.isEmpty());
            user.panel.calcTarget();
            const QString target = user.takeMessages();
            QVERIFY2(c.target.isEmpty() ? target.contains("Valence = ") : target == c.target + '\n',
                     qPrintable(target));
        };
        const QStringList exact{"TypeTMKisExact"}, linear{"TypeNonEquiv"}, victoreen{"TypeNonEquiv", "NonEquivBGVic"};
        forEach<Case>(
            {{"nothing chosen", "12", "", false, "", "", "", {}, noV, noV + '.'},
             {"V point without map", "12", "", false, "3", "", "3", {}, noV, none},
             {"first missing", "123", "23", true, "136", "136", "3", {}, "Ref File 0 is not valid.", first},
             {"second missing", "124", "14", true, "136", "136", "3", {}, "Ref File 1 is not valid.", second},
             {"no target", "12", "12", false, "136", "136", "3", {}, "", third},
             {"exact, a row without map", "12", "12", true, "12367", "1236", "3", exact, "", sets + "5 is not 4."},
             {"least squares", "12", "12", true, "12367", "12367", "3", {}, "", ""},
             {"linear, no V point", "12", "12", true, "1236", "1236", "", linear, "", noV + '.'},
             {"linear", "12", "12", true, "1236", "1236", "3", linear, "", ""},
             {"Victoreen", "12", "12", true, "1236", "1236", "3", victoreen, sets + "4 is less than 5.",
              sets + "4 is not 5."}},
            check);
    }

    /// Each ends in one line feed, whatever it names, and stands last, wherever the user has clicked.
    void messages()
    {
        User user;
        user.panel.show();
        const QString name = QStringLiteral("two  blanks.txt");
        QVERIFY(rowtools::write(m_files.path(name), "no spectrum\n"));
        user.choose("DispFSelect", {m_files.path(name)});
        user.click("CalcMapB");
        QCOMPARE(user.takeMessages(), QString("two blanks.txt is not a spectrum file.\nV Point is not selected\n"));
        QCOMPARE(user.find<QListWidget>("SelectedFs")->count(), 0);

        for (int i = 0; i < 100; ++i)
            user.panel.calcTarget();
        QTextEdit *const area = user.messageArea();
        area->verticalScrollBar()->setValue(0);
        QTest::mouseClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
        area->selectAll();
        const QString before = area->toPlainText();
        user.click("CalcMapB");
        QCOMPARE(area->toPlainText(), before + "V Point is not selected\n");
        QVERIFY(area->viewport()->rect().contains(area->cursorRect())); // the newest line is in sight
    }

    /// They are written before each calculation and shown from their first digit. Jumps are those of the first used
    /// rows, as many as are valid: a file that is no spectrum keeps the lines of the one before, a cleared row has
    /// none.
    void automaticRanges()
    {
        User user;
        const char *const bounds[] = {"HgAFrom", "HgATo", "HgTFrom", "HgTTo"};
        const auto ranges = [&user, &bounds] {
            user.panel.calcBoth();
            QStringList texts;
            for (const char *const bound : bounds)
                texts << user.text(bound);
            return texts.join(' ');
        };
        user.useReferences("");
        QCOMPARE(ranges(), QString("9.5 0.5 -0.5 0.5"));
        user.keepEdge(QString::number(sample::edgeEnergy));
        user.load(m_files, "123");
        double jumps[4] = {};
        for (int i = 1; i <= 3; ++i)
            jumps[i] = spectrumOf(m_files.reference(i), sample::edgeEnergy).edgeJump();
        user.useReferences("13");
        for (const char *const bound : bounds)
            user.field(bound)->setText("12345678");
        user.type("Ref1File/Valence", "2.123456789");
        user.type("Ref2File/Valence", "8");
        user.type("Ref3File/Valence", "III");
        QCOMPARE(ranges(), "-0.5 2.62346 -0.5 " + sixDigits(jumps[1] + jumps[3] + 0.5));
        for (const char *const bound : bounds)
            QCOMPARE(user.field(bound)->cursorPosition(), 0);

        QVERIFY(rowtools::write(m_files.path("none.txt"), "no spectrum\n"));
        user.load(user.reference(1), m_files.path("none.txt"));
        user.useReferences("123");
        QCOMPARE(ranges(), "-0.5 8.5 -0.5 " + sixDigits(jumps[1] + jumps[2] + 0.5));
        user.click("Ref1File/ClearB");
        QCOMPARE(ranges(), "-0.5 8.5 -0.5 " + sixDigits(jumps[2] + 0.5));

        for (const char *const box : {"HgAAuto", "HgTAuto"})
            user.click(box);
        for (const char *const bound : bounds)
            user.type(bound, "7");
        QCOMPARE(ranges(), QString("7 7 7 7"));
    }

    // --- the mark of results that do not belong to what is set ---

    /// Each change is named in the tool tip; changed back, nothing is left of it.
    void staleMark()
    {
        User beginner; // who has no results yet
        beginner.load(m_files, "1", false, "1");
        QVERIFY(beginner.find<QPushButton>("CalcMapB")->icon().isNull());

        Analyst user(m_files, "TypeFourPs");
        user.panel.longestQuietMap = 0;
        const auto *const button = user.find<QPushButton>("CalcMapB");
        const QString toolTip = button->toolTip();
        const auto changes = [&]() -> QString {
            const QString start = "Changed since the map was calculated: ";
            if (button->icon().isNull())
                return button->toolTip() == toolTip ? "none" : "no mark, but " + button->toolTip();
            return button->toolTip().remove(start).remove('\n' + toolTip);
        };
        struct Case {
            const char *name, *text; ///< a control, and what is typed into it; null: it is clicked
            const char *back;        ///< what was there; or the button that is clicked to change back
            const char *change;
        };
        const auto check = [&](const Case &c) {
            c.text ? user.type(c.name, c.text) : user.click(c.name);
            QCOMPARE(changes(), QString(c.change));
            c.text ? user.type(c.name, c.back) : user.click(c.back);
            QCOMPARE(changes(), QString("none"));
        };
        forEach<Case>({{"Energy2/UseCB", nullptr, "Energy2/UseCB", "Energies in use"},
                       {"Energy1/Energy", "8400", "8260.000", "Energy 1: value"},
                       {"Ref1File/Valence", "2.5", "2", "Ref 1: valence"},
                       {"TypeNonEquiv", nullptr, "TypeFourPs", "Method"},
                       {"HgABoxes", "7", "51", "Histograms"},
                       {"Ref3File/Valence", "7", "4", "none"}, // takes no part
                       {"EdgeE", "8341", "8345", "none"}},     // calculates at once
                      check);
        user.click("Energy2/UseCB");
        user.type("Ref1File/Valence", "2.5");
        QCOMPARE(changes(), QString("Energies in use; Ref 1: valence"));
        user.click("CalcMapB");
        QCOMPARE(changes(), QString("none"));
        user.load(user.reference(2), m_files.map(1)); // no spectrum: nothing can be calculated
        QCOMPARE(changes(), QString("Number of valied Ref Files is 1, which is less than 2."));
    }

    // --- lists of files, and windows ---

    void displaySpectra()
    {
        User user;
        auto *const list = user.find<QListWidget>("SelectedFs");
        const auto check = [&](const QStringList &paths) {
            const auto curves = user.panel.graphs().spectra().curves;
            QCOMPARE(list->count(), paths.size());
            QCOMPARE(curves.size(), paths.size());
            for (int i = 0; i < paths.size(); ++i) {
                QCOMPARE(list->item(i)->text(), QFileInfo(paths[i]).fileName());
                QCOMPARE(curves[i].name, QFileInfo(paths[i]).fileName());
            }
        };
        user.click("RemoveAFile"); // there is none
        user.choose("DispFSelect", {m_files.reference(1), m_files.map(1), m_files.reference(2)});
        QCOMPARE(user.takeMessages(), QFileInfo(m_files.map(1)).fileName() + " is not a spectrum file.\n");
        user.choose("DispFSelect", {m_files.target()}); // in addition
        check({m_files.reference(1), m_files.reference(2), m_files.target()});
        list->setCurrentRow(1);
        user.click("RemoveAFile");
        check({m_files.reference(1), m_files.target()});
        user.click("NByEJ");
        user.panel.noticedNewEdge(8341); // is for these spectra, too
        QCOMPARE(user.panel.graphs().spectra().curves[1].points,
                 spectrumPoints(spectrumOf(m_files.target(), 8341), AMutE::ByEdgeJump));
        for (int i = 0; i < 3; ++i)
            user.click("RemoveAFile");
        user.panel.noticedNewEdge(8345);
        check({});
    }

    void directoryIsShared()
    {
        User user;
        const auto dirs = [&user] {
            QSet<QString> found;
            for (const AFileSelect *const selector : user.panel.findChildren<AFileSelect *>())
                found.insert(selector->dir());
            return found;
        };
        user.load(user.row(8), m_files.map(1));
        QCOMPARE(dirs(), QSet<QString>{m_files.dir()});
        QVERIFY(QDir(m_files.path("")).mkdir("other"));
        QVERIFY(QFile::copy(m_files.target(), m_files.path("other/target.dat")));
        user.choose("DispFSelect", {m_files.path("other/target.dat")});
        QCOMPARE(dirs(), QSet<QString>{m_files.dir() + "/other"});
    }

    /// What stands in a field counts for a key as it would for a click.
    void keys()
    {
        User user;
        user.load(m_files, "1");
        user.panel.show();
        user.panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&user.panel));
        user.field("EdgeE")->setFocus();
        user.field("EdgeE")->selectAll();
        QTest::keyClicks(user.field("EdgeE"), "8341");
        user.takeMessages();
        QTest::keyClick(user.field("EdgeE"), Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(user.failedMapRuns(), 2); // for the edge, too
        QCOMPARE(user.reference(1)->selector()->spectrum().edgeEnergy(), 8341.0);
        QVERIFY(user.field("EdgeE")->hasFocus());
        QTest::keyClick(user.field("EdgeE"), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(user.takeMessages(), QString("Can't open the file []\n"));
        auto *const button = user.find<QPushButton>("DispCondsB");
        button->setFocus();
        QTest::keyClick(button, Qt::Key_Return);
        QVERIFY(button->isChecked());
    }

    void windowsFollowTheirButtons()
    {
        User user;
        user.panel.show();
        auto *const rare = user.find<QWidget>("RecValence");
        for (const bool isShown : {true, false}) {
            QCOMPARE(rare->isVisible(), !isShown);
            user.click("DispCondsB");
            QCOMPARE(rare->isVisible(), isShown);
        }
        Displays *const displays = user.panel.displays();
        for (const auto &[button, title, window] :
             {std::tuple<const char *, QString, QWidget *>("ShowDAB", "Graphs", displays),
              {"ShowDMap", "Data map", user.panel.dataMap()},
              {"ShowM2M3", "M2/M3", displays->display(Displays::M2M3)}}) {
            const auto isShown = [shows = user.find<QAbstractButton>(button), window = window] {
                return shows->isChecked() && window->isVisible() && window->isWindow();
            };
            for (const bool isClosedByItsFrame : {true, false}) {
                QVERIFY(!window->isVisible() && !user.find<QAbstractButton>(button)->isChecked());
                user.click(button);
                QVERIFY(isShown());
                QCOMPARE(window->windowTitle(), title);
                QApplication::setActiveWindow(&user.panel);
                user.click(button);
                QVERIFY(isShown()); // it was open, but behind
                QApplication::setActiveWindow(window);
                isClosedByItsFrame ? void(window->close()) : user.click(button);
            }
            QVERIFY(!window->isVisible() && !user.find<QAbstractButton>(button)->isChecked());
        }
    }

    /// A field that is being edited reports its text when it loses the keyboard, also because its window goes away.
    void destroyedWhileTyping()
    {
        for (const char *const field : {"EdgeE", "Energy2/Energy", "TargetFS/dE", "Ref1File/Valence"}) {
            for (const bool isWindow : {true, false}) {
                QWidget window;
                auto user = std::make_unique<User>();
                user->load(m_files, "1", true);
                if (!isWindow)
                    user->panel.setParent(&window);
                user->panel.window()->show();
                QApplication::setActiveWindow(user->panel.window());
                user->field(field)->setFocus();
                QVERIFY(user->field(field)->hasFocus());
                QTest::keyClicks(user->field(field), "5");
                for (const char *const button : {"ShowDAB", "ShowDMap", "ShowM2M3"})
                    user->click(button);
                user.reset();
                QVERIFY(window.findChildren<QLineEdit *>().isEmpty());
            }
        }
    }
};

QTEST_MAIN(TestPanel)
#include "TestPanel.moc"
