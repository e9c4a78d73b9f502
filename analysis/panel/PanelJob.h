#pragma once

#include "analysis/job/Job.h"
#include "analysis/model/Quality.h"

#include <QStringList>
#include <QVector>

#include <functional>
#include <vector>

class PanelInputs;
class QWidget;
class Ui_FourPs;

/// The panel's inputs and settings as a job, both ways.
class PanelJob
{
public:
    PanelJob(const QWidget *panel, const Ui_FourPs &form, const PanelInputs &inputs);

    /// Puts a job in the place of all present inputs and settings; the edge is left to be applied. `loading` hears of
    /// every file before it is read. One sentence, beginning with the key in the job, for each file that could not be
    /// loaded.
    QStringList load(const Job &job, const std::function<void(const QString &file)> &loading) const;

    Job present() const;

private:
    const QWidget *m_panel;
    const Ui_FourPs &ui;
    const PanelInputs &m_inputs;
};

/// The regions of a job for the model, in the same order, and back.
std::vector<Region> regionsOf(const Job &job);
QVector<Job::Region> jobRegions(const std::vector<Region> &regions);
