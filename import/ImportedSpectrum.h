#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// A spectrum from a file of others.
struct ImportedSpectrum {
    enum class Kind {
        Counts,     ///< I0 and I behind the sample; mu is ln(I0 / I)
        Absorption, ///< mu itself, measured in transmission
        Ratio       ///< fluorescence or normalised: a plain ratio
    };

    QString label;  ///< what it is called in its file; empty: nothing
    QString source; ///< what the absorption was formed from: "mutrans", "ln(i0 / itrans)"
    Kind kind = Kind::Absorption;
    QVector<double> energy;   ///< eV
    QVector<double> mu;       ///< the absorption, one per energy
    QVector<double> incident; ///< I0, one per energy; Counts only
    double spacing = 0.0;     ///< of the crystal, angstrom; 0: the file does not say
    QStringList notes;        ///< what was changed, a sentence each
};

/// Sorts the points by energy and puts the mean in the place of equal energies; the notes say so. False, with one
/// sentence without the file's name, for energies that are not positive, values that are no number or fewer than two
/// points.
[[nodiscard]] bool tidySpectrum(ImportedSpectrum *spectrum, QString *error);

/// A spectrum as a file of angles and counts (docs/formats.md), read back it gives the same absorption to 1e-9 of its
/// largest absolute value: as I0 and I where that does it, else as a plain ratio.
struct SpectrumFileText {
    QByteArray text;
    double spacing = 0.0; ///< of the crystal that the angles are of, angstrom
    bool isRatio = false; ///< mode 3, mu is I / I0; else mode 2, mu is ln(I0 / I)
};
/// `from`: the name of the file for the title.
SpectrumFileText spectrumFileText(const ImportedSpectrum &spectrum, const QString &from);

/// Silicon (111), for spectra that do not say what they were measured with, angstrom.
constexpr double usualSpacing = 3.1355316;
/// hc in eV angstrom, as the reader of spectra has it.
constexpr double hcEvAngstrom = 12398.424360387684;
