#pragma once

#include <QStringList>
#include <QVector>

/// Files that were dropped together, told apart by what stands at their beginnings.
struct DroppedFiles {
    QStringList maps;    ///< by energy, lowest first; those that name none at the end
    QStringList spectra; ///< by name, with 2 before 10
    QString job;         ///< what may be a job and was dropped alone; else empty
    QStringList others;  ///< the rest, by name
};

/// Sorts dropped files. A folder stands for the files in it, but not for its folders. A result file is none of the
/// maps, although it begins with the header of one.
DroppedFiles sortDropped(const QStringList &paths);

/// Where dropped spectra go. `present` are the paths that the references have in panel order and last the target's,
/// empty for those without. A file that is there goes to its place again; one that has "target" in its name goes to
/// the target, any other to the next reference, as long as these are empty. -1: there is no place for it.
QVector<int> placesForSpectra(const QStringList &spectra, QStringList present);
