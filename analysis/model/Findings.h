#pragma once

#include <QFlags>
#include <QString>
#include <QVector>

struct AnalysisInput;

/// Something about the inputs that the user should look at before he trusts a result. The panel calculates all the
/// same.
struct Finding {
    enum class Severity {
        Warning, ///< probably not meant
        Error    ///< the results cannot be right
    };
    enum class Place { Reference, Target, Point, Edge };
    enum Calculation { Map = 1, Target = 2, Fit = 4 };
    Q_DECLARE_FLAGS(Calculations, Calculation)
    /// What the user would change about it, in the row or among the conditions.
    enum class Control { File, Valence, Energy, PreEdgeEnd, PostEdgeStart };

    Severity severity = Severity::Warning;
    Place place = Place::Reference;
    int row = 0;           ///< of the panel, from 0; of the target and the edge 0
    QString text;          ///< one sentence in the language of the program, which names the row
    Calculations concerns; ///< those whose results it makes doubtful, as the method is chosen now; may be none
    Control control = Control::File;
};
Q_DECLARE_OPERATORS_FOR_FLAGS(Finding::Calculations)

/// All findings: those of references and target, of energies, of maps and of what reading them has shown, each in panel
/// order. docs/batch.md lists them.
QVector<Finding> findings(const AnalysisInput &input);
