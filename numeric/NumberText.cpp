#include "numeric/NumberText.h"

#include <QByteArray>

#include <cstring>

namespace numeric
{

char *writeG6(double value, char *out)
{
    const QByteArray text = QByteArray::number(value, 'g', 6);
    std::memcpy(out, text.constData(), static_cast<std::size_t>(text.size()));
    return out + text.size();
}

char *writeG6Padded(double value, char *out)
{
    constexpr std::ptrdiff_t width = 10;
    char digits[g6MaxLength];
    const auto length = writeG6(value, digits) - digits;
    const auto blanks = length < width ? width - length : 0;
    std::memset(out, ' ', static_cast<std::size_t>(blanks));
    std::memcpy(out + blanks, digits, static_cast<std::size_t>(length));
    return out + blanks + length;
}

} // namespace numeric
