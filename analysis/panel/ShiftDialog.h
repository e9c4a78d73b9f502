#pragma once

#include "analysis/model/AnalysisInput.h"
#include "analysis/shift/EnergyShift.h"
#include "controls/BackgroundWork.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

/// Looks for the energy shift of the maps, says what was found, and offers to apply it. The maps must stay as they are
/// meanwhile, so it is modal; it cannot be closed before the search has ended.
class ShiftDialog : public QDialog
{
    Q_OBJECT

public:
    /// Searches at once.
    ShiftDialog(const AnalysisInput &input, QWidget *parent);

    const EnergyShift &found() const { return m_found; }
    void reject() override;

signals:
    /// The user wants the shift that was found to be applied.
    void applied(double shift);

private:
    void show(const EnergyShift &found);

    AnalysisInput m_input;
    EnergyShift m_found;
    QLabel *m_text;
    QProgressBar *m_progress;
    QPushButton *m_apply;
    QPushButton *m_close;
    BackgroundWork m_work; ///< last: it ends before what it writes to goes
};
