#pragma once

#include <QString>
#include <QStringList>

namespace sample
{

enum class MapFormat {
    Plain,       ///< "# 1301": axis lines, then x y I I0
    ColumnMapped ///< "# 2003901": header lines name the columns of I0 and I, no axis lines
};

struct SampleOptions {
    QString directory; ///< made when it does not exist
    int width = 128;   ///< pixels
    int height = 96;
    quint64 seed = 1;
    double noise = 40000.0; ///< mean incident counts of a map pixel; 0 writes exact values
    MapFormat format = MapFormat::Plain;
};

/// Writes the whole data set: three reference spectra, the target spectrum, eight maps, truth.txt and two job files.
/// The bytes depend on the options alone. On success `written` holds the paths. When a file cannot be written gives
/// false and one sentence in `error`; files of that name that were there before stay as they were unless the very
/// last step, renaming the finished files, is what failed.
[[nodiscard]] bool writeSample(const SampleOptions &options, QStringList *written, QString *error);

} // namespace sample
