#include "BatchTools.h"
#include "analysis/job/JsonSum.h"
#include "batch/RunRecord.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUrl>

using batchtools::edited;

/// Runs that are known again by their reports: repeated, left out, listed, and put into a crate.
class TestReports : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_sample.makeWithoutPictures()); }

    void again()
    {
        const QString reportFile = m_sample.path("four-points-report.json");
        QCOMPARE(
            m_sample.runJob(edited(m_sample.text("four-points.json"), "'output' => 'findShift': 'apply', 'output'")),
            0);
        const QByteArray report = m_sample.text("four-points-report.json");
        const QMap<QString, QByteArray> before = written();
        const QByteArray target = m_sample.text("target.dat");
        // edit: of the report; the target is another one where a sentence speaks of inputs
        forRows<QString, int, QString, QString>(
            {{"the same", "", 0, "inputs are the same (1", "results are the same (3"},
             {"an input", "", 1, "inputs are not the same", "results are the same (3"},
             {"a number of the report", "'edge': 8345 => 'edge': 8346", 1, "inputs are the same",
              "results are not the same"},
             {"a result", sumOf(report, "four-points.dat") + " => 00", 1, "inputs are the same",
              "results are not the same"},
             {"another version", "flokluk-batch  => flokluk-batch 0.0.", 0, "inputs are", "results are the same"},
             {"no report", "'asRun' => 'x'", 2, "", ""}},
            [&](const QString &edit, int code, const QString &inputs, const QString &results) {
                QVERIFY(tables::writeBytes(reportFile, edit.isEmpty() ? report : edited(report, edit)));
                if (inputs.contains("not"))
                    QVERIFY(tables::writeBytes(m_sample.path("target.dat"), target + "9200 0.5\n"));
                QCOMPARE(m_sample.run({"--again", reportFile}), code);
                QVERIFY2(m_sample.out.contains(inputs) && m_sample.out.contains(results), qPrintable(m_sample.out));
                QCOMPARE(m_sample.err.contains("target.dat is no longer what the run read"), inputs.contains("not"));
                QCOMPARE(m_sample.err.contains("four-points.dat has other contents this time"),
                         edit.endsWith(" => 00"));
                QCOMPARE(m_sample.err.contains("something else this time under edge\n"), edit.contains("edge"));
                if (inputs.contains("not"))
                    restore("target.dat", target, report);
            });
        QVERIFY(tables::writeBytes(reportFile, report));
        QVERIFY(written() == before);
    }

    /// A report moves together with its inputs: those are read, and no other file of their names.
    void againElsewhere()
    {
        batchtools::SampleJobs sample;
        QVERIFY(sample.make());
        const QByteArray job = edited(m_sample.text("four-points.json"), "'four-points- => 'reports/four-points-");
        QVERIFY(!job.isEmpty() && tables::writeBytes(sample.path("job.json"), job));
        QCOMPARE(sample.run({"--hash", sample.path("job.json")}), 0);
        QTemporaryDir other;
        const QString home = other.filePath("home");
        QVERIFY(QDir().rename(sample.dir(), home));
        const QString moved = home + "/reports/four-points-report.json";
        QCOMPARE(sample.run({"--again", moved}), 0);
        QVERIFY2(sample.err.contains("target.dat is gone: ") && sample.err.contains("home/target.dat is taken"),
                 qPrintable(sample.err));
        QVERIFY(tables::writeBytes(home + "/target.dat", tables::bytesOf(home + "/target.dat") + "9200 0.5\n"));
        QCOMPARE(sample.run({"--again", moved}), 1);
        QVERIFY(sample.err.contains("home/target.dat is no longer what the run read"));
    }

    void skipDone()
    {
        const QString job = m_sample.path("four-points.json");
        const QByteArray text = m_sample.text("four-points.json");
        QCOMPARE(m_sample.run({"--hash", job}), 0);
        const auto isSkipped = [&](const QStringList &more = {}) {
            const bool isDone = m_sample.run(QStringList{"--skip-done", job} + more) == 0;
            return isDone && m_sample.out.contains(": done already, skipped\n");
        };
        QVERIFY(isSkipped());
        QVERIFY(!isSkipped({"--lenient"}));
        QCOMPARE(m_sample.run({"--hash", job}), 0);
        forRows<const char *, const char *, bool>(
            {{"the job, written otherwise", "four-points.json", "{ => \n {", true},
             {"another setting", "four-points.json", "'EdgeE': 8345 => 'EdgeE': 8346", false},
             {"an input", "target.dat", "9 => 8", false},
             {"a result", "four-points_HGThick.dat", "0 => 1", false},
             {"a number of the report", "four-points-report.json", "'edge': 8345 => 'edge': 8346", false},
             {"of another version", "four-points-report.json", "'version': ' => 'version': '0", false},
             {"in another language", "four-points-report.json", "'language': 'en' => 'language': 'ja'", false}},
            [&](const char *file, const char *edit, bool wanted) {
                const QByteArray before = m_sample.text(file);
                QByteArray now = edited(before, edit);
                if (QString(edit).contains("'version'") || QString(edit).contains("'language'")) // as if written so
                    now = QJsonDocument(withSum(QJsonDocument::fromJson(now).object())).toJson();
                QVERIFY(tables::writeBytes(m_sample.path(file), now));
                QCOMPARE(isSkipped(), wanted);
                QVERIFY(wanted || isSkipped()); // it has run
                QVERIFY(tables::writeBytes(m_sample.path(file), before));
                QCOMPARE(m_sample.run({"--hash", job}), 0);
            });
        QCOMPARE(m_sample.text("four-points.json"), text);
    }

    void listOutputs()
    {
        QStringList wanted;
        const QByteArray pictures =
            edited(m_sample.text("four-points.json"), "'output': { => 'output': {'pictures': 'pictures', ");
        QVERIFY(!pictures.isEmpty() && tables::writeBytes(m_sample.path("pictures.json"), pictures));
        for (const QString job : {"four-points.json", "pictures.json"}) {
            m_sample.removeResults();
            const QStringList inputs = filesIn(m_sample.dir());
            QCOMPARE(m_sample.run({"--list-outputs", m_sample.path(job)}), 0);
            QStringList listed = m_sample.out.trimmed().split('\n');
            QCOMPARE(filesIn(m_sample.dir()), inputs);
            QCOMPARE(m_sample.run({m_sample.path(job)}), 0);
            QStringList made = filesIn(m_sample.dir());
            for (const QString &file : inputs)
                made.removeAll(file);
            listed.sort();
            QCOMPARE(listed, made);
            QCOMPARE(listed.size() > 10, job == "pictures.json");
        }
        QCOMPARE(m_sample.run({"--list-outputs", m_sample.path("nothing.json")}), 2);
        const QByteArray elsewhere = edited(m_sample.text("four-points.json"), "'four-points.dat => 'new/r.dat");
        QVERIFY(tables::writeBytes(m_sample.path("elsewhere.json"), elsewhere));
        QCOMPARE(m_sample.run({"--list-outputs", m_sample.path("elsewhere.json")}), 0);
        QVERIFY(m_sample.out.contains(m_sample.path("new/r_HGAlpha.dat\n")));
    }

    /// The sentences with MUST in RO-Crate 1.1, "RO-Crate Metadata", "Root Data Entity", "Data Entities".
    void crate()
    {
        const QDir crate(m_sample.path("crate"));
        const QByteArray apart = edited(m_sample.text("non-equivalent.json"),
                                        "'non-equivalent-report => 'apart/reports/b && 'non-equivalent.dat => "
                                        "'apart/results/b.dat");
        QVERIFY(!apart.isEmpty() && tables::writeBytes(m_sample.path("b.json"), apart));
        QCOMPARE(m_sample.run({"--crate", crate.path(), "--hash", "--table", crate.filePath("all.csv"), "--trend",
                               m_sample.path("all.png"), m_sample.path("four-points.json"), m_sample.path("b.json")}),
                 0);
        const QString report = crate.filePath("b/reports/b.json"); // what it names lies in the crate, too
        QVERIFY(QDir(m_sample.path("apart")).removeRecursively());
        QCOMPARE(m_sample.run({"--verify", report}), 0);
        QCOMPARE(m_sample.run({"--again", report}), 0);
        QFile file(crate.filePath("ro-crate-metadata.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
        QCOMPARE(root["@context"].toArray()[0].toString(), QString("https://w3id.org/ro/crate/1.1/context"));
        QMap<QString, QJsonObject> entities;
        for (const QJsonValue &value : root["@graph"].toArray()) {
            const QJsonObject entity = value.toObject();
            const QString id = entity["@id"].toString();
            QVERIFY2(!id.isEmpty() && !entities.contains(id) && entity.contains("@type"), qPrintable(id));
            entities.insert(id, entity);
        }
        QStringList links;
        collectLinks(root["@graph"], &links);
        for (const QString &id : qAsConst(links))
            QVERIFY2(entities.contains(id), qPrintable(id));
        const QJsonObject descriptor = entities["ro-crate-metadata.json"], data = entities["./"];
        QCOMPARE(descriptor["@type"].toString(), QString("CreativeWork"));
        QCOMPARE(descriptor["about"].toObject()["@id"].toString(), QString("./"));
        QCOMPARE(descriptor["conformsTo"].toObject()["@id"].toString(), QString("https://w3id.org/ro/crate/1.1"));
        QCOMPARE(data["@type"].toString(), QString("Dataset"));
        for (const char *const key : {"name", "description", "datePublished", "license"})
            QVERIFY2(data.contains(key), key);
        QVERIFY(QDateTime::fromString(data["datePublished"].toString(), Qt::ISODate).isValid());

        QStringList parts;
        collectLinks(data["hasPart"], &parts);
        int inside = 0;
        for (const QJsonObject &entity : qAsConst(entities)) {
            const QUrl url(entity["@id"].toString());
            if (entity["@type"] != "File")
                continue;
            QVERIFY2(parts.contains(entity["@id"].toString()), qPrintable(url.toString()));
            QVERIFY(url.isRelative() ? !url.path().startsWith('/') && !url.path().contains("..") : url.isLocalFile());
            const QString path = url.isRelative() ? crate.filePath(url.path(QUrl::FullyDecoded)) : url.toLocalFile();
            inside += url.isRelative();
            QVERIFY2(QFileInfo(path).isFile(), qPrintable(path));
            if (entity.contains("contentSize"))
                QCOMPARE(entity["contentSize"].toString(), QString::number(QFileInfo(path).size()));
        }
        QCOMPARE(inside, filesIn(crate.path()).size() - 1); // but for the metadata
        QVERIFY(m_sample.text("crate/four-points/four-points.dat") == m_sample.text("four-points.dat"));
        QVERIFY(entities.contains("all.csv") && entities.contains("series/all.png"));
        QCOMPARE(m_sample.text("crate/b/b.json"), apart);
        QVERIFY(entities["b/b.json"]["description"].toString().contains("--again b/reports/b.json"));
        int actions = 0;
        for (const QJsonObject &action : qAsConst(entities)) {
            if (action["@type"] != "CreateAction")
                continue;
            ++actions;
            QVERIFY(action["startTime"].toString() <= action["endTime"].toString());
            QVERIFY(action["object"].toArray().size() >= 10 && action["result"].toArray().size() >= 4);
            const QString program = action["instrument"].toObject()["@id"].toString();
            QCOMPARE(entities[program]["@type"].toString(), QString("SoftwareApplication"));
        }
        QCOMPARE(actions, 2);
        QCOMPARE(m_sample.run({"--crate", m_sample.dir(), m_sample.path("four-points.json")}), 2);
        QVERIFY(m_sample.err.contains("is neither empty nor an RO-Crate"));
        for (const char *const taken : {"ro-crate-metadata.json", "series/all.png"})
            QCOMPARE(m_sample.run({"--crate", crate.path(), "--table", crate.filePath(taken), m_sample.path("b.json")}),
                     2);
    }

    /// A crate that is made again keeps what is the user's: words about it, results in it, and the crates of others.
    void crateAgain()
    {
        const QString metadata = "again/ro-crate-metadata.json";
        const QStringList arguments = {"--crate", QDir().relativeFilePath(m_sample.path("again")),
                                       m_sample.path("four-points.json"),
                                       m_sample.path("again/four-points_2/inside.json")};
        QVERIFY(QDir(m_sample.dir()).mkpath("again/four-points_2") && QDir(m_sample.dir()).mkpath("again/four-points"));
        const QString result = m_sample.path("again/four-points/four-points.dat"); // where a copy would go
        QVERIFY(tables::writeBytes(m_sample.path(metadata), "{\"@graph\": []}"));
        QCOMPARE(m_sample.run(arguments.mid(0, 3)), 2);
        QCOMPARE(m_sample.text(metadata), QByteArray("{\"@graph\": []}"));
        QVERIFY(tables::writeBytes(m_sample.path(metadata),
                                   "{\"@graph\": [{\"@id\": \"#flokluk-batch\"}, {\"@id\": \"#me\"}, {\"@id\": \"./\", "
                                   "\"name\": \"Mine\", \"license\": {\"@id\": \"https://l\"}}, "
                                   "{\"@id\": \"https://l\", \"copyrightHolder\": [{\"@id\": \"#me\"}]}]}"));
        Job inside = readJob(m_sample.path("non-equivalent.json")).job;
        inside.resultFile = result;
        inside.qualityFile = inside.report = QString();
        QVERIFY(tables::writeBytes(arguments.last(), QJsonDocument(absoluteJob(inside)).toJson()));
        QCOMPARE(m_sample.run(arguments), 0);
        QVERIFY(tables::bytesOf(result) != m_sample.text("four-points.dat"));
        QCOMPARE(m_sample.text("again/four-points_3/four-points.dat"), m_sample.text("four-points.dat"));
        QCOMPARE(m_sample.run(arguments), 0); // over the copies
        QVERIFY(!QFileInfo::exists(m_sample.path("again/four-points_4")));
        const QByteArray rewritten = m_sample.text("four-points.json") + "\n\n"; // which says the same
        QVERIFY(tables::writeBytes(m_sample.path("four-points.json"), rewritten));
        QCOMPARE(m_sample.run(arguments + QStringList("--skip-done")), 0);
        const QByteArray text = m_sample.text(metadata);
        QVERIFY(text.contains("\"contentSize\": \"" + QByteArray::number(rewritten.size()) + '"'));
        for (const char *const kept : {"\"Mine\"", "\"@id\": \"https://l\"", "\"copyrightHolder\"", "\"@id\": \"#me\""})
            QVERIFY2(text.contains(kept), kept);
        QVERIFY(!text.contains("#license"));
    }

private:
    static QStringList filesIn(const QString &folder)
    {
        QStringList files;
        QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext())
            files << entries.next();
        files.sort();
        return files;
    }
    QMap<QString, QByteArray> written() const
    {
        QMap<QString, QByteArray> files;
        for (const QString &file : filesIn(m_sample.dir()))
            files.insert(file, tables::bytesOf(file));
        return files;
    }
    /// The sum that a report has for a file.
    static QString sumOf(const QByteArray &report, const QString &name)
    {
        for (const QJsonValue &file : QJsonDocument::fromJson(report).object()["files"].toArray()) {
            if (file.toObject()["path"].toString() == name)
                return file.toObject()["sha256"].toString();
        }
        return "none";
    }
    /// Contents and the time that the report knows.
    void restore(const QString &name, const QByteArray &bytes, const QByteArray &report)
    {
        QVERIFY(tables::writeBytes(m_sample.path(name), bytes));
        for (const QJsonValue &input : QJsonDocument::fromJson(report).object()["inputs"].toArray()) {
            QFile file(m_sample.path(name));
            if (!input.toObject()["path"].toString().endsWith('/' + name))
                continue;
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::fromString(input.toObject()["time"].toString(), Qt::ISODateWithMs),
                                     QFileDevice::FileModificationTime));
        }
    }
    static void collectLinks(const QJsonValue &value, QStringList *links)
    {
        for (const QJsonValue &entry : value.toArray())
            collectLinks(entry, links);
        const QJsonObject object = value.toObject();
        if (object.size() == 1 && object.contains("@id"))
            *links << object["@id"].toString();
        for (const QJsonValue &member : object)
            collectLinks(member, links);
    }

    batchtools::SampleJobs m_sample;
};

QTEST_MAIN(TestReports)
#include "TestReports.moc"
