#pragma once

#include "import/ColumnTable.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

/// A file of the XAS Data Interchange format, XDI 1.0.
struct XdiFile {
    QString version;                ///< "1.0"
    QStringList writers;            ///< the programs that the first line names: "GSE/1.0"
    QHash<QString, QString> fields; ///< by "family.key" in lower case
    QStringList comments;           ///< the user's, a line each
    QStringList warnings;           ///< what the format wants otherwise, a sentence each
    ColumnTable table;              ///< labels and units from the Column fields, else from the line above the numbers
};

/// Whether a text begins as one of that format does.
bool isXdi(const QByteArray &text);

/// Reads a file of that format (XDI 1.0, XAS Data Interchange working group): the line of versions, fields
/// "# Family.key: value" (the family begins with a letter), "# ///" and comments, a line of dashes, which may be
/// missing, the line of labels and the numbers. Line ends may be LF, CRLF or CR. False, with one sentence without the
/// file's name, for a field of another form, a word among the numbers or lines of different length.
[[nodiscard]] bool parseXdi(const QByteArray &text, XdiFile *file, QString *error);

/// The spectrum of such a file; see spectrumOf().
[[nodiscard]] bool spectrumOfXdi(const XdiFile &file, const QString &wanted, ImportedSpectrum *spectrum,
                                 QString *error);
