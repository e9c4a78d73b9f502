#pragma once

#include <QString>

namespace numeric
{

/// Where a file that is written to `path` stands: an absolute path without links, "." or "..". The file, and folders at
/// the end of its path, need not exist. `..` behind a link means what the system means by it.
QString realPath(const QString &path);

/// The same text for every name of a file: for one that exists by its device and number, whatever hard or symbolic
/// links lead to it; for one that does not exist by its realPath().
QString fileIdentity(const QString &path);

/// The file that stands beside another one, "base_TAG.suffix", in its folder without links; the folder need not exist.
/// "base" is all before the last point, which stays where there is no suffix. Empty for an empty path.
QString pathBeside(const QString &path, const QString &tag);

/// Whether a file can be made at `path` or what stands there be replaced: false for devices, pipes and folders, and
/// for the names by which the system offers the open files of a process.
bool isPlaceForFile(const QString &path);

} // namespace numeric
