#pragma once

#include <QJsonArray>

namespace numeric
{

/// A list of numbers as JSON has it, in the same order.
template <class Numbers>
QJsonArray toJsonArray(const Numbers &numbers)
{
    QJsonArray array;
    for (const auto number : numbers)
        array.append(number);
    return array;
}

} // namespace numeric
