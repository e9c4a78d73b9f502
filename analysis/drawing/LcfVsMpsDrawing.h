#pragma once

#include "analysis/results/Comparison.h"
#include "display/RealRange.h"

#include <QColor>
#include <QString>
#include <QVector>

#include <optional>

class DispABase;
class QStylePainter;

struct LcfVsMpsInput {
    QVector<ComparisonRecord> records; ///< in the order found
    QVector<QColor> colours;           ///< the palette; an index beyond it starts again
    double valenceA = 0.0;             ///< of the first and second reference in use
    double valenceB = 0.0;
    QString xTitle;
    QString yTitle;
};

namespace resultdrawing
{

const QColor agreementColour(0, 200, 0);
const QColor newestRecordColour(255, 0, 0);

/// From 0.2 below the first valence to 0.2 above the second, on both axes. None without records.
std::optional<RealRange> naturalRange(const LcfVsMpsInput &input);

/// The valences of the fits against those of the four-points method; on the diagonal both agree. The newest record is
/// red. Without records the area is only white.
void drawLcfVsMps(DispABase *display, QStylePainter *p, const LcfVsMpsInput &input);

} // namespace resultdrawing
