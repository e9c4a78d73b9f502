#pragma once

namespace numeric
{

/// Bytes that must be writable from `out`.
constexpr int countRoom = 32;

/// Writes a measured count: a whole number below 1e15 with all its digits, any other value with nine significant ones
/// (what a 32-bit float holds; the last may be off by one in a tie), trailing zeros left out. "nan" and "inf" for what
/// is no number. Returns the end of the text; no terminating NUL.
char *writeCount(double value, char *out);

} // namespace numeric
