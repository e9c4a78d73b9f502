// Files dropped on the panel: folders, several files, jobs.

#include "PanelTools.h"

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
        const auto urls = [this](std::initializer_list<QString> paths) {
            QList<QUrl> list;
            for (const QString &path : paths)
                list << QUrl::fromLocalFile(path);
            return list;
        };
        rowtools::drop(&user.panel, urls({m_files.map(7), m_files.map(4)}));
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
        const QByteArray job = tables::bytesOf(m_files.path("four-points.json"));
        QVERIFY(QDir(m_files.path("")).mkpath("jobs"));
        const QString path = m_files.path("jobs/job.json");
        forRows<QByteArray, const char *, const char *, const char *>(
            {{"as it is, in its folder", job, "EdgeE", "8345", "The conditions of job.json are loaded.\n"},
             {"misspelt", QByteArray(job).replace("\"target\"", "\"targte\""), "Energy3/Energy", "8345.4",
              "job.json: targte is no known key"},
             {"no such setting", QByteArray(job).replace("PreEEndDE", "PreEdge"), "PreEEndDE", "-50", "PreEdge"},
             {"elsewhere", job, "Energy3/Energy", "8345.4", "job.json: energies[7].map: "}},
            [&](const QByteArray &bytes, const char *field, const char *text, const char *message) {
                const bool isElsewhere = QString(message).contains("map");
                QVERIFY(tables::writeBytes(isElsewhere ? path : m_files.path("job.json"), bytes));
                user.load(&user.panel, isElsewhere ? path : m_files.path("job.json"));
                const QString messages = user.takeMessages();
                QVERIFY2(messages.contains(message), qPrintable(messages));
                QCOMPARE(user.text(field), QString(text));
                QCOMPARE(user.row(8)->loaded(), !isElsewhere);
                QCOMPARE(user.reference(4)->selector()->dir(), m_files.dir() + (isElsewhere ? "/jobs" : ""));
            });
        QVERIFY(QFile::remove(m_files.path("job.json")));
    }
};

QTEST_MAIN(TestPanelFiles)
#include "TestPanelFiles.moc"
