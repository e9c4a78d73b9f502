#pragma once

#include "plan/PlanRequest.h"
#include "samples/EdgeModel.h"

#include <vector>

/// The sample maker's references as spectra, with its edge and lines.
inline const std::vector<PlanReference> &sampleReferences()
{
    static const std::vector<PlanReference> references = [] {
        const sample::EdgeModel model;
        std::vector<PlanReference> made;
        for (int j = 0; j < sample::referenceCount; ++j) {
            AMutE spectrum;
            for (const sample::ScanStep &step : model.scan())
                spectrum.addPoint({step.angleDegrees, step.energyEv, model.mu(j, step.energyEv)});
            spectrum.setValid(true);
            spectrum.setEdgeEnergy(sample::edgeEnergy);
            spectrum.setPreEdgeEnd(sample::edgeEnergy + sample::preEdgeEnd);
            spectrum.setPostEdgeStart(sample::edgeEnergy + sample::postEdgeStart);
            spectrum.fitLines();
            made.push_back({QStringLiteral("ref%1").arg(j + 1), spectrum, sample::valences[j]});
        }
        return made;
    }();
    return references;
}

/// To be planned for, with the first `references` of them.
inline PlanRequest sampleRequest(int references = sample::referenceCount)
{
    PlanRequest request;
    request.references.assign(sampleReferences().begin(), sampleReferences().begin() + references);
    request.edge = sample::edgeEnergy;
    return request;
}
