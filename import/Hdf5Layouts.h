#pragma once

#include "import/Hdf5Frames.h"
#include "import/ImportOptions.h"

/// Where a file has its stack. Paths are empty for what it does not have.
struct Hdf5Layout {
    QString name; ///< empty: not known
    QString data;
    StackAxes axes;
    QString energy;
    QString energyUnit;
    QString x, y; ///< positions of columns and rows
    QString incident;
    QString flat;
    bool flatIsPerEnergy = false;
    QString dark;
};

/// The layout of a file by its own structure; without a name when it is none that is known. The options' dataset
/// chooses among several of a NeXus file.
Hdf5Layout findHdf5Layout(const Hdf5File &file, const ImportOptions &options);

/// The dimension of `shape` that has as many images as there are energies, the other two as rows and columns in their
/// order; `isLast`: of several such dimensions the last. False when there is none.
[[nodiscard]] bool axesByLength(const QVector<qint64> &shape, qint64 energies, bool isLast, StackAxes *axes);

/// Datasets that could be the images (three dimensions) and their energies (one dimension, as long as one of those of
/// the images, rising), best guess first: "PATH, PATH".
struct Hdf5Proposal {
    Hdf5Dataset data;
    QString energy;
};
QVector<Hdf5Proposal> proposals(const Hdf5File &file);
