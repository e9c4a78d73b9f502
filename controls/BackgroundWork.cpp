#include "controls/BackgroundWork.h"

#include <new>

BackgroundWork::~BackgroundWork() = default;

void BackgroundWork::start(const std::function<void()> &work)
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    const auto whole = [this, work] {
        try {
            work();
        } catch (const std::bad_alloc &) { // its results stay as they were
        }
        QMetaObject::invokeMethod(this, &BackgroundWork::end, Qt::QueuedConnection);
    };
    m_thread = std::make_unique<numeric::HelperThreads>(1); // the one before has ended
    if (!m_thread->start(whole))
        whole();
}

void BackgroundWork::end()
{
    m_isRunning = false;
    emit finished();
}
