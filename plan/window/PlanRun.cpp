#include "plan/window/PlanRun.h"

#include "plan/PlanText.h"

PlanRun::PlanRun()
{
    connect(&m_work, &BackgroundWork::finished, this, &PlanRun::finished);
}

PlanRun::~PlanRun()
{
    stop();
}

void PlanRun::start(const PlanRequest &request)
{
    if (isRunning())
        return;
    m_request = request;
    m_outcome = planText(PlanText::Stopped); // until there is another one
    m_isStopped = false;
    m_told = 0;
    m_work.start([this] { m_outcome = planEnergies(m_request, [this](double done) { return tell(done); }); });
}

bool PlanRun::tell(double done)
{
    const int percent = qBound(0, static_cast<int>(100.0 * done), 100);
    if (percent != m_told) {
        m_told = percent;
        emit progress(percent); // across the threads, and so queued
    }
    return !m_isStopped;
}
