#include "batch/Verify.h"

#include "batch/PanelPictures.h"
#include "batch/RunRecord.h"
#include "numeric/FileIdentity.h"
#include "numeric/Sha256.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

namespace
{

/// What is wrong with the files of a report in `folder`.
QStringList problemsOf(const QJsonObject &report, const QDir &folder)
{
    QStringList problems, files, pictureFolders;
    if (!report.value("complete").toBool())
        problems << QStringLiteral("the run has not written all that its job asks for");
    for (const QJsonValue &entry : report.value("files").toArray()) {
        const QString file = folder.filePath(entry.toObject().value("path").toString());
        const QString sum = QString::fromLatin1(numeric::sha256OfFile(file));
        if (sum.isEmpty())
            problems << QStringLiteral("%1 is missing or cannot be read").arg(file);
        else if (sum != entry.toObject().value("sha256").toString())
            problems << QStringLiteral("%1 is not what the run wrote").arg(file);
        files << numeric::fileIdentity(file);
        if (QFileInfo(file).suffix() == QLatin1String("png"))
            pictureFolders << QFileInfo(file).path();
    }
    pictureFolders.removeDuplicates();
    const QString stem = QFileInfo(report.value("job").toString()).completeBaseName();
    for (const QString &pictures : qAsConst(pictureFolders)) {
        for (const QString &picture : pictureFiles(pictures, stem)) {
            if (QFile::exists(picture) && !files.contains(numeric::fileIdentity(picture)))
                problems << QStringLiteral("%1 is of another run").arg(picture);
        }
    }
    return problems;
}

QStringList changedInputs(const QJsonObject &report)
{
    QStringList changed;
    for (const QJsonValue &value : report.value("inputs").toArray()) {
        const QJsonObject input = value.toObject();
        const QFileInfo info(input.value("path").toString());
        const QString sum = input.value("sha256").toString();
        const bool isSame = sum.isEmpty()
                                ? info.exists() && static_cast<double>(info.size()) == input.value("size").toDouble() &&
                                      timeText(info.lastModified()) == input.value("time").toString()
                                : sum == QString::fromLatin1(numeric::sha256OfFile(info.filePath()));
        if (!isSame)
            changed << QStringLiteral("the input %1 is no longer what the run read").arg(info.filePath());
    }
    return changed;
}

} // namespace

Verification verifyReport(const QString &path, QTextStream *out, QTextStream *err)
{
    const auto say = [&path, err](const char *kind, const QStringList &sentences) {
        for (const QString &sentence : sentences)
            *err << "flokluk-batch: " << kind << path << ": " << sentence << '\n';
    };
    QFile file(path);
    const bool isOpen = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
    const QJsonObject report = isOpen ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    const QString id = report.value("run").toString();
    if (id.isEmpty() || !report.value("files").isArray()) {
        say("", {QStringLiteral("this is no report of a run that names its files")});
        return Verification::NoReport;
    }
    const QDir folder(QFileInfo(numeric::realPath(path)).path());
    const QStringList problems = problemsOf(report, folder);
    say("", problems);
    say("warning: ", changedInputs(report));
    if (problems.isEmpty())
        *out << path << ": " << report.value("files").toArray().size() << " files are those of the run " << id << '\n';
    return problems.isEmpty() ? Verification::Good : Verification::NotThatRun;
}
