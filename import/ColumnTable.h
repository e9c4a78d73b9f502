#pragma once

#include "import/ImportedSpectrum.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <string_view>

/// Numbers in columns, as a text file has them.
struct ColumnTable {
    QStringList labels;               ///< of each column; empty where it has none
    QStringList units;                ///< of each column; empty where it has none
    QVector<QVector<double>> columns; ///< all of one length
};

/// Most columns of a table.
constexpr int mostColumns = 4096;

/// Takes one line of numbers, separated by white space or `separator`. The first line sets the number of columns.
/// False, with one sentence without the file's name, for a word that is no number and for another number of columns.
[[nodiscard]] bool addTableLine(std::string_view line, int lineNumber, char separator, ColumnTable *table,
                                QString *error);

/// Reads a text of two or more columns: lines that begin with "#", "*", "%" or ";" are comments, the last of which (or
/// the line above the numbers) names the columns when it has as many words; a comma, a semicolon or white space
/// separates them. `table` is empty when there is not one line of numbers, and it is no error to be something else.
[[nodiscard]] bool readTable(const QByteArray &text, ColumnTable *table, QString *error);

/// Forms a spectrum from the columns: the energy in eV or keV, or the angle with the crystal's spacing (angstrom; 0
/// when it is not known), and the absorption. `wanted` names its column, or its number from 1 on; empty: mutrans (or
/// mu, xmu), ln(i0 / itrans), normtrans (norm, flat), mufluor, ifluor / i0, else the second column. False, with one
/// sentence without the file's name, when that is not there or an intensity is not positive.
[[nodiscard]] bool spectrumOf(const ColumnTable &table, const QString &wanted, double spacing,
                              ImportedSpectrum *spectrum, QString *error);
