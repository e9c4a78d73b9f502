#pragma once

#include "analysis/model/AnalysisInput.h"
#include "plan/PlanInput.h"
#include "plan/window/PlanRun.h"

#include <QFrame>
#include <QVector>

#include <array>
#include <functional>

class PlanView;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;

/// A window that plans the energies of maps for the references loaded and the fit that is set, and hands them on.
class PlanPage : public QFrame
{
    Q_OBJECT

public:
    /// `inputs`: what is set in the window. `emptyRows`: how many energy rows could take an energy.
    PlanPage(std::function<AnalysisInput()> inputs, std::function<int()> emptyRows);

    /// Plans, or says why not.
    void plan();

signals:
    /// The user wants these energies, eV; `vPoint`: which of them is the V point, -1: none.
    void wanted(const QVector<double> &energies, int vPoint);

protected:
    bool event(QEvent *event) override;

private:
    QWidget *newInputs();
    QWidget *newResults();
    void addFields(QFormLayout *form);
    void addButtons(QFormLayout *form);
    void startOrStop();
    void showOutcome();
    void say(const QString &text) const;
    void refresh();
    void refreshUse();
    void use();
    const PlanResult *result() const;
    QString tableText() const;

    std::function<AnalysisInput()> m_inputs;
    std::function<int()> m_emptyRows;
    std::array<QLineEdit *, planFieldCount> m_fields = {};
    QComboBox *m_mode = nullptr;
    QCheckBox *m_extraTerm = nullptr;
    QLabel *m_subject = nullptr;
    QLabel *m_text = nullptr;
    QPushButton *m_plan = nullptr;
    QPushButton *m_use = nullptr;
    QPushButton *m_copy = nullptr;
    QProgressBar *m_progress = nullptr;
    PlanView *m_view = nullptr;
    QTableWidget *m_energies = nullptr;
    QTableWidget *m_sets = nullptr;
    QString m_note; ///< besides the plan
    PlanRun m_run;
};
