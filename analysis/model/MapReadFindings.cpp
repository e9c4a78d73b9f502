#include "analysis/model/MapReadFindings.h"

#include "analysis/model/AnalysisInput.h"
#include "analysis/model/UsedPoints.h"

#include <QCoreApplication>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

/// A position with all the digits that tell it from its neighbours.
QString positionText(double position)
{
    return QString::number(position, 'g', 10);
}

QString orderText(int row, const OrderBreak &found)
{
    const char *const text = found.isAlongX
                                 ? QT_TRANSLATE_NOOP("FourPs", "Energy %1: the records are in another order than the "
                                                               "header says: x is %2 in record %3 and %4 in record %5")
                                 : QT_TRANSLATE_NOOP("FourPs", "Energy %1: the records are in another order than the "
                                                               "header says: y is %2 in record %3 and %4 in record %5");
    return translated(text).arg(QString::number(row + 1), positionText(found.positionFrom),
                                QString::number(found.from + 1), positionText(found.positionTo),
                                QString::number(found.to + 1));
}

QStringList sentencesOn(int row, const A2DData &map)
{
    const QString energy = QString::number(row + 1);
    const MapLoadFacts &facts = map.facts();
    const qint64 wanted = qint64(map.nx()) * map.ny();
    QStringList sentences;
    if (map.count() != wanted)
        sentences << translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: the map has %2 records, not %3 x %4 = %5"))
                         .arg(energy)
                         .arg(map.count())
                         .arg(map.nx())
                         .arg(map.ny())
                         .arg(wanted);
    if (facts.unreadableRecords > 0)
        sentences << translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: %2 of %3 records have a value that is no "
                                                            "number and counts as 0 (decimals take a point)"))
                         .arg(energy)
                         .arg(facts.unreadableRecords)
                         .arg(map.count());
    if (sentences.isEmpty() && facts.orderBreak)
        sentences << orderText(row, *facts.orderBreak);
    if (facts.changedMeanwhile)
        sentences
            << translated(QT_TRANSLATE_NOOP("FourPs", "Energy %1: the map file changed while it was read")).arg(energy);
    return sentences;
}

} // namespace

QVector<Finding> findInReadMaps(const AnalysisInput &input)
{
    QVector<Finding> found;
    for (const int row : usedPoints(input, true).all) {
        for (const QString &sentence : sentencesOn(row, *input.points[row].map))
            found.append({Finding::Severity::Error, Finding::Place::Point, row, sentence, Finding::Map});
    }
    return found;
}
