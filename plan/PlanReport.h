#pragma once

#include "plan/PlanResult.h"

#include <QByteArray>
#include <QString>

/// The table for the eye, in the language of the program.
QString planTable(const PlanRequest &request, const PlanResult &result);

/// What an energy is there for, such as "ref1.dat against ref2.dat".
QString planRoleText(const PlanRequest &request, const PlanRole &role);

/// The table as JSON; docs/planning.md names the keys. Numbers that are not finite become null.
QByteArray planReport(const PlanRequest &request, const PlanResult &result, const QString &planFile);
