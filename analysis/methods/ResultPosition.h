#pragma once

/// Positions of the quantities that a result holds per pixel. `2 * referenceRows + 5` in all: the fractions,
/// the amounts, the background's coefficients, the valence and the total edge jump.
namespace ResultPosition
{
constexpr int referenceRows = 4; ///< reference rows of the panel: so many fractions and amounts
constexpr int ratio = 0;         ///< of the first reference, the others follow
constexpr int dMut = referenceRows;
constexpr int mut0 = 2 * referenceRows; ///< constant term of the background
constexpr int c1 = mut0 + 1;            ///< coefficient of E (linear) or of L^3 (Victoreen)
constexpr int c2 = mut0 + 2;            ///< coefficient of L^4 (Victoreen); 0 for the linear background
constexpr int valence = mut0 + 3;
constexpr int amount = mut0 + 4; ///< total edge jump t
constexpr int count = mut0 + 5;
} // namespace ResultPosition
