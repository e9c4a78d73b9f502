#pragma once

namespace numeric
{

/// The rules of six-digit numbers, which the writer of one number and the writer of many side by side share.
namespace decimalscale
{

constexpr int width = 10;       ///< characters that a number is right-aligned in
constexpr int lowestPlain = -4; ///< numbers with a smaller decimal exponent are written with it
constexpr int highestPlain = 5; ///< and so are those with a larger one
constexpr int bias = 1023;      ///< of the binary exponent in the bits of a double
/// How near to an integer, in units of 2^-32, a rounded value is taken as uncertain: twice what the error needs.
constexpr unsigned margin = 4;

/// The values looked at: from 2^-reach to below 2^(reach + 1).
constexpr int reach = 73;

/// 10^-22 ... 10^27, each the double nearest to it.
constexpr int lowestPower = -22;
constexpr double powersOfTen[] = {
    1e-22, 1e-21, 1e-20, 1e-19, 1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6,
    1e-5,  1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,   1e2,   1e3,   1e4,   1e5,   1e6,   1e7,   1e8,  1e9,  1e10, 1e11,
    1e12,  1e13,  1e14,  1e15,  1e16,  1e17,  1e18,  1e19,  1e20,  1e21,  1e22,  1e23,  1e24,  1e25, 1e26, 1e27};

constexpr double powerOfTen(int exponent)
{
    return powersOfTen[exponent - lowestPower];
}

/// floor(binary * log10(2)): 78913 / 2^18 is near enough to the logarithm, and 64 keeps the shift unsigned.
constexpr int decimalExponentOf(int binary)
{
    return static_cast<int>(static_cast<unsigned>(binary * 78913 + (64 << 18)) >> 18) - 64;
}

} // namespace decimalscale

} // namespace numeric
