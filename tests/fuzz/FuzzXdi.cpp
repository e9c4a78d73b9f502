// Any bytes as a spectrum in XDI or in columns: no fault of memory, and what is accepted is consistent.
#include "import/XdiReader.h"

#include <cstdint>
#include <cstdlib>

namespace
{

void check(ImportedSpectrum spectrum)
{
    QString error;
    if (spectrum.energy.size() != spectrum.mu.size() || !tidySpectrum(&spectrum, &error))
        return;
    for (int i = 1; i < spectrum.energy.size(); ++i) {
        if (!(spectrum.energy[i] > spectrum.energy[i - 1]))
            std::abort();
    }
    spectrumFileText(spectrum, QStringLiteral("fuzz"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QString error;
    XdiFile file;
    ImportedSpectrum spectrum;
    if (parseXdi(text, &file, &error) && spectrumOfXdi(file, QString(), &spectrum, &error))
        check(spectrum);
    ColumnTable table;
    ImportedSpectrum fromColumns;
    if (readTable(text, &table, &error) && spectrumOf(table, QString(), 0.0, &fromColumns, &error))
        check(fromColumns);
    return 0;
}
