#pragma once

#include "import/ImportedSpectrum.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

/// One group of a project: a spectrum, or a signal of another kind.
struct AthenaGroup {
    QString name;                 ///< the project's own, such as "vuekq"
    QHash<QString, QString> args; ///< "label", "datatype", "bkg_eshift" and many others
    QVector<double> x, y;         ///< energy in eV and absorption; both empty where the project has none
    bool hasBadNumber = false;    ///< a value of x or y is no number
};

/// Whether a text (unpacked) is an Athena project of either form.
bool isAthenaProject(const QByteArray &text);

/// Reads the groups of an Athena project, Perl assignments ("@x = ('8779.0', ...);", ended by "[record]") or JSON, the
/// form of newer programs. False, with one sentence without the file's name, when there is no group or the text ends
/// within one.
[[nodiscard]] bool parseAthena(const QByteArray &text, QVector<AthenaGroup> *groups, QString *error);

/// The spectra of a project: of all groups that are spectra, or of the one with the label (or name) `wanted`. The
/// energy shift that a group was given counts, and the notes say so.
[[nodiscard]] bool spectraOfAthena(const QVector<AthenaGroup> &groups, const QString &wanted,
                                   QVector<ImportedSpectrum> *spectra, QString *error);
