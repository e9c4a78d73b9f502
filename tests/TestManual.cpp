// The pages of the manual: commands are run, and what they print is compared with what the page says.

#include "Tables.h"

#include <QtTest>

namespace
{

struct Block {
    QString kind; ///< sh: commands that are run; text: what those before print; json: a job; bash: not for here
    QStringList lines;
};

QStringList linesOf(const QString &path)
{
    return QString::fromUtf8(tables::bytesOf(path)).split('\n');
}

QStringList pages(const QString &language)
{
    const QDir dir(QStringLiteral(MANUAL "/") + language);
    QStringList found;
    for (const QString &name : dir.entryList({QStringLiteral("?-*.md")}))
        found << dir.filePath(name);
    return found;
}

QVector<Block> blocksOf(const QString &page)
{
    QVector<Block> blocks;
    bool isInside = false;
    for (const QString &line : linesOf(page)) {
        if (line.startsWith("```")) {
            isInside = !isInside;
            if (isInside)
                blocks.append({line.mid(3), {}});
        } else if (isInside) {
            blocks.last().lines << line;
        }
    }
    return blocks;
}

/// All that the commands print, progress on standard error aside.
QStringList outputOf(const QString &directory, const QStringList &commands)
{
    QProcess shell;
    shell.setWorkingDirectory(directory);
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PATH", QStringLiteral(PROGRAMS ":") + environment.value("PATH"));
    shell.setProcessEnvironment(environment);
    shell.start("sh", {"-e", "-c", commands.join('\n')});
    if (!shell.waitForFinished(200000) || shell.exitCode() != 0)
        return {QStringLiteral("the commands failed")};
    return QString::fromUtf8(shell.readAllStandardOutput()).split('\n');
}

/// The same words; "..." at the end stands for anything.
bool isSame(const QString &expected, const QString &found)
{
    const QString wanted = expected.simplified();
    return wanted.endsWith(" ...") ? found.simplified().startsWith(wanted.chopped(3)) : found.simplified() == wanted;
}

/// A source file, its texts in one piece each.
QString sourceOf(const QString &name)
{
    const QString text = QString::fromUtf8(tables::bytesOf(QStringLiteral(SOURCES "/") + name));
    return QString(text).replace(QRegularExpression("\"\\s*\n\\s*\""), QString());
}

/// The texts of messages with "…" in the place of what is put in: those of the catalogue in both languages, and the
/// literals of the batch.
QString messageTexts()
{
    QString texts;
    QXmlStreamReader xml(tables::bytesOf(CATALOGUE));
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && (xml.name() == "source" || xml.name() == "translation"))
            texts += xml.readElementText(QXmlStreamReader::SkipChildElements) + '\n';
    }
    for (const char *const folder : {"batch", "analysis/job", "numeric", "series"}) {
        const QDir dir(QStringLiteral(SOURCES "/") + folder);
        for (const QString &name : dir.entryList({QStringLiteral("*.cpp")}))
            texts += sourceOf(QStringLiteral("%1/%2").arg(folder, name)).replace("\\\"", "\"") + '\n';
    }
    return texts.replace(QRegularExpression(QStringLiteral("%[0-9]")), QStringLiteral("…"));
}

} // namespace

class TestManual : public QObject
{
    Q_OBJECT

private slots:
    /// A number that has changed, a command that no longer works.
    void commandsPrintWhatPagesSay()
    {
        QTemporaryDir dir;
        for (const QString &page : pages("en")) {
            QStringList found;
            for (const Block &block : blocksOf(page)) {
                if (block.kind == "sh")
                    found = outputOf(dir.path(), block.lines);
                for (const QString &line : block.kind == "text" ? block.lines : QStringList()) {
                    if (line == "...")
                        continue;
                    while (!found.isEmpty() && !isSame(line, found.first()))
                        found.removeFirst();
                    QVERIFY2(!found.isEmpty(), qPrintable(page + ": not printed: " + line));
                    found.removeFirst();
                }
            }
        }
    }

    /// Numbers in the text between two backticks are numbers that a block of the page has.
    void numbersInTheText()
    {
        static const QRegularExpression number(QStringLiteral("`([0-9]+[.][0-9]+)`"));
        for (const QString &page : pages("en") + pages("ja")) {
            QString blocks;
            for (const Block &block : blocksOf(page))
                blocks += block.lines.join(' ');
            auto found = number.globalMatch(tables::bytesOf(page));
            while (found.hasNext()) {
                const QString text = found.next().captured(1);
                QVERIFY2(blocks.contains(text), qPrintable(page + ": " + text));
            }
        }
    }

    /// The pages of both languages have the same commands, outputs and jobs, and rows of numbers that were measured
    /// once are those of docs/uncertainty.md.
    void languagesAgree()
    {
        const QStringList english = pages("en");
        const QStringList japanese = pages("ja");
        QCOMPARE(english.size(), 7);
        QCOMPARE(japanese.size(), 7);
        const QString measured = QString::fromUtf8(tables::bytesOf(SOURCES "/docs/uncertainty.md"));
        for (int i = 0; i < english.size(); ++i) {
            QCOMPARE(QFileInfo(japanese[i]).fileName(), QFileInfo(english[i]).fileName());
            const QVector<Block> blocks = blocksOf(english[i]);
            const QVector<Block> others = blocksOf(japanese[i]);
            QCOMPARE(others.size(), blocks.size());
            for (int k = 0; k < blocks.size(); ++k)
                QCOMPARE(others[k].lines, blocks[k].lines);
            for (const QString &line : linesOf(english[i]) + linesOf(japanese[i]))
                QVERIFY2(!line.contains(QRegularExpression("^\\| [0-9][.]")) || measured.contains(line),
                         qPrintable(line));
        }
    }

    /// Jobs for data that the reader has to fetch: right but for the files, which are not there.
    void jobsAreRight()
    {
        QTemporaryDir dir;
        int jobs = 0;
        for (const QString &page : pages("en")) {
            for (const Block &block : blocksOf(page)) {
                if (block.kind != "json")
                    continue;
                ++jobs;
                QVERIFY(tables::writeBytes(dir.filePath("job.json"), block.lines.join('\n').toUtf8()));
                const QStringList found =
                    outputOf(dir.path(), {"flokluk-batch --check job.json 2>&1 || true"}).filter("flokluk-batch:");
                QCOMPARE(found.filter("no such file").size(), found.size());
                QVERIFY(found.size() > 2);
            }
        }
        QCOMPARE(jobs, 2);
    }

    /// Messages are quoted as the program says them, and none of the checks and findings lacks its advice.
    void messages()
    {
        const QString texts = messageTexts();
        QString quoted;
        for (const char *const language : {"en", "ja"}) {
            for (const QString &line : linesOf(QStringLiteral(MANUAL "/%1/6-messages.md").arg(language))) {
                const QString cell = line.section('|', 1, 1).trimmed();
                if (line.startsWith('|') && cell.contains(QStringLiteral("…")))
                    for (const QString &message : cell.split("<br>"))
                        QVERIFY2(texts.contains(message), qPrintable(message));
                quoted += cell + '\n';
            }
        }
        // Of a command every text of some words is a message, the same on both pages, but for help, which ends in a
        // point.
        const QString translated = "QT_TRANSLATE_NOOP\\(\"FourPs\",\\s*\"([^\"]{12,})\"\\s*\\)";
        const QString said = "(?:QStringLiteral|QLatin1String)\\(\\s*\"([^\"; ]+ [^\"; ]+ [^\"]+[^\".])\"";
        forRows<const char *, QStringList, QString>(
            {{"checks and findings",
              "analysis/model",
              {"Plans", "Findings", "EnergyFindings", "MapFindings", "MapReadFindings"},
              translated},
             {"flokluk-batch",
              "batch",
              {"BatchCommand", "Verify", "ReportFile", "MovedInputs", "Repeat", "Crate", "CrateFiles"},
              said},
             {"flokluk-jobs", "series", {"JobsCommand", "JobTemplate"}, said},
             {"with job",
              "analysis/panel",
              {"FourPsSlots"},
              "tr\\(\\s*\"([^\"]*(?:is not written:|the job %1)[^\"]*)\""}},
            [&quoted](const char *folder, const QStringList &names, const QString &pattern) {
                int messages = 0;
                for (const QString &name : names) {
                    auto found = QRegularExpression(pattern).globalMatch(
                        sourceOf(QStringLiteral("%1/%2.cpp").arg(folder, name)));
                    for (; found.hasNext(); ++messages) {
                        const QString message = found.next().captured(1).replace(QRegularExpression("%[0-9]"), "…");
                        const int pages = pattern.startsWith("tr") || pattern.startsWith("QT_TR") ? 1 : 2;
                        QVERIFY2(quoted.count(message) >= pages, qPrintable(message));
                    }
                }
                QVERIFY(messages > 4);
            });
    }
};

QTEST_MAIN(TestManual)
#include "TestManual.moc"
