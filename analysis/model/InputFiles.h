#pragma once

struct AnalysisInput;
class QString;

/// Whether a path, in whatever spelling, leads to a spectrum or map that is loaded: a result must not take its place.
bool isInputFile(const QString &path, const AnalysisInput &input);

/// The same text for every path to a file: its canonical path, and where there is no such file the absolute one.
QString identityOf(const QString &path);
