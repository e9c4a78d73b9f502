#pragma once

namespace numeric
{

/// Characters that writeG6 and writeG6Padded give at most.
constexpr int g6MaxLength = 16;
/// Bytes that must be writable from `out`: the functions store whole words, and what they leave behind the end that
/// they return is undefined.
constexpr int g6Room = 24;

/// Writes `value` in general format with six significant digits, as QString::number(value, 'g', 6) does (ties away
/// from zero, no sign on a zero or a NaN), and returns the end of the text. No terminating NUL.
char *writeG6(double value, char *out);

/// writeG6, right-aligned in at least ten characters.
char *writeG6Padded(double value, char *out);

} // namespace numeric
