#include "import/PickEnergies.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace
{

using Features = std::vector<std::vector<float>>;

/// Per energy the differences between each two references.
Features referenceFeatures(const QVector<QVector<double>> &references, int energies)
{
    Features features(static_cast<std::size_t>(energies));
    const auto normalised = [energies](const QVector<double> &mu, int i) {
        const double step = mu[energies - 1] - mu[0];
        return (mu[i] - mu[0]) / (step == 0.0 ? 1.0 : step);
    };
    for (int i = 0; i < energies; ++i) {
        for (int a = 0; a < references.size(); ++a) {
            for (int b = 0; b < a; ++b)
                features[static_cast<std::size_t>(i)].push_back(
                    static_cast<float>(normalised(references[a], i) - normalised(references[b], i)));
        }
    }
    return features;
}

double squaredDistance(const std::vector<float> &l, const std::vector<float> &r)
{
    return std::inner_product(l.begin(), l.end(), r.begin(), 0.0, std::plus<>(), [](float a, float b) {
        const double difference = static_cast<double>(a) - static_cast<double>(b);
        return difference * difference;
    });
}

} // namespace

QVector<int> pickEnergies(const PickInput &input, int count)
{
    const int energies = input.energies.size();
    QVector<int> picked(energies);
    std::iota(picked.begin(), picked.end(), 0);
    if (energies <= count)
        return picked;
    const Features features =
        input.references.size() >= 2 ? referenceFeatures(input.references, energies) : input.thumbnails;
    std::vector<double> nearest(static_cast<std::size_t>(energies), std::numeric_limits<double>::infinity());
    picked.clear();
    for (int next = 0; picked.size() < count;) {
        picked << next;
        for (std::size_t i = 0; i < nearest.size(); ++i)
            nearest[i] = std::min(nearest[i], squaredDistance(features[i], features[static_cast<std::size_t>(next)]));
        for (const int one : qAsConst(picked))
            nearest[static_cast<std::size_t>(one)] = -1.0; // even where all others are equal to it
        next = picked.size() == 1
                   ? energies - 1
                   : static_cast<int>(std::max_element(nearest.begin(), nearest.end()) - nearest.begin());
    }
    std::sort(picked.begin(), picked.end());
    return picked;
}

int mostDifferent(const PickInput &input, const QVector<int> &among)
{
    if (input.references.size() < 2)
        return -1;
    const Features features = referenceFeatures(input.references, input.energies.size());
    const auto size = [&features](int i) {
        const std::vector<float> &one = features[static_cast<std::size_t>(i)];
        return squaredDistance(one, std::vector<float>(one.size(), 0.0F));
    };
    return *std::max_element(among.begin(), among.end(), [&size](int l, int r) { return size(l) < size(r); });
}
