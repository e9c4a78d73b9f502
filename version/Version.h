#pragma once

#include <QString>

/// The version of all programs, which stands once, in the project's CMakeLists.txt: "1.0.0".
QString floklukVersion();

/// The short name of the commit that was built, "-dirty" behind it when files differed from it; empty where the sources
/// do not say.
QString floklukCommit();

/// What a program answers to --version, without line end: "flokluk-batch 1.0.0 (commit 04c8ad9c11)", without the
/// bracket where the commit is not known.
QString versionLine(const QString &program);
