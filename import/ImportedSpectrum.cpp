#include "import/ImportedSpectrum.h"

#include "import/ImportText.h"
#include "spectrum/SpectrumReader.h"
#include "spectrum/SpectrumText.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string_view>

namespace
{

constexpr double degreesPi = 3.1415926535; // of the reader's energy scale

bool hasBadValue(const QVector<double> &values)
{
    return !std::all_of(values.begin(), values.end(), [](double value) { return std::isfinite(value); });
}

/// Puts the means of the points first ... last - 1 of each list behind `out`.
void appendMeans(const ImportedSpectrum &from, int first, int last, ImportedSpectrum *out)
{
    const auto meanOf = [first, last](const QVector<double> &values) {
        return std::accumulate(values.begin() + first, values.begin() + last, 0.0) / (last - first);
    };
    out->energy << from.energy[first];
    out->mu << (last - first == 1 ? from.mu[first] : meanOf(from.mu));
    if (!from.incident.isEmpty())
        out->incident << (last - first == 1 ? from.incident[first] : meanOf(from.incident));
}

void sortByEnergy(ImportedSpectrum *spectrum)
{
    QVector<int> order(spectrum->energy.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [spectrum](int l, int r) { return spectrum->energy[l] < spectrum->energy[r]; });
    for (QVector<double> *const values : {&spectrum->energy, &spectrum->mu, &spectrum->incident}) {
        const QVector<double> before = *values;
        for (int i = 0; i < before.size(); ++i)
            (*values)[i] = before[order[i]];
    }
}

void averageEqual(ImportedSpectrum *spectrum)
{
    const ImportedSpectrum before = *spectrum;
    spectrum->energy.clear();
    spectrum->mu.clear();
    spectrum->incident.clear();
    for (int first = 0, last = 0; first < before.energy.size(); first = last) {
        while (last < before.energy.size() && before.energy[last] == before.energy[first])
            ++last;
        appendMeans(before, first, last, spectrum);
    }
}

QByteArray exact(double value)
{
    return QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
}

/// The crystal's own spacing where it reaches the lowest energy, else silicon's, else one that does (soft X-rays, which
/// gratings disperse).
double usableSpacing(double wanted, double lowestEnergy)
{
    const double half = hcEvAngstrom / lowestEnergy / 2.0; // the smallest spacing that diffracts it
    for (const double spacing : {wanted, usualSpacing}) {
        if (std::isfinite(spacing) && spacing > 0.0 && half / spacing < 0.98)
            return spacing;
    }
    return std::ceil(half * 1.2);
}

QByteArray text(const ImportedSpectrum &spectrum, const QString &from, double spacing, bool isRatio)
{
    constexpr double usualCounts = 1e6;
    const auto angleOf = [spacing](double energy) {
        return exact(std::asin(hcEvAngstrom / (2.0 * spacing * energy)) * 180.0 / degreesPi);
    };
    // One word each: the reader takes "Mode" and others as keywords wherever they stand as a word.
    const auto word = [](const QString &words) {
        return words.simplified().replace(QLatin1Char(' '), QLatin1Char('_')).toUtf8();
    };
    SpectrumHead head;
    head.titles << " XAFS scan, imported by flokluk-import"
                << "from " + word(from) + "   absorption: " + word(spectrum.source);
    head.crystal = spacing == usualSpacing ? "Si(111)" : "crystal";
    head.spacing = exact(spacing);
    head.firstAngle = angleOf(spectrum.energy.first());
    head.method = isRatio ? "Ratio" : "Transmission";
    head.points = spectrum.energy.size();
    head.mode = isRatio ? 3 : 2;
    QByteArray out = spectrumHead(head);
    for (int i = 0; i < spectrum.energy.size(); ++i) {
        const QByteArray angle = angleOf(spectrum.energy[i]);
        const double i0 = isRatio ? 1.0 : spectrum.incident.isEmpty() ? usualCounts : spectrum.incident[i];
        const double measured = isRatio ? spectrum.mu[i] : i0 * std::exp(-spectrum.mu[i]);
        out += ' ' + angle + ' ' + angle + " 1.00 " + exact(i0) + ' ' + exact(measured) + '\n';
    }
    return out;
}

/// Whether a file gives back what it was written from.
bool isFaithful(const QByteArray &file, const ImportedSpectrum &spectrum)
{
    const SpectrumScan scan = parseSpectrum({file.constData(), static_cast<std::size_t>(file.size())});
    if (scan.points.size() != spectrum.mu.size())
        return false;
    double largest = 0.0, difference = 0.0;
    for (int i = 0; i < spectrum.mu.size(); ++i) {
        largest = std::max(largest, std::fabs(spectrum.mu[i]));
        difference = std::max(difference, std::fabs(scan.points[i].mu - spectrum.mu[i]));
        if (!std::isfinite(scan.points[i].mu))
            return false;
    }
    return difference <= 1e-10 * largest;
}

} // namespace

bool tidySpectrum(ImportedSpectrum *spectrum, QString *error)
{
    if (hasBadValue(spectrum->energy) || hasBadValue(spectrum->mu) || hasBadValue(spectrum->incident)) {
        *error = ImportText::tr("a value is no finite number");
        return false;
    }
    if (std::any_of(spectrum->energy.begin(), spectrum->energy.end(), [](double energy) { return energy <= 0.0; })) {
        *error = ImportText::tr("an energy is zero or negative");
        return false;
    }
    const int points = spectrum->energy.size();
    if (!std::is_sorted(spectrum->energy.begin(), spectrum->energy.end())) {
        sortByEnergy(spectrum);
        spectrum->notes << ImportText::tr("the energies did not rise and were sorted");
    }
    if (std::adjacent_find(spectrum->energy.begin(), spectrum->energy.end()) != spectrum->energy.end()) {
        constexpr int mostScans = 10; // that stand in one file
        averageEqual(spectrum);
        if (spectrum->energy.size() * mostScans < points) {
            *error = ImportText::tr("%1 points have only %2 different energies: a map or an image, not a spectrum")
                         .arg(points)
                         .arg(spectrum->energy.size());
            return false;
        }
        spectrum->notes
            << ImportText::tr("%1 points of equal energy were averaged").arg(points - spectrum->energy.size());
    }
    if (spectrum->energy.size() >= 2)
        return true;
    *error = ImportText::tr("there are fewer than two points");
    return false;
}

SpectrumFileText spectrumFileText(const ImportedSpectrum &spectrum, const QString &from)
{
    SpectrumFileText file;
    file.spacing = usableSpacing(spectrum.spacing, spectrum.energy.first());
    if (spectrum.kind != ImportedSpectrum::Kind::Ratio) {
        file.text = text(spectrum, from, file.spacing, false);
        if (isFaithful(file.text, spectrum))
            return file;
    }
    file.isRatio = true;
    file.text = text(spectrum, from, file.spacing, true);
    return file;
}
