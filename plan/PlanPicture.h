#pragma once

#include "plan/PlanResult.h"

#include <QImage>
#include <QSize>

class QPainter;

/// Above the normalised references with the planned energies as lines, each with its share of the exposure, below the
/// worth of the candidates: root of the criterion with the nearest planned energy moved there. `textSize`, pixels, also
/// gives the widths of margins and lines. Needs a QGuiApplication.
void drawPlan(QPainter *p, const QSize &size, int textSize, const PlanRequest &request, const PlanResult &result);

/// The same as a picture of 1500 x 1100 pixels.
QImage planPicture(const PlanRequest &request, const PlanResult &result);
