#pragma once

#include "analysis/model/Findings.h"

#include <QSet>
#include <QVector>

class PanelInputs;
class QWidget;
class Ui_FourPs;

/// Shows what is doubtful about the inputs: a red frame around the control concerned, and all of it in the tool tip of
/// the status line, which is red then.
class FindingMarks
{
public:
    FindingMarks(const Ui_FourPs &form, const PanelInputs &inputs);

    void show(const QVector<Finding> &findings);

private:
    QWidget *controlOf(const Finding &finding) const;

    const Ui_FourPs &ui;
    const PanelInputs &m_inputs;
    QSet<QWidget *> m_marked;
};
