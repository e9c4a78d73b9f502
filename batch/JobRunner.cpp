#include "batch/JobRunner.h"

#include "analysis/FieldNumber.h"
#include "analysis/FourPointsMap.h"
#include "analysis/ResultWriter.h"
#include "analysis/Statistics.h"
#include "batch/JobReader.h"
#include "mapdata/MapFileReader.h"
#include "spectrum/AMutE.h"

#include <QTextStream>

#include <algorithm>
#include <vector>

namespace
{

struct Settings {
    double preEdgeEnd = -50.0; // offset from the edge, eV
    double postEdgeStart = 100.0;
    bool hasEdge = false;
    double edge = 0.0;
    bool exact = false;
    bool leastSquares = true;
    bool subtractPostFromReferences = false;
    bool subtractPostFromTarget = false;
};

struct Point {
    Job::Energy job;
    A2DData map;
    bool mapLoaded = false;
};

/// Everything that a run loads and calculates, step by step; every step says in m_error why it cannot go on.
class Run
{
public:
    Run(const Job &job, QTextStream *out)
        : m_job(job)
        , m_out(*out)
    {
    }

    bool prepare() { return readSettings() && loadSpectra() && loadMaps() && choosePoints(); }
    bool calculate();
    JobOutcome write();
    QString error() const { return m_job.fileName + QLatin1String(": ") + m_error; }

private:
    bool readSettings();
    bool loadSpectra();
    bool loadSpectrum(const QString &path, double dE, const QString &name, AMutE *spectrum);
    bool loadMaps();
    bool choosePoints();
    bool fail(const QString &message)
    {
        m_error = message;
        return false;
    }
    double fieldValue(const AMutE &spectrum, double energy, bool subtractPost);
    FourPointsReferences references(const std::vector<const Point *> &points);
    bool orderPoints(bool mapsOnly, const QString &purpose, std::vector<const Point *> *points);
    FourPointsVariant variant(std::size_t points) const
    {
        return chooseFourPoints(static_cast<int>(points), m_settings.exact, m_settings.leastSquares);
    }
    void calculateTarget();
    bool calculateMap();
    void printSummary(const char *name, const FiniteSummary &summary);

    const Job &m_job;
    QTextStream &m_out;
    QString m_error;
    Settings m_settings;
    std::vector<AMutE> m_references; // the used ones
    std::vector<double> m_valences;
    AMutE m_target;
    std::vector<Point> m_points;               // the used ones
    std::vector<const Point *> m_targetPoints; // anchors in order, then the V point; empty: no such calculation
    std::vector<const Point *> m_mapPoints;
    ResultRecords m_results;
};

bool Run::readSettings()
{
    QString error;
    JobReader reader(m_job.settings, "settings", &error);
    reader.allowOnly({"EdgeE", "PreEEndDE", "PostEStartDE", "TypeFourPs", "TypeTMKisExact", "TypeTMKisLS",
                      "SubPreEforRef", "SubPostEforRef", "SubPreEforTarget", "SubPostEforTarget"});
    m_settings.hasEdge = reader.has("EdgeE");
    m_settings.edge = reader.number("EdgeE");
    m_settings.preEdgeEnd = reader.number("PreEEndDE", m_settings.preEdgeEnd);
    m_settings.postEdgeStart = reader.number("PostEStartDE", m_settings.postEdgeStart);
    m_settings.exact = reader.truth("TypeTMKisExact", false);
    m_settings.leastSquares = reader.truth("TypeTMKisLS", !m_settings.exact);
    m_settings.subtractPostFromReferences = reader.truth("SubPostEforRef", !reader.truth("SubPreEforRef", true));
    m_settings.subtractPostFromTarget = reader.truth("SubPostEforTarget", !reader.truth("SubPreEforTarget", true));
    const bool fourPoints = reader.truth("TypeFourPs", true);
    if (!error.isEmpty())
        return fail(error);
    if (m_settings.exact == m_settings.leastSquares)
        return fail(QStringLiteral("settings: one of TypeTMKisExact and TypeTMKisLS must be true, the other false"));
    if (m_settings.subtractPostFromReferences == reader.truth("SubPreEforRef", !m_settings.subtractPostFromReferences))
        return fail(QStringLiteral("settings: one of SubPreEforRef and SubPostEforRef must be true, the other false"));
    if (m_settings.subtractPostFromTarget == reader.truth("SubPreEforTarget", !m_settings.subtractPostFromTarget))
        return fail(
            QStringLiteral("settings: one of SubPreEforTarget and SubPostEforTarget must be true, the other false"));
    return fourPoints || fail(QStringLiteral("settings.TypeFourPs: only the four-points method runs here"));
}

bool Run::loadSpectrum(const QString &path, double dE, const QString &name, AMutE *spectrum)
{
    spectrum->setDE(dE);
    if (!spectrum->read(path))
        return fail(QStringLiteral("%1.file: %2 is missing or no spectrum").arg(name, path));
    const double edge = spectrum->findEdge();
    m_out << name << ": " << spectrum->fileName() << ", " << spectrum->pointCount() << " points, edge "
          << fieldText(edge) << " eV\n";
    if (!m_settings.hasEdge)
        m_settings.edge = asFieldNumber(edge); // the last file read has the last word
    return true;
}

bool Run::loadSpectra()
{
    for (int i = 0; i < m_job.references.size(); ++i) {
        const Job::Reference &reference = m_job.references.at(i);
        AMutE spectrum;
        if (!loadSpectrum(reference.file, reference.dE, QStringLiteral("references[%1]").arg(i), &spectrum))
            return false;
        if (!reference.use)
            continue;
        m_references.push_back(spectrum);
        m_valences.push_back(reference.valence);
    }
    if (m_references.size() < 2)
        return fail(QStringLiteral("references: the four-points method needs two that are used"));
    if (!m_job.target.file.isEmpty() && !loadSpectrum(m_job.target.file, m_job.target.dE, "target", &m_target))
        return false;

    std::vector<AMutE *> spectra = {&m_target};
    for (AMutE &reference : m_references)
        spectra.push_back(&reference);
    for (AMutE *const spectrum : spectra) {
        spectrum->setPreEdgeEnd(m_settings.edge + m_settings.preEdgeEnd);
        spectrum->setEdgeEnergy(m_settings.edge);
        spectrum->setPostEdgeStart(m_settings.edge + m_settings.postEdgeStart);
        spectrum->fitLines();
    }
    m_out << "Edge: " << fieldText(m_settings.edge) << " eV\n";
    for (std::size_t i = 0; i < m_references.size(); ++i)
        m_out << "Edge jump of " << m_references[i].fileName() << ": " << fieldText(m_references[i].edgeJump()) << '\n';
    return true;
}

bool Run::loadMaps()
{
    for (int i = 0; i < m_job.energies.size(); ++i) {
        const Job::Energy &energy = m_job.energies.at(i);
        if (!energy.use)
            continue;
        Point point;
        point.job = energy;
        if (!energy.map.isEmpty()) {
            point.mapLoaded = loadMapFile(energy.map, &point.map).loaded;
            if (!point.mapLoaded)
                return fail(
                    QStringLiteral("energies[%1].map: %2 is missing or no map").arg(QString::number(i), energy.map));
        }
        m_points.push_back(std::move(point));
    }
    return true;
}

/// The used points (those with maps, for a map), anchors first and the V point last.
bool Run::orderPoints(bool mapsOnly, const QString &purpose, std::vector<const Point *> *points)
{
    const Point *vPoint = nullptr;
    for (const Point &point : m_points) {
        if (mapsOnly && !point.mapLoaded)
            continue;
        if (!point.job.vPoint)
            points->push_back(&point);
        else if (vPoint)
            return fail(QStringLiteral("energies: more than one that is used has \"vPoint\": true"));
        else
            vPoint = &point;
    }
    if (!vPoint)
        return fail(QStringLiteral("energies: none that is used for the %1 has \"vPoint\": true").arg(purpose));
    points->push_back(vPoint);
    if (variant(points->size()) == FourPointsVariant::None)
        return fail(
            QStringLiteral("energies: %1 are used for the %2 where the method needs 3 or 4%3, the V point counted")
                .arg(QString::number(points->size()), purpose,
                     QLatin1String(m_settings.leastSquares ? " or more" : "")));
    return true;
}

bool Run::choosePoints()
{
    bool hasMaps = false;
    for (const Point &point : m_points)
        hasMaps = hasMaps || point.mapLoaded;
    if (!hasMaps && !m_target.valid())
        return fail(QStringLiteral("neither a target nor a map: there is nothing to calculate"));
    if (!hasMaps && !m_job.resultFile.isEmpty())
        return fail(QStringLiteral("output.result: there are no maps to write results of"));
    return (!m_target.valid() || orderPoints(false, QStringLiteral("target"), &m_targetPoints)) &&
           (!hasMaps || orderPoints(true, QStringLiteral("map"), &m_mapPoints));
}

/// The number that a field would show, 0 outside the spectrum.
double Run::fieldValue(const AMutE &spectrum, double energy, bool subtractPost)
{
    double value = 0.0;
    if (spectrum.valueMinusLine(energy, subtractPost, &value))
        return asFieldNumber(value);
    m_out << "Note: " << fieldText(energy) << " eV lies outside " << spectrum.fileName()
          << ", whose value counts as 0 there\n";
    return 0.0;
}

FourPointsReferences Run::references(const std::vector<const Point *> &points)
{
    FourPointsReferences result;
    for (const Point *const point : points) {
        const double energy = point->job.energy;
        result.energies.push_back(energy);
        result.a.push_back(fieldValue(m_references[0], energy, m_settings.subtractPostFromReferences));
        result.b.push_back(fieldValue(m_references[1], energy, m_settings.subtractPostFromReferences));
    }
    result.r = m_references[0].edgeJump() / m_references[1].edgeJump();
    return result;
}

bool Run::calculate()
{
    if (!m_targetPoints.empty())
        calculateTarget();
    return m_mapPoints.empty() || calculateMap();
}

void Run::calculateTarget()
{
    std::vector<double> x;
    for (const Point *const point : m_targetPoints)
        x.push_back(fieldValue(m_target, point->job.energy, m_settings.subtractPostFromTarget));
    numeric::LinearSystem work(3);
    const FourPointsResult result = solveFourPoints(variant(x.size()), references(m_targetPoints), x.data(), &work);
    m_out << "Target: a = " << fieldText(result.a)
          << ", Valence = " << fieldText(mixedValence(m_valences[0], m_valences[1], result.a))
          << ", t/ts = " << fieldText(result.t) << '\n';
}

bool Run::calculateMap()
{
    FourPointsMapInput input;
    input.variant = variant(m_mapPoints.size());
    input.references = references(m_mapPoints);
    for (const Point *const point : m_mapPoints)
        input.maps.push_back(&point->map);
    const A2DData &vPoint = *input.maps.back();
    if (!calcFourPointsMap(input, &m_results))
        return fail(QStringLiteral("The map of %1 x %2 pixels is too large.").arg(vPoint.nx()).arg(vPoint.ny()));
    const auto first =
        std::find_if(m_points.begin(), m_points.end(), [](const Point &point) { return point.mapLoaded; });
    m_results.headerLines = first->map.headerLines();

    FiniteSummaryBuilder valence;
    FiniteSummaryBuilder thickness;
    for (std::size_t i = 0; i < m_results.count(); ++i) {
        valence.add(mixedValence(m_valences[0], m_valences[1], m_results.a()[i]));
        thickness.add(m_results.t()[i]);
    }
    m_out << "Map: " << m_results.width() << " x " << m_results.height() << " pixels\n";
    printSummary("Valence", valence.summary());
    printSummary("t/ts", thickness.summary());
    return true;
}

void Run::printSummary(const char *name, const FiniteSummary &summary)
{
    m_out << "  " << name << ": mean " << fieldText(summary.mean) << ", standard deviation "
          << fieldText(summary.deviation) << " over " << summary.count << " finite pixels\n";
}

JobOutcome Run::write()
{
    if (m_job.resultFile.isEmpty())
        return JobOutcome::Done;
    const ValencePair valences = {true, m_valences[0], m_valences[1]};
    if (writeResultFile(m_job.resultFile, m_results, valences, {}) != WriteOutcome::Written) {
        fail(QStringLiteral("output.result: %1 cannot be written").arg(m_job.resultFile));
        return JobOutcome::CannotWrite;
    }
    m_out << "Result file: " << m_job.resultFile << '\n';
    return JobOutcome::Done;
}

} // namespace

JobOutcome runJob(const Job &job, QTextStream *out, QString *error)
{
    Run run(job, out);
    JobOutcome outcome = JobOutcome::WrongJob;
    if (run.prepare() && run.calculate())
        outcome = run.write();
    if (outcome != JobOutcome::Done)
        *error = run.error();
    return outcome;
}
