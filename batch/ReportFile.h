#pragma once

#include <QDir>
#include <QJsonObject>
#include <QString>
#include <QStringList>

struct Job;

/// A report that a run wrote, and what can be asked about it later.
struct ReportFile {
    QString path;
    QJsonObject content; ///< empty where the file is no report of a run that names its files
    QDir folder;         ///< in which it stands, without links: the paths of its files start there

    bool isReport() const { return !content.isEmpty(); }
    QString id() const { return content.value("run").toString(); }
};

ReportFile readReport(const QString &path);

/// What is wrong with the files of a report, a sentence each: those that are missing or of another run, pictures of
/// another run among them, that the report itself is not as the run wrote it, and that the run has not written all that
/// its job asks for.
QStringList problemsOf(const ReportFile &report);

enum class InputFiles { All, ButTheJob };

/// A sentence for each input that is no longer what the run read: by its sum where the report has one, else by size and
/// time.
QStringList changedInputs(const ReportFile &report, InputFiles which = InputFiles::All);

/// Whether running the job again could only give what is there: its report is one of the same job, of this version of
/// the program and in the same language, the inputs are those that were read and all files are those that were written.
bool isAlreadyDone(const Job &job, bool isJapanese);
