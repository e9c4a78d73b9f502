#include "batch/BatchMessages.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

QStringList BatchMessages::about(const QString &report, QStringList sentences)
{
    for (QString &sentence : sentences)
        sentence.prepend(report + QLatin1String(": "));
    return sentences;
}

void BatchMessages::tell(const QString &job, const char *kind, const QStringList &sentences)
{
    const bool isWarning = qstrcmp(kind, "warning") == 0;
    for (const QString &sentence : sentences) {
        if (m_isJson) {
            const QJsonObject line{{"job", job}, {kind, sentence}};
            m_err << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n';
        } else {
            m_err << "flokluk-batch: " << (isWarning ? "warning: " : "") << sentence << '\n';
        }
    }
    m_err.flush();
}
