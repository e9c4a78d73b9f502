#include "analysis/job/Job.h"

#include "analysis/job/JobReader.h"
#include "analysis/job/JsonScan.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{

QString inDirectory(const QDir &directory, const QString &path)
{
    if (directory.path() == QLatin1String("."))
        return path;
    return path.isEmpty() ? path : directory.filePath(path); // as written: ".." may stand behind a link
}

/// Reads every entry of a list of objects with `readEntry(reader)`.
template <class ReadEntry>
void readList(JobReader *reader, const QString &key, int atMost, QStringList *errors, ReadEntry readEntry)
{
    const QJsonArray entries = reader->array(key, atMost);
    for (int i = 0; i < entries.size(); ++i) {
        if (!entries.at(i).isObject()) {
            errors->append(entryOf(key, i) + QLatin1String(" must be an object { }"));
            continue;
        }
        JobReader entry(entries.at(i).toObject(), entryOf(key, i), errors);
        readEntry(&entry);
    }
}

Job::Shift shiftOf(const QJsonValue &value, QStringList *errors)
{
    if (value == QJsonValue("apply"))
        return Job::Shift::Applied;
    if (!value.isUndefined() && !value.isBool())
        errors->append(QStringLiteral("findShift must be true, false or \"apply\""));
    return value.toBool() ? Job::Shift::Reported : Job::Shift::Ignored;
}

Job::Region regionOf(JobReader *entry, QStringList *errors)
{
    entry->allowOnly({"name", "rectangle", "above"});
    entry->require({"name"});
    if (!entry->has("rectangle") && !entry->has("above"))
        errors->append(entry->nameOf("rectangle") +
                       QLatin1String(" is missing, and so is above: one of them is needed"));
    const double above = entry->number("above");
    return {entry->path("name"), entry->rectangle("rectangle"),
            entry->has("above") ? std::optional<double>(above) : std::nullopt};
}

/// Tables know regions by their names.
QStringList regionsOfOneName(const QVector<Job::Region> &regions)
{
    QStringList errors;
    QHash<QString, int> first;
    for (int i = 0; i < regions.size(); ++i) {
        const QString &name = regions[i].name;
        if (first.contains(name) && !name.isEmpty())
            errors
                << QStringLiteral("%1.name: regions[%2] has the same name").arg(entryOf("regions", i)).arg(first[name]);
        else
            first.insert(name, i);
    }
    return errors;
}

QJsonArray toJson(const QVector<Job::Region> &regions)
{
    QJsonArray list;
    for (const Job::Region &region : regions) {
        QJsonObject entry{{"name", region.name}};
        if (region.rectangle)
            entry.insert("rectangle", QJsonArray{(*region.rectangle)[0], (*region.rectangle)[1], (*region.rectangle)[2],
                                                 (*region.rectangle)[3]});
        if (region.above)
            entry.insert("above", *region.above);
        list.append(entry);
    }
    return list;
}

/// "line 3, column 7" of a byte offset.
QString placeOf(const QByteArray &text, int offset)
{
    const QByteArray before = text.left(offset);
    return QStringLiteral("line %1, column %2").arg(before.count('\n') + 1).arg(offset - before.lastIndexOf('\n'));
}

} // namespace

QJsonObject parseJsonObject(const QByteArray &text, const QString &kind, QStringList *errors)
{
    QJsonParseError outcome;
    const QJsonDocument document = QJsonDocument::fromJson(text, &outcome);
    const int before = errors->size();
    if (text.contains('\0'))
        errors->append(QStringLiteral("the %1 must be UTF-8 (this seems to be UTF-16)").arg(kind));
    else if (outcome.error != QJsonParseError::NoError)
        errors->append(QStringLiteral("not JSON: %1 at %2").arg(outcome.errorString(), placeOf(text, outcome.offset)));
    else if (!document.isObject())
        errors->append(QStringLiteral("the %1 must be an object { }").arg(kind));
    if (errors->size() == before)
        errors->append(doubtfulJson(text));
    return document.object();
}

QJsonObject readJsonObject(const QString &path, const QString &kind, QStringList *errors)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.exists())
        errors->append(QStringLiteral("no such file"));
    else if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        errors->append(QStringLiteral("the %1 file cannot be read").arg(kind));
    else
        return parseJsonObject(file.readAll(), kind, errors);
    return QJsonObject();
}

const QStringList &jobKeys()
{
    static const QStringList keys = {"references", "target",    "energies", "settings", "output",  "regions",
                                     "lenient",    "findShift", "x",        "xTitle",   "program", "sum"};
    return keys;
}

Job jobFromJson(const QJsonObject &root, const QDir &directory, QStringList *errors)
{
    Job job;
    JobReader reader(root, QString(), errors);
    reader.allowOnly(jobKeys());
    reader.require({"references", "energies"});
    readList(&reader, "references", Job::maxReferences, errors, [&job, &directory](JobReader *entry) {
        entry->allowOnly({"file", "use", "valence", "dE"});
        entry->require({"valence"});
        job.references.append({inDirectory(directory, entry->path("file")), entry->truth("use", true),
                               entry->number("valence"), entry->number("dE")});
    });
    readList(&reader, "energies", Job::maxEnergies, errors, [&job, &directory](JobReader *entry) {
        entry->allowOnly({"energy", "map", "use", "vPoint", "lcf"});
        entry->require({"energy"});
        job.energies.append({entry->number("energy"), inDirectory(directory, entry->path("map")),
                             entry->truth("use", true), entry->truth("vPoint", false), entry->truth("lcf", false)});
    });
    readList(&reader, "regions", Job::maxRegions, errors,
             [&job, errors](JobReader *entry) { job.regions.append(regionOf(entry, errors)); });
    errors->append(regionsOfOneName(job.regions));
    if (reader.has("target")) {
        JobReader target(reader.object("target"), "target", errors);
        target.allowOnly({"file", "dE"});
        target.require({"file"});
        job.target = {inDirectory(directory, target.path("file")), target.number("dE")};
    }
    job.settings = reader.object("settings");
    job.lenient = reader.truth("lenient", false);
    const double x = reader.number("x");
    if (root.value("x").isDouble())
        job.x = x;
    job.xTitle = reader.path("xTitle");
    job.program = reader.path("program");
    reader.path("sum"); // of what the program wrote; see OwnJob
    job.shift = shiftOf(root.value("findShift"), errors);
    JobReader output(reader.object("output"), "output", errors);
    output.allowOnly({"result", "quality", "qualityFractions", "pictures", "report"});
    job.resultFile = inDirectory(directory, output.path("result"));
    job.qualityFile = inDirectory(directory, output.path("quality"));
    job.hasFractionErrors = output.truth("qualityFractions", false);
    if (job.hasFractionErrors && !output.has("quality"))
        errors->append(QStringLiteral("output.qualityFractions: there is no output.quality that could hold them"));
    job.pictures = inDirectory(directory, output.path("pictures"));
    job.report = inDirectory(directory, output.path("report"));
    return job;
}

JobOrErrors parseJob(const QByteArray &text, const QString &folder)
{
    JobOrErrors result;
    const QJsonObject root = parseJsonObject(text, QStringLiteral("job"), &result.errors);
    if (!root.isEmpty() || result.errors.isEmpty())
        result.job = jobFromJson(root, QDir(folder), &result.errors);
    return result;
}

JobOrErrors readJob(const QString &path)
{
    JobOrErrors result;
    const QJsonObject root = readJsonObject(path, QStringLiteral("job"), &result.errors);
    if (!root.isEmpty() || result.errors.isEmpty())
        result.job = jobFromJson(root, QFileInfo(path).dir(), &result.errors);
    result.job.fileName = path;
    return result;
}

QByteArray Job::toJson() const
{
    QJsonArray referenceList;
    const auto insertPath = [](QJsonObject *object, const char *key, const QString &path) {
        if (!path.isEmpty())
            object->insert(QLatin1String(key), path);
    };
    for (const Reference &reference : references) {
        QJsonObject entry{{"use", reference.use}, {"valence", reference.valence}, {"dE", reference.dE}};
        insertPath(&entry, "file", reference.file);
        referenceList.append(entry);
    }
    QJsonArray energyList;
    for (const Energy &energy : energies) {
        QJsonObject entry{
            {"energy", energy.energy}, {"use", energy.use}, {"vPoint", energy.vPoint}, {"lcf", energy.lcf}};
        insertPath(&entry, "map", energy.map);
        energyList.append(entry);
    }
    QJsonObject output;
    insertPath(&output, "result", resultFile);
    insertPath(&output, "quality", qualityFile);
    if (hasFractionErrors)
        output.insert("qualityFractions", true);
    insertPath(&output, "pictures", pictures);
    insertPath(&output, "report", report);
    QJsonObject root{
        {"references", referenceList}, {"energies", energyList}, {"settings", settings}, {"output", output}};
    if (!target.file.isEmpty())
        root.insert("target", QJsonObject{{"file", target.file}, {"dE", target.dE}});
    if (!regions.isEmpty())
        root.insert("regions", ::toJson(regions));
    if (lenient)
        root.insert("lenient", true);
    if (shift != Shift::Ignored)
        root.insert("findShift", shift == Shift::Applied ? QJsonValue("apply") : QJsonValue(true));
    if (x)
        root.insert("x", *x);
    insertPath(&root, "xTitle", xTitle);
    insertPath(&root, "program", program);
    return QJsonDocument(root).toJson();
}
