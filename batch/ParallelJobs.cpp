#include "batch/ParallelJobs.h"

#include "batch/BatchMessages.h"
#include "batch/JobRunner.h"
#include "numeric/TemporaryName.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <memory>
#include <vector>

#ifdef Q_OS_LINUX
#include <csignal>
#include <cstdlib>
#include <sys/prctl.h>
#include <unistd.h>
#endif

namespace
{

/// The command line for one job alone; its outputs have been decided.
QStringList argumentsFor(const Job &job, const BatchOptions &options, const QString &outcomeFile)
{
    QStringList arguments = {options.japanese ? QStringLiteral("-j") : QStringLiteral("-e")};
    if (options.check)
        arguments << QStringLiteral("--check");
    if (job.lenient)
        arguments << QStringLiteral("--lenient");
    if (options.hash)
        arguments << QStringLiteral("--hash");
    if (options.skipDone)
        arguments << QStringLiteral("--skip-done");
    if (options.form == ProgressForm::Json)
        arguments << QStringLiteral("--progress") << QStringLiteral("json");
    if (!outcomeFile.isEmpty())
        arguments << QStringLiteral("--outcome-file") << outcomeFile;
    if (!job.pictures.isEmpty())
        arguments << QStringLiteral("--pictures") << job.pictures;
    if (!job.report.isEmpty())
        arguments << QStringLiteral("--report") << job.report;
    return arguments << QStringLiteral("--") << job.fileName;
}

constexpr int crashed = -1; // in the place of exit codes
constexpr int notStarted = -2;

/// A job in a process of its own, which ends when this program ends, in whatever way.
class JobProcess : public QProcess
{
public:
    /// False when there is no process. QProcess may not know: it then waits for a process -1, and to end that one would
    /// end every process of the user.
    bool hasStarted() const { return state() == NotRunning || processId() > 0; }

protected:
    void setupChildProcess() override
    {
#ifdef Q_OS_LINUX
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != m_parent) // it was too late for that
            _exit(EXIT_FAILURE);
#endif
    }

private:
#ifdef Q_OS_LINUX
    const pid_t m_parent = getpid();
#endif
};

class Pool
{
public:
    Pool(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out, QTextStream *err)
        : m_jobs(jobs)
        , m_options(options)
        , m_out(*out)
        , m_err(*err)
        , m_processes(static_cast<std::size_t>(jobs.size()))
        , m_rows(jobs.size())
        , m_messages(err, options.form == ProgressForm::Json)
        , m_folder(options.isSeries() ? std::make_unique<numeric::TemporaryFolder>() : nullptr)
        , m_isDone(static_cast<std::size_t>(jobs.size()), false)
    {
    }

    QVector<SeriesRow> run()
    {
        startSome(); // here alone: where jobs ended one within the other, many wrong ones would fill the stack
        while (m_printed < m_processes.size()) {
            m_loop.processEvents(QEventLoop::WaitForMoreEvents);
            startSome();
        }
        return m_rows;
    }

private:
    void startSome();
    void start(std::size_t i);
    void abandon(std::size_t i);
    void finish(std::size_t i, int code);
    void print();
    void passOn(QProcess *process, bool isOver);
    /// Of the process of a job, for its outcome; empty where nobody asks for it.
    QString outcomeFile(std::size_t i) const
    {
        return m_folder && m_folder->isValid() ? m_folder->path() + QLatin1Char('/') + QString::number(i) : QString();
    }

    const QVector<JobOrErrors> &m_jobs;
    const BatchOptions &m_options;
    QTextStream &m_out;
    QTextStream &m_err;
    QEventLoop m_loop;
    std::vector<std::unique_ptr<JobProcess>> m_processes;
    QVector<SeriesRow> m_rows;
    BatchMessages m_messages;
    std::unique_ptr<numeric::TemporaryFolder> m_folder; ///< where outcomes are asked for
    std::vector<bool> m_isDone;
    std::size_t m_next = 0;
    std::size_t m_printed = 0;
    int m_running = 0;
};

/// As many as may run at once.
void Pool::startSome()
{
    while (m_running < m_options.processes && m_next < m_processes.size())
        start(m_next++);
}

void Pool::start(std::size_t i)
{
    const JobOrErrors &job = m_jobs.at(static_cast<int>(i));
    m_rows[static_cast<int>(i)].job = job.job;
    ++m_running;
    if (!job.errors.isEmpty()) { // of which some are known here only
        const JobResult result = runJob(job, {});
        m_messages.error(job.job.fileName, result.errors);
        m_rows[static_cast<int>(i)].errors = result.errors;
        finish(i, static_cast<int>(result.outcome));
        return;
    }
    m_processes[i] = std::make_unique<JobProcess>();
    JobProcess *const process = m_processes[i].get();
    // Not handed on as it is: bars of several jobs would run into each other on a terminal. Lines do not.
    QObject::connect(process, &QProcess::readyReadStandardError, process, [this, process] { passOn(process, false); });
    QObject::connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process,
                     [this, i](int code, QProcess::ExitStatus status) {
                         finish(i, status == QProcess::NormalExit ? code : crashed);
                     });
    QObject::connect(process, &QProcess::errorOccurred, process, [this, i](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish(i, notStarted);
    });
    process->start(QCoreApplication::applicationFilePath(), argumentsFor(job.job, m_options, outcomeFile(i)));
    if (!process->hasStarted())
        abandon(i);
}

/// A process that does not exist and cannot be destroyed either.
void Pool::abandon(std::size_t i)
{
    m_processes[i]->disconnect();
    [[maybe_unused]] const QProcess *const forEver = m_processes[i].release();
    finish(i, notStarted);
}

void Pool::finish(std::size_t i, int code)
{
    SeriesRow &row = m_rows[static_cast<int>(i)];
    if (m_processes[i])
        passOn(m_processes[i].get(), true);
    QFile outcome(outcomeFile(i));
    if (!outcome.fileName().isEmpty() && outcome.open(QIODevice::ReadOnly))
        readSeriesRow(outcome.readAll(), &row);
    if (code < 0) {
        row.errors << row.job.fileName + (code == notStarted ? QLatin1String(": no process can be started for it")
                                                             : QLatin1String(": the process ended unexpectedly"));
        m_messages.error(row.job.fileName, {row.errors.last()});
    }
    row.code = code < 0 ? static_cast<int>(JobOutcome::CannotWrite) : code;
    m_isDone[i] = true;
    --m_running;
    print();
}

/// What a process has said, as far as its lines are whole: those of several would run into each other.
void Pool::passOn(QProcess *process, bool isOver)
{
    process->setReadChannel(QProcess::StandardError);
    while (process->canReadLine() || (isOver && process->bytesAvailable() > 0)) {
        const QString line = QString::fromLocal8Bit(process->readLine());
        if (m_options.form == ProgressForm::Json && !line.startsWith(QLatin1Char('{')))
            m_messages.warning(QString(), {line.trimmed()}); // the last words of a process that has run out of memory
        else
            m_err << line;
    }
    m_err.flush();
}

/// In the order of the jobs.
void Pool::print()
{
    for (; m_printed < m_processes.size() && m_isDone[m_printed]; ++m_printed) {
        m_out << "== " << m_jobs.at(static_cast<int>(m_printed)).job.fileName << '\n';
        if (QProcess *const process = m_processes[m_printed].get())
            m_out << QString::fromLocal8Bit(process->readAllStandardOutput());
        m_out.flush();
    }
}

} // namespace

QVector<SeriesRow> runInParallel(const QVector<JobOrErrors> &jobs, const BatchOptions &options, QTextStream *out,
                                 QTextStream *err)
{
    return Pool(jobs, options, out, err).run();
}
