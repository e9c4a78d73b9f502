#pragma once

#include <QString>
#include <QVector>

struct AnalysisInput;

/// Something about the inputs that the user should look at before he trusts a result. Calculations go on all the same.
struct Finding {
    enum class Severity {
        Warning, ///< probably not meant
        Error    ///< the results cannot be right
    };
    enum class Place { Reference, Target, Point };
    /// What the user would change about it, in the row or among the conditions.
    enum class Control { File, Valence, Energy, PreEdgeEnd, PostEdgeStart };

    Severity severity = Severity::Warning;
    Place place = Place::Reference;
    int row = 0;  ///< of the panel, from 0; of the target 0
    QString text; ///< one sentence in the language of the program, which names the row
    Control control = Control::File;
};

/// All findings, in panel order: used energies outside a spectrum that takes part, maps of another size than the first
/// one in use, used references whose valence is no number, ranges for a background line with fewer than three points,
/// energies for the fit without a target.
QVector<Finding> findings(const AnalysisInput &input);
