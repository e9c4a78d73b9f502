#include "BatchTools.h"
#include "batch/SeriesTrend.h"
#include "series/JobsCommand.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

#include <csignal>

using batchtools::edited;

/// Many jobs: one table and one picture of all, what is said on the way, and jobs for many folders.
class TestSeries : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_sample.makeWithoutPictures()); }

    /// Of several processes, too: no line is broken by another one.
    void progressForPrograms()
    {
        const QStringList jobs = {m_sample.path("four-points.json"), m_sample.path("nothing.json"),
                                  m_sample.path("non-equivalent.json")};
        QProcess process;
        process.start(FLOKLUK_BATCH, QStringList{"--progress", "json", "--jobs", "2"} + jobs);
        QVERIFY(process.waitForFinished(60000));
        QMap<QString, QJsonObject> last;
        QMap<QString, double> done;
        for (const QByteArray &line : process.readAllStandardError().trimmed().split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            const QString job = object["job"].toString();
            QVERIFY2(jobs.contains(job), line.constData());
            QVERIFY(object.contains("error") || object["done"].toDouble() >= done.value(job));
            done[job] = object["done"].toDouble();
            last[job] = object;
        }
        QVERIFY(last[jobs[0]]["stage"] == "done" && done[jobs[0]] == 1.0 && last[jobs[2]]["seconds"].isDouble());
        QVERIFY(last[jobs[1]]["error"].toString().endsWith("no such file"));
    }

    /// Whatever goes wrong, what stands on standard error with --progress json is an object a line.
    void mistakesForPrograms()
    {
        QVERIFY(tables::writeBytes(m_sample.path("old.json"), "{\"run\": \"1\", \"files\": []}"));
        forRows<QString, int>({{"an option that there is not", "--tabel x --progress json a.json", 2},
                               {"a value that is missing", "--progress=json a.json --report", 2},
                               {"no job", "--progress json", 2},
                               {"two forms", "--progress json --progress xml a.json", 2},
                               {"a file to verify that is no report", "--verify target.dat --progress json", 2},
                               {"a report that is wrong", "--verify old.json --progress json", 1},
                               {"a report to repeat", "--again old.json --progress json", 2},
                               {"a table among the inputs", "--table target.dat --progress json four-points.json", 2},
                               {"outputs of no job", "--list-outputs --progress json nothing.json", 2},
                               {"a window for no job", "--show --progress json nothing.json", 2},
                               {"no screen", "--show --progress json -platform none four-points.json", 2},
                               {"no room for the answer", "--progress json --help >/dev/full", 3},
                               {"no room for what is said", "--progress json four-points.json >/dev/full", 3}},
                              [this](const QString &words, int code) {
                                  QProcess shell;
                                  shell.setWorkingDirectory(m_sample.dir());
                                  shell.start("sh", {"-c", "\"$0\" " + words, FLOKLUK_BATCH});
                                  QVERIFY(shell.waitForFinished(60000));
                                  QCOMPARE(shell.exitCode(), code);
                                  int mistakes = 0;
                                  for (const QByteArray &line : shell.readAllStandardError().trimmed().split('\n')) {
                                      const QJsonObject object = QJsonDocument::fromJson(line).object();
                                      QVERIFY2(object.contains("job"), line.constData());
                                      mistakes += object.contains("error");
                                  }
                                  QVERIFY(mistakes > 0);
                              });
    }

    /// The exit codes that shells and batch systems know a signal by; nothing of the run is left.
    void signalsEndARun()
    {
        batchtools::SampleJobs large;
        QVERIFY(large.make(256, 192));
        const QStringList before = QDir(large.dir()).entryList(QDir::Files | QDir::Hidden);
        QVERIFY(QDir(large.dir()).mkdir("temporary"));
        const QString first = large.path("four-points.json"), second = large.path("non-equivalent.json");
        forRows<int, QStringList>(
            {{"terminated", SIGTERM, {first}},
             {"interrupted", SIGINT, {first}},
             {"with a folder of its own", SIGTERM, {"--list-outputs", first}},
             {"of several processes", SIGTERM, {"--jobs", "2", "--table", "all.csv", first, second}}},
            [&](int number, const QStringList &arguments) {
                QProcess shell;
                QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
                environment.insert("TMPDIR", large.path("temporary"));
                shell.setProcessEnvironment(environment);
                shell.setReadChannel(QProcess::StandardError);
                shell.start("sh", QStringList{"-c", "sh -c 'echo $$ >&2; exec \"$0\" \"$@\"' \"$0\" \"$@\"; exit $?",
                                              FLOKLUK_BATCH} +
                                      arguments);
                QByteArray seen;
                while (!seen.contains("saving pictures") && shell.waitForReadyRead(60000))
                    seen += shell.readAll();
                QCOMPARE(::kill(seen.left(seen.indexOf('\n')).toInt(), number), 0);
                QVERIFY(shell.waitForFinished(60000));
                QCOMPARE(shell.exitCode(), 128 + number);
                QTRY_COMPARE(QDir(large.dir()).entryList(QDir::Files | QDir::Hidden),
                             before); // processes of jobs end later
                QCOMPARE(QDir(large.path("temporary")).entryList({"flokluk-*"}), QStringList());
            });
    }

    /// A line a job with the numbers of its report, in the order of the command line.
    void table()
    {
        const QByteArray job = m_sample.text("non-equivalent.json");
        const QString odd = m_sample.path("a, \"b\".json");
        QVERIFY(tables::writeBytes(odd, edited(job, "non-equivalent => odd && 'output' => 'x': 2.5, 'xTitle': 'h', "
                                                    "'regions': [{'name': 'core', 'above': 0.3}], 'output'")));
        const QByteArray refused = edited(m_sample.text("four-points.json"),
                                          "8260.00, => 826.00, && map3_8345.400 => map1_8260.000 && 'four-points.dat', "
                                          "'report': 'four-points-report.json' => 'refused.dat' && 'output' => "
                                          "'regions': [{'name': 'all', 'above': 0}], 'output'");
        QVERIFY(!refused.isEmpty() && tables::writeBytes(m_sample.path("refused.json"), refused));
        const QStringList jobs = {odd, m_sample.path("four-points.json"), m_sample.path("nothing.json"),
                                  m_sample.path("non-equivalent.json"), m_sample.path("refused.json")};
        QCOMPARE(m_sample.run(QStringList{"--table", m_sample.path("all.csv")} + jobs), 2);
        const QByteArray serial = m_sample.text("all.csv");
        QProcess parallel;
        parallel.start(FLOKLUK_BATCH, QStringList{"--jobs", "3", "--table", m_sample.path("all.csv")} + jobs);
        QVERIFY(parallel.waitForFinished(60000));
        QCOMPARE(m_sample.text("all.csv"), serial);

        const QVector<QStringList> lines = cellsOf(serial);
        QCOMPARE(lines.size(), 6);
        const auto cell = [&lines](int line, const QString &column) {
            return lines[line].value(lines[0].indexOf(column), "no such column");
        };
        for (int i = 0; i < jobs.size(); ++i) {
            QCOMPARE(cell(i + 1, "job"), jobs[i]);
            QCOMPARE(lines[i + 1].size(), lines[0].size());
        }
        const QJsonObject report = QJsonDocument::fromJson(m_sample.text("non-equivalent-report.json")).object();
        const QJsonObject target = report["target"].toObject(), result = target["nonEquivalent"].toObject();
        const QJsonObject fit = target["lcf"].toObject(), fitErrors = fit["errors"].toObject();
        const QJsonObject material = report["map"].toObject()["quality"].toObject()["ofMaterial"].toObject();
        forRows<QString, QJsonValue>(
            {{"fraction", "target_fraction2", result["fractions"].toArray()[1]},
             {"its error", "target_fraction2_error", result["errors"].toObject()["fractions"].toArray()[1]},
             {"valence", "target_valence", result["valence"]},
             {"t", "target_t_error", result["errors"].toObject()["t"]},
             {"R", "lcf_R", fit["R"]},
             {"of a fraction, not of its coefficient", "lcf_fraction3_error", fitErrors["fractions"].toArray()[2]},
             {"of the coefficients", "lcf_valence_error", fitErrors["valence"]},
             {"of the fractions", "lcf_mean_valence_error", fitErrors["meanValence"]},
             {"of the map", "map_valence", material["mean"]},
             {"of the map's mean spectrum", "map_fraction3", material["fractions"].toArray()[2]},
             {"misfit", "map_chi2", material["chi2"]}},
            [&cell](const QString &column, const QJsonValue &wanted) {
                QVERIFY(wanted.isDouble());
                QCOMPARE(cell(4, column), QString::number(wanted.toDouble(), 'g', 10));
            });
        // Of a sample that is all material the mean is that of all pixels; see TestBatch for the regions themselves.
        const QJsonObject amount = report["map"].toObject()["quantities"].toObject()["Amount"].toObject();
        QVERIFY(amount["materialMean"].toDouble() > amount["mean"].toDouble());
        QVERIFY(qAbs(cell(4, "map_t").toDouble() - amount["materialMean"].toDouble()) < 1e-9);
        for (const QString of : {"target_", "map_", "core: "}) // t by one method, t/ts by the other
            QVERIFY(!cell(1, of + "t").isEmpty() && cell(1, of + "t_over_ts_error").isEmpty() &&
                    cell(2, of + "t_error").isEmpty() && cell(2, of + "t_over_ts").isEmpty() == (of == "core: "));
        QCOMPARE(cell(2, "target_fraction1").toDouble() + cell(2, "target_fraction2").toDouble(), 1.0);
        QVERIFY(cell(1, "core: valence").toDouble() > 2.0 && cell(2, "core: valence").isEmpty());
        QVERIFY(cell(1, "method_variant") == "linear" && cell(2, "method_variant") == "least squares");
        QVERIFY(cell(3, "outcome") == "2" && cell(3, "errors").contains("no such file"));
        QVERIFY(cell(1, "x") == "2.5" && cell(2, "x").isEmpty() && cell(2, "warnings") == "0");
        QVERIFY(cell(5, "warnings") == "1" &&
                cell(5, "warning_texts").startsWith("Energy 3: the same file as Energy 1"));
        QCOMPARE(m_sample.run({"--table", m_sample.path("target.dat"), jobs[3]}), 2);
        QVERIFY(m_sample.err.contains("target.dat cannot be written: it is an input of"));
        QCOMPARE(m_sample.run({"--trend", m_sample.path("none/all.png"), jobs[3]}), 2);
        QVERIFY(m_sample.err.contains("none/all.png cannot be written: there is no folder") && m_sample.out.isEmpty());
        for (const QString wrong : {"--table= a.json", "--crate= a.json", "--again r --table t", "--again r --verify r",
                                    "--verify r --check", "--again r --crate c", "--again r a.json"})
            QVERIFY2(!parseBatchOptions(QStringList("flokluk-batch") + wrong.split(' ')).error.isEmpty(),
                     qPrintable(wrong));
    }

    void trend()
    {
        const auto row = [](std::optional<double> x, double fraction) {
            SeriesRow made;
            made.job.x = x;
            made.job.xTitle = "t / h";
            const QJsonObject fit{{"fractions", QJsonArray{fraction, 1 - fraction}},
                                  {"errors", QJsonObject{{"fractions", QJsonArray{0.01, QJsonValue()}}}},
                                  {"standardErrors", QJsonArray{0.02, 0.02, 0.5}}};
            made.report = {{"references", QJsonArray{QJsonObject{{"file", "a/FeO.dat"}}, QJsonObject{{"file", "b"}}}},
                           {"target", QJsonObject{{"lcf", fit}}}};
            return made;
        };
        QVERIFY(!parseJob("{\"x\": \"a\"}", "").job.x);
        const Trend byX = trendOf({row(7, 0.25), row({}, 0.5), row(5, qQNaN()), row(3, 0.75), SeriesRow()});
        QVERIFY(byX.xTitle == "t / h" && byX.curves.size() == 2 && byX.curves[0].name == "FeO");
        QCOMPARE(byX.warnings.size(), 3);
        QVERIFY(byX.curves[0].points[0].x == 3 && byX.curves[0].points[0].fraction == 0.75);
        QVERIFY(byX.curves[0].points[1].error == 0.01 && std::isnan(byX.curves[1].points[1].error));
        const Trend byNumber = trendOf({row({}, 0.25), SeriesRow(), row({}, 0.5)});
        QVERIFY(byNumber.curves[1].points[1].x == 3 && byNumber.curves[1].points[1].fraction == 0.5);
        // Per reference place:valence:file; the files of each scan may have their own names, or all the same one.
        forRows<QStringList, QStringList, QStringList>(
            {{"one name twice",
              {"1:2:a/std", "2:3:b/std"},
              {"1:2:a/std", "2:3:b/std"},
              {"reference 1 (valence 2)", "reference 2 (valence 3)"}},
             {"a name per scan", {"1:2:s1_a", "2:3:b"}, {"1:2:s2_a", "2:3:b"}, {"reference 1 (valence 2)", "b"}},
             {"other places", {"1:2:a", "2:3:b"}, {"1:2:a", "3:4:c"}, {"a", "b", "c"}}},
            [&row](const QStringList &first, const QStringList &second, const QStringList &wanted) {
                const auto with = [&row](const QStringList &references) {
                    SeriesRow made = row({}, 0.5);
                    QJsonArray reported;
                    for (const QString &text : references) {
                        const QStringList parts = text.split(':');
                        while (made.job.references.size() < parts[0].toInt())
                            made.job.references.append({"x", made.job.references.size() + 1 == parts[0].toInt(), 0, 0});
                        reported.append(QJsonObject{{"file", parts[2] + ".dat"}, {"valence", parts[1].toDouble()}});
                    }
                    made.report["references"] = reported;
                    return made;
                };
                QStringList names;
                for (const Trend::Curve &curve : trendOf({with(first), with(second)}).curves)
                    names << curve.name;
                QCOMPARE(names, wanted);
            });
        const QImage image = QImage::fromData(trendPicture(byX, "a.png"));
        QVERIFY(image.width() > 1000 && image != QImage::fromData(trendPicture(byNumber, "a.png")));
        QVERIFY(trendPicture(byX, "a.PDF").startsWith("%PDF"));
    }

    void jobsForFolders()
    {
        const QDir home(m_sample.dir());
        for (const char *const folder : {"scan_2", "scan_10.5K", "scan_2_HGThick", "scan_x"}) {
            QVERIFY(home.mkpath(folder));
            for (const QString &map : home.entryList({"map*.txt"}))
                QFile::copy(home.filePath(map), home.filePath(QString(folder) + "/a_" + map));
        }
        QVERIFY(home.mkpath("scan_x/b") && QFile::remove(home.filePath("scan_x/a_map3_8345.400eV.txt")));
        const QString job =
            QString(m_sample.text("four-points.json")).replace(QRegularExpression("map(\\d)_[^\"]*"), "a_map\\1_*");
        QVERIFY(tables::writeBytes(
            m_sample.path("template.json"),
            edited(job.toUtf8(), "'four-points => '{folder} && 'output' => 'x': '{number}', 'output'")));
        QVERIFY(
            tables::writeBytes(m_sample.path("many.json"), edited(m_sample.text("template.json"), "a_map1 => a_map*")));
        QVERIFY(tables::writeBytes(m_sample.path("one.json"), edited(m_sample.text("template.json"), "{folder} => r")));
        QVERIFY(tables::writeBytes(m_sample.path("word.json"),
                                   edited(m_sample.text("template.json"), "{folder} => {fodler}")));
        QString said;
        QTextStream saidStream(&said);
        QFile full("/dev/full");
        QVERIFY(full.open(QIODevice::WriteOnly));
        QTextStream fullStream(&full);
        QCOMPARE(runJobsCommand({"flokluk-jobs", "--out=", "template.json", "scan_2"}, &fullStream, &saidStream), 2);
        QCOMPARE(runJobsCommand({"flokluk-jobs", "--help"}, &fullStream, &saidStream), 3);
        QVERIFY2(said.contains("--out wants") && said.contains("to standard output"), qPrintable(said));
        QVERIFY(tables::writeBytes(m_sample.path("bad.json"), "{\"references\": []}"));
        forRows<QString, QString, int, QString>(
            {{"as many as folders", "template.json", "scan_1*/ scan_2/", 0, "scan_10.5K.json\n"},
             {"missing", "template.json", "scan_*", 1, "scan_x: energies[2].map: no file matches a_map3_*"},
             {"no number", "template.json", "scan_x", 1, "scan_x: the name has no number"},
             {"too many", "many.json", "scan_2", 1, "scan_2: energies[0].map: 8 files match a_map*_*"},
             {"one output", "one.json", "scan_2 scan_10.5K", 1, "would both write "},
             {"a histogram of another", "template.json", "scan_2 scan_2_HGThick", 1, "would both write "},
             {"no such folder", "template.json", "scam_*", 1, "scam_*: no such folder"},
             {"a word", "word.json", "scan_2", 2, "word.json: {fodler} stands for nothing"},
             {"no job", "bad.json", "scan_2", 2, "bad.json: energies is missing"}},
            [this](const QString &file, const QString &folders, int code, const QString &sentence) {
                QStringList arguments = {"flokluk-jobs", "--out", m_sample.path("jobs"), m_sample.path(file)};
                for (const QString &folder : folders.split(' '))
                    arguments << m_sample.path(folder);
                QDir(m_sample.path("jobs")).removeRecursively();
                QString out, err;
                QTextStream outStream(&out), errStream(&err);
                QCOMPARE(runJobsCommand(arguments, &outStream, &errStream), code);
                QVERIFY2((out + err).contains(sentence), qPrintable(out + err));
                QCOMPARE(QDir(m_sample.path("jobs")).entryList(QDir::Files).size(), code == 0 ? 2 : 0);
                if (code != 0)
                    return;
                QVERIFY(!out.contains("scan_2.json\nscan_10.5K")); // as on the command line
                QCOMPARE(m_sample.run({m_sample.path("jobs/scan_10.5K.json")}), 0);
                QVERIFY(QFile::exists(m_sample.path("scan_10.5K.dat")));
                QCOMPARE(readJob(m_sample.path("jobs/scan_10.5K.json")).job.x.value_or(0), 10.5);
                QCOMPARE(runJobsCommand(arguments, &outStream, &errStream), 0); // its own jobs
                const QByteArray own = m_sample.text("jobs/scan_2.json");
                const QByteArray early = QByteArray(own).replace("\"sum\": ", "\"xTitle\": ");
                for (const QByteArray &kept : {QByteArray("{}"), edited(own, "8345 => 8346"), early}) {
                    QVERIFY(tables::writeBytes(m_sample.path("jobs/scan_2.json"), kept));
                    QCOMPARE(runJobsCommand(arguments, &outStream, &errStream), 1);
                    QVERIFY(err.contains(kept == "{}" ? "scan_2.json is there and no job" : "json has been edited"));
                    QCOMPARE(m_sample.text("jobs/scan_2.json"), kept);
                    err.clear();
                }
            });
    }

    /// "with job" in the window: the job gives the same files, and replaces no file but its own.
    void jobOfTheWindow()
    {
        paneltools::Analyst user(m_sample, "TypeFourPs");
        const QString job = m_sample.path("hand.json");
        QCOMPARE(user.writeTo(m_sample.path("hand.dat")), QString());
        QVERIFY(!QFile::exists(job));
        user.click("WriteJob");
        QVERIFY(tables::writeBytes(job, m_sample.text("four-points.json")));
        QVERIFY(user.writeTo(m_sample.path("hand.dat")).contains("hand.json is not written: there is a file"));
        QCOMPARE(m_sample.text("hand.json"), m_sample.text("four-points.json"));
        QVERIFY(QFile::remove(job));
        for (int i = 0; i < 2; ++i)
            QCOMPARE(user.writeTo(m_sample.path("hand.dat")), QString());
        const QByteArray own = m_sample.text("hand.json");
        QVERIFY(tables::writeBytes(job, edited(own, "'dE': 0 => 'dE': 0.5")));
        QVERIFY(user.writeTo(m_sample.path("hand.dat")).contains("hand.json is not written: the job of that name has"));
        QCOMPARE(m_sample.text("hand.json"), edited(own, "'dE': 0 => 'dE': 0.5"));
        QVERIFY(tables::writeBytes(job, own.left(own.indexOf("    \"sum\"")) + own.mid(own.indexOf("    \"target\""))));
        QCOMPARE(user.writeTo(m_sample.path("hand.dat")), QString()); // the very same job, without a sum
        QCOMPARE(m_sample.text("hand.json"), own);
        const QByteArray byHand = m_sample.text("hand.dat");
        QVERIFY(QFile::remove(m_sample.path("hand.dat")));
        QCOMPARE(m_sample.run({job}), 0);
        QCOMPARE(m_sample.text("hand.dat"), byHand);
        user.click("Energy3/VPointCB"); // nothing can be calculated
        QVERIFY(user.writeTo(m_sample.path("hand.dat")).contains("hand.json is not written: it would calculate"));
    }

private:
    /// RFC 4180.
    static QVector<QStringList> cellsOf(const QByteArray &table)
    {
        QVector<QStringList> lines;
        QStringList line;
        QString cell;
        bool isQuoted = false;
        const QString text = QString::fromUtf8(table);
        for (int i = 0; i < text.size(); ++i) {
            const QChar next = text[i];
            if (next == '"' && isQuoted && text.mid(i + 1, 1) == "\"")
                cell += text[++i];
            else if (next == '"')
                isQuoted = !isQuoted;
            else if (isQuoted || (next != ',' && next != '\r' && next != '\n'))
                cell += next;
            else if (next == ',' || next == '\n') {
                line << cell;
                cell.clear();
                if (next == '\n') {
                    lines << line;
                    line.clear();
                }
            }
        }
        return lines;
    }

    batchtools::SampleJobs m_sample;
};

QTEST_MAIN(TestSeries)
#include "TestSeries.moc"
