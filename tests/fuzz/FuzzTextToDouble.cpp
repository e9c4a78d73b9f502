// Every token of the input must read as QString::toDouble and QString::toInt read it, to the last bit.
#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"

#include <QString>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace
{

void compare(std::string_view token)
{
    const QString text = QString::fromUtf8(token.data(), static_cast<int>(token.size()));
    bool isNumberWanted = false, isNumber = false;
    const double wanted = text.toDouble(&isNumberWanted);
    const double got = numeric::textToDouble(token, &isNumber);
    const bool sameBits = std::memcmp(&wanted, &got, sizeof got) == 0;
    if (!sameBits && !(std::isnan(wanted) && std::isnan(got)))
        std::abort();
    if (isNumber != isNumberWanted || numeric::textToInt(token) != text.toInt())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    compare(text);
    numeric::TokenScanner scanner(text);
    std::string_view token;
    while (scanner.next(&token))
        compare(token);
    return 0;
}
