#pragma once

#include <QByteArray>
#include <QString>

namespace numeric
{

/// The SHA-256 of a file's contents, hexadecimal. Empty when it cannot be read to its end or is no plain file.
QByteArray sha256OfFile(const QString &path);

} // namespace numeric
