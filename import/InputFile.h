#pragma once

#include <QByteArray>
#include <QString>

/// A file, and what of it: "project.prj::Fe foil", "scan.h5::/entry/data".
struct NamedPart {
    QString file;
    QString part; ///< empty: nothing is named
};
NamedPart splitName(const QString &name);

enum class InputKind { Hdf5, Tiff, StackHeader, Spectrum };

/// What a file is, by its first bytes; a text that is no stack header counts as a spectrum. False, with one sentence,
/// when it cannot be read.
[[nodiscard]] bool kindOf(const QString &path, InputKind *kind, QString *error);

/// The whole of a file of at most half a gigabyte. False, with one sentence, when that cannot be read.
[[nodiscard]] bool readFile(const QString &path, QByteArray *bytes, QString *error);

/// The sentence about what this program cannot do because it was built without a library.
QString builtWithout(const QString &what, const QString &library);
