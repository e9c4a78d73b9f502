#pragma once

#include <QString>

class QTextStream;

/// How progress is shown.
enum class ProgressForm {
    Lines, ///< one per stage
    Bar,   ///< on a terminal: one line that is written over again
    Json   ///< for programs: an object a line, "job", "stage" and "done" (0 to 1), at the end "seconds" as well
};

/// Tells on standard error how far a job is.
class Progress
{
public:
    /// `stages`: how many will be announced; `err` may be null.
    Progress(QTextStream *err, const QString &job, int stages, ProgressForm form);
    ~Progress();

    void stage(const QString &what);
    /// How much of the whole is done, 0 to 1: with a bar or JSON only.
    void reach(double done, const QString &what);
    void finish(bool isDone, double seconds);

private:
    void show(const QString &text);
    void showJson(const QString &stage, double done, double seconds = -1.0);
    double done() const { return m_stages > 0 ? qMin(1.0, static_cast<double>(m_stage) / m_stages) : 0.0; }

    QTextStream *m_err;
    QString m_job;
    int m_stages;
    int m_stage = 0;
    ProgressForm m_form;
    bool m_isLineOpen = false;
};
