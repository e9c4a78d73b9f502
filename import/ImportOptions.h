#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// What is to be imported, and how. A file that may hold several things is named FILE or FILE::PATH, with the path of a
/// dataset in it.
struct ImportOptions {
    /// What the pixels of a stack are.
    enum class Signal {
        Transmission, ///< counts behind the sample: the absorption is ln(I0 / I)
        Fluorescence, ///< counts of a fluorescence line: the absorption is I / I0
        Absorption    ///< the absorption itself; there is no I0
    };
    enum class Layout { Plain, ColumnMapped }; ///< of the map files, see docs/formats.md

    QStringList inputs;       ///< one stack of images (which may be many files), spectra, or both
    QStringList references;   ///< spectra: FILE, or FILE::LABEL for one group of a project or one column
    QVector<double> valences; ///< of the references, in their order; may be fewer
    QString directory;        ///< for what is written; made when missing

    QString energies;     ///< text file with the energies, one a line, in the place of the stack's own
    QString data, energy; ///< datasets of an HDF5 file, in the place of those that its layout names
    QString incident;     ///< I0: a dataset of the file (::PATH), or a two-column text file
    QString flat;         ///< images without the sample: one per energy, or all of them averaged
    QString dark;         ///< images without beam, averaged
    QRect incidentRegion; ///< empty region of the images whose mean is I0, in pixels; none where it is null
    Signal signal = Signal::Transmission;

    QRect crop;  ///< pixels to keep; all where it is null
    int bin = 1; ///< side of the squares of pixels that become one
    bool align = false;
    int pickCount = 8;            ///< energies that the job takes
    QVector<double> pickEnergies; ///< these in the place of a number, eV

    Layout layout = Layout::Plain;
    int threads = 0; ///< 0: as many as the machine has cores
};

/// What came of an import.
struct ImportResult {
    /// The values are the exit codes of flokluk-import.
    enum class Outcome { Done = 0, Cancelled = 1, BadInput = 2, CannotWrite = 3 };

    Outcome outcome = Outcome::Done;
    QString error;        ///< one sentence, unless it is done
    QStringList warnings; ///< what the user should look at, a sentence each
    QString directory;
    QStringList files; ///< names of what was written, in the directory
    QString job;       ///< path of the job file

    int width = 0, height = 0; ///< of the maps; 0 without any
    int energies = 0;
    int references = 0;
};

/// Hears what is being done and how much of the whole is done, 0 to 1; false stops the import.
using ImportProgress = std::function<bool(const QString &what, double done)>;
