#include "plan/PlanFile.h"

#include "analysis/job/JobReader.h"
#include "analysis/job/SettingNames.h"
#include "numeric/FieldText.h"
#include "plan/PlanInput.h"
#include "plan/PlanSamples.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QVector>

#include <cmath>

namespace
{

const QStringList &planKeys()
{
    static const QStringList keys = {"energies", "from",       "to",        "step",   "spacing",   "keep",   "counts",
                                     "mode",     "background", "scenarios", "deltaE", "extraTerm", "compare"};
    return keys;
}

/// What the panel has where a job says nothing.
double numberOf(const QJsonObject &settings, const char *name, double absent)
{
    const QJsonValue value = settings.value(QLatin1String(name));
    return value.isString() ? value.toString().toDouble() : value.toDouble(absent);
}

bool isChosen(const QJsonObject &settings, const char *name)
{
    return settings.value(QLatin1String(name)).toBool();
}

PlanMethod methodOf(const QJsonObject &settings)
{
    if (isChosen(settings, "TypeNonEquiv"))
        return isChosen(settings, "NonEquivBGVic") ? PlanMethod::VictoreenNonEquivalent
                                                   : PlanMethod::LinearNonEquivalent;
    return isChosen(settings, "TypeTMKisExact") ? PlanMethod::ExactFourPoints : PlanMethod::LeastSquaresFourPoints;
}

/// Of each group only one can be chosen.
const QVector<QStringList> settingGroups = {{"TypeFourPs", "TypeNonEquiv"},
                                            {"TypeTMKisExact", "TypeTMKisLS"},
                                            {"NonEquivBGLinear", "NonEquivBGVic"},
                                            {"SubPreEforRef", "SubPostEforRef"}};

/// What flokluk-batch says about them, where it would not take the job.
QStringList groupMistakes(const QJsonObject &settings)
{
    QStringList found;
    for (const QStringList &group : settingGroups) {
        QStringList chosen;
        for (const QString &name : group) {
            if (settings.value(name).toBool())
                chosen << name;
        }
        if (chosen.size() > 1)
            found << QStringLiteral("settings: only one of %1 can be true").arg(chosen.join(QLatin1String(", ")));
    }
    return found;
}

/// Takes the values of a plan out of its object.
class PlanReader
{
public:
    PlanReader(const QJsonObject &root, PlanFile *plan)
        : m_reader(root, QString(), &plan->errors)
        , m_root(root)
        , m_plan(*plan)
        , m_request(plan->request)
    {
    }

    void read();
    void readScenarios();

private:
    void require(bool good, const QString &message);
    std::vector<double> numbers(const QJsonValue &value, const QString &name);
    /// `absent` where the key is missing or the value no number, which is a mistake.
    double number(JobReader *reader, const char *key, double absent);
    /// The same, with `message` for one below `least`.
    double atLeast(JobReader *reader, const char *key, double least, double absent);
    double positive(JobReader *reader, const char *key, double absent);
    void readScenario(const QJsonValue &value, const QString &name);
    void readBackground();
    void readEnergies();
    void readLists();

    JobReader m_reader;
    const QJsonObject &m_root;
    PlanFile &m_plan;
    PlanRequest &m_request;
};

void PlanReader::require(bool good, const QString &message)
{
    if (!good)
        m_plan.errors << message;
}

std::vector<double> PlanReader::numbers(const QJsonValue &value, const QString &name)
{
    std::vector<double> found;
    for (const QJsonValue &entry : value.toArray()) {
        require(entry.isDouble(), name + QLatin1String(" must be a list of numbers"));
        found.push_back(entry.toDouble());
    }
    require(value.isArray() || value.isUndefined(), name + QLatin1String(" must be a list of numbers"));
    return found;
}

double PlanReader::number(JobReader *reader, const char *key, double absent)
{
    const int before = m_plan.errors.size();
    const QString name = QLatin1String(key);
    const double value = reader->has(name) ? reader->number(name) : absent;
    return m_plan.errors.size() == before ? value : absent;
}

double PlanReader::atLeast(JobReader *reader, const char *key, double least, double absent)
{
    const double value = number(reader, key, absent);
    require(value >= least,
            QStringLiteral("%1 must not be below %2").arg(reader->nameOf(QLatin1String(key))).arg(least));
    return value;
}

double PlanReader::positive(JobReader *reader, const char *key, double absent)
{
    const double value = number(reader, key, absent);
    require(value > 0.0, reader->nameOf(QLatin1String(key)) + QLatin1String(" must be above 0"));
    return value;
}

void PlanReader::read()
{
    const auto optional = [this](const char *key) {
        return m_reader.has(key) ? std::optional<double>(number(&m_reader, key, 0.0)) : std::nullopt;
    };
    m_request.from = optional("from");
    m_request.to = optional("to");
    if (m_reader.has("step"))
        m_request.step = positive(&m_reader, "step", 1.0);
    m_request.spacing = atLeast(&m_reader, "spacing", 0.0, m_request.spacing);
    m_request.keep = numbers(m_root.value("keep"), QStringLiteral("keep"));
    m_request.counts = atLeast(&m_reader, "counts", 1.0, m_request.counts);
    m_request.deltaE = atLeast(&m_reader, "deltaE", 0.0, m_request.deltaE);
    m_request.hasExtraTerm = m_reader.truth("extraTerm", true);
    const QString mode = m_reader.has("mode") ? m_root.value("mode").toString() : QStringLiteral("transmission");
    require(mode == QLatin1String("transmission") || mode == QLatin1String("fluorescence"),
            QStringLiteral("mode must be \"transmission\" or \"fluorescence\""));
    m_request.mode = mode == QLatin1String("fluorescence") ? PlanMode::Fluorescence : PlanMode::Transmission;
    readBackground();
    readEnergies();
    readLists();
}

void PlanReader::readBackground()
{
    constexpr double most = 700.0; // exp() has no value beyond
    m_request.background = atLeast(&m_reader, "background", 0.0, m_request.background);
    const bool isShare = m_request.mode == PlanMode::Fluorescence;
    require(m_request.background < (isShare ? 1.0 : most),
            isShare ? QStringLiteral("background must be a share from 0 to below 1")
                    : QStringLiteral("background is no absorption"));
}

/// A number, or the energies of a job.
void PlanReader::readEnergies()
{
    const QJsonValue energies = m_root.value("energies");
    if (energies.isDouble()) {
        m_request.count = energies.toInt();
        require(m_request.count >= 1 && m_request.count <= 100 && m_request.count == energies.toDouble(),
                QStringLiteral("energies must be a whole number from 1 to 100"));
        return;
    }
    require(energies.isArray(), QStringLiteral("energies must be the number of energies, or those of a job"));
    PlanList list = {QStringLiteral("energies of the job"), {}, -1};
    for (const Job::Energy &energy : m_plan.job.energies) {
        if (!energy.use)
            continue;
        if (energy.vPoint)
            list.vPoint = static_cast<int>(list.energies.size());
        list.energies.push_back(energy.energy);
    }
    m_request.count = static_cast<int>(list.energies.size());
    m_request.compare.push_back(list);
}

void PlanReader::readLists()
{
    const QJsonValue lists = m_root.value("compare");
    require(lists.isUndefined() || lists.isArray(), QStringLiteral("compare must be a list of lists of energies"));
    for (int i = 0; i < lists.toArray().size(); ++i) {
        const QString name = QStringLiteral("compare[%1]").arg(i);
        m_request.compare.push_back({name, numbers(lists.toArray().at(i), name), -1});
    }
}

/// When the references are known.
void PlanReader::readScenarios()
{
    const QJsonValue scenarios = m_root.value("scenarios");
    require(scenarios.isUndefined() || scenarios.isArray(), QStringLiteral("scenarios must be a list of objects { }"));
    for (int i = 0; i < scenarios.toArray().size(); ++i)
        readScenario(scenarios.toArray().at(i), QStringLiteral("scenarios[%1]").arg(i));
}

void PlanReader::readScenario(const QJsonValue &value, const QString &name)
{
    if (!value.isObject()) {
        m_plan.errors << name + QLatin1String(" must be an object { }");
        return;
    }
    JobReader entry(value.toObject(), name, &m_plan.errors);
    entry.allowOnly({"fractions", "thickness"});
    PlanScenario scenario;
    scenario.thickness = positive(&entry, "thickness", m_request.thickness);
    const std::size_t m = planReferences(m_request);
    double sum = 0.0;
    bool areNumbers = true;
    for (const QJsonValue &fraction : value.toObject().value("fractions").toArray()) {
        areNumbers = areNumbers && fraction.isDouble() && fraction.toDouble() >= 0.0;
        scenario.fractions.push_back(fraction.toDouble());
        sum += fraction.toDouble();
    }
    require(areNumbers && scenario.fractions.size() == m && sum > 0.0,
            name + QStringLiteral(".fractions must be %1 numbers from 0 on, one per reference%2, with a sum above 0")
                       .arg(m)
                       .arg(m < m_request.references.size() ? QStringLiteral(" of the two that the method knows")
                                                            : QString()));
    m_request.scenarios.push_back(scenario);
}

bool readSpectrum(const QString &key, const QString &file, double dE, AMutE *spectrum, QStringList *errors)
{
    spectrum->setDE(dE);
    if (!spectrum->read(file)) {
        const QFileInfo info(file);
        const bool isThere = info.isFile() && info.isReadable();
        errors->append(key + QStringLiteral(": %1 %2").arg(file, isThere ? QStringLiteral("is no spectrum file")
                                                                         : QStringLiteral("cannot be read")));
    }
    return spectrum->valid();
}

/// The spectra with edge and lines; t of the target, if there is one.
void loadSpectra(PlanFile *plan)
{
    PlanRequest &request = plan->request;
    const Job &job = plan->job;
    double edge = 0.0;
    for (int i = 0; i < job.references.size(); ++i) {
        const Job::Reference &reference = job.references[i];
        if (!reference.use)
            continue;
        AMutE spectrum;
        if (readSpectrum(QStringLiteral("references[%1].file").arg(i), reference.file, reference.dE, &spectrum,
                         &plan->errors))
            edge = spectrum.findEdge();
        request.references.push_back({spectrum.fileName(), spectrum, reference.valence});
    }
    AMutE target;
    if (!job.target.file.isEmpty() &&
        readSpectrum(QStringLiteral("target.file"), job.target.file, job.target.dE, &target, &plan->errors))
        edge = target.findEdge();
    request.edge = numberOf(job.settings, "EdgeE", fieldText(edge).toDouble());
    const auto setLines = [&](AMutE *spectrum) {
        spectrum->setEdgeEnergy(request.edge);
        spectrum->setPreEdgeEnd(request.edge + numberOf(job.settings, "PreEEndDE", -50.0));
        spectrum->setPostEdgeStart(request.edge + numberOf(job.settings, "PostEStartDE", 100.0));
        spectrum->fitLines();
    };
    for (PlanReference &reference : request.references)
        setLines(&reference.spectrum);
    if (!target.valid())
        return;
    setLines(&target);
    request.thickness = planThickness(request, target);
}

} // namespace

PlanFile readPlan(const QString &path)
{
    PlanFile plan;
    QJsonObject root = readJsonObject(path, QStringLiteral("plan"), &plan.errors);
    if (!plan.errors.isEmpty())
        return plan;
    JobReader(root, QString(), &plan.errors).allowOnly(jobKeys() + planKeys());
    JobReader(root, QString(), &plan.errors).require({"references", "energies"});
    QJsonObject job;
    for (const QString &key : jobKeys()) {
        if (root.contains(key))
            job.insert(key, root.value(key));
    }
    if (!root.value("energies").isArray())
        job.insert("energies", QJsonArray());
    // Absolute, for the planned job may stand elsewhere; as written, for ".." may stand behind a link.
    const QString folder = QFileInfo(path).path();
    const QDir here = QDir::current();
    plan.job =
        jobFromJson(job, folder == QLatin1String(".") ? here : QDir(here.absoluteFilePath(folder)), &plan.errors);
    plan.errors << settingMistakes(plan.job.settings) << groupMistakes(plan.job.settings);
    plan.job.fileName = path;
    plan.request.method = methodOf(plan.job.settings);
    plan.request.subtractsPostLine = isChosen(plan.job.settings, "SubPostEforRef");
    PlanReader reader(root, &plan);
    reader.read();
    if (plan.errors.isEmpty())
        loadSpectra(&plan);
    if (plan.errors.isEmpty())
        reader.readScenarios();
    return plan;
}

Job plannedJob(const PlanFile &plan, const PlannedSet &set)
{
    Job job = plan.job;
    if (!job.energies.isEmpty()) { // it was a job, whose results are not those of other maps
        job.resultFile.clear();
        job.qualityFile.clear();
        job.hasFractionErrors = false;
        job.pictures.clear();
        job.report.clear();
    }
    job.energies.clear();
    for (const double energy : set.energies)
        job.energies.append({energy, QString(), true, false, false});
    const int vPoint = planVPoint(plan.request, set);
    if (vPoint >= 0)
        job.energies[vPoint].vPoint = true;
    job.settings.insert("EdgeE", plan.request.edge);
    return job;
}
