// Any bytes as an Athena project: no fault of memory, and what is accepted is consistent.
#include "import/AthenaReader.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QString error;
    QVector<AthenaGroup> groups;
    if (!parseAthena(text, &groups, &error))
        return 0;
    QVector<ImportedSpectrum> spectra;
    if (groups.isEmpty() || !spectraOfAthena(groups, QString(), &spectra, &error))
        return groups.isEmpty() ? (std::abort(), 0) : 0;
    for (ImportedSpectrum &spectrum : spectra) {
        if (spectrum.energy.size() != spectrum.mu.size())
            std::abort();
        if (tidySpectrum(&spectrum, &error))
            spectrumFileText(spectrum, QStringLiteral("fuzz"));
    }
    return 0;
}
