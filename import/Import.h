#pragma once

#include "import/ImportOptions.h"

/// Imports a stack of images, spectra, or both: writes one map file per energy, one spectrum file per spectrum,
/// job.json, which flokluk-batch opens, and import.json, which says what was done, into the folder. They appear all at
/// once, or none of them does. Texts of the result are for people.
///
/// Images are read one at a time; besides them no more than some 300 MB are held, however long the stack. Runs on the
/// calling thread and on as many others as there are cores; `progress` is called on the calling one.
ImportResult importData(const ImportOptions &options, const ImportProgress &progress = {});

/// versionLine(), and the libraries it was built with and without, a line each.
QString importVersion();
