#pragma once

#include "numeric/OutputFile.h"

#include <cstddef>
#include <functional>

namespace numeric
{

/// A text that is made in blocks which do not depend on each other.
struct TextBlocks {
    std::size_t count = 0;
    std::size_t room = 0; ///< bytes that a block takes at most
    /// Writes a block to `out` and returns its length; called by several threads at once.
    std::function<std::size_t(std::size_t block, char *out)> fill;
};

/// Writes the blocks in their order: the calling thread writes while others fill, `threads` of them (0: as many as the
/// machine has cores), each with a buffer of its own. Stops at the first failure; it shows when the file is committed.
void writeBlocks(const TextBlocks &blocks, int threads, OutputFile *file);

} // namespace numeric
