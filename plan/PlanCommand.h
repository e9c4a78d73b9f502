#pragma once

#include "plan/PlanOptions.h"

class QTextStream;

/// How a planning ended; the values are the program's exit codes.
enum class PlanOutcome { Done = 0, Refused = 1, WrongPlan = 2, CannotWrite = 3 };

/// Runs flokluk-plan as the options say: the table goes to `out`, progress (on a terminal) and one sentence per mistake
/// to `err`. Nothing is written unless there is a plan. Returns the exit code. Needs a QGuiApplication for a picture.
int runPlanCommand(const PlanOptions &options, QTextStream *out, QTextStream *err, bool isTerminal = false);
