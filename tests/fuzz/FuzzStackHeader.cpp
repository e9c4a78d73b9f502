// Any bytes as the header of a stack: no fault of memory, and what is accepted has points on all three axes.
#include "import/StackHeader.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    StackHeader header;
    QString error;
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    if (parseStackHeader(text, &header, &error) &&
        (header.energy.points.isEmpty() || header.x.points.isEmpty() || header.y.points.isEmpty()))
        std::abort();
    return 0;
}
