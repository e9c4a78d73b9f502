#include "BatchTools.h"

#include <QBuffer>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLockFile>
#include <QProcess>

#include <unistd.h>

using batchtools::edited;

/// Jobs run on a small sample without noise: results, files, exit codes, processes.
class TestBatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_sample.make()); }

    /// Against the truth of the sample, and to the last byte what a user at the panel gets.
    void resultFiles()
    {
        forRows<QString, const char *, int, int, double>(
            {{"what the edges' own shapes leave", "four-points", "TypeFourPs", 3, 1, 0.02},
             {"counts are whole", "non-equivalent", "TypeNonEquiv", 13, 3, 0.005}},
            [this](const QString &job, const char *control, int valenceColumn, int fractions, double tolerance) {
                QCOMPARE(m_sample.run({m_sample.path(job + ".json")}), 0);
                QVERIFY(m_sample.out.contains("Result of LCF :: "));
                compareWithTruth(m_sample.text(job + ".dat"), valenceColumn, fractions, tolerance);
                paneltools::SampleFiles files;
                QVERIFY(files.make(16, 12));
                paneltools::Analyst user(files, control);
                QCOMPARE(user.writeTo(files.path("hand.dat")), QString());
                QVERIFY(batchtools::sameResults(m_sample.path(job), files.path("hand")));
            });
    }

    void report()
    {
        m_sample.removeResults();
        QCOMPARE(m_sample.run({m_sample.path("four-points.json"), m_sample.path("non-equivalent.json"), "--report",
                               m_sample.path("all.json")}),
                 0);
        const QJsonObject fourPoints = QJsonDocument::fromJson(m_sample.text("all_four-points.json")).object();
        const QJsonObject nonEquivalent = QJsonDocument::fromJson(m_sample.text("all_non-equivalent.json")).object();
        QVERIFY(!QFile::exists(m_sample.path("four-points-report.json"))); // the command line's name in its place

        paneltools::SampleFiles files;
        QVERIFY(files.make(16, 12));
        paneltools::Analyst user(files);
        const QJsonObject target = nonEquivalent["target"].toObject();
        const QJsonObject result = target["nonEquivalent"].toObject();
        QCOMPARE(paneltools::sixDigits(result["fractions"].toArray()[2].toDouble()), user.ratio(3));
        QCOMPARE(paneltools::sixDigits(result["amounts"].toArray()[0].toDouble()), user.amount(1));
        QCOMPARE(result["fractions"].toArray().size(), 3);
        QVERIFY(qAbs(result["valence"].toDouble() - 2.8) < 0.001);
        QVERIFY(qAbs(target["lcf"].toObject()["valence"].toDouble() - 2.8) < 0.01);
        QVERIFY(!target.contains("fourPoints"));
        QVERIFY(fourPoints["target"].toObject()["fourPoints"].toObject().contains("t/ts"));
        QCOMPARE(nonEquivalent["edge"].toDouble(), 8345.0);
        QCOMPARE(nonEquivalent["references"].toArray()[1].toObject()["edgeJump"].toDouble(), user.jump(2));
        QVERIFY(nonEquivalent["errors"].toArray().isEmpty());

        const QJsonObject map = nonEquivalent["map"].toObject();
        QCOMPARE(map["pixels"].toInt(), 16 * 12);
        const QJsonObject quantities = map["quantities"].toObject();
        const char *const computed = "Amount C1 Ratio 1 Ratio 2 Ratio 3 Valence dMut 1 dMut 2 dMut 3 mut0";
        QCOMPARE(quantities.keys().join(' '), QString(computed)); // three references, linear background
        double sum = 0.0;
        for (std::size_t i = 0; i < user.results().count(); ++i)
            sum += user.results().t()[i];
        QVERIFY(qAbs(quantities["Amount"].toObject()["mean"].toDouble() - sum / (16 * 12)) < 1e-12);
        QCOMPARE(fourPoints["map"].toObject()["quantities"].toObject().keys().join(' '),
                 QString("Amount Ratio 1 Ratio 2 Valence"));
    }

    /// The pixels in the places of the result file with the numbers of the window; regions by what the files say.
    void quality()
    {
        const QString edits = "'result' => 'quality': 'quality.dat', 'qualityFractions': true, 'result' && 'output' => "
                              "'regions': [{'name': 'all', 'rectangle': [15, 0, 0, 90]}, {'name': 'no', 'above': 1e9}]"
                              ", 'output'";
        QCOMPARE(m_sample.runJob(edited(m_sample.text("non-equivalent.json"), edits)), 0);
        paneltools::SampleFiles files;
        QVERIFY(files.make(16, 12));
        paneltools::Analyst user(files);
        const UncertaintyMap *const errors = user.panel.quality().map(user.panel.input(), {0.2, true});
        const QList<QByteArray> lines = m_sample.text("quality.dat").split('\n');
        const QList<QByteArray> results = m_sample.text("non-equivalent.dat").split('\n');
        QCOMPARE(lines.size(), results.size());
        std::size_t pixel = 0;
        for (int i = 0; i < lines.size(); ++i) {
            if (lines[i].isEmpty() || lines[i].startsWith('#')) {
                QCOMPARE(lines[i], results[i]);
                continue;
            }
            QCOMPARE(lines[i].left(22), results[i].left(22));
            QStringList wanted;
            for (const numeric::Plane *plane : {&errors->valence, &errors->amount, &errors->misfit,
                                                &errors->fractions[0], &errors->fractions[1], &errors->fractions[2]})
                wanted << paneltools::sixDigits((*plane)[pixel]);
            QCOMPARE(QString(lines[i].mid(22).simplified()), wanted.join(' '));
            ++pixel;
        }
        QCOMPARE(pixel, user.results().count());

        const QJsonObject report = QJsonDocument::fromJson(m_sample.text("non-equivalent-report.json")).object();
        const QJsonObject noise = report["map"].toObject()["quality"].toObject();
        QCOMPARE(noise["gamma"].toDouble(), errors->noise.scale);
        QCOMPARE(noise["detectionLimits"].toArray().size(), 3);
        const QJsonObject all = report["regions"].toArray()[0].toObject(),
                          no = report["regions"].toArray()[1].toObject();
        const double amount = report["map"].toObject()["quantities"].toObject()["Amount"].toObject()["mean"].toDouble();
        QCOMPARE(all["pixels"].toInt(), 16 * 12);
        QVERIFY(tables::isClose(all["amount"].toDouble(), 16 * 12 * amount, 1e-9));
        QVERIFY(no["pixels"].toInt() == 0 && no["mean"].isNull() && no["above"].toDouble() == 1e9);
        const QJsonObject target = report["target"].toObject()["nonEquivalent"].toObject()["errors"].toObject();
        QCOMPARE(target["degrees"].toInt(), 3);
        QVERIFY(target["studentFactor"].toDouble() > 1.0 && target["valence"].toDouble() > 0.0);
    }

    void pictures()
    {
        QTemporaryDir folder;
        const QDir pictures(folder.filePath("a/b"));
        QCOMPARE(m_sample.run({m_sample.path("four-points.json"), "--pictures", pictures.path()}), 0);
        const QStringList names = pictures.entryList(QDir::Files, QDir::Name);
        QCOMPARE(QString(names.join(' ')).remove("four-points_").remove(".png"),
                 QString("DMutVorA Data_1 Data_2 Data_3 Data_4 Data_5 Data_6 Data_7 Data_8 HistA HistDMut LcfVsMps "
                         "M2M3 Map_Amount Map_Amount_error Map_Misfit Map_Ratio1 Map_Ratio1_error Map_Ratio2 "
                         "Map_Ratio2_error Map_Valence Map_Valence_error Muts Ref1 Ref2 Target"));
        QVector<QByteArray> contents;
        for (const QString &name : names) {
            const QByteArray bytes = tables::bytesOf(pictures.filePath(name));
            const QImage image = QImage::fromData(bytes);
            QVERIFY2(image.width() > 400 && image.height() > 300, qPrintable(name));
            QVERIFY2(!contents.contains(bytes), qPrintable(name)); // each shows something else
            contents << bytes;
        }
    }

    /// Each job is the sample's one but for some edits; the last ones have something in the way of an output, and then
    /// none is written but the report.
    void exitCodes()
    {
        const char *const few = "Number of valied Ref Files is 1, which is less than 2.";
        // mistake: on standard error; null: none. left: what there is afterwards
        forRows<QString, int, const char *, QString>(
            {{"no V point", "'vPoint': true => 'vPoint': false", 1, "V Point is not selected", "report"},
             {"one reference", "'ref2_valence3.dat', 'use': true => 'ref2_valence3.dat', 'use': false", 1, few,
              "report"},
             {"no fit, but a map", "'lcf': true => 'lcf': false", 0, nullptr, "result report"},
             {"no used energy: the fit alone", // the four-points method would refuse the target
              "'use': true, 'vPoint' => 'use': false, 'vPoint' && 'result': 'four-points.dat',  => ", 0, nullptr,
              "report"},
             {"inputs that cannot be right", "8260.00, => 826.00,", 1, "Energy 1: 826 eV is outside of Ref 1", ""},
             {"let through", "8260.00, => 826.00, && 'output' => 'lenient': true, 'output'", 0,
              "warning: ...: Energy 1: 826 eV is outside of Ref 1", "result report"},
             {"new folder", "'four-points.dat' => 'pictures/a/b/r.dat'", 0, nullptr, "report"},
             {"result", "'four-points.dat' => 'truth.txt/r.dat'", 3, "cannot make the folder", ""},
             {"a name too long for a histogram", "'four-points.dat' => '" + QString(240, 'r') + ".dat'", 3,
              "cannot write ", "report"},
             {"pictures", "'pictures': 'pictures' => 'pictures': 'truth.txt/p'", 3, "cannot make the folder", ""}},
            [this](const QString &edits, int code, const char *mistake, const QString &left) {
                m_sample.removeResults();
                QCOMPARE(m_sample.runJob(edited(m_sample.text("four-points.json"), edits)), code);
                QStringList found = m_sample.mistakes();
                for (const QString &part : QString(mistake).split("..."))
                    found = found.filter(part);
                QVERIFY2(mistake ? !found.isEmpty() : found.isEmpty(), qPrintable(m_sample.err));
                QCOMPARE(m_sample.results().contains("four-points.dat"), left.contains("result"));
                QCOMPARE(m_sample.results().contains("four-points-report.json"), left.contains("report"));
                QCOMPARE(QFile::exists(m_sample.path("pictures/a/b/r_HGAlpha.dat")), edits.contains("a/b"));
            });
    }

    void checkWritesNothing()
    {
        m_sample.removeResults();
        QCOMPARE(m_sample.run({"--check", m_sample.path("four-points.json"), m_sample.path("non-equivalent.json")}), 0);
        QCOMPARE(m_sample.out.count(": no mistakes\n"), 2);
        const QByteArray wrong =
            edited(m_sample.text("four-points.json"), "8260.00, => 826.00, && -report.json => -x/y");
        QVERIFY(tables::writeBytes(m_sample.path("wrong.json"), wrong));
        QCOMPARE(m_sample.run({"--check", m_sample.path("wrong.json")}), 1);
        QCOMPARE(m_sample.run({"--check", "--lenient", m_sample.path("wrong.json")}), 0);
        QCOMPARE(m_sample.results(), QStringList());
        QVERIFY(!QFile::exists(m_sample.path("four-points-x")));
    }

    /// The bar's line ends before anything else is printed.
    void progressOnATerminal()
    {
        forRows<QString, QString>(
            {{"done", "four-points.json", "[####################] done in 0."},
             {"failed", "nothing.json", "[....................] failed after 0."}},
            [this](const QString &job, const QString &end) {
                QBuffer terminal;
                QVERIFY(terminal.open(QIODevice::WriteOnly));
                QTextStream out(&terminal), err(&terminal);
                runBatchCommand(parseBatchOptions({"flokluk-batch", "--check", m_sample.path(job)}), &out, &err, true);
                const QList<QByteArray> lines = terminal.data().split('\n');
                QCOMPARE(lines.size(), 3); // the bar, the outcome, nothing
                QVERIFY2(lines[0].split('\r').last().startsWith(("\033[K" + job + ' ' + end).toUtf8()),
                         lines[0].constData());
            });
    }

    /// The other job stands before twin.json, which has the result file of four-points.json.
    void overwritingOutputs()
    {
        QVERIFY(::link(qPrintable(m_sample.path("target.dat")), qPrintable(m_sample.path("hard-link"))) == 0);
        const char *const other = "non-equivalent.json";
        forRows<const char *, const char *, const char *>(
            {{"two jobs, one file", "twin-report.json", "four-points.json",
              "four-points.dat cannot be written: it is an output of .*four-points.json"},
             {"one job, one file", "x/../four-points.dat", other,
              "four-points.dat cannot be written: it is an output of .*twin.json"},
             {"its own spectrum", "target.dat", other, "target.dat cannot be written: it is an input of .*twin.json"},
             {"another job", "non-equivalent.json", other,
              "cannot be written: it is an input of .*non-equivalent.json"},
             {"a histogram", "four-points_HGThick.dat", other, "HGThick.dat cannot be written: it is an output of"},
             {"one in a new folder", "new/q_HGThick.dat && 'four-points.dat' => 'new/q.dat'", other,
              "HGThick.dat cannot be written: it is an output of"},
             {"a picture that there may be", "pictures/twin_Map_C2.png", other, "C2.png cannot be written: it is an"},
             {"an input under another name", "hard-link", other, "hard-link cannot be written: it is an input of"},
             {"a device", "/dev/null", other, "/dev/null cannot be written: it is no plain file"},
             {"a pipe or file of the program", "/dev/stdout", other, "stdout cannot be written: it is no plain file"}},
            [this](const char *report, const char *before, const char *message) {
                const QString edit = QString("four-points-report.json => ") + report;
                QVERIFY(
                    tables::writeBytes(m_sample.path("twin.json"), edited(m_sample.text("four-points.json"), edit)));
                QCOMPARE(m_sample.run({"--check", m_sample.path(before), m_sample.path("twin.json")}), 2);
                const QRegularExpression sentence(QString("twin.json: .*") + message);
                QVERIFY2(m_sample.mistakes().filter(sentence).size() == 1, qPrintable(m_sample.err));
                QCOMPARE(m_sample.mistakes().size(), 1);
            });
    }

    void verify()
    {
        const auto verified = [this] {
            return m_sample.run({"--verify", m_sample.path("four-points-report.json")});
        };
        QCOMPARE(m_sample.run({m_sample.path("four-points.json"), "--hash"}), 0);
        const QJsonArray inputs =
            QJsonDocument::fromJson(m_sample.text("four-points-report.json")).object()["inputs"].toArray();
        QCOMPARE(inputs[1].toObject()["path"].toString(), QFileInfo(m_sample.path("target.dat")).canonicalFilePath());
        QCOMPARE(inputs[1].toObject()["size"].toInt(), m_sample.text("target.dat").size());
        QCOMPARE(verified(), 0);
        QVERIFY(m_sample.out.contains("files are those of the run ") && m_sample.err.isEmpty());

        // changed: what is added to a file, of a report the key that is taken out; null: it is removed
        forRows<const char *, const char *, int, const char *>(
            {{"one byte", "four-points_HGAlpha.dat", "~", 1, "HGAlpha.dat is not what the run wrote"},
             {"no file", "pictures/four-points_M2M3.png", nullptr, 1, "M2M3.png is missing"},
             {"left over", "pictures/four-points_Map_C2.png", "x", 1, "C2.png is of another run"},
             {"a number of the report", "four-points-report.json", "edge", 1, "the report itself is not what the run"},
             {"a report without a sum", "four-points-report.json", "sum", 0, "warning: .* has no sum"},
             {"an input", "target.dat", "\n", 0, "warning: .*target.dat is no longer what the run read"}},
            [&](const char *name, const char *added, int code, const char *sentence) {
                const QString file = m_sample.path(name);
                const bool isThere = QFile::exists(file);
                const QByteArray before = m_sample.text(name);
                QJsonObject report = QJsonDocument::fromJson(before).object();
                report.remove(added);
                QVERIFY(!added             ? QFile::remove(file)
                        : report.isEmpty() ? tables::writeBytes(file, before + added)
                                           : tables::writeBytes(file, QJsonDocument(report).toJson()));
                QCOMPARE(verified(), code);
                QCOMPARE(m_sample.mistakes().size(), 1);
                QVERIFY2(QRegularExpression(sentence).match(m_sample.err).hasMatch(), qPrintable(m_sample.err));
                QVERIFY(isThere ? tables::writeBytes(file, before) : QFile::remove(file));
            });
        const QString noVPoint = "'vPoint': true => 'vPoint': false";
        QCOMPARE(m_sample.runJob(edited(m_sample.text("four-points.json"), noVPoint)), 1);
        QCOMPARE(verified(), 1);
        QVERIFY(m_sample.err.contains("has not written all"));
        QCOMPARE(m_sample.run({"--verify", m_sample.path("four-points.json")}), 2);
    }

    /// While a run writes it keeps others away, but not when it is gone.
    void oneRunAtATime()
    {
        const QString job = m_sample.path("four-points.json"), lockFile = m_sample.path("four-points.dat.lock");
        {
            QLockFile other(lockFile);
            QVERIFY(other.tryLock());
            m_sample.removeResults();
            QCOMPARE(m_sample.run({job}), 3);
            QVERIFY2(m_sample.err.contains("another run writes the same files now"), qPrintable(m_sample.err));
            QCOMPARE(m_sample.results(), QStringList());
        }
        const QByteArray gone = "99999999\nflokluk-batch\n" + QSysInfo::machineHostName().toUtf8() + '\n';
        QVERIFY(tables::writeBytes(lockFile, gone));
        QCOMPARE(m_sample.run({job}), 0);
        QVERIFY(!QFile::exists(lockFile));
    }

    /// A file that may not grow is a result that cannot be written, not the end of the program.
    void limitOfFileSize()
    {
        // Qt leaks what it has begun of a picture that cannot be written.
        const QString command =
            "ulimit -f 4; ASAN_OPTIONS=detect_leaks=0 exec " FLOKLUK_BATCH " " + m_sample.path("four-points.json");
        QCOMPARE(QProcess::execute("sh", {"-c", command}), 3);
    }

    /// The worst outcome counts, and no job stops those after it.
    void parallelJobsAreAsSerialOnes()
    {
        const QString refused = "'vPoint': true => 'vPoint': false && 'four-points => 'refused && "
                                "'pictures': 'pictures',  => ";
        QVERIFY(tables::writeBytes(m_sample.path("refused.json"), edited(m_sample.text("four-points.json"), refused)));
        QStringList jobs;
        for (const char *const name : {"four-points.json", "nothing.json", "refused.json", "non-equivalent.json"})
            jobs << m_sample.path(name);
        m_sample.removeResults();
        QByteArray serialOut, parallelOut;
        QCOMPARE(start(jobs, &serialOut), 2);
        const QMap<QString, QByteArray> serial = written();
        m_sample.removeResults();
        QCOMPARE(start(QStringList{"--jobs", "3"} + jobs, &parallelOut), 2);
        QCOMPARE(parallelOut, serialOut);
        QVERIFY(serialOut.contains("V Point is not selected"));
        QVERIFY(serial.contains("non-equivalent.dat") && serial.contains("pictures/four-points_Muts.png"));
        QCOMPARE(written(), serial);
    }

    /// A run that is killed while it works leaves no half file behind, and running it again gives what it would have
    /// given.
    void interruptedRunIsRepeated()
    {
        batchtools::SampleJobs large;
        QVERIFY(large.make(256, 192));
        const QStringList job = {large.path("non-equivalent.json")};
        QVERIFY(tables::writeBytes(job[0], edited(large.text("non-equivalent.json"), "'pictures': 'pictures',  => ")));
        QCOMPARE(large.run(job), 0);
        const QByteArray whole = large.text("non-equivalent.dat");
        QVERIFY(whole.size() > 1000000);

        for (const char *const moment : {"reading map5", "calculating", "writing non-equivalent.dat"}) {
            large.removeResults();
            QProcess process;
            process.setReadChannel(QProcess::StandardError);
            process.start(QStringLiteral(FLOKLUK_BATCH), job);
            QByteArray seen;
            while (!seen.contains(moment) && process.waitForReadyRead(60000))
                seen += process.readAll();
            QVERIFY2(seen.contains(moment), seen.constData());
            process.kill();
            QVERIFY(process.waitForFinished(60000));
            const bool isThere = QFile::exists(large.path("non-equivalent.dat"));
            QVERIFY2(!isThere || large.text("non-equivalent.dat") == whole, moment);
            QCOMPARE(large.run(job), 0);
            QCOMPARE(large.text("non-equivalent.dat"), whole);
        }
    }

    /// Jobs in processes of their own end with the program, however it ends.
    void killedWithItsJobs()
    {
        batchtools::SampleJobs large;
        QVERIFY(large.make(256, 192));
        QProcess process;
        process.setReadChannel(QProcess::StandardError);
        process.start(QStringLiteral(FLOKLUK_BATCH),
                      {"--jobs", "2", large.path("four-points.json"), large.path("non-equivalent.json")});
        QVERIFY(process.waitForReadyRead(60000));
        const auto locks = [&large] {
            return QDir(large.dir()).entryList({"*.lock"});
        };
        QVERIFY(!locks().isEmpty());
        process.kill();
        QVERIFY(process.waitForFinished(60000));
        QTRY_VERIFY_WITH_TIMEOUT(locks().isEmpty(), 60000);
        QCOMPARE(large.results(), QStringList());
    }

private:
    /// The numbers of the lines that are no comment.
    static QVector<QVector<double>> numbersIn(const QByteArray &text)
    {
        QVector<QVector<double>> rows;
        for (const QByteArray &line : text.split('\n')) {
            QVector<double> row;
            for (const QByteArray &word : line.simplified().split(' '))
                row << word.toDouble();
            if (row.size() >= 5 && !line.startsWith('#'))
                rows << row;
        }
        return rows;
    }

    /// Pixels with little material, or with a component that the method does not know, do not count.
    void compareWithTruth(const QByteArray &text, int valenceColumn, int fractions, double tolerance)
    {
        const QVector<QVector<double>> result = numbersIn(text), truth = numbersIn(m_sample.text("truth.txt"));
        QCOMPARE(result.size(), truth.size());
        int compared = 0;
        for (int i = 0; i < truth.size(); ++i) {
            const QVector<double> &wanted = truth[i]; // x, y, three fractions, thickness, valence
            QCOMPARE(result[i].mid(0, 2), wanted.mid(0, 2));
            if (wanted[5] < 0.2 || (fractions == 1 && wanted[4] > 0))
                continue;
            ++compared;
            QVERIFY(qAbs(result[i][valenceColumn] - wanted[6]) < tolerance);
            for (int column = 2; column < 2 + fractions; ++column)
                QVERIFY(qAbs(result[i][column] - wanted[column]) < tolerance);
        }
        QVERIFY(compared > 50);
    }

    /// Results and pictures.
    QMap<QString, QByteArray> written() const
    {
        QMap<QString, QByteArray> files;
        QStringList names = QDir(m_sample.dir()).entryList({"*.dat"}, QDir::Files);
        for (const QString &name : QDir(m_sample.path("pictures")).entryList({"*.png"}))
            names << "pictures/" + name;
        for (const QString &name : names)
            files.insert(name, m_sample.text(name));
        return files;
    }

    /// Runs the program itself.
    static int start(const QStringList &arguments, QByteArray *out)
    {
        QProcess process;
        process.start(QStringLiteral(FLOKLUK_BATCH), arguments);
        const bool finished = process.waitForFinished(300000) && process.exitStatus() == QProcess::NormalExit;
        *out = process.readAllStandardOutput();
        return finished ? process.exitCode() : -1;
    }

    batchtools::SampleJobs m_sample;
};

QTEST_MAIN(TestBatch)
#include "TestBatch.moc"
