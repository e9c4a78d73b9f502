#include "batch/Crate.h"

#include "batch/CrateFiles.h"
#include "batch/RunRecord.h"
#include "numeric/FileIdentity.h"
#include "numeric/Sha256.h"
#include "version/Version.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QUrl>
#include <QVector>

#include <algorithm>

namespace
{

const QLatin1String metadataName("ro-crate-metadata.json");
const QLatin1String programId("#flokluk-batch");
const QLatin1String rootId("./");
const QLatin1String noLicenceId("#license");
const QLatin1String crateTerms("https://w3id.org/ro/crate/1.1");
const QLatin1String processTerms("https://w3id.org/ro/wfrun/process/0.5");
const QLatin1String copiedFrom("Copied from ");

QJsonObject link(const QString &id)
{
    return {{"@id", id}};
}

QString formatOf(const QString &name)
{
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix == QLatin1String("json"))
        return QStringLiteral("application/json");
    if (suffix == QLatin1String("pdf"))
        return QStringLiteral("application/pdf");
    if (suffix == QLatin1String("csv"))
        return QStringLiteral("text/csv");
    return suffix == QLatin1String("png") ? QStringLiteral("image/png") : QStringLiteral("text/plain");
}

/// A path within the crate as the reference that RFC 3986 has for it.
QString idOf(const QString &path)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

/// The entities of a crate's metadata by their ids; none where it is not there or no RO-Crate.
QMap<QString, QJsonObject> readEntities(const QString &folder)
{
    QMap<QString, QJsonObject> entities;
    QFile file(QDir(folder).filePath(metadataName));
    if (!file.open(QIODevice::ReadOnly))
        return entities;
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).object().value("@graph").toArray()) {
        const QJsonObject entity = value.toObject();
        entities.insert(entity.value("@id").toString(), entity);
    }
    return entities;
}

/// The paths of the files that a crate has copied from elsewhere.
QSet<QString> copiesIn(const QMap<QString, QJsonObject> &entities)
{
    QSet<QString> paths;
    for (const QJsonObject &entity : entities) {
        if (entity.value("description").toString().startsWith(copiedFrom))
            paths.insert(QUrl::fromPercentEncoding(entity.value("@id").toString().toLatin1()));
    }
    return paths;
}

/// The ids that a value links to, at any depth.
QStringList linksOf(const QJsonValue &value)
{
    QStringList links;
    for (const QJsonValue &entry : value.toArray())
        links += linksOf(entry);
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        links +=
            member.key() == QLatin1String("@id") ? QStringList(member.value().toString()) : linksOf(member.value());
    return links;
}

/// The files of a run, the report last, as the report's paths lead to them.
QStringList resultsIn(const SeriesRow &row)
{
    QStringList files;
    const QString home = numeric::realPath(row.job.report.isEmpty() ? row.job.fileName : row.job.report);
    const QDir folder(QFileInfo(home).path());
    for (const QJsonValue &file : row.report.value("files").toArray())
        files << QDir::cleanPath(folder.filePath(file.toObject().value("path").toString()));
    if (!row.job.report.isEmpty())
        files << home;
    return files;
}

QStringList inputsIn(const SeriesRow &row)
{
    QStringList files;
    for (const QJsonValue &input : row.report.value("inputs").toArray())
        files << input.toObject().value("path").toString();
    return files;
}

class CrateWriter
{
public:
    explicit CrateWriter(const QString &folder)
        : m_folder(folder)
        , m_before(readEntities(folder))
        , m_files(folder, copiesIn(m_before))
    {
    }

    QStringList write(const QVector<SeriesRow> &rows, const QStringList &ofAll);

private:
    void add(const SeriesRow &row);
    void addOfAll(const QStringList &files);
    QString describeRecord(const SeriesRow &row, const CrateFiles::Places &places);
    QString describeResult(const QString &file, const QString &path, const QJsonObject &facts);
    void describe(const QString &id, const QString &name, const QJsonObject &facts, const QString &description);
    QJsonObject rootEntity() const;
    void keepLinked(const QJsonValue &value, QJsonArray *graph) const;
    QByteArray metadata() const;

    QString m_folder;
    const QMap<QString, QJsonObject> m_before; ///< what the crate has said until now
    CrateFiles m_files;
    QSet<QString> m_described;
    QJsonArray m_entities; ///< files and actions
    QJsonArray m_parts, m_actions;
};

/// A data entity, once.
void CrateWriter::describe(const QString &id, const QString &name, const QJsonObject &facts, const QString &description)
{
    if (m_described.contains(id))
        return;
    m_described.insert(id);
    QJsonObject entity{{"@id", id}, {"@type", "File"}, {"name", name}, {"encodingFormat", formatOf(name)}};
    if (!description.isEmpty())
        entity.insert("description", description);
    if (facts.contains("size"))
        entity.insert("contentSize", QString::number(facts.value("size").toDouble(), 'f', 0));
    if (facts.contains("time"))
        entity.insert("dateModified", facts.value("time"));
    if (facts.contains("sha256"))
        entity.insert("sha256", facts.value("sha256"));
    m_entities.append(entity);
    m_parts.append(link(id));
}

/// A file that a run wrote, or that was made of all runs; its id.
QString CrateWriter::describeResult(const QString &file, const QString &path, const QJsonObject &facts)
{
    const QString id = idOf(path);
    describe(id, QFileInfo(file).fileName(),
             facts.isEmpty() ? QJsonObject{{"size", static_cast<double>(QFileInfo(file).size())}} : facts,
             m_files.inside(file) == path ? QString() : copiedFrom + file);
    return id;
}

/// The job, which is small: as it is now, when the run may have been left out since it says the same; its id.
QString CrateWriter::describeRecord(const SeriesRow &row, const CrateFiles::Places &places)
{
    QJsonObject facts = row.report.value("inputs").toArray().at(0).toObject();
    const QString file = facts.value("path").toString();
    facts.insert("size", static_cast<double>(QFileInfo(file).size()));
    facts.insert("time", timeText(QFileInfo(file).lastModified()));
    if (facts.contains("sha256"))
        facts.insert("sha256", QString::fromLatin1(numeric::sha256OfFile(file)));
    QString text = QStringLiteral("%1%2: a record of what was run, with relative paths that start from %3.")
                       .arg(copiedFrom, file, QFileInfo(file).path());
    if (!row.job.report.isEmpty())
        text += " It is run again by: flokluk-batch --again " + places.files.last();
    const QString id = idOf(places.record);
    describe(id, QFileInfo(file).fileName(), facts, m_files.inside(file) == places.record ? QString() : text);
    return id;
}

void CrateWriter::add(const SeriesRow &row)
{
    const QString name = QFileInfo(row.job.fileName).fileName();
    const QStringList results = resultsIn(row), inputs = inputsIn(row);
    const CrateFiles::Places places = m_files.take(results, inputs.value(0), QFileInfo(name).completeBaseName());
    QJsonArray objects, made;
    for (int i = 0; i < inputs.size(); ++i) {
        const QString path = m_files.inside(inputs[i]);
        const QString id = i == 0           ? describeRecord(row, places)
                           : path.isEmpty() ? QUrl::fromLocalFile(inputs[i]).toString(QUrl::FullyEncoded)
                                            : idOf(path);
        describe(id, QFileInfo(inputs[i]).fileName(), row.report.value("inputs").toArray().at(i).toObject(), QString());
        objects.append(link(id));
    }
    for (int i = 0; i < results.size(); ++i) // the report is not among its own files
        made.append(
            link(describeResult(results[i], places.files[i], row.report.value("files").toArray().at(i).toObject())));
    const QString id = QLatin1String("#run-") + row.report.value("run").toString();
    QJsonObject action{{"@id", id},
                       {"@type", "CreateAction"},
                       {"name", QStringLiteral("Analysis %1").arg(name)},
                       {"description", "Run on the host " + row.report.value("host").toString()},
                       {"startTime", row.report.value("started")},
                       {"endTime", row.report.value("ended")},
                       {"instrument", link(programId)},
                       {"object", objects},
                       {"result", made},
                       {"actionStatus", row.code == 0 ? "http://schema.org/CompletedActionStatus"
                                                      : "http://schema.org/FailedActionStatus"}};
    if (!row.errors.isEmpty())
        action.insert("error", row.errors.join(QLatin1String("; ")));
    m_entities.append(action);
    m_actions.append(link(id));
}

/// Table and trend.
void CrateWriter::addOfAll(const QStringList &files)
{
    QStringList outside;
    for (const QString &file : files) {
        if (m_files.inside(file).isEmpty())
            outside << numeric::realPath(file);
        else
            describeResult(file, m_files.inside(file), {});
    }
    const QStringList places = m_files.take(outside, QString(), QStringLiteral("series")).files;
    for (int i = 0; i < outside.size(); ++i)
        describeResult(outside[i], places[i], {});
}

/// The crate itself. What was said of it before stays: name and licence are the user's to state.
QJsonObject CrateWriter::rootEntity() const
{
    QJsonObject root{{"name", "Chemical-state maps from X-ray absorption images"},
                     {"description", "Results of flokluk-batch, with the jobs that they were calculated by; maps and "
                                     "spectra are named by where they were read"},
                     {"license", link(QStringLiteral("#license"))}};
    const QJsonObject before = m_before.value(rootId);
    for (auto member = before.begin(); member != before.end(); ++member)
        root.insert(member.key(), member.value());
    root.insert("@id", rootId);
    root.insert("@type", "Dataset");
    root.insert("datePublished", QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
    root.insert("conformsTo", link(processTerms));
    for (const char *const key : {"hasPart", "mentions"})
        root.remove(QLatin1String(key));
    return root;
}

/// Adds the former entities that a value links to and that the graph does not have, and those that they link to.
void CrateWriter::keepLinked(const QJsonValue &value, QJsonArray *graph) const
{
    for (const QString &id : linksOf(value)) {
        const auto before = m_before.find(id);
        const bool isThere = std::any_of(graph->begin(), graph->end(),
                                         [&id](const QJsonValue &entity) { return entity.toObject()["@id"] == id; });
        if (isThere || before == m_before.end())
            continue;
        graph->append(*before);
        keepLinked(*before, graph);
    }
}

QByteArray CrateWriter::metadata() const
{
    QJsonArray graph;
    graph.append(QJsonObject{
        {"@id", metadataName}, {"@type", "CreativeWork"}, {"about", link(rootId)}, {"conformsTo", link(crateTerms)}});
    const QJsonObject about = rootEntity();
    QJsonObject root = about;
    root.insert("hasPart", m_parts);
    root.insert("mentions", m_actions);
    graph.append(root);
    const auto addWork = [&graph](const QString &id, const char *name, const char *version) {
        graph.append(
            QJsonObject{{"@id", id}, {"@type", "CreativeWork"}, {"name", QLatin1String(name)}, {"version", version}});
    };
    addWork(crateTerms, "RO-Crate", "1.1");
    addWork(processTerms, "Process Run Crate", "0.5");
    if (linksOf(about).contains(noLicenceId) && !m_before.contains(noLicenceId))
        graph.append(QJsonObject{{"@id", noLicenceId},
                                 {"@type", "CreativeWork"},
                                 {"name", "No licence stated"},
                                 {"description", "Whoever owns the data has not said here how they may be used"}});
    const QString commit = floklukCommit();
    graph.append(
        QJsonObject{{"@id", programId},
                    {"@type", "SoftwareApplication"},
                    {"name", "flokluk-batch"},
                    {"version", floklukVersion() + (commit.isEmpty() ? QString() : QLatin1Char('+') + commit)}});
    for (const QJsonValue &entity : m_entities)
        graph.append(entity);
    keepLinked(about, &graph);
    // sha256 is a term of schema.org that the context of RO-Crate 1.1 does not have yet.
    const QJsonArray context = {crateTerms + QLatin1String("/context"),
                                QJsonObject{{"sha256", "https://schema.org/sha256"}}};
    return QJsonDocument(QJsonObject{{"@context", context}, {"@graph", graph}}).toJson();
}

QStringList CrateWriter::write(const QVector<SeriesRow> &rows, const QStringList &ofAll)
{
    if (!QDir().mkpath(m_folder))
        return {QStringLiteral("cannot make the folder %1").arg(m_folder)};
    QStringList kept = ofAll;
    for (const SeriesRow &row : rows)
        kept += inputsIn(row) + resultsIn(row);
    for (const QString &file : qAsConst(kept))
        m_files.keep(file);
    for (const SeriesRow &row : rows) {
        if (!row.report.isEmpty())
            add(row);
    }
    addOfAll(ofAll);
    m_files.publish(metadataName, metadata());
    return m_files.problems();
}

} // namespace

QString crateMetadata(const QString &folder)
{
    return folder.isEmpty() ? QString() : QDir(folder).filePath(metadataName);
}

QString crateMistake(const QString &folder, const QStringList &ofAll)
{
    if (folder.isEmpty() || !QFileInfo::exists(folder) || (QFileInfo(folder).isDir() && QDir(folder).isEmpty()))
        return QString();
    const QMap<QString, QJsonObject> entities = readEntities(folder);
    if (!entities.contains(programId))
        return QStringLiteral("%1 is neither empty nor an RO-Crate of flokluk-batch").arg(folder);
    for (const QString &copy : copiesIn(entities)) {
        for (const QString &file : ofAll) {
            if (numeric::fileIdentity(file) == numeric::fileIdentity(QDir(folder).filePath(copy)))
                return QStringLiteral("%1 cannot be written: it is a copy that belongs to the crate").arg(file);
        }
    }
    return QString();
}

QStringList writeCrate(const QVector<SeriesRow> &rows, const QStringList &ofAll, const QString &folder)
{
    return CrateWriter(folder).write(rows, ofAll);
}
