#include "batch/JobRunner.h"

#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelSettings.h"
#include "batch/PanelPictures.h"
#include "batch/Progress.h"
#include "batch/RunReport.h"
#include "numeric/OutputFile.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace
{

template <class Condition>
bool hasEnergy(const Job &job, Condition condition)
{
    return std::any_of(job.energies.begin(), job.energies.end(), condition);
}

bool wantsMap(const Job &job)
{
    return hasEnergy(job, [](const Job::Energy &energy) { return energy.use && !energy.map.isEmpty(); });
}

bool wantsTarget(const Job &job)
{
    return !job.target.file.isEmpty() && hasEnergy(job, [](const Job::Energy &energy) { return energy.use; });
}

bool wantsFit(const Job &job)
{
    return !job.target.file.isEmpty() && hasEnergy(job, [](const Job::Energy &energy) { return energy.lcf; });
}

/// A refusal counts only where the job asks for the step: the panel always tries them all.
bool wants(const Job &job, FourPs::Step step)
{
    switch (step) {
    case FourPs::Step::Map:
        return wantsMap(job);
    case FourPs::Step::Target:
        return wantsTarget(job);
    case FourPs::Step::Fit:
        return wantsFit(job);
    case FourPs::Step::Write:
        break;
    }
    return true;
}

/// What a job that is run must have besides. One that is only shown may be unfinished.
QStringList missingParts(const Job &job)
{
    QStringList errors;
    for (int i = 0; i < job.references.size(); ++i) {
        if (job.references[i].use && job.references[i].file.isEmpty())
            errors << QStringLiteral("references[%1].file is missing").arg(i);
    }
    if (!wantsMap(job) && !wantsTarget(job) && !wantsFit(job))
        errors << QStringLiteral("there is nothing to calculate: neither a used energy with a map, nor a target with "
                                 "a used energy or one with lcf");
    else if (!wantsMap(job) && !job.resultFile.isEmpty())
        errors << QStringLiteral("output.result: there is no map that could be written");
    return errors;
}

int stagesOf(const Job &job)
{
    int stages = 1; // calculating
    for (const Job::Reference &reference : job.references)
        stages += !reference.file.isEmpty();
    for (const Job::Energy &energy : job.energies)
        stages += !energy.map.isEmpty();
    for (const QString &path : {job.target.file, job.resultFile, job.pictures, job.report})
        stages += !path.isEmpty();
    return stages;
}

/// One job on its way through the panel.
class Run
{
public:
    Run(const JobOrErrors &job, const RunOptions &options)
        : m_given(job)
        , m_job(job.job)
        , m_options(options)
        , m_progress(options.progress, QFileInfo(job.job.fileName).fileName(), stagesOf(job.job), options.isTerminal)
    {
        QObject::connect(&m_panel, &FourPs::refused, &m_panel,
                         [this](FourPs::Step step, const QString &text) { receiveRefusal(step, text); });
    }

    JobResult run();

private:
    void load();
    void calculate();
    void writeResult();
    void writePictures();
    void writeReport();
    void receiveRefusal(FourPs::Step step, const QString &text);
    void fail(JobOutcome outcome, const QString &text);
    double lap();

    const JobOrErrors &m_given;
    const Job &m_job;
    const RunOptions &m_options;
    FourPs m_panel;
    Progress m_progress;
    JobResult m_result;
    RunTimes m_times;
    QElapsedTimer m_timer;
    bool m_isMapRefused = false;
};

void Run::fail(JobOutcome outcome, const QString &text)
{
    m_result.outcome = std::max(m_result.outcome, outcome);
    m_result.errors << m_job.fileName + QLatin1String(": ") + text;
}

void Run::receiveRefusal(FourPs::Step step, const QString &text)
{
    m_isMapRefused = m_isMapRefused || step == FourPs::Step::Map;
    if (wants(m_job, step))
        fail(step == FourPs::Step::Write ? JobOutcome::CannotWrite : JobOutcome::Refused, text.simplified());
}

/// Seconds since the last call.
double Run::lap()
{
    const double seconds = static_cast<double>(m_timer.nsecsElapsed()) * 1e-9;
    m_timer.restart();
    return seconds;
}

JobResult Run::run()
{
    QElapsedTimer whole;
    whole.start();
    m_timer.start();
    load();
    if (m_result.outcome == JobOutcome::Done && !m_options.checkOnly) {
        calculate();
        if (!m_job.resultFile.isEmpty() && !m_isMapRefused)
            writeResult();
        if (!m_job.pictures.isEmpty())
            writePictures();
        if (!m_job.report.isEmpty())
            writeReport();
        m_result.messages = m_panel.messages();
    }
    m_progress.finish(m_result.outcome == JobOutcome::Done, static_cast<double>(whole.elapsed()) * 1e-3);
    return m_result;
}

void Run::load()
{
    const auto announce = [this](const QString &file) {
        m_progress.stage(QStringLiteral("reading %1").arg(QFileInfo(file).fileName()));
    };
    QStringList errors = loadJob(m_given, &m_panel, announce);
    if (m_given.errors.isEmpty())
        errors += missingParts(m_job);
    for (const QString &error : qAsConst(errors))
        fail(JobOutcome::WrongJob, error);
    m_times.load = lap();
}

void Run::calculate()
{
    m_progress.stage(QStringLiteral("calculating"));
    m_panel.calcBoth();
    m_times.calculate = lap();
}

void Run::writeResult()
{
    m_progress.stage(QStringLiteral("writing %1").arg(QFileInfo(m_job.resultFile).fileName()));
    m_panel.write();
    m_times.write = lap();
}

void Run::writePictures()
{
    m_progress.stage(QStringLiteral("saving pictures"));
    QString error;
    if (!savePictures(&m_panel, m_job.pictures, QFileInfo(m_job.fileName).completeBaseName(), &error))
        fail(JobOutcome::CannotWrite, error);
    m_times.pictures = lap();
}

void Run::writeReport()
{
    m_progress.stage(QStringLiteral("writing %1").arg(QFileInfo(m_job.report).fileName()));
    numeric::OutputFile file(m_job.report);
    if (!file.open() || !file.write(runReport(m_panel, m_job, m_times, m_result.errors)) || !file.commit())
        fail(JobOutcome::CannotWrite, QStringLiteral("cannot write the report %1").arg(m_job.report));
}

} // namespace

QStringList loadJob(const JobOrErrors &job, FourPs *panel, const std::function<void(const QString &file)> &loading)
{
    return job.errors + PanelSettings(panel).mistakes(job.job.settings) + panel->load(job.job, loading);
}

JobResult runJob(const JobOrErrors &job, const RunOptions &options)
{
    return Run(job, options).run();
}
