#include "batch/RunRecord.h"

#include "analysis/job/JobPaths.h"
#include "batch/OutputPaths.h"
#include "numeric/FileIdentity.h"
#include "numeric/Sha256.h"
#include "version/Version.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSysInfo>
#include <QUuid>

RunRecord beginRecord(const Job &job, bool isHashed)
{
    RunRecord record;
    record.started = QDateTime::currentDateTimeUtc();
    record.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    for (const QString &file : inputFiles(job)) {
        const QString path = numeric::realPath(file);
        const QFileInfo info(path);
        record.inputs.append(
            {path, info.size(), info.lastModified(), isHashed ? numeric::sha256OfFile(path) : QByteArray()});
    }
    return record;
}

QString timeText(const QDateTime &time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QJsonObject absoluteJob(const Job &job)
{
    return QJsonDocument::fromJson(withAbsolutePaths(job).toJson()).object();
}

void insertRecord(const RunRecord &record, const Job &job, QJsonObject *report)
{
    const QString home = job.report.isEmpty() ? job.fileName : job.report;
    const QDir folder(QFileInfo(numeric::realPath(home)).path());
    report->insert("program", versionLine(QStringLiteral("flokluk-batch")));
    report->insert("version", floklukVersion());
    if (!floklukCommit().isEmpty())
        report->insert("commit", floklukCommit());
    report->insert("host", QSysInfo::machineHostName());
    report->insert("started", timeText(record.started));
    report->insert("ended", timeText(QDateTime::currentDateTimeUtc()));
    report->insert("language", record.isJapanese ? "ja" : "en");
    report->insert("asRun", absoluteJob(job));
    QJsonArray files, inputs;
    for (const numeric::FileSet::Member &file : record.files)
        files.append(QJsonObject{{"path", folder.relativeFilePath(file.place)},
                                 {"size", static_cast<double>(file.size)},
                                 {"sha256", QString::fromLatin1(file.sha256)}});
    for (const RecordedInput &input : record.inputs) {
        QJsonObject entry{
            {"path", input.path}, {"size", static_cast<double>(input.size)}, {"time", timeText(input.time)}};
        if (!input.sha256.isEmpty())
            entry.insert("sha256", QString::fromLatin1(input.sha256));
        inputs.append(entry);
    }
    report->insert("run", record.id);
    report->insert("complete", record.isComplete);
    report->insert("files", files);
    report->insert("inputs", inputs);
}
