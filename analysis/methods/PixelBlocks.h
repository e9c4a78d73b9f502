#pragma once

#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

/// Map calculations go through the pixels in blocks: for each block the absorptions of all maps are brought side by
/// side, the method solves them as Lanes, and whole runs of results go to the planes. The last block is calculated in
/// full as well and cut when it is written, so that every pixel sees the same arithmetic.
constexpr std::size_t blockPixels = 64;
static_assert(blockPixels % numeric::laneCount<numeric::Lanes8> == 0, "a block is a whole number of lanes");

/// One run of results of a block.
using BlockRun = std::array<double, blockPixels>;

/// The absorptions of the present block, one run per map.
class AbsorptionBlock
{
public:
    explicit AbsorptionBlock(const std::vector<const A2DData *> &maps)
        : m_maps(maps)
        , m_edges(maps.size())
        , m_runs(maps.size())
    {
    }

    /// The block that starts at pixel `first`. Pixels that a map does not have read as -1.
    void moveTo(std::size_t first)
    {
        for (std::size_t k = 0; k < m_maps.size(); ++k) {
            const A2DData &map = *m_maps[k];
            const auto count = static_cast<std::size_t>(map.count());
            if (first + blockPixels <= count) {
                m_runs[k] = map.absorptions().data() + first;
                if (first + (blocksAhead + 1) * blockPixels <= count)
                    prefetch(m_runs[k] + blocksAhead * blockPixels);
                continue;
            }
            m_edges[k].fill(-1.0);
            if (first < count)
                std::copy(map.absorptions().data() + first, map.absorptions().data() + count, m_edges[k].begin());
            m_runs[k] = m_edges[k].data();
        }
    }
    /// Per map a pointer to blockPixels values.
    const double *const *runs() const { return m_runs.data(); }

private:
    /// The processor follows one or two runs through memory by itself, but not eight.
    static constexpr std::size_t blocksAhead = 2;
    static void prefetch(const double *run)
    {
        constexpr std::size_t perCacheLine = 8;
        for (std::size_t i = 0; i < blockPixels; i += perCacheLine)
            __builtin_prefetch(run + i);
    }

    const std::vector<const A2DData *> &m_maps;
    std::vector<BlockRun> m_edges; // for blocks that a map has in part or not at all
    std::vector<const double *> m_runs;
};

/// Calls work(first pixel, end pixel) for ranges that begin at blocks and together cover 0 ... pixels - 1, on several
/// threads as parallelRanges() does.
template <class Work>
void parallelBlocks(std::size_t pixels, int threads, Work work)
{
    const std::size_t blocks = (pixels + blockPixels - 1) / blockPixels;
    const auto workOnBlocks = [pixels, work](std::size_t begin, std::size_t end) {
        work(begin * blockPixels, std::min(end * blockPixels, pixels));
        numeric::finishStreaming();
    };
    constexpr std::size_t worthAThread = 64;
    numeric::parallelRanges(blocks, threads, workOnBlocks, worthAThread);
}
