#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <array>
#include <optional>

class QDir;

/// One analysis as a job file (JSON) describes it: inputs, settings of the panel, outputs. docs/batch.md describes the
/// file. Paths are absolute or relative to the working directory.
struct Job {
    struct Reference {
        QString file; ///< empty: none, for a reference that is not used
        bool use = true;
        double valence = 0.0;
        double dE = 0.0; ///< energy shift, eV
    };
    struct Target {
        QString file; ///< empty: no target
        double dE = 0.0;
    };
    struct Energy {
        double energy = 0.0; ///< eV
        QString map;         ///< empty: no map at this energy
        bool use = true;
        bool vPoint = false;
        bool lcf = false; ///< takes part in the linear combination fit
    };

    /// Pixels of the result map that the report has a row for: those in the rectangle and, of these, those with an
    /// amount of at least `above`. One of the two is there.
    struct Region {
        QString name;
        std::optional<std::array<int, 4>> rectangle; ///< x0, y0, x1, y1: columns and rows from 0, both corners in it
        std::optional<double> above;
    };

    /// The energy shift of the maps against the references (analysis/shift).
    enum class Shift {
        Ignored,
        Reported, ///< looked for
        Applied   ///< and added to the dE of all references, where it can be told
    };

    static constexpr int maxReferences = 4;
    static constexpr int maxEnergies = 8;
    static constexpr int maxRegions = 1000;

    QString fileName; ///< of the job itself, for messages
    QVector<Reference> references;
    Target target;
    QVector<Energy> energies;
    QVector<Region> regions;
    QJsonObject settings;           ///< by the names of the panel's controls; see PanelSettings
    QString resultFile;             ///< empty: none is written
    QString qualityFile;            ///< standard errors and misfit of every pixel; empty: none is written
    bool hasFractionErrors = false; ///< those of the fractions stand in it, too
    QString pictures;               ///< folder; empty: no pictures
    QString report;                 ///< file; empty: none is written
    bool lenient = false;           ///< calculates with inputs that cannot be right, too
    Shift shift = Shift::Ignored;
    std::optional<double> x; ///< where the job stands among others: a time, a temperature, ...
    QString xTitle;          ///< of the axis of these, with the unit
    QString program;         ///< that wrote the job; empty for one that a user wrote

    /// The contents of a job file. The paths stand in it as they are.
    QByteArray toJson() const;
};

/// A job, or why it cannot be taken.
struct JobOrErrors {
    Job job;
    QStringList errors; ///< one sentence per mistake, without the name of the job file; empty when the job is good
};

/// Takes the contents of a job file whose relative paths start from `folder`. Every mistake is named with its key (or
/// with line and column, where the text is no JSON), and for a misspelt key the nearest known one. The names of the
/// settings are not checked here.
JobOrErrors parseJob(const QByteArray &text, const QString &folder);

/// Reads a job file. Relative paths in it are taken from its own directory.
JobOrErrors readJob(const QString &path);

/// The object that a JSON text or file holds. Mistakes go to `errors`, keys given twice among them; `kind` names the
/// file in them, such as "job".
QJsonObject parseJsonObject(const QByteArray &text, const QString &kind, QStringList *errors);
QJsonObject readJsonObject(const QString &path, const QString &kind, QStringList *errors);

/// The keys that a job may have.
const QStringList &jobKeys();

/// The job that an object describes, its relative paths taken from `directory`. Mistakes go to `errors`.
Job jobFromJson(const QJsonObject &root, const QDir &directory, QStringList *errors);
