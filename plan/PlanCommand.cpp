#include "plan/PlanCommand.h"

#include "numeric/FileIdentity.h"
#include "numeric/FileSet.h"
#include "numeric/OutputFile.h"
#include "plan/PlanFile.h"
#include "plan/PlanPicture.h"
#include "plan/PlanReport.h"

#include <QBuffer>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>

namespace
{

/// An output that would overwrite an input or another output.
QString collision(const PlanOptions &options, const PlanFile &plan)
{
    QStringList taken = {numeric::fileIdentity(options.plan)};
    if (!plan.job.target.file.isEmpty())
        taken << numeric::fileIdentity(plan.job.target.file);
    for (const Job::Reference &reference : plan.job.references)
        taken << numeric::fileIdentity(reference.file);
    for (const Job::Energy &energy : plan.job.energies) {
        if (!energy.map.isEmpty())
            taken << numeric::fileIdentity(energy.map);
    }
    for (const QString &file : {options.report, options.picture, options.job}) {
        if (file.isEmpty())
            continue;
        if (!numeric::isPlaceForFile(file))
            return QStringLiteral("%1 cannot be written: it is no plain file").arg(file);
        if (taken.contains(numeric::fileIdentity(file)))
            return QStringLiteral("%1 cannot be written: it is an input or another output").arg(file);
        taken << numeric::fileIdentity(file);
    }
    return QString();
}

QByteArray pngOf(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// The set that goes into a job: the planned one, or of more energies than a job has the plan for as many as it has.
const PlannedSet &setForJob(const PlanResult &result)
{
    const auto fits = [](const PlannedSet &set) {
        return set.energies.size() <= Job::maxEnergies;
    };
    if (fits(result.planned))
        return result.planned;
    const auto largest = std::find_if(result.byNumber.rbegin(), result.byNumber.rend(), fits);
    return largest == result.byNumber.rend() ? result.planned : *largest;
}

/// One planning with its streams.
class Command
{
public:
    Command(const PlanOptions &options, QTextStream *out, QTextStream *err, bool isTerminal)
        : m_options(options)
        , m_out(*out)
        , m_err(*err)
        , m_isTerminal(isTerminal)
    {
    }
    PlanOutcome run();

private:
    PlanOutcome fail(PlanOutcome outcome, const QString &text);
    void showProgress(double done);
    bool add(const QString &path, const QByteArray &bytes, const char *what);
    PlanOutcome writeAll(const PlanFile &plan, const PlanResult &result);

    const PlanOptions &m_options;
    QTextStream &m_out;
    QTextStream &m_err;
    bool m_isTerminal;
    int m_shown = -1; ///< per cent
    numeric::FileSet m_files;
};

PlanOutcome Command::fail(PlanOutcome outcome, const QString &text)
{
    m_err << "flokluk-plan: " << text << '\n';
    m_err.flush();
    return outcome;
}

void Command::showProgress(double done)
{
    constexpr int width = 20;
    const int percent = qBound(0, static_cast<int>(100.0 * done), 100);
    if (!m_isTerminal || percent == m_shown)
        return;
    m_shown = percent;
    const int full = width * percent / 100;
    m_err << "\r\033[K" << QFileInfo(m_options.plan).fileName() << " ["
          << QString(full, QLatin1Char('#')) + QString(width - full, QLatin1Char('.')) << "] " << percent << " %";
    if (percent == 100)
        m_err << '\n';
    m_err.flush();
}

bool Command::add(const QString &path, const QByteArray &bytes, const char *what)
{
    if (path.isEmpty() || (!bytes.isEmpty() && numeric::writeFile(path, bytes, &m_files)))
        return true;
    fail(PlanOutcome::CannotWrite, QStringLiteral("cannot write the %1 %2").arg(QLatin1String(what), path));
    return false;
}

/// All files or none.
PlanOutcome Command::writeAll(const PlanFile &plan, const PlanResult &result)
{
    const PlannedSet &set = setForJob(result);
    if (!m_options.job.isEmpty() && set.energies.size() > Job::maxEnergies)
        return fail(PlanOutcome::Refused, QStringLiteral("a job takes at most %1 energies").arg(Job::maxEnergies));
    const QByteArray report = planReport(plan.request, result, numeric::realPath(m_options.plan));
    const QByteArray picture = m_options.picture.isEmpty() ? QByteArray() : pngOf(planPicture(plan.request, result));
    if (!add(m_options.report, report, "report") || !add(m_options.picture, picture, "picture") ||
        !add(m_options.job, plannedJob(plan, set).toJson(), "job"))
        return PlanOutcome::CannotWrite;
    if (!m_files.publish())
        return fail(PlanOutcome::CannotWrite, m_files.problem());
    m_out << planTable(plan.request, result);
    if (!m_options.job.isEmpty() && &set != &result.planned)
        m_out << QStringLiteral("%1 holds the plan for %2 energies, the most that a job takes\n")
                     .arg(m_options.job)
                     .arg(set.energies.size());
    m_out.flush();
    return m_out.status() == QTextStream::Ok
               ? PlanOutcome::Done
               : fail(PlanOutcome::CannotWrite, QStringLiteral("cannot write to standard output"));
}

PlanOutcome Command::run()
{
    PlanFile plan = readPlan(m_options.plan);
    if (!plan.errors.isEmpty()) {
        for (const QString &error : qAsConst(plan.errors))
            fail(PlanOutcome::WrongPlan, m_options.plan + QLatin1String(": ") + error);
        return PlanOutcome::WrongPlan;
    }
    const QString wrong = collision(m_options, plan);
    if (!wrong.isEmpty())
        return fail(PlanOutcome::WrongPlan, wrong);
    plan.request.seed = m_options.seed;
    const auto result = planEnergies(plan.request, [this](double done) {
        showProgress(done);
        return true;
    });
    if (const auto *const mistake = std::get_if<QString>(&result))
        return fail(PlanOutcome::Refused, m_options.plan + QLatin1String(": ") + *mistake);
    return writeAll(plan, std::get<PlanResult>(result));
}

} // namespace

int runPlanCommand(const PlanOptions &options, QTextStream *out, QTextStream *err, bool isTerminal)
{
    *out << options.answer;
    out->flush();
    if (!options.answer.isEmpty())
        return static_cast<int>(PlanOutcome::Done);
    if (!options.error.isEmpty()) {
        *err << "flokluk-plan: " << options.error << "; flokluk-plan --help says more\n";
        return static_cast<int>(PlanOutcome::WrongPlan);
    }
    return static_cast<int>(Command(options, out, err, isTerminal).run());
}
