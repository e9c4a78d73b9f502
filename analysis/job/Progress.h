#pragma once

#include <QString>

class QTextStream;

/// Tells on standard error how far a job is: one line per stage, or on a terminal one line with a bar that is written
/// over again.
class Progress
{
public:
    /// `stages`: how many will be announced; `err` may be null.
    Progress(QTextStream *err, const QString &job, int stages, bool isTerminal);
    ~Progress();

    void stage(const QString &what);
    /// How much of the whole is done, 0 to 1: on a terminal only.
    void reach(double done, const QString &what);
    void finish(bool isDone, double seconds);

private:
    void show(const QString &text);

    QTextStream *m_err;
    QString m_job;
    int m_stages;
    int m_stage = 0;
    bool m_isTerminal;
    bool m_isLineOpen = false;
};
