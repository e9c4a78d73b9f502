#include "batch/MovedInputs.h"

#include "batch/ReportFile.h"
#include "numeric/FileIdentity.h"

#include <QFileInfo>
#include <QJsonArray>

namespace
{

/// Calls `change` with each path of an input in a job's JSON, in the order of inputFiles(), and takes what it gives.
template <class Change>
QJsonObject withInputs(QJsonObject job, Change change)
{
    const auto changed = [&change](QJsonObject entry, const char *key) {
        const QString path = entry.value(QLatin1String(key)).toString();
        if (!path.isEmpty())
            entry.insert(QLatin1String(key), change(path));
        return entry;
    };
    if (job.contains("target"))
        job.insert("target", changed(job.value("target").toObject(), "file"));
    const auto inList = [&job, &changed](const char *list, const char *key) {
        QJsonArray entries;
        for (const QJsonValue &entry : job.value(QLatin1String(list)).toArray())
            entries.append(changed(entry.toObject(), key));
        job.insert(QLatin1String(list), entries);
    };
    inList("references", "file");
    inList("energies", "map");
    return job;
}

} // namespace

QStringList followMovedInputs(ReportFile *report)
{
    QJsonObject &content = report->content;
    const QJsonObject job = content.value("asRun").toObject();
    const QString written = job.value("output").toObject().value("report").toString();
    if (written.isEmpty())
        return QStringList();
    const QDir before = QFileInfo(written).dir();
    QStringList sentences, places;
    const auto follow = [&](const QString &path) {
        const QString now = numeric::realPath(report->folder.filePath(before.relativeFilePath(path)));
        const bool isMoved = !QFileInfo::exists(path) && QFileInfo(now).isFile();
        places << (isMoved ? now : QString());
        if (isMoved)
            sentences << QStringLiteral("the input %1 is gone: %2 is taken in its place").arg(path, now);
        return isMoved ? now : path;
    };
    content.insert("job", follow(content.value("job").toString()));
    content.insert("asRun", withInputs(job, follow));
    QJsonArray inputs = content.value("inputs").toArray();
    for (int i = 0; i < inputs.size() && inputs.size() == places.size(); ++i) {
        QJsonObject input = inputs.at(i).toObject();
        if (!places[i].isEmpty())
            input.insert("path", places[i]);
        inputs.replace(i, input);
    }
    content.insert("inputs", inputs);
    sentences.removeDuplicates();
    return sentences;
}
