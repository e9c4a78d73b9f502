#pragma once

#include "analysis/methods/PixelBlocks.h"
#include "analysis/results/ResultRecords.h"
#include "analysis/uncertainty/NoiseModel.h"
#include "analysis/uncertainty/UncertaintyConstants.h"
#include "mapdata/A2DData.h"
#include "numeric/Lanes.h"

#include <array>
#include <cstddef>
#include <vector>

/// What is calculated of every pixel of a map, for a scale of 1.
struct UncertaintyTask {
    const UncertaintyConstants *constants = nullptr;
    const NoiseModel *noise = nullptr;
    const ResultRecords *results = nullptr;
    std::vector<const A2DData *> maps;
    bool hasFractions = false;
    numeric::InstructionSet set = numeric::InstructionSet::Baseline;
};

/// Variances of one block.
struct UncertaintyBlock {
    static constexpr std::size_t mostQuantities = 1 + ResultPosition::referenceRows;
    BlockRun chiSquare;                              ///< untouched for n = p
    BlockRun amount;                                 ///< sigma_t^2
    std::array<BlockRun, mostQuantities> quantities; ///< sigma_V^2, then sigma_fi^2 when asked for
};

/// Goes through the pixels of a task, one block after the other; each thread has one of its own.
class UncertaintyBlocks
{
public:
    using Solver = void (*)(const UncertaintyConstants &, std::size_t quantities, const double *const *y,
                            const BlockRun *s, const double *const *values, UncertaintyBlock *out);

    explicit UncertaintyBlocks(const UncertaintyTask &task);

    /// The block that starts at pixel `first`.
    const UncertaintyBlock &calculate(std::size_t first);
    /// The amounts of that block as the method found them.
    const double *amounts() const { return m_block.runs()[m_results]; }
    /// Of the block's `quantities`.
    std::size_t quantityCount() const { return m_quantities; }

private:
    void findVariances();

    const UncertaintyTask &m_task;
    std::size_t m_quantities;
    std::size_t m_intensities = 0; ///< where I, I0 of the first map stand among the runs
    std::size_t m_results = 0;     ///< where t stands, then the values of the quantities
    PlaneBlock m_block;
    Solver m_solver;
    std::vector<BlockRun> m_variances; ///< s^2, one run per map and one to spare
    UncertaintyBlock m_out;
};
