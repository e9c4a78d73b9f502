#include "series/JobTemplate.h"

#include "analysis/job/JobPaths.h"
#include "numeric/FileIdentity.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace
{

bool isPattern(const QString &path)
{
    return path.contains(QLatin1Char('*')) || path.contains(QLatin1Char('?'));
}

/// The entries below `start` (empty: the current folder) whose path matches, * and ? standing for what is no slash.
/// Names that begin with a point are found by patterns that do.
QStringList matches(const QString &start, const QStringList &parts, int part, QDir::Filters last)
{
    if (part == parts.size())
        return {start};
    const auto below = [&start](const QString &name) {
        return start.isEmpty() || start.endsWith(QLatin1Char('/')) ? start + name : start + QLatin1Char('/') + name;
    };
    const bool isLast = part + 1 == parts.size();
    QStringList names;
    if (isPattern(parts[part])) {
        QString text = QRegularExpression::escape(parts[part]);
        text.replace(QLatin1String("\\*"), QLatin1String("[^/]*")).replace(QLatin1String("\\?"), QLatin1String("[^/]"));
        const QRegularExpression wanted(QLatin1Char('^') + text + QLatin1Char('$'));
        const QDir::Filters filters = (isLast ? last : QDir::Dirs) | QDir::NoDotAndDotDot | QDir::Hidden;
        for (const QString &name : QDir(start.isEmpty() ? QStringLiteral(".") : start).entryList(filters)) {
            if (wanted.match(name).hasMatch() && name.startsWith('.') == parts[part].startsWith('.'))
                names << name;
        }
    } else if (!isLast || QFileInfo(below(parts[part])).exists()) {
        names << parts[part];
    }
    QStringList found;
    for (const QString &name : qAsConst(names))
        found += matches(below(name), parts, part + 1, last);
    return found;
}

QStringList matches(const QString &folder, const QString &pattern, QDir::Filters last)
{
    const bool isAbsolute = pattern.startsWith(QLatin1Char('/'));
    QStringList parts = pattern.split(QLatin1Char('/'));
    parts.removeAll(QString());
    return matches(isAbsolute ? QStringLiteral("/") : folder, parts, 0, last);
}

/// What stands for a folder in the texts of the template.
class Placeholders
{
public:
    explicit Placeholders(const QString &folder)
        : m_name(QFileInfo(QDir::current().absoluteFilePath(folder)).fileName())
        , m_path(QDir::current().absoluteFilePath(folder))
    {
        static const QRegularExpression digits(QStringLiteral("(?<![0-9])[0-9]+(\\.[0-9]+)?(?=[^0-9]*$)"));
        m_number = digits.match(m_name).captured();
    }

    const QString &name() const { return m_name; }
    const QString &path() const { return m_path; }

    /// Whether {number} was asked for and the folder's name has none.
    bool lacksNumber() const { return m_lacksNumber; }
    /// A word in braces that stands for nothing; empty: there is none.
    const QString &unknown() const { return m_unknown; }

    QJsonValue filled(const QJsonValue &value, const QString &key = QString())
    {
        if (value.isArray()) {
            QJsonArray list;
            for (const QJsonValue &entry : value.toArray())
                list.append(filled(entry));
            return list;
        }
        if (value.isObject()) {
            QJsonObject object = value.toObject();
            for (const QString &name : object.keys())
                object.insert(name, filled(object.value(name), name));
            return object;
        }
        if (!value.isString())
            return value;
        QString text = value.toString();
        static const QRegularExpression words(QStringLiteral("\\{(?!(folder|path|number)\\})\\w+\\}"));
        if (m_unknown.isEmpty())
            m_unknown = words.match(text).captured();
        m_lacksNumber = m_lacksNumber || (m_number.isEmpty() && text.contains(QLatin1String("{number}")));
        if (key == QLatin1String("x") && text == QLatin1String("{number}"))
            return m_number.toDouble();
        text.replace(QLatin1String("{folder}"), m_name);
        text.replace(QLatin1String("{path}"), m_path);
        return text.replace(QLatin1String("{number}"), m_number);
    }

private:
    QString m_name, m_path, m_number, m_unknown;
    bool m_lacksNumber = false;
};

/// Puts the one file that matches into the place of a pattern.
void findInput(const QString &folder, const QString &key, QString *file, QStringList *problems)
{
    const QString where = isPattern(*file) ? folder + QLatin1String(": ") + key : key;
    if (!isPattern(*file)) {
        if (!file->isEmpty() && !QFileInfo(*file).isFile())
            *problems << QStringLiteral("%1: %2: no such file").arg(where, *file);
        return;
    }
    const QStringList found = matches(folder, *file, QDir::Files);
    if (found.isEmpty())
        *problems << QStringLiteral("%1: no file matches %2").arg(where, *file);
    else if (found.size() > 1)
        *problems << QStringLiteral("%1: %2 files match %3, such as %4 and %5")
                         .arg(where, QString::number(found.size()), *file, QFileInfo(found[0]).fileName(),
                              QFileInfo(found[1]).fileName());
    else
        *file = found.first();
}

/// Patterns are kept from being taken as paths from the template.
QJsonObject withInputs(QJsonObject root, const QDir &templateFolder)
{
    const auto fromTemplate = [&templateFolder](QJsonObject entry, const char *key) {
        const QString path = entry.value(QLatin1String(key)).toString();
        if (!path.isEmpty() && !isPattern(path))
            entry.insert(QLatin1String(key), templateFolder.filePath(path));
        return entry;
    };
    const auto inList = [&](const char *name, const char *key) {
        QJsonArray list = root.value(QLatin1String(name)).toArray();
        for (int i = 0; i < list.size(); ++i) {
            if (list.at(i).isObject())
                list.replace(i, fromTemplate(list.at(i).toObject(), key));
        }
        if (root.value(QLatin1String(name)).isArray())
            root.insert(QLatin1String(name), list);
    };
    inList("references", "file");
    inList("energies", "map");
    if (root.value("target").isObject())
        root.insert("target", fromTemplate(root.value("target").toObject(), "file"));
    if (root.value("output").isObject()) {
        QJsonObject output = root.value("output").toObject();
        for (const char *const key : {"result", "quality", "pictures", "report"})
            output = fromTemplate(output, key);
        root.insert("output", output);
    }
    return root;
}

/// Two jobs that would write the same file, or be the same one.
QStringList sharedOutputs(const QVector<FolderJob> &jobs, const QStringList &folders)
{
    QStringList problems;
    QHash<QString, int> writers;
    for (int i = 0; i < jobs.size(); ++i) {
        const Job &job = jobs[i].job;
        QStringList files = QStringList{jobs[i].file} + resultFiles(job.resultFile);
        files << job.qualityFile << job.report;
        files.removeAll(QString());
        for (const QString &file : qAsConst(files)) {
            const QString place = numeric::realPath(file);
            if (writers.contains(place))
                problems << QStringLiteral("%1 and %2 would both write %3")
                                .arg(folders[writers.value(place)], folders[i], file);
            writers.insert(place, i);
        }
    }
    return problems;
}

} // namespace

QStringList foldersOf(const QStringList &words, QStringList *problems)
{
    QStringList folders;
    QCollator order(QLocale::c());
    order.setNumericMode(true);
    for (QString word : words) {
        while (word.size() > 1 && word.endsWith(QLatin1Char('/')))
            word.chop(1);
        QStringList found = isPattern(word) ? matches(QString(), word, QDir::Dirs) : QStringList(word);
        std::sort(found.begin(), found.end(), order);
        if (found.isEmpty() || !QFileInfo(found.first()).isDir())
            *problems << QStringLiteral("%1: no such folder").arg(word);
        else
            folders += found;
    }
    folders.removeDuplicates();
    return folders;
}

FolderJobs jobsFromTemplate(const QString &templateFile, const QStringList &folders, const QString &out)
{
    FolderJobs result;
    const QJsonObject root = readJsonObject(templateFile, QStringLiteral("template"), &result.problems);
    const QDir home = QFileInfo(QDir::current().absoluteFilePath(templateFile)).dir();
    for (const QString &folder : folders) {
        if (!result.problems.isEmpty() && result.jobs.isEmpty())
            break; // about the template itself
        Placeholders placeholders(folder);
        QStringList mistakes;
        Job job = jobFromJson(withInputs(placeholders.filled(root).toObject(), home), QDir(), &mistakes);
        if (!placeholders.unknown().isEmpty())
            mistakes.prepend(
                QStringLiteral("%1 stands for nothing; {folder}, {path} and {number} do").arg(placeholders.unknown()));
        if (!mistakes.isEmpty()) {
            result.problems = mistakes;
            result.isTemplateBad = true;
            return result;
        }
        if (placeholders.lacksNumber())
            result.problems << QStringLiteral("%1: the name has no number, which {number} stands for").arg(folder);
        for (int i = 0; i < job.references.size(); ++i)
            findInput(folder, QStringLiteral("references[%1].file").arg(i), &job.references[i].file, &result.problems);
        findInput(folder, QStringLiteral("target.file"), &job.target.file, &result.problems);
        for (int i = 0; i < job.energies.size(); ++i)
            findInput(folder, QStringLiteral("energies[%1].map").arg(i), &job.energies[i].map, &result.problems);
        result.jobs.append({QDir(out).filePath(placeholders.name() + QLatin1String(".json")), withAbsolutePaths(job)});
    }
    result.isTemplateBad = result.jobs.isEmpty();
    if (result.problems.isEmpty())
        result.problems = sharedOutputs(result.jobs, folders);
    result.problems.removeDuplicates();
    return result;
}
