#pragma once

#include <QVector>

#include <vector>

/// What energies are picked by: one entry per energy in each list.
struct PickInput {
    QVector<double> energies;                   ///< eV, rising
    QVector<QVector<double>> references;        ///< the absorption of each reference; may be empty
    std::vector<std::vector<float>> thumbnails; ///< the absorption image of each energy, coarsely
};

/// The indices, rising, of `count` energies that tell most: the first, the last, and then always the one that differs
/// most from its nearest among those picked before. Differences are, with two references or more, those of the
/// differences between the references' absorptions (each in units of its step from the first to the last energy);
/// without, the root mean squares between the images. This looks at contrast alone: it plans nothing for the method
/// that the maps will be analysed by. All energies when there are not more than `count`.
QVector<int> pickEnergies(const PickInput &input, int count);

/// The index of the energy that the references differ most at, for the V point; -1 with fewer than two references.
int mostDifferent(const PickInput &input, const QVector<int> &among);
