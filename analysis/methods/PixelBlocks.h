#pragma once

#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

/// Map calculations go through the pixels in blocks: for each block the values of all planes, such as the maps'
/// absorptions, are brought side by side, the method solves them as Lanes, and whole runs of results go to the planes.
/// The last block is calculated in full as well and cut when it is written, so that every pixel sees the same
/// arithmetic.
constexpr std::size_t blockPixels = 64;
static_assert(blockPixels % numeric::laneCount<numeric::Lanes8> == 0, "a block is a whole number of lanes");

/// One run of results of a block.
using BlockRun = std::array<double, blockPixels>;

/// One plane to be gone through, one value per pixel.
struct BlockPlane {
    const double *values = nullptr;
    std::size_t count = 0;
    double beyond = 0.0; ///< what pixels read that the plane does not have
};

/// The values of the present block, one run per plane.
class PlaneBlock
{
public:
    /// The processor follows one or two runs through memory by itself, but not eight that are read in turns: for these
    /// the blocks to come are asked for.
    enum Fetching { BlocksAhead, NothingAhead };

    explicit PlaneBlock(std::vector<BlockPlane> planes, Fetching fetching = BlocksAhead)
        : m_planes(std::move(planes))
        , m_fetching(fetching)
        , m_edges(m_planes.size())
        , m_runs(m_planes.size())
    {
    }

    /// The block that starts at pixel `first`.
    void moveTo(std::size_t first)
    {
        for (std::size_t k = 0; k < m_planes.size(); ++k) {
            const BlockPlane &plane = m_planes[k];
            if (first + blockPixels <= plane.count) {
                m_runs[k] = plane.values + first;
                if (m_fetching == BlocksAhead && first + (blocksAhead + 1) * blockPixels <= plane.count)
                    prefetch(m_runs[k] + blocksAhead * blockPixels);
                continue;
            }
            m_edges[k].fill(plane.beyond);
            if (first < plane.count)
                std::copy(plane.values + first, plane.values + plane.count, m_edges[k].begin());
            m_runs[k] = m_edges[k].data();
        }
    }
    /// Per plane a pointer to blockPixels values.
    const double *const *runs() const { return m_runs.data(); }

private:
    static constexpr std::size_t blocksAhead = 2;
    static void prefetch(const double *run)
    {
        constexpr std::size_t perCacheLine = 8;
        for (std::size_t i = 0; i < blockPixels; i += perCacheLine)
            __builtin_prefetch(run + i);
    }

    std::vector<BlockPlane> m_planes;
    Fetching m_fetching;
    std::vector<BlockRun> m_edges; // for blocks that a plane has in part or not at all
    std::vector<const double *> m_runs;
};

/// The absorptions of maps. Pixels that a map does not have read as -1.
inline std::vector<BlockPlane> absorptionPlanes(const std::vector<const A2DData *> &maps)
{
    std::vector<BlockPlane> planes;
    planes.reserve(maps.size());
    for (const A2DData *map : maps)
        planes.push_back({map->absorptions().data(), map->absorptions().size(), -1.0});
    return planes;
}

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
