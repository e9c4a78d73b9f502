#include "batch/JobNeeds.h"

#include "analysis/model/AnalysisInput.h"
#include "mapdata/A2DData.h"

#include <algorithm>

namespace
{

template <class Condition>
bool hasEnergy(const Job &job, Condition condition)
{
    return std::any_of(job.energies.begin(), job.energies.end(), condition);
}

bool wantsMap(const Job &job)
{
    return hasEnergy(job, [](const Job::Energy &energy) { return energy.use && !energy.map.isEmpty(); });
}

bool wantsTarget(const Job &job)
{
    return !job.target.file.isEmpty() && hasEnergy(job, [](const Job::Energy &energy) { return energy.use; });
}

bool wantsFit(const Job &job)
{
    return !job.target.file.isEmpty() && hasEnergy(job, [](const Job::Energy &energy) { return energy.lcf; });
}

} // namespace

bool wants(const Job &job, Step step)
{
    switch (step) {
    case Step::Map:
        return wantsMap(job);
    case Step::Target:
        return wantsTarget(job);
    case Step::Fit:
        return wantsFit(job);
    case Step::Write:
        break;
    }
    return true;
}

QStringList missingParts(const Job &job)
{
    QStringList errors;
    for (int i = 0; i < job.references.size(); ++i) {
        if (job.references[i].use && job.references[i].file.isEmpty())
            errors << QStringLiteral("references[%1].file is missing").arg(i);
    }
    if (!wantsMap(job) && !wantsTarget(job) && !wantsFit(job))
        errors << QStringLiteral("there is nothing to calculate: neither a used energy with a map, nor a target with "
                                 "a used energy or one with lcf");
    else if (!wantsMap(job) && !job.resultFile.isEmpty())
        errors << QStringLiteral("output.result: there is no map that could be written");
    if (!wantsMap(job) && !job.qualityFile.isEmpty())
        errors << QStringLiteral("output.quality: there is no map that it could tell of");
    if (!wantsMap(job) && !job.regions.isEmpty())
        errors << QStringLiteral("regions: there is no map that they could lie in");
    return errors;
}

QStringList regionsBeside(const Job &job, const AnalysisInput &input)
{
    QStringList errors;
    const auto isUsed = [](const PointInput &point) {
        return point.isUsed && point.map;
    };
    const auto first = std::find_if(input.points.begin(), input.points.end(), isUsed);
    for (int i = 0; first != input.points.end() && i < job.regions.size(); ++i) {
        const auto &corners = job.regions[i].rectangle;
        const int width = first->map->nx();
        const int height = first->map->ny();
        if (corners &&
            (std::min((*corners)[0], (*corners)[2]) >= width || std::min((*corners)[1], (*corners)[3]) >= height))
            errors << QStringLiteral("regions[%1].rectangle lies beside the map of %2 x %3 pixels")
                          .arg(i)
                          .arg(width)
                          .arg(height);
    }
    return errors;
}

int stagesOf(const Job &job)
{
    int stages = 1; // calculating
    stages += job.shift != Job::Shift::Ignored;
    for (const Job::Reference &reference : job.references)
        stages += !reference.file.isEmpty();
    for (const Job::Energy &energy : job.energies)
        stages += !energy.map.isEmpty();
    for (const QString &path : {job.target.file, job.resultFile, job.qualityFile, job.pictures, job.report})
        stages += !path.isEmpty();
    return stages;
}
