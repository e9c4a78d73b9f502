// A click in a graph reports, a drag of a marker changes its field.

#include "analysis/panel/FieldMarkers.h"
#include "analysis/panel/FourPs.h"
#include "display/DispABase.h"
#include "display/MouseC.h"
#include "display/MouseRecording.h"
#include "numeric/FieldText.h"

#include <QApplication>

#include <algorithm>

void FourPs::connectClicks(DispABase *all)
{
    m_clickTimer.setSingleShot(true);
    connect(&m_clickTimer, &QTimer::timeout, this, &FourPs::reportValues);
    connect(all, &DispABase::mPressed, this, &FourPs::mPressedInAllMut);
    connect(all, &DispABase::mReleased, this, [this](const MouseC *m) { receiveReleaseInAllMut(*m); });
    connect(all, &DispABase::mDClicked, this, &FourPs::forgetClick);
}

void FourPs::mPressedInAllMut(MouseC *m)
{
    forgetClick();
    m_clickedEnergy = m_displays->display(Displays::Muts)->area()->cc.s2rx(m->pressX);
}

void FourPs::receiveReleaseInAllMut(const MouseC &mouse)
{
    if (!m_clickedEnergy)
        return;
    if (mouserecording::isBesidePress(mouse))
        m_clickTimer.start(QApplication::doubleClickInterval());
    else
        forgetClick();
}

void FourPs::forgetClick()
{
    m_clickTimer.stop();
    m_clickedEnergy.reset();
}

void FourPs::reportValues()
{
    message(tr("%1 eV: %2").arg(fieldText(*m_clickedEnergy), m_graphs.valuesAt(*m_clickedEnergy)));
    forgetClick();
}

/// The edge and the energies in use can be moved in the display of all spectra; not that of a map, which is a fact.
void FourPs::placeEnergyMarkers()
{
    m_energyMarkers->clear();
    m_energyMarkers->add(ui.EdgeE);
    for (AEPoint *const row : m_inputs.points()) {
        if (row->isUsed() && !row->loaded())
            m_energyMarkers->add(row->energyEdit());
    }
}

/// While a marker is dragged the ranges follow it; the lines are fitted anew when it is let go.
void FourPs::showMovingMarker()
{
    repaintGraphs({Displays::Muts});
    if (edgeTexts() == m_shownEdge) // an energy is moving
        return;
    m_shownEdge = edgeTexts();
    m_inputs.applyEdgeToRows();
    repaintGraphs({Displays::Ref1, Displays::Ref2, Displays::Ref3, Displays::Ref4, Displays::Target});
}

QString FourPs::markerName(const QLineEdit *field) const
{
    if (field == ui.EdgeE)
        return tr("edge");
    if (field == ui.PreEEndDE)
        return tr("end of the pre-edge range");
    if (field == ui.PostEStartDE)
        return tr("start of the post-edge range");
    const QVector<AEPoint *> &rows = m_inputs.points();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [field](const AEPoint *p) { return p->energyEdit() == field; });
    return tr("energy %1").arg(row - rows.begin() + 1);
}

/// A marker was let go: the same as if its field had been edited.
void FourPs::receiveMarker(QLineEdit *field, const QString &before)
{
    const QString moved = tr("%1 %2 -> %3").arg(markerName(field), before, field->text());
    const QVector<AEPoint *> &rows = m_inputs.points();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [field](const AEPoint *p) { return p->energyEdit() == field; });
    if (row != rows.end()) {
        (*row)->inNewEnergy();
        recalculateQuietly();
    } else {
        receiveEditedEdge();
    }
    showStatus(moved); // last: a recalculation has something to say, too
}
