#include "batch/RunRecord.h"

#include "batch/OutputPaths.h"
#include "numeric/FileIdentity.h"
#include "numeric/Sha256.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QUuid>

RunRecord beginRecord(const Job &job, bool isHashed)
{
    RunRecord record;
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

void insertRecord(const RunRecord &record, const QString &reportPath, QJsonObject *report)
{
    const QDir folder(QFileInfo(numeric::realPath(reportPath)).path());
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
