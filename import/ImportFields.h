#pragma once

#include "import/ImportOptions.h"

#include <QString>
#include <QStringList>

/// What the fields of the import window say.
struct ImportFields {
    enum class Incident {
        AsInFiles, ///< what the layout of the file names
        Flat,      ///< images without the sample
        Region,    ///< an empty part of the images
        Values     ///< a dataset of the file or a text
    };

    QStringList inputs;
    QStringList references;
    QString valences;
    QString directory;
    QString energies; ///< FILE, or ::PATH in the file of the images
    QString data;     ///< ::PATH of the images
    Incident incident = Incident::AsInFiles;
    QString incidentText;
    QString dark;
    ImportOptions::Signal signal = ImportOptions::Signal::Transmission;
    QString pick;
    int bin = 1;
    QString crop;
    bool align = false;
};

/// The options that the fields stand for. Empty, or one sentence about the first field that cannot be taken.
QString optionsFromFields(const ImportFields &fields, ImportOptions *options);

/// A folder beside the first input for what is imported from it; empty without inputs.
QString proposedFolder(const QStringList &inputs);

/// What dropped files can be imported as.
struct ImportableFiles {
    QStringList images;  ///< HDF5, TIFF and headers of stacks
    QStringList spectra; ///< XDI, Athena and columns by the suffixes that these have
};
/// Files of which neither is true are left out.
ImportableFiles importableOf(const QStringList &paths);
