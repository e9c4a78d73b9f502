#pragma once

#include "import/ImportedSpectrum.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// The spectra of one file, ready to be written.
struct SpectrumFile {
    QString path;                      ///< of the file
    QString format;                    ///< "XDI 1.0", "Athena project", ...
    QVector<ImportedSpectrum> spectra; ///< sorted, values checked; none where the file is one of this program's own
    QByteArray own;                    ///< a file of the program's own format, to be taken over as it is
};

/// Reads a file of spectra, "FILE" or "FILE::PART" with the label of a group or a column. False, with one sentence that
/// begins with the file's name, when it holds none that can be used.
[[nodiscard]] bool readSpectrumFile(const QString &name, SpectrumFile *file, QString *error);
