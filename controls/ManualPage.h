#pragma once

#include <QString>

namespace manual
{

/// The first page of the manual for a program that lies in `programDir`: that of the installation, else of the build,
/// else the contents of the source tree (Markdown). Each is looked for in `language` ("en", "ja") first, then in
/// English. Empty when there is none.
QString firstPage(const QString &programDir, const QString &language);

} // namespace manual
