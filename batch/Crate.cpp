#include "batch/Crate.h"

#include "numeric/FileIdentity.h"
#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"
#include "version/Version.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QPair>
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

QJsonObject link(const QString &id)
{
    return {{"@id", id}};
}

QString formatOf(const QString &name)
{
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix == QLatin1String("json"))
        return QStringLiteral("application/json");
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

/// The files of a run's results, with what the report knows of each.
QVector<QPair<QString, QJsonObject>> resultsIn(const SeriesRow &row)
{
    QVector<QPair<QString, QJsonObject>> files;
    const QString home = row.job.report.isEmpty() ? row.job.fileName : row.job.report;
    const QDir folder(QFileInfo(numeric::realPath(home)).path());
    for (const QJsonValue &file : row.report.value("files").toArray())
        files.append({folder.filePath(file.toObject().value("path").toString()), file.toObject()});
    if (!row.job.report.isEmpty())
        files.append({row.job.report, {}});
    return files;
}

class CrateWriter
{
public:
    explicit CrateWriter(const QString &folder)
        : m_folder(folder)
        , m_root(numeric::realPath(folder))
        , m_before(readEntities(folder))
    {
    }

    QStringList write(const QVector<SeriesRow> &rows);

private:
    void takeInside(const QString &file);
    void add(const SeriesRow &row);
    QJsonArray inputsOf(const SeriesRow &row, const QString &part);
    QJsonArray resultsOf(const SeriesRow &row, const QString &part);
    QString place(const QString &file, const QString &part);
    void copy(const QString &from, const QString &to);
    void describe(const QString &id, const QString &name, const QJsonObject &facts);
    QJsonObject rootEntity() const;
    void keepLinked(const QJsonValue &value, QJsonArray *graph) const;
    QByteArray metadata() const;

    QString m_folder;
    QString m_root;                            ///< the same without links
    const QMap<QString, QJsonObject> m_before; ///< what the crate has said until now
    numeric::FileSet m_files;
    QSet<QString> m_taken; ///< paths within the crate, and folders of jobs
    QSet<QString> m_described;
    QJsonArray m_entities; ///< files and actions
    QJsonArray m_parts, m_actions;
    QStringList m_problems;
};

/// A file that is in the crate already keeps its path from copies of others.
void CrateWriter::takeInside(const QString &file)
{
    const QString real = numeric::realPath(file);
    if (real.startsWith(m_root + QLatin1Char('/')))
        m_taken.insert(real.mid(m_root.size() + 1));
}

/// Where a file stands in the crate: where it is when it is in there, else in the folder of its job.
QString CrateWriter::place(const QString &file, const QString &part)
{
    const QString real = numeric::realPath(file);
    if (real.startsWith(m_root + QLatin1Char('/')))
        return real.mid(m_root.size() + 1);
    const QString name = QFileInfo(file).fileName();
    QString path = part + QLatin1Char('/') + name;
    for (int i = 2; m_taken.contains(path); ++i)
        path = QStringLiteral("%1/%2_%3").arg(part, QString::number(i), name);
    m_taken.insert(path);
    copy(real, path);
    return path;
}

void CrateWriter::copy(const QString &from, const QString &to)
{
    constexpr qint64 portion = 1 << 20; // bytes
    const QString target = QDir(m_folder).filePath(to);
    QDir().mkpath(QFileInfo(target).path());
    QFile source(from);
    numeric::OutputFile file(target, &m_files);
    bool isGood = source.open(QIODevice::ReadOnly) && file.open();
    while (isGood && !source.atEnd()) {
        const QByteArray bytes = source.read(portion);
        isGood = !bytes.isEmpty() && file.write(bytes);
    }
    if (!isGood || !file.commit())
        m_problems << QStringLiteral("cannot copy %1 into the crate %2").arg(from, m_folder);
}

/// A data entity, once.
void CrateWriter::describe(const QString &id, const QString &name, const QJsonObject &facts)
{
    if (m_described.contains(id))
        return;
    m_described.insert(id);
    QJsonObject entity{{"@id", id}, {"@type", "File"}, {"name", name}, {"encodingFormat", formatOf(name)}};
    if (facts.contains("size"))
        entity.insert("contentSize", QString::number(facts.value("size").toDouble(), 'f', 0));
    if (facts.contains("time"))
        entity.insert("dateModified", facts.value("time"));
    if (facts.contains("sha256"))
        entity.insert("sha256", facts.value("sha256"));
    m_entities.append(entity);
    m_parts.append(link(id));
}

QJsonArray CrateWriter::inputsOf(const SeriesRow &row, const QString &part)
{
    QJsonArray inputs;
    const QJsonArray read = row.report.value("inputs").toArray();
    for (int i = 0; i < read.size(); ++i) {
        const QJsonObject input = read.at(i).toObject();
        const QString file = input.value("path").toString();
        // The job is small, and the first.
        const QString id = i == 0 ? idOf(place(file, part)) : QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
        describe(id, QFileInfo(file).fileName(), input);
        inputs.append(link(id));
    }
    return inputs;
}

QJsonArray CrateWriter::resultsOf(const SeriesRow &row, const QString &part)
{
    QJsonArray results;
    for (const auto &[file, facts] : resultsIn(row)) {
        const QString id = idOf(place(file, part));
        describe(id, QFileInfo(file).fileName(), facts);
        results.append(link(id));
    }
    return results;
}

void CrateWriter::add(const SeriesRow &row)
{
    const QString name = QFileInfo(row.job.fileName).fileName();
    QString part = QFileInfo(name).completeBaseName();
    for (int i = 2; m_taken.contains(part); ++i)
        part = QFileInfo(name).completeBaseName() + QStringLiteral("_%1").arg(i);
    m_taken.insert(part);
    const QString id = QLatin1String("#run-") + row.report.value("run").toString();
    QJsonObject action{{"@id", id},
                       {"@type", "CreateAction"},
                       {"name", QStringLiteral("Analysis %1").arg(name)},
                       {"description", QStringLiteral("Run on the host %1").arg(row.report.value("host").toString())},
                       {"startTime", row.report.value("started")},
                       {"endTime", row.report.value("ended")},
                       {"instrument", link(programId)},
                       {"object", inputsOf(row, part)},
                       {"result", resultsOf(row, part)},
                       {"actionStatus", row.code == 0 ? "http://schema.org/CompletedActionStatus"
                                                      : "http://schema.org/FailedActionStatus"}};
    if (!row.errors.isEmpty())
        action.insert("error", row.errors.join(QLatin1String("; ")));
    m_entities.append(action);
    m_actions.append(link(id));
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

QStringList CrateWriter::write(const QVector<SeriesRow> &rows)
{
    if (!QDir().mkpath(m_folder))
        return {QStringLiteral("cannot make the folder %1").arg(m_folder)};
    for (const SeriesRow &row : rows) {
        for (const QJsonValue &input : row.report.value("inputs").toArray())
            takeInside(input.toObject().value("path").toString());
        for (const auto &result : resultsIn(row))
            takeInside(result.first);
    }
    for (const SeriesRow &row : rows) {
        if (!row.report.isEmpty())
            add(row);
    }
    numeric::OutputFile file(QDir(m_folder).filePath(metadataName), &m_files);
    if (!file.open() || !file.write(metadata()) || !file.commit())
        m_problems << QStringLiteral("cannot write the crate %1").arg(m_folder);
    if (m_problems.isEmpty() && !m_files.publish())
        m_problems << m_files.problem();
    return m_problems;
}

} // namespace

QString crateMistake(const QString &folder)
{
    if (folder.isEmpty() || !QFileInfo::exists(folder) || (QFileInfo(folder).isDir() && QDir(folder).isEmpty()) ||
        readEntities(folder).contains(programId))
        return QString();
    return QStringLiteral("%1 is neither empty nor an RO-Crate of flokluk-batch").arg(folder);
}

QStringList writeCrate(const QVector<SeriesRow> &rows, const QString &folder)
{
    return CrateWriter(folder).write(rows);
}
