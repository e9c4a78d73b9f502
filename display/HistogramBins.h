#pragma once

#include "numeric/ParallelRanges.h"
#include "numeric/RealToInt.h"

#include <QString>
#include <QVector>

#include <cstddef>
#include <mutex>

namespace numeric
{
class FileSet;
}

/// A histogram: `n` boxes of equal `width` from `min` on, and counts of the values in, below and above them.
class HistogramBins
{
public:
    /// `min` and `max` before the first setBoxes.
    static constexpr double unset = 5e299;
    /// More boxes than this are not made, whatever is asked for: a count is kept per box.
    static constexpr int maxBoxes = 1000000;

    HistogramBins() = default;

    /// Makes `boxes` (truncated, between 0 and maxBoxes) empty boxes, the first centred at `first`, the last at `last`.
    /// One box is infinitely wide and takes every value.
    void setBoxes(double first, double last, double boxes);
    bool isSet() const { return min != unset; }

    /// Counts a value in box trunc((value - min) / width); below 0 it is under, from n on it is over the boxes, and a
    /// NaN counts in the total only. Truncation is toward zero: the first box also takes values up to one width below
    /// it.
    void add(double value);
    /// Adds valueAt(i) for i = 0 ... count - 1, on `threads` threads (0: one per core) with the same counts for any
    /// number of them.
    template <class ValueAt>
    void addValues(std::size_t count, ValueAt valueAt, int threads = 0);

    /// The count of the fullest box, of all or of those from `begin` to before `end`; 0 without boxes.
    int largestCount() const { return largestCount(0, counts.size()); }
    int largestCount(int begin, int end) const;
    /// How many values are in the boxes.
    int inRangeCount() const;

    /// Edges and centre of box i; -1 and n are the boxes beside the first and last one.
    double lowerEdge(int i) const { return min + i * width; }
    double centre(int i) const { return min + (i + 0.5) * width; }
    double upperEdge(int i) const { return min + (i + 1) * width; }

    /// Writes a line "lower centre upper  count" per box, with the values under and over the boxes as first and last
    /// line, to a file beside `path`: "map.txt" and the tag "a" give "map_a.txt". False when it cannot be written; a
    /// file that was there is then as it was. With a set the file takes its place with the others of the set.
    bool write(const QString &path, const QString &tag, numeric::FileSet *set = nullptr) const;

    double min = unset;      ///< lower edge of the first box
    double max = unset;      ///< upper edge of the last box
    double width = 0;        ///< of a box
    int n = 0;               ///< number of boxes
    bool checkState = false; ///< state of the check box at the last set-up
    int total = 0;           ///< values added, NaNs included
    QVector<int> counts;     ///< one per box
    int under = 0;
    int over = 0;

private:
    /// Counts of some of the values.
    struct Tally {
        explicit Tally(int boxes)
            : counts(boxes)
        {
        }
        QVector<int> counts;
        int under = 0;
        int over = 0;
    };

    template <class ValueAt>
    void tally(std::size_t begin, std::size_t end, const ValueAt &valueAt, Tally *tally) const;
    void merge(const Tally &tally);
};

template <class ValueAt>
void HistogramBins::tally(std::size_t begin, std::size_t end, const ValueAt &valueAt, Tally *tally) const
{
    int *const boxes = tally->counts.data();
    for (std::size_t i = begin; i < end; ++i) {
        const double value = valueAt(i);
        if (value != value)
            continue;
        const int box = numeric::truncToInt((value - min) / width);
        if (box < 0)
            ++tally->under;
        else if (box >= n)
            ++tally->over;
        else
            ++boxes[box];
    }
}

template <class ValueAt>
void HistogramBins::addValues(std::size_t count, ValueAt valueAt, int threads)
{
    std::mutex merging;
    numeric::parallelRanges(count, threads, [this, &valueAt, &merging](std::size_t begin, std::size_t end) {
        Tally share(n);
        tally(begin, end, valueAt, &share);
        const std::lock_guard<std::mutex> lock(merging);
        merge(share);
    });
    total += static_cast<int>(count);
}
