// Files dropped on the panel: folders, several files, jobs.

#include "PanelTools.h"
#include "controls/ManualPage.h"

using namespace paneltools;

class TestPanelFiles : public QObject
{
    Q_OBJECT

    SampleFiles m_files;

private slots:
    void initTestCase() { QVERIFY(m_files.make()); }

    /// The files say what they are; the keyboard goes from valence to valence.
    void droppedFolder()
    {
        User user;
        user.load(user.row(2), m_files.dir()); // on the row: only a selector takes it for a file
        QVERIFY(user.takeMessages().startsWith("Neither spectra nor maps: four-points.json, non-equivalent.json, "));
        for (int row = 1; row <= 8; ++row) {
            QCOMPARE(user.row(row)->fileSelect()->fileText(), m_files.map(row));
            QVERIFY(user.row(row)->isUsed());
            QCOMPARE(user.row(row)->isVPoint(), row == 3);
        }
        QCOMPARE(user.target()->fileText(), m_files.target());
        for (int i = 1; i <= 4; ++i) {
            QCOMPARE(user.reference(i)->selector()->fileText(), i < 4 ? m_files.reference(i) : QString());
            QCOMPARE(user.reference(i)->isUsed(), i < 4);
        }
        for (int i = 1; i <= 3; ++i) {
            QTRY_COMPARE(user.panel.focusWidget(), user.reference(i)->valenceEdit());
            QTest::keyClicks(user.panel.focusWidget(), QString::number(i + 1) + '\r');
        }
        QCOMPARE(user.panel.input().references[2].valence, 4.0);

        user.reference(2)->setUsed(false);
        user.load(user.reference(2), m_files.path("truth.txt")); // no spectrum: is not used
        QVERIFY(!user.reference(2)->isUsed());
        user.takeMessages();
        rowtools::drop(&user.panel, {QUrl::fromLocalFile(m_files.map(7)), QUrl::fromLocalFile(m_files.map(4))});
        QCOMPARE(user.row(1)->fileSelect()->fileText(), m_files.map(4));
        QVERIFY(user.takeMessages().contains("In use with the maps they had before: energies 3, 4, 5, 6, 7, 8.\n"));
        user.load(&user.panel, m_files.path("truth.txt"));
        QCOMPARE(user.takeMessages().section('\n', 0, 0),
                 QString("truth.txt is neither a spectrum nor a map, nor a job that was dropped alone."));
    }

    /// What is wrong with a job is told; one that is no job takes nothing away.
    void droppedJob()
    {
        User user;
        QByteArray job = tables::bytesOf(m_files.path("four-points.json"));
        job.replace("\"target\"",
                    R"("regions": [{"name": "core", "rectangle": [4, 3, 1, 2], "above": 0.5}], "target")");
        QVERIFY(QDir(m_files.path("")).mkpath("jobs"));
        forRows<const char *, QByteArray, const char *, bool>(
            {{"in its folder", "job.json", job, "The conditions of job.json are loaded.\n", true},
             {"misspelt", "job.json", QByteArray(job).replace("\"target\"", "\"goal\""),
              "job.json: goal is no known key", true},
             {"no such setting", "job.json", QByteArray(job).replace("PreE", "x"), "job.json: settings.xEndDE", true},
             {"elsewhere", "jobs/job.json", job, "job.json: energies[7].map: ", false}},
            [&](const char *name, const QByteArray &bytes, const char *message, bool isLoaded) {
                QVERIFY(tables::writeBytes(m_files.path(name), bytes));
                user.load(&user.panel, m_files.path(name));
                const QString messages = user.takeMessages();
                QVERIFY2(messages.contains(message), qPrintable(messages));
                QCOMPARE(user.row(8)->loaded(), isLoaded);
                const QVector<Job::Region> regions = user.panel.job().regions;
                QVERIFY(regions.size() == 1 && regions[0].name == "core" && regions[0].above == 0.5);
                QVERIFY((regions[0].rectangle == std::array<int, 4>{1, 2, 4, 3}));
                QVERIFY(user.row(3)->isVPoint() && !user.row(4)->isUsed());
                QCOMPARE(user.target()->dir(), QFileInfo(QDir(m_files.dir()).filePath(name)).path());
            });
        QVERIFY(QFile::remove(m_files.path("job.json")));
    }

    /// Of all pages that there are, the installed one in the user's language comes first.
    void firstPageOfTheManual()
    {
        QTemporaryDir dir;
        const QDir root(QFileInfo(dir.path()).canonicalFilePath());
        const QString programs = root.filePath("build/debug/bin");
        QVERIFY(root.mkpath("build/debug/bin"));
        QCOMPARE(manual::firstPage(programs, "ja"), QString());
        for (const char *const page :
             {"docs/manual/en/index.md", "docs/manual/ja/index.md", "build/debug/docs/manual/html/en/index.html",
              "build/debug/docs/manual/html/ja/index.html", "build/debug/share/doc/flokluk/html/en/index.html",
              "build/debug/share/doc/flokluk/html/ja/index.html"}) {
            QVERIFY(root.mkpath(QFileInfo(page).path()) && tables::writeBytes(root.filePath(page), "page"));
            QCOMPARE(manual::firstPage(programs, "ja"), root.filePath(page));
        }
        QVERIFY(manual::firstPage(programs, "en").endsWith("share/doc/flokluk/html/en/index.html"));
    }

    /// Button and key open it; that nothing opens it is told.
    void manualIsOpened()
    {
        User user;
        user.panel.show();
        user.panel.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&user.panel));
        QStringList opened;
        user.panel.openPage = [&opened](const QString &page) {
            opened << page;
            return opened.size() == 1;
        };
        const QString page = manual::firstPage(QCoreApplication::applicationDirPath(), "en");
        user.click("ManualB");
        QCOMPARE(user.takeMessages().isEmpty(), !page.isEmpty());
        QTest::keyClick(&user.panel, Qt::Key_F1);
        QCOMPARE(opened, page.isEmpty() ? QStringList() : QStringList({page, page}));
        QVERIFY(user.takeMessages().startsWith(page.isEmpty() ? "The manual" : "There is no program that opens /"));
    }
};

QTEST_MAIN(TestPanelFiles)
#include "TestPanelFiles.moc"
