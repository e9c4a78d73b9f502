// The checks before a calculation and the choice of the method.

#include "analysis/panel/FourPs.h"
#include "controls/Field.h"
#include "controls/WaitCursor.h"

#include <algorithm>

void FourPs::calcBoth()
{
    if (m_isLoading)
        return;
    setAutoRanges();
    calcMap();
    calcTarget();
    lcf();
}

void FourPs::calcAndWrite()
{
    calcMap();
    write();
}

FourPs::UsedRows FourPs::usedRows(bool withMap) const
{
    UsedRows rows;
    for (AEPoint *const row : m_energyRows) {
        if (!row->isUsed() || (withMap && !row->loaded()))
            continue;
        rows.all.append(row);
        if (row->isVPoint())
            rows.vPoint = row;
        else
            rows.anchors.append(row);
    }
    return rows;
}

QVector<ARefFile *> FourPs::usedReferences() const
{
    QVector<ARefFile *> used;
    std::copy_if(m_references.begin(), m_references.end(), std::back_inserter(used),
                 [](const ARefFile *reference) { return reference->isUsed(); });
    return used;
}

QVector<ARefFile *> FourPs::validReferences() const
{
    QVector<ARefFile *> valid;
    std::copy_if(m_references.begin(), m_references.end(), std::back_inserter(valid),
                 [](const ARefFile *reference) { return reference->isUsed() && reference->selector()->valid(); });
    return valid;
}

void FourPs::setAutoRanges()
{
    const QVector<ARefFile *> used = usedReferences();
    if (ui.HgAAuto->isChecked()) {
        double smallest = 10.0;
        double largest = 0.0;
        for (const ARefFile *const reference : used) {
            smallest = std::min(smallest, reference->valence());
            largest = std::max(largest, reference->valence());
        }
        showNumber(ui.HgAFrom, smallest - 0.5);
        showNumber(ui.HgATo, largest + 0.5);
    }
    if (ui.HgTAuto->isChecked()) {
        // Counts the valid ones but takes the first of the used ones: an invalid reference before a valid one is
        // taken in its place. Results written so far depend on it.
        const int count = validReferences().size();
        double sum = 0.0;
        for (int k = 0; k < count; ++k)
            sum += used[k]->selector()->spectrum().edgeJump();
        showNumber(ui.HgTFrom, -0.5);
        showNumber(ui.HgTTo, sum + 0.5);
    }
}

void FourPs::calcMap()
{
    const WaitCursor wait;
    const UsedRows rows = usedRows(true);
    if (!ui.TypeNonEquiv->isChecked() && !rows.vPoint) {
        refuse(Step::Map, tr("V Point is not selected"));
        return;
    }
    const int valid = validReferences().size();
    if (!enoughReferences(Step::Map, valid))
        return;
    for (int i = 0; i < m_references.size(); ++i) {
        if (m_references[i]->isUsed() && !m_references[i]->selector()->valid()) {
            refuse(Step::Map, tr("Ref File %1 is not valid.").arg(i));
            return;
        }
    }

    const int n = rows.all.size();
    if (!ui.TypeNonEquiv->isChecked()) {
        if (const auto variant = variantFor(Step::Map, n); variant != FourPointsVariant::None)
            calcFourPointsMap(rows, variant);
        return;
    }
    const bool linear = ui.NonEquivBGLinear->isChecked();
    const int need = valid + 3 - (linear ? 1 : 0);
    if (n >= need)
        calcNonEquivalentMap(rows, !linear);
    else
        refuse(Step::Map, tr("Number of selected data sets %1 is less than %2.").arg(n).arg(need));
}

void FourPs::calcTarget()
{
    const UsedRows rows = usedRows(false);
    if (!rows.vPoint) {
        refuse(Step::Target, tr("V Point is not selected."));
        return;
    }
    if (!enoughReferences(Step::Target, validReferences().size()))
        return;
    const QVector<ARefFile *> used = usedReferences();
    if (!used[0]->selector()->valid()) {
        refuse(Step::Target, tr("The 1st Ref File is not valid."));
        return;
    }
    if (!used[1]->selector()->valid()) {
        refuse(Step::Target, tr("The 2nd Ref File is not valid."));
        return;
    }
    if (!ui.TargetFS->valid()) {
        refuse(Step::Target, tr("Target File1 is not valid."));
        return;
    }

    const int n = rows.all.size();
    if (!ui.TypeNonEquiv->isChecked()) {
        if (const auto variant = variantFor(Step::Target, n); variant != FourPointsVariant::None)
            calcFourPointsTarget(rows, variant);
        return;
    }
    const bool linear = ui.NonEquivBGLinear->isChecked();
    const int need = linear ? 4 : 5;
    if (n >= need)
        calcNonEquivalentTarget(rows, !linear);
    else
        refuse(Step::Target, tr("Number of selected data sets %1 is not %2.").arg(n).arg(need));
}

bool FourPs::enoughReferences(Step step, int valid)
{
    if (valid >= 2)
        return true;
    refuse(step, tr("Number of valied Ref Files is %1, which is less than 2.").arg(valid));
    return false;
}

/// The variant of the four-points method for n points; None is reported.
FourPointsVariant FourPs::variantFor(Step step, int n)
{
    const auto variant = chooseFourPoints(n, ui.TypeTMKisExact->isChecked(), ui.TypeTMKisLS->isChecked());
    if (variant == FourPointsVariant::None)
        refuse(step, tr("Number of selected data sets %1 is not %2.").arg(n).arg(4));
    return variant;
}
