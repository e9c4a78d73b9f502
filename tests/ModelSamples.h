#pragma once

#include "analysis/model/AnalysisInput.h"
#include "tests/MethodSamples.h"

#include <QMap>

/// What a user at the panel could have set, without a panel. References and energy rows are named by their numbers
/// from 1, several of them as one text such as "136".
namespace modelsamples
{

/// What is set, in words; what a text does not name is as here. "refs=123/23 rows=1236/12 v=36 lcf=36 no-target exact"
/// uses three references, of which the first has no spectrum, and four rows, of which two have a map, and marks two of
/// them as V point. "linear" and "Victoreen" choose the non-equivalent method.
struct Situation {
    QString used = "12", loaded = "1234";
    QString points = "1236", maps = "12345678";
    QString vPoints = "3", lcf = "36";
    QString method = "least squares";
    bool hasTarget = true;

    explicit Situation(const QString &text)
    {
        const QMap<QString, QVector<QString *>> lists = {
            {"refs", {&used, &loaded}}, {"rows", {&points, &maps}}, {"v", {&vPoints}}, {"lcf", {&lcf}}};
        for (const QString &word : text.split(' ')) {
            const QVector<QString *> list = lists[word.section('=', 0, 0)];
            for (int i = 0; i < list.size() && i <= word.count('/'); ++i)
                *list[i] = word.section('=', 1).section('/', i, i);
            if (word == "no-target")
                hasTarget = false;
            else if (!word.isEmpty() && list.isEmpty())
                method = word;
        }
    }
};

inline bool has(const QString &numbers, int row)
{
    return numbers.contains(QString::number(row + 1));
}

/// The numbers of rows as one text.
template <class Rows>
QString numbersOf(const Rows &rows)
{
    QString text;
    for (const int row : rows)
        text += QString::number(row + 1);
    return text;
}

/// Four references (edge jumps `jumps`, valences `fourValences`), a target, and a map of 3 x 2 pixels at each of
/// `eightEnergies`. The target's normalised spectrum is 0.8 (0.25 A + 0.75 B) + 0.01 of the first two references A and
/// B; the pixels absorb as 0, 0.1, ... 0.5 times the one and 1, 0.9, ... 0.5 times the other.
class Sample
{
public:
    Sample()
    {
        for (std::size_t j = 0; j < 4; ++j) {
            AMutE spectrum = referenceSpectrum(j);
            spectrum.setValid(true);
            spectrum.setFileName(QStringLiteral("ref%1.dat").arg(j + 1));
            m_spectra.append(spectrum);
        }
        m_target = makeSpectrum(1.0, 0.0, [](double energy) {
            return 0.8 * (0.25 * referenceValue(0, energy) / jumps[0] + 0.75 * referenceValue(1, energy) / jumps[1]) +
                   0.01;
        });
        m_target.setValid(true);
        for (std::size_t k = 0; k < 8; ++k) {
            const auto of = [this, k](int j) {
                return m_spectra[j].valueAtEnergy(AMutE::PreSubtracted, eightEnergies[k]);
            };
            const auto value = [&of](qint64 pixel) {
                const double a = 0.1 * static_cast<double>(pixel);
                return a * of(0) + (1 - a) * of(1) + 0.1;
            };
            maps.push_back(makeMap(3, 2, value, 0.01 * static_cast<double>(k)));
            maps.back().setHeaderText(QStringLiteral("# map %1").arg(k + 1));
        }
    }

    AnalysisInput input(const QString &words = {}) const
    {
        const Situation situation(words);
        AnalysisInput input;
        for (int j = 0; j < 4; ++j) {
            const bool isLoaded = has(situation.loaded, j);
            input.references.append({isLoaded ? m_spectra[j].fileName() : QString(), isLoaded ? m_spectra[j] : AMutE(),
                                     has(situation.used, j), fourValences[static_cast<std::size_t>(j)]});
        }
        for (int k = 0; k < 8; ++k)
            input.points.append(point(k, situation));
        if (situation.hasTarget)
            input.target = {QStringLiteral("target.dat"), m_target};
        Conditions &conditions = input.conditions;
        conditions.isExact = situation.method == "exact";
        conditions.isLeastSquares = !conditions.isExact;
        conditions.isLinear = situation.method != "Victoreen";
        conditions.isNonEquivalent = situation.method == "linear" || !conditions.isLinear;
        conditions.edge = {7120, -25, 65};
        conditions.valences = {1.5, 3.5, 51};
        conditions.thicknesses = {-0.2, 1.2, 51};
        return input;
    }

    std::vector<A2DData> maps;

private:
    PointInput point(int row, const Situation &situation) const
    {
        const auto k = static_cast<std::size_t>(row);
        PointInput point;
        point.energy = eightEnergies[k];
        point.isUsed = has(situation.points, row);
        point.isVPoint = has(situation.vPoints, row);
        point.isForLcf = has(situation.lcf, row);
        for (std::size_t j = 0; j < 4; ++j)
            point.references[j] = referenceValue(j, point.energy);
        point.target = 0.25 * point.references[0] + 0.75 * point.references[1] + 0.1;
        if (has(situation.maps, row)) {
            point.map = &maps[k];
            point.mapFile = {QStringLiteral("/maps/%1.txt").arg(row + 1), 100, 1000 + row};
        }
        return point;
    }

    QVector<AMutE> m_spectra;
    AMutE m_target;
};

} // namespace modelsamples
