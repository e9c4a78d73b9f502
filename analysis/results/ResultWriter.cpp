#include "analysis/results/ResultWriter.h"

#include "numeric/BlockWriter.h"
#include "numeric/NumberLines.h"
#include "numeric/OutputFile.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

namespace
{

constexpr std::size_t blockPixels = 4096;
constexpr std::size_t blockRoom =
    blockPixels * (numeric::longestNumberLine(2 + ResultRecords::quantityCount) + 1) + numeric::g6Room;

/// The pixel lines of a result file; every method may be called by several threads at once.
class PixelLines
{
public:
    /// `columns` behind the positions; null: NaN in every line.
    PixelLines(const ResultRecords &results, const std::vector<const double *> &columns)
        : m_results(results)
        , m_columns{{results.x()}, {results.y()}}
        , m_noNumbers(blockPixels, std::numeric_limits<double>::quiet_NaN())
    {
        for (const double *const values : columns)
            m_columns.push_back({values});
    }
    PixelLines(const ResultRecords &results, const ValencePair &valences, const RecordSelection &selection)
        : m_results(results)
        , m_valences(valences)
        , m_columns{{results.x()}, {results.y()}}
    {
        if (results.method() == ResultRecords::Method::FourPoints) {
            m_columns.push_back({results.a(), 4});
            m_columns.push_back({nullptr}); // the valence, which each block works out for itself
            m_columns.push_back({results.t()});
            return;
        }
        for (int position = 0; position < ResultRecords::quantityCount; ++position) {
            if (selection[static_cast<std::size_t>(position)])
                m_columns.push_back({results.quantity(position)});
        }
    }

    std::size_t blocks() const { return (m_results.count() + blockPixels - 1) / blockPixels; }

    /// Writes the lines of one block of pixels and the empty line behind each map row that ends in it; returns the
    /// number of characters, blockRoom at most.
    std::size_t writeBlock(std::size_t block, char *out) const
    {
        const std::size_t first = block * blockPixels;
        const std::size_t last = std::min(first + blockPixels, m_results.count());
        std::vector<numeric::NumberColumn> columns = m_columns;
        for (numeric::NumberColumn &column : columns) {
            if (column.values != nullptr)
                column.values += first;
        }
        const std::vector<double> valence = m_noNumbers.empty() ? valencesOf(first, last) : std::vector<double>();
        for (numeric::NumberColumn &column : columns) {
            if (column.values == nullptr)
                column.values = m_noNumbers.empty() ? valence.data() : m_noNumbers.data();
        }

        const char *const begin = out;
        const auto width = static_cast<std::size_t>(m_results.width());
        for (std::size_t i = first; i < last;) {
            const std::size_t endOfRow = i - i % width + width;
            const std::size_t end = std::min(last, endOfRow);
            out = numeric::writeG6Lines(columns, i - first, end - first, out);
            if (end == endOfRow)
                *out++ = '\n';
            i = end;
        }
        return static_cast<std::size_t>(out - begin);
    }

private:
    /// Those of a four-points result, which does not keep them.
    std::vector<double> valencesOf(std::size_t first, std::size_t last) const
    {
        if (m_results.method() != ResultRecords::Method::FourPoints)
            return {};
        std::vector<double> valence(last - first);
        for (std::size_t i = first; i < last; ++i)
            valence[i - first] = m_valences.mixed(m_results.a()[i]);
        return valence;
    }

    const ResultRecords &m_results;
    const ValencePair m_valences;
    std::vector<numeric::NumberColumn> m_columns; ///< without values: valencesOf() or m_noNumbers
    std::vector<double> m_noNumbers;              ///< as many NaN as a block has pixels; empty in a result file
};

WriteOutcome writeFile(const QString &path, const ResultRecords &results, const PixelLines &lines, int threads,
                       numeric::FileSet *set)
{
    numeric::OutputFile file(path, set);
    if (!file.open())
        return WriteOutcome::CannotOpen;
    for (const QString &line : results.headerLines)
        file.write((line + QLatin1Char('\n')).toUtf8());
    file.write("\n");

    const auto fill = [&lines](std::size_t block, char *out) {
        return lines.writeBlock(block, out);
    };
    numeric::writeBlocks({lines.blocks(), blockRoom, fill}, threads, &file);
    return file.commit() ? WriteOutcome::Written : WriteOutcome::CannotWrite;
}

} // namespace

WriteOutcome writeResultFile(const QString &path, const ResultRecords &results, const ValencePair &valences,
                             const RecordSelection &selection, int threads, numeric::FileSet *set)
{
    return writeFile(path, results, PixelLines(results, valences, selection), threads, set);
}

WriteOutcome writePixelFile(const QString &path, const ResultRecords &results,
                            const std::vector<const double *> &columns, int threads, numeric::FileSet *set)
{
    return writeFile(path, results, PixelLines(results, columns), threads, set);
}
