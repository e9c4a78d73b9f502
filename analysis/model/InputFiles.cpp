#include "analysis/model/InputFiles.h"

#include "analysis/model/AnalysisInput.h"
#include "numeric/FileIdentity.h"

#include <QFileInfo>
#include <QString>

#include <algorithm>

bool isInputFile(const QString &path, const AnalysisInput &input)
{
    if (!QFileInfo::exists(path))
        return false;
    const QString wanted = numeric::fileIdentity(path);
    const auto isWanted = [&wanted](const QString &file) {
        return !file.isEmpty() && numeric::fileIdentity(file) == wanted;
    };
    const auto isReference = [&](const ReferenceInput &reference) {
        return reference.spectrum.pointCount() > 0 && isWanted(reference.file);
    };
    const auto isMap = [&](const PointInput &point) {
        return point.map && isWanted(point.mapFile.path);
    };
    return std::any_of(input.references.begin(), input.references.end(), isReference) ||
           std::any_of(input.displayFiles.begin(), input.displayFiles.end(), isWanted) ||
           std::any_of(input.points.begin(), input.points.end(), isMap) ||
           (input.target.spectrum.pointCount() > 0 && isWanted(input.target.file));
}

QString identityOf(const QString &path)
{
    return numeric::realPath(path);
}
