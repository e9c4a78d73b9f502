#pragma once

#include <QJsonObject>
#include <QString>
#include <QVector>

/// One analysis as a job file describes it. Paths are absolute or relative to the working directory.
struct Job {
    struct Reference {
        QString file;
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

    static constexpr int maxReferences = 4;
    static constexpr int maxEnergies = 8;

    QString fileName; ///< of the job itself, for messages
    QVector<Reference> references;
    Target target;
    QVector<Energy> energies;
    QJsonObject settings; ///< by the names of the panel's controls
    QString resultFile;   ///< empty: none is written
};

/// A job or, when it cannot be read, the one sentence that says why.
struct JobOrError {
    Job job;
    QString error; ///< empty when the job is good
};

/// Reads a job file (JSON). Relative paths in it are taken from its own directory. Names the file and the key (or the
/// line and column) of the first mistake, and for a misspelt key the nearest known one.
JobOrError readJob(const QString &path);
