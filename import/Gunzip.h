#pragma once

#include <QByteArray>
#include <QString>

/// Whether bytes begin as a gzip file does.
bool isGzip(const QByteArray &bytes);

/// Unpacks a gzip file. False, with one sentence without the file's name, when it is damaged, when it unpacks to more
/// than a hundred times its size, or when the program was built without zlib.
[[nodiscard]] bool gunzip(const QByteArray &bytes, QByteArray *text, QString *error);
