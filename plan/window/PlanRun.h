#pragma once

#include "controls/BackgroundWork.h"
#include "plan/PlanResult.h"

#include <QObject>

#include <atomic>

/// A planning beside the window, with its progress; it can be stopped.
class PlanRun : public QObject
{
    Q_OBJECT

public:
    PlanRun();
    /// Stops.
    ~PlanRun() override;

    /// Nothing while one is running.
    void start(const PlanRequest &request);
    void stop() { m_isStopped = true; }
    bool isRunning() const { return m_work.isRunning(); }

    /// Of the last planning; to be read while none is running.
    const PlanRequest &request() const { return m_request; }
    const std::variant<PlanResult, QString> &outcome() const { return m_outcome; }

signals:
    void progress(int percent);
    void finished();

private:
    bool tell(double done);

    PlanRequest m_request;
    std::variant<PlanResult, QString> m_outcome;
    std::atomic<bool> m_isStopped{false};
    int m_told = 0;        ///< per cent; the planning's own
    BackgroundWork m_work; ///< last: it ends before what it writes to goes
};
