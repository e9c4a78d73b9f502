#include "batch/JobRunner.h"

#include "analysis/job/Progress.h"
#include "analysis/model/Findings.h"
#include "analysis/panel/FourPs.h"
#include "analysis/panel/PanelJob.h"
#include "analysis/panel/PanelSettings.h"
#include "analysis/results/ResultWriter.h"
#include "analysis/shift/MapShift.h"
#include "batch/JobNeeds.h"
#include "batch/OutputFolders.h"
#include "batch/OutputLocks.h"
#include "batch/OutputPaths.h"
#include "batch/PanelPictures.h"
#include "batch/QualityReport.h"
#include "batch/RunRecord.h"
#include "batch/RunReport.h"
#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace
{

/// By which the progress knows a job: programs get the path, since several jobs may have one name.
QString nameOf(const Job &job, const RunOptions &options)
{
    return options.form == ProgressForm::Json ? job.fileName : QFileInfo(job.fileName).fileName();
}

/// One job on its way through the panel.
class Run
{
public:
    Run(const JobOrErrors &job, const RunOptions &options)
        : m_given(job)
        , m_job(job.job)
        , m_options(options)
        , m_files(options.isReported || !job.job.report.isEmpty())
        , m_progress(options.progress, nameOf(job.job, options), stagesOf(job.job), options.form)
    {
    }

    JobResult run();

private:
    void loadAndCalculate();
    void load();
    void judgeInputs();
    void takeLocks();
    void prepareOutputs();
    void writeFiles();
    void findShift();
    void writeResult();
    void findQuality();
    void writeQuality();
    void writePictures();
    bool hasReport() const { return m_options.isReported || !m_job.report.isEmpty(); }
    bool writeReport();
    void publish();
    void noteOutcome(Step step);
    void fail(JobOutcome outcome, const QString &text);
    double lap();

    const JobOrErrors &m_given;
    const Job &m_job;
    const RunOptions &m_options;
    FourPs m_panel;
    bool m_isCalculated = false;
    OutputLocks m_locks;
    numeric::FileSet m_files;
    Progress m_progress;
    JobResult m_result;
    UncertaintyRequest m_request; ///< the same for all outputs: asked for otherwise, all would be calculated again
    RunFacts m_facts;
    QElapsedTimer m_timer;
};

void Run::fail(JobOutcome outcome, const QString &text)
{
    m_result.outcome = std::max(m_result.outcome, outcome);
    m_result.errors << m_job.fileName + QLatin1String(": ") + text;
}

/// What a step that the job asks for has to say; a refusal counts.
void Run::noteOutcome(Step step)
{
    const StepOutcome &outcome = m_panel.analysis().outcome(step);
    if (!wants(m_job, step))
        return;
    if (!outcome.message.isEmpty())
        m_result.messages += outcome.message.simplified() + QLatin1Char('\n');
    if (!outcome.isDone && step != Step::Write)
        fail(JobOutcome::Refused, outcome.message.simplified());
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
    if (m_given.errors.isEmpty())
        takeLocks();
    if (m_result.outcome == JobOutcome::Done) {
        m_facts.record = beginRecord(m_job, m_options.isHashed && m_given.errors.isEmpty() && !m_options.checkOnly);
        m_facts.record.isJapanese = m_options.isJapanese;
        loadAndCalculate();
    }
    if (m_isCalculated)
        writeFiles();
    m_progress.finish(m_result.outcome == JobOutcome::Done, static_cast<double>(whole.elapsed()) * 1e-3);
    return m_result;
}

void Run::loadAndCalculate()
{
    {
        Recalculation::Scope calculation(m_panel.recalculation()); // at its end
        load();
        if (m_result.outcome == JobOutcome::Done)
            judgeInputs();
        if (m_result.outcome != JobOutcome::Done || m_options.checkOnly) {
            calculation.drop();
            return;
        }
        m_progress.stage(QStringLiteral("calculating"));
    }
    m_isCalculated = true;
    m_facts.settings = PanelSettings(&m_panel).present();
    if (m_job.shift != Job::Shift::Ignored)
        findShift();
    m_facts.times.calculate = lap();
    for (const Step step : {Step::Map, Step::Target, Step::Fit})
        noteOutcome(step);
    if (m_facts.shift)
        m_result.messages += textOf(*m_facts.shift) + QLatin1Char('\n');
    if (m_facts.shift && m_facts.shift->isFound() && m_job.shift == Job::Shift::Applied && !m_job.target.file.isEmpty())
        m_result.messages += QLatin1String("The target keeps its dE: the references are shifted against it.\n");
}

void Run::load()
{
    const auto announce = [this](const QString &file) {
        m_progress.stage(QStringLiteral("reading %1").arg(QFileInfo(file).fileName()));
    };
    QStringList errors = loadJob(m_given, &m_panel, announce);
    if (m_given.errors.isEmpty())
        errors += missingParts(m_job) + regionsBeside(m_job, m_panel.input());
    for (const QString &error : qAsConst(errors))
        fail(JobOutcome::WrongJob, error);
    m_facts.times.load = lap();
}

/// What could not be trusted is not calculated.
void Run::judgeInputs()
{
    m_facts.findings = findings(m_panel.input());
    for (const Finding &finding : qAsConst(m_facts.findings)) {
        const bool isWrong = finding.severity == Finding::Severity::Error && finding.concerns != 0;
        if (isWrong && !m_job.lenient)
            fail(JobOutcome::Refused, finding.text);
        else
            m_result.warnings << m_job.fileName + QLatin1String(": ") + finding.text;
    }
    if (!m_job.regions.isEmpty() && !hasReport()) // as those of a job copied from the window are
        m_result.warnings << m_job.fileName + QLatin1String(": regions: there is no report that could hold them");
    if (m_result.outcome == JobOutcome::Done)
        prepareOutputs();
}

/// Those for which there are folders.
void Run::takeLocks()
{
    const QString otherRun = m_options.checkOnly ? QString() : m_locks.take(lockFiles(m_job));
    if (!otherRun.isEmpty())
        fail(JobOutcome::CannotWrite, otherRun);
}

/// Neither is what could not be written.
void Run::prepareOutputs()
{
    for (const QString &problem : makeOutputFolders(m_job, m_options.checkOnly))
        fail(JobOutcome::CannotWrite, problem);
    takeLocks();
}

void Run::writeFiles()
{
    const bool hasMap = m_panel.analysis().outcome(Step::Map).isDone;
    m_facts.record.isComplete = (m_job.resultFile.isEmpty() && m_job.qualityFile.isEmpty()) || hasMap;
    if (hasMap)
        findQuality();
    if (!m_job.resultFile.isEmpty() && hasMap)
        writeResult();
    if (!m_job.qualityFile.isEmpty() && hasMap)
        writeQuality();
    if (!m_job.pictures.isEmpty())
        writePictures();
    publish();
}

/// Looked for with the references as the job has them, whatever is done with it.
void Run::findShift()
{
    m_progress.stage(QStringLiteral("finding the energy shift"));
    m_facts.shift = findMapShift(m_panel.input());
    if (m_job.shift == Job::Shift::Applied && m_facts.shift->isFound())
        m_panel.shiftReferences(m_facts.shift->shift);
}

void Run::writeResult()
{
    m_progress.stage(QStringLiteral("writing %1").arg(QFileInfo(m_job.resultFile).fileName()));
    m_panel.writeInto(&m_files);
    noteOutcome(Step::Write);
    if (!m_panel.analysis().outcome(Step::Write).isDone)
        fail(JobOutcome::CannotWrite, m_panel.analysis().writeProblem());
    m_facts.times.write = lap();
}

/// Standard errors of everything that any output shows, at once; the outputs find them there.
void Run::findQuality()
{
    m_request = m_panel.qualityRequest();
    m_request.hasFractions = m_job.hasFractionErrors || hasReport() || !m_job.pictures.isEmpty();
    if (hasReport())
        m_facts.quality = qualityReport(&m_panel.quality(), m_panel.input(), m_request, regionsOf(m_job));
    else if (!m_job.qualityFile.isEmpty() || !m_job.pictures.isEmpty())
        m_panel.quality().map(m_panel.input(), m_request);
    m_facts.times.quality = lap();
}

void Run::writeQuality()
{
    m_progress.stage(QStringLiteral("writing %1").arg(QFileInfo(m_job.qualityFile).fileName()));
    const UncertaintyMap *const map = m_panel.quality().map(m_panel.input(), m_request);
    if (!map) {
        m_facts.record.isComplete = false;
        fail(JobOutcome::Refused, QStringLiteral("output.quality: ") + m_panel.quality().problem());
        return;
    }
    std::vector<const double *> columns = {map->valence.data(), map->amount.data(), map->misfit.data()};
    for (std::size_t j = 0; m_job.hasFractionErrors && j < map->fractions.size(); ++j)
        columns.push_back(map->fractions[j].data());
    if (writePixelFile(m_job.qualityFile, m_panel.analysis().results(), columns, 0, &m_files) != WriteOutcome::Written)
        fail(JobOutcome::CannotWrite, QStringLiteral("cannot write the quality file %1").arg(m_job.qualityFile));
    m_facts.times.write += lap();
}

void Run::writePictures()
{
    m_progress.stage(QStringLiteral("saving pictures"));
    QString error;
    if (!savePictures(&m_panel, m_job.pictures, QFileInfo(m_job.fileName).completeBaseName(), &m_files, &error))
        fail(JobOutcome::CannotWrite, error);
    m_facts.times.pictures = lap();
}

/// True without an output of that name.
bool Run::writeReport()
{
    if (!hasReport())
        return true;
    m_facts.record.files = m_files.members();
    m_facts.errors = m_result.errors;
    m_facts.uncertainties = m_panel.quality().known(m_request);
    m_result.report = runReport(m_job, m_panel.input(), m_panel.analysis(), m_facts);
    if (m_job.report.isEmpty())
        return true;
    m_progress.stage(QStringLiteral("writing %1").arg(QFileInfo(m_job.report).fileName()));
    const bool isWritten = numeric::writeFile(m_job.report, QJsonDocument(m_result.report).toJson(), &m_files);
    if (!isWritten)
        fail(JobOutcome::CannotWrite, QStringLiteral("cannot write the report %1").arg(m_job.report));
    return isWritten;
}

/// Result, histograms, quality, pictures and report, or none of them. When one of them cannot be written the report
/// alone is, to tell so.
void Run::publish()
{
    if (m_result.outcome == JobOutcome::CannotWrite) {
        m_files.clear();
        m_facts.record.isComplete = false;
    }
    if (!writeReport())
        return;
    const bool isReportAlone = m_files.members().size() <= 1;
    if (m_files.publish())
        return;
    fail(JobOutcome::CannotWrite, m_files.problem());
    if (!m_job.report.isEmpty() && !isReportAlone)
        publish();
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
