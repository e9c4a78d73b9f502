#include "batch/ReportFile.h"

#include "analysis/job/Job.h"
#include "analysis/job/JsonSum.h"
#include "batch/PanelPictures.h"
#include "batch/RunRecord.h"
#include "numeric/FileIdentity.h"
#include "numeric/Sha256.h"
#include "version/Version.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{

bool isSameInput(const QJsonObject &input)
{
    const QFileInfo info(input.value("path").toString());
    const QString sum = input.value("sha256").toString();
    if (!sum.isEmpty())
        return sum == QString::fromLatin1(numeric::sha256OfFile(info.filePath()));
    return info.exists() && static_cast<double>(info.size()) == input.value("size").toDouble() &&
           timeText(info.lastModified()) == input.value("time").toString();
}

} // namespace

ReportFile readReport(const QString &path)
{
    ReportFile report{path, {}, QDir(QFileInfo(numeric::realPath(path)).path())};
    QFile file(path);
    const bool isOpen = QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly);
    const QJsonObject content = isOpen ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    if (!content.value("run").toString().isEmpty() && content.value("files").isArray())
        report.content = content;
    return report;
}

QStringList problemsOf(const ReportFile &report)
{
    QStringList problems, files, pictureFolders;
    if (report.content.contains("sum") && report.content.value("sum").toString() != sumOf(report.content))
        problems << QStringLiteral("the report itself is not what the run wrote");
    if (!report.content.value("complete").toBool())
        problems << QStringLiteral("the run has not written all that its job asks for");
    for (const QJsonValue &entry : report.content.value("files").toArray()) {
        const QString file = report.folder.filePath(entry.toObject().value("path").toString());
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
    const QString stem = QFileInfo(report.content.value("job").toString()).completeBaseName();
    for (const QString &pictures : qAsConst(pictureFolders)) {
        for (const QString &picture : pictureFiles(pictures, stem)) {
            if (QFile::exists(picture) && !files.contains(numeric::fileIdentity(picture)))
                problems << QStringLiteral("%1 is of another run").arg(picture);
        }
    }
    return problems;
}

QStringList changedInputs(const ReportFile &report, InputFiles which)
{
    QStringList changed;
    const QJsonArray inputs = report.content.value("inputs").toArray();
    for (int i = which == InputFiles::All ? 0 : 1; i < inputs.size(); ++i) { // the job is the first
        const QJsonObject input = inputs.at(i).toObject();
        if (!isSameInput(input))
            changed
                << QStringLiteral("the input %1 is no longer what the run read").arg(input.value("path").toString());
    }
    return changed;
}

bool isAlreadyDone(const Job &job, bool isJapanese)
{
    const ReportFile report = job.report.isEmpty() ? ReportFile() : readReport(job.report);
    const QJsonObject &content = report.content;
    return report.isReport() && content.contains("sum") && content.value("errors").toArray().isEmpty() &&
           content.value("version").toString() == floklukVersion() &&
           content.value("commit").toString() == floklukCommit() &&
           content.value("language").toString() == QLatin1String(isJapanese ? "ja" : "en") &&
           content.value("job").toString() == numeric::realPath(job.fileName) &&
           content.value("asRun").toObject() == absoluteJob(job) &&
           changedInputs(report, InputFiles::ButTheJob).isEmpty() && problemsOf(report).isEmpty();
}
