#include "analysis/model/TakingPart.h"

#include "analysis/model/AnalysisInput.h"

#include <algorithm>
#include <iterator>

QVector<TakingPart::Reference> TakingPart::valid() const
{
    QVector<Reference> found;
    std::copy_if(used.begin(), used.end(), std::back_inserter(found),
                 [](const Reference &reference) { return reference.isValid; });
    return found;
}

TakingPart takingPart(const AnalysisInput &input)
{
    TakingPart references;
    for (int row = 0; row < input.references.size(); ++row) {
        const ReferenceInput &reference = input.references[row];
        if (reference.isUsed)
            references.used.append({row, reference.spectrum.valid(), reference.valence, reference.spectrum.edgeJump()});
    }
    return references;
}

ValueRange automaticValenceRange(const TakingPart &references)
{
    double smallest = 10.0;
    double largest = 0.0;
    for (const TakingPart::Reference &reference : references.used) {
        smallest = std::min(smallest, reference.valence);
        largest = std::max(largest, reference.valence);
    }
    return {smallest - 0.5, largest + 0.5};
}

ValueRange automaticThicknessRange(const TakingPart &references)
{
    const int count = references.valid().size();
    double sum = 0.0;
    for (int k = 0; k < count; ++k)
        sum += references.used[k].edgeJump;
    return {-0.5, sum + 0.5};
}

ValencePair methodValences(const TakingPart &references)
{
    const QVector<TakingPart::Reference> valid = references.valid();
    return valid.size() < 2 ? ValencePair() : ValencePair{true, valid[0].valence, valid[1].valence};
}

ValencePair fileValences(const TakingPart &references)
{
    const auto [first, second] = drawnValences(references);
    return {references.valid().size() >= 2, first, second};
}

std::pair<double, double> drawnValences(const TakingPart &references)
{
    const auto valence = [&references](int i) {
        return i < references.used.size() ? references.used[i].valence : 0.0;
    };
    return {valence(0), valence(1)};
}

RangeConditions colourConditions(const TakingPart &references)
{
    RangeConditions conditions;
    for (const TakingPart::Reference &reference : references.valid())
        conditions.edgeJumps += reference.edgeJump;
    for (int i = 0; i < references.used.size(); ++i) {
        const double valence = references.used[i].valence;
        conditions.smallestValence = i == 0 ? valence : std::min(conditions.smallestValence, valence);
        conditions.largestValence = i == 0 ? valence : std::max(conditions.largestValence, valence);
    }
    return conditions;
}
