#pragma once

#include "plan/PlanResult.h"

#include <QImage>

/// Above the normalised references with the planned energies as lines, each with its share of the exposure, below the
/// worth of the candidates: root of the criterion with the nearest planned energy moved there. Needs a QGuiApplication.
QImage planPicture(const PlanRequest &request, const PlanResult &result);
