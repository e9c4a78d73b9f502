#include "spectrum/AMutE.h"

#include "numeric/LinearSystem.h"

#include <QByteArray>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <cstddef>
#include <string_view>
#include <utility>

namespace
{

constexpr double hcInEvAngstrom = 12398.424360387684; // fixed, as every energy follows from it; 4e-7 above CODATA 2018
constexpr qint64 largestFile = qint64(1) << 29;       // bytes; the points of such a file still fit a QVector

/// Least squares of mu = a + b L^3 + c L^4 over the points for which `inRange(shifted energy)` holds; NaN without any.
template <class InRange>
VictoreenLine fitVictoreen(const AMutE &spectrum, InRange inRange)
{
    numeric::LinearSystem system(3);
    for (int i = 0; i < spectrum.pointCount(); ++i) {
        const double energy = spectrum.shiftedEnergy(i);
        if (!inRange(energy))
            continue;
        const VictoreenBasis l = victoreenBasis(energy);
        const double basis[] = {1.0, l.l3, l.l4};
        system.add(basis, spectrum.points().at(i).mu);
    }
    system.solve();
    return {system.unknown(0), system.unknown(1), system.unknown(2)};
}

} // namespace

VictoreenBasis victoreenBasis(double energy)
{
    const double l = hcInEvAngstrom / energy;
    const double l3 = l * l * l;
    return {l3, l3 * l};
}

double VictoreenLine::at(double energy) const
{
    const VictoreenBasis l = victoreenBasis(energy);
    return a + b * l.l3 + c * l.l4;
}

bool AMutE::read(const QString &path)
{
    m_readProblem.clear();
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile() || !info.isReadable())
        return false;
    m_fileName = info.fileName();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qDebug() << "Can't open a XAFS file" << path;
        m_readProblem = file.errorString();
        return false;
    }
    forgetPoints();
    if (file.size() > largestFile) {
        qDebug() << "Too large for a spectrum" << path;
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        m_readProblem = file.errorString();
    SpectrumScan scan = parseSpectrum(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    if (!scan.isSupported)
        qDebug() << "No channel for I0 in the Mode line of" << path;
    m_points = std::move(scan.points);
    m_angle = scan.angle;
    m_energy = scan.energy;
    m_mu = scan.mu;
    if (!scan.hasData)
        return false;
    m_valid = true;
    fitLines();
    return true;
}

void AMutE::clear()
{
    forgetPoints();
    m_pre = VictoreenLine();
    m_post = VictoreenLine();
}

void AMutE::forgetPoints()
{
    m_valid = false;
    m_points.clear();
    m_angle.reset();
    m_energy.reset();
    m_mu.reset();
}

void AMutE::addPoint(const SpectrumPoint &point)
{
    if (m_points.isEmpty()) {
        m_angle.reset();
        m_energy.reset();
        m_mu.reset();
    }
    m_points.append(point);
    m_angle.add(point.angle);
    m_energy.add(point.energy);
    m_mu.add(point.mu);
}

double AMutE::findEdge() const
{
    const int n = m_points.size();
    if (n == 0)
        return 0.0;
    double steepest = -1.0;
    int found = -1;
    for (int i = 0; i + 1 < n; ++i) {
        const double step = m_points[i + 1].mu - m_points[i].mu;
        if (step > steepest) {
            steepest = step;
            found = i;
        }
    }
    if (found < 0)
        return shiftedEnergy(0) / 2; // the missing neighbour counts as 0 eV
    return (shiftedEnergy(found + 1) + shiftedEnergy(found)) / 2;
}

void AMutE::fitLines()
{
    if (m_points.isEmpty())
        return;
    m_pre = fitVictoreen(*this, [this](double energy) { return energy < m_preEdgeEnd; });
    m_post = fitVictoreen(*this, [this](double energy) { return energy > m_postEdgeStart; });
}

int AMutE::indexAt(double energy) const
{
    const int n = m_points.size();
    const double first = n > 0 ? shiftedEnergy(0) : 0.0;
    const double last = n > 0 ? shiftedEnergy(n - 1) : 0.0;
    if (energy < first)
        return 0;
    if (energy > last)
        return n - 2;
    for (int i = 0; i + 1 < n; ++i) {
        if (shiftedEnergy(i) <= energy && energy <= shiftedEnergy(i + 1))
            return i;
    }
    return 0;
}

template <class Value>
double AMutE::interpolate(double energy, Value value) const
{
    if (m_points.size() < 2)
        return 0.0;
    const int i = indexAt(energy);
    const double before = value(i);
    return before + (value(i + 1) - before) / (shiftedEnergy(i + 1) - shiftedEnergy(i)) * (energy - shiftedEnergy(i));
}

double AMutE::muAt(double energy) const
{
    return interpolate(energy, [this](int i) { return m_points[i].mu; });
}

double AMutE::valueAt(int type, int index) const
{
    if (index < 0 || index >= m_points.size())
        return 0.0;
    const double mu = m_points[index].mu;
    const double energy = shiftedEnergy(index);
    switch (type) {
    case Raw:
        return mu;
    case PreSubtracted:
        return mu - preLine(energy);
    case PostSubtracted:
        return mu - postLine(energy);
    case ByEdgeJump:
        return (mu - preLine(energy)) / edgeJump();
    case ByBothLines:
        return (mu - preLine(energy)) / (postLine(energy) - preLine(energy));
    default:
        return 0.0;
    }
}

double AMutE::valueAtEnergy(int type, double energy) const
{
    return interpolate(energy, [this, type](int i) { return valueAt(type, i); });
}

void AMutE::valueRange(int type, double low, double high, double *min, double *max) const
{
    for (int i = 0; i < m_points.size(); ++i) {
        const double energy = shiftedEnergy(i);
        if (!(low <= energy && energy <= high))
            continue;
        const double value = valueAt(type, i);
        if (value < *min)
            *min = value;
        if (value > *max)
            *max = value;
    }
}

bool AMutE::valueMinusLine(double energy, bool subtractPostLine, double *value) const
{
    int i = 0;
    while (i < m_points.size() && !(shiftedEnergy(i) >= energy))
        ++i;
    if (i == m_points.size())
        return false;
    double mu = m_points[i].mu;
    if (i == 0) {
        if (shiftedEnergy(0) != energy)
            return false;
    } else {
        const double before = m_points[i - 1].mu;
        mu = before + (mu - before) / (shiftedEnergy(i) - shiftedEnergy(i - 1)) * (energy - shiftedEnergy(i - 1));
    }
    *value = mu - (subtractPostLine ? postLine(energy) : preLine(energy));
    return true;
}
