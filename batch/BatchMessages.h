#pragma once

#include <QString>
#include <QStringList>

class QTextStream;

/// What flokluk-batch has to say on standard error besides progress: a line each, for people or for programs.
class BatchMessages
{
public:
    /// `isJson`: a JSON object a line, with the keys "job" and "error" or "warning".
    BatchMessages(QTextStream *err, bool isJson)
        : m_err(*err)
        , m_isJson(isJson)
    {
    }

    /// Sentences about a job, which begin with its name.
    void error(const QString &job, const QStringList &sentences) { tell(job, "error", sentences); }
    void warning(const QString &job, const QStringList &sentences) { tell(job, "warning", sentences); }

    /// Sentences about a report, whose name is put before them.
    void errorIn(const QString &report, const QStringList &sentences)
    {
        tell(report, "error", about(report, sentences));
    }
    void warningIn(const QString &report, const QStringList &sentences)
    {
        tell(report, "warning", about(report, sentences));
    }

private:
    static QStringList about(const QString &report, QStringList sentences);
    void tell(const QString &job, const char *kind, const QStringList &sentences);

    QTextStream &m_err;
    bool m_isJson;
};
