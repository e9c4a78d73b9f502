#include "batch/Job.h"

#include "batch/JobReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{

QString inDirectory(const QDir &directory, const QString &path)
{
    return path.isEmpty() ? path : QDir::cleanPath(directory.filePath(path));
}

QString entryName(const char *list, int index)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(list)).arg(index);
}

/// Reads every entry of a list of objects with `readEntry(reader)`.
template <class ReadEntry>
void readList(JobReader *reader, const char *key, int atMost, QString *error, ReadEntry readEntry)
{
    const QJsonArray entries = reader->array(QLatin1String(key), atMost);
    for (int i = 0; i < entries.size() && error->isEmpty(); ++i) {
        if (!entries.at(i).isObject()) {
            *error = entryName(key, i) + QLatin1String(" must be an object { }");
            return;
        }
        JobReader entry(entries.at(i).toObject(), entryName(key, i), error);
        readEntry(&entry);
    }
}

Job readContents(const QJsonObject &root, const QDir &directory, QString *error)
{
    Job job;
    JobReader reader(root, QString(), error);
    reader.allowOnly({"references", "target", "energies", "settings", "output"});
    reader.require({"references", "energies"});
    readList(&reader, "references", Job::maxReferences, error, [&job, &directory](JobReader *entry) {
        entry->allowOnly({"file", "use", "valence", "dE"});
        entry->require({"file", "valence"});
        job.references.append({inDirectory(directory, entry->text("file")), entry->truth("use", true),
                               entry->number("valence"), entry->number("dE")});
    });
    readList(&reader, "energies", Job::maxEnergies, error, [&job, &directory](JobReader *entry) {
        entry->allowOnly({"energy", "map", "use", "vPoint", "lcf"});
        entry->require({"energy"});
        job.energies.append({entry->number("energy"), inDirectory(directory, entry->text("map")),
                             entry->truth("use", true), entry->truth("vPoint", false), entry->truth("lcf", false)});
    });
    if (reader.has("target")) {
        JobReader target(reader.object("target"), "target", error);
        target.allowOnly({"file", "dE"});
        target.require({"file"});
        job.target = {inDirectory(directory, target.text("file")), target.number("dE")};
    }
    job.settings = reader.object("settings");
    JobReader output(reader.object("output"), "output", error);
    output.allowOnly({"result"});
    job.resultFile = inDirectory(directory, output.text("result"));
    return job;
}

/// "line 3, column 7" of a byte offset.
QString placeOf(const QByteArray &text, int offset)
{
    const QByteArray before = text.left(offset);
    return QStringLiteral("line %1, column %2").arg(before.count('\n') + 1).arg(offset - before.lastIndexOf('\n'));
}

} // namespace

JobOrError readJob(const QString &path)
{
    JobOrError result;
    const auto fail = [&result, &path](const QString &message) {
        result.error = path + QLatin1String(": ") + message;
        return result;
    };
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("the job file cannot be read"));
    const QByteArray text = file.readAll();
    QJsonParseError outcome;
    const QJsonDocument document = QJsonDocument::fromJson(text, &outcome);
    if (outcome.error != QJsonParseError::NoError)
        return fail(QStringLiteral("not JSON: %1 at %2").arg(outcome.errorString(), placeOf(text, outcome.offset)));
    if (!document.isObject())
        return fail(QStringLiteral("the job must be an object { }"));

    QString error;
    result.job = readContents(document.object(), QFileInfo(path).absoluteDir(), &error);
    result.job.fileName = path;
    return error.isEmpty() ? result : fail(error);
}
