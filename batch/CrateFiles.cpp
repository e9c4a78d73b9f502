#include "batch/CrateFiles.h"

#include "numeric/FileIdentity.h"
#include "numeric/OutputFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace
{

/// The paths of files from the deepest folder that holds all of them.
QStringList fromCommonFolder(const QStringList &files)
{
    if (files.isEmpty())
        return QStringList();
    QDir common = QFileInfo(files.first()).dir();
    const auto holds = [&common](const QString &file) {
        return !common.relativeFilePath(file).startsWith(QLatin1String("../"));
    };
    while (!std::all_of(files.begin(), files.end(), holds) && !common.isRoot())
        common.setPath(QFileInfo(common.path()).path());
    QStringList names;
    for (const QString &file : files)
        names << common.relativeFilePath(file);
    return names;
}

} // namespace

CrateFiles::CrateFiles(const QString &folder, const QSet<QString> &copies)
    : m_folder(folder)
    , m_root(numeric::realPath(folder))
    , m_copies(copies)
{
}

QString CrateFiles::inside(const QString &file) const
{
    const QString real = numeric::realPath(file);
    return real.startsWith(m_root + QLatin1Char('/')) ? real.mid(m_root.size() + 1) : QString();
}

void CrateFiles::keep(const QString &file)
{
    m_copies.remove(inside(file));
}

CrateFiles::Places CrateFiles::take(const QStringList &files, const QString &record, const QString &name)
{
    Places places;
    for (const QString &file : files)
        places.files << inside(file);
    const bool areCopied = places.files.contains(QString());
    QStringList sources = areCopied ? files : QStringList();
    QStringList names = fromCommonFolder(sources);
    places.record = record.isEmpty() ? QString() : inside(record);
    const bool isRecordCopied = places.record.isEmpty() && !record.isEmpty();
    if (isRecordCopied) {
        QString own = QFileInfo(record).fileName();
        while (names.contains(own))
            own.prepend(QLatin1String("job/"));
        sources << record;
        names << own;
    }
    if (names.isEmpty())
        return places;
    const QString part = freePart(name, names) + QLatin1Char('/');
    for (int i = 0; i < names.size(); ++i)
        copy(sources[i], part + names[i]);
    if (isRecordCopied)
        places.record = part + names.takeLast();
    if (areCopied)
        places.files = names.replaceInStrings(QRegularExpression(QStringLiteral("^")), part);
    return places;
}

/// Whether a folder holds nothing but copies that would be written again: neither a file of the user's nor one that
/// would look as if it were of this run.
bool CrateFiles::isFree(const QString &part, const QStringList &names) const
{
    const QDir folder(m_root + QLatin1Char('/') + part);
    if (m_parts.contains(part) || (QFileInfo::exists(folder.path()) && !QFileInfo(folder.path()).isDir()))
        return false;
    QDirIterator entries(folder.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString name = folder.relativeFilePath(entries.next());
        if (!names.contains(name) || !m_copies.contains(part + QLatin1Char('/') + name))
            return false;
    }
    return true;
}

QString CrateFiles::freePart(const QString &name, const QStringList &names)
{
    QString part = name;
    for (int i = 2; !isFree(part, names); ++i)
        part = QStringLiteral("%1_%2").arg(name).arg(i);
    m_parts.insert(part);
    return part;
}

void CrateFiles::copy(const QString &from, const QString &to)
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

bool CrateFiles::publish(const QString &name, const QByteArray &contents)
{
    if (!numeric::writeFile(QDir(m_folder).filePath(name), contents, &m_files))
        m_problems << QStringLiteral("cannot write the crate %1").arg(m_folder);
    if (m_problems.isEmpty() && !m_files.publish())
        m_problems << m_files.problem();
    return m_problems.isEmpty();
}
