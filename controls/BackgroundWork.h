#pragma once

#include "numeric/HelperThreads.h"

#include <QObject>

#include <functional>
#include <memory>

/// Work that a window stays usable during. What it reads must not change meanwhile.
class BackgroundWork : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    /// Waits for the work.
    ~BackgroundWork() override;

    /// Does the work on a thread of its own, or at once where there is none to be had; nothing while other work runs.
    /// Work that runs out of memory has ended, too.
    void start(const std::function<void()> &work);
    bool isRunning() const { return m_isRunning; }

signals:
    /// The work has ended: comes in the window's thread, after start() has returned.
    void finished();

private:
    void end();

    std::unique_ptr<numeric::HelperThreads> m_thread;
    bool m_isRunning = false;
};
