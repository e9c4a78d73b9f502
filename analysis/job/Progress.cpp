#include "analysis/job/Progress.h"

#include "numeric/RealToInt.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

Progress::Progress(QTextStream *err, const QString &job, int stages, ProgressForm form)
    : m_err(err)
    , m_job(job)
    , m_stages(stages)
    , m_form(form)
{
}

Progress::~Progress()
{
    if (m_isLineOpen) {
        *m_err << '\n';
        m_err->flush();
    }
}

void Progress::stage(const QString &what)
{
    if (m_form == ProgressForm::Json)
        showJson(what, done()); // of the stages before
    ++m_stage;
    show(what);
}

void Progress::reach(double done, const QString &what)
{
    m_stage = numeric::truncToInt(done * m_stages);
    if (m_form == ProgressForm::Json)
        showJson(what, done);
    else if (m_form == ProgressForm::Bar)
        show(what);
}

void Progress::finish(bool isDone, double seconds)
{
    if (isDone)
        m_stage = m_stages;
    if (m_form == ProgressForm::Json)
        showJson(isDone ? QStringLiteral("done") : QStringLiteral("failed"), isDone ? 1.0 : done(), seconds);
    show(QStringLiteral("%1 %2 s").arg(QLatin1String(isDone ? "done in" : "failed after")).arg(seconds, 0, 'f', 2));
}

void Progress::show(const QString &text)
{
    if (!m_err || m_form == ProgressForm::Json)
        return;
    if (m_form == ProgressForm::Lines) {
        *m_err << m_job << ": " << text << '\n';
        m_err->flush();
        return;
    }
    constexpr int width = 20;
    const int full = m_stages > 0 ? width * qMin(m_stage, m_stages) / m_stages : width;
    const QString bar = QString(full, QLatin1Char('#')) + QString(width - full, QLatin1Char('.'));
    *m_err << "\r\033[K" << m_job << " [" << bar << "] " << text;
    m_err->flush();
    m_isLineOpen = true;
}

void Progress::showJson(const QString &stage, double done, double seconds)
{
    if (!m_err)
        return;
    QJsonObject line{{"job", m_job}, {"stage", stage}, {"done", done}};
    if (seconds >= 0.0)
        line.insert("seconds", seconds);
    *m_err << QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)) << '\n';
    m_err->flush();
}
