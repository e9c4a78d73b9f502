#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

/// What the command line of flokluk-plan asks for.
struct PlanOptions {
    QString plan;
    QString report; ///< files; empty: none is written
    QString picture;
    QString job;
    std::uint64_t seed = 1;

    QString answer; ///< help or version, to be printed instead of planning
    QString error;  ///< why the command line cannot be taken; empty when it can
};

/// Reads the arguments, the program's name first.
PlanOptions parsePlanOptions(const QStringList &arguments);
