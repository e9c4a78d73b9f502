// Any bytes as a spectrum file: no crash, no undefined behaviour, and what is read stays consistent.
#include "spectrum/SpectrumReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const SpectrumScan scan = parseSpectrum(std::string_view(reinterpret_cast<const char *>(data), size));
    if (scan.hasData != !scan.points.isEmpty() || (scan.hasData && !scan.isSupported))
        std::abort();
    for (const SpectrumPoint &point : scan.points) {
        if (point.energy < scan.energy.min || point.mu > scan.mu.max || point.angle > scan.angle.max)
            std::abort();
    }
    return 0;
}
