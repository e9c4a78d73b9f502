#pragma once

#include "import/ImportOptions.h"
#include "numeric/HelperThreads.h"

#include <QObject>

#include <atomic>
#include <memory>

/// One import after the other, each on a thread of its own, so that the window stays alive. Where the system refuses
/// to make a thread the caller waits instead.
class ImportRunner : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    /// Stops what is running and waits for it.
    ~ImportRunner() override;

    /// Only when none is running.
    void start(const ImportOptions &options);
    /// Asks the import to end; finished() follows.
    void stop() { m_isStopped = true; }
    bool isRunning() const { return m_thread != nullptr; }
    /// Of the last import, from finished() on.
    const ImportResult &result() const { return m_result; }

signals:
    /// What is being done, and the share of the whole that is, 0 to 1.
    void progressed(const QString &what, double done);
    void finished();
    /// Of the thread itself, when it has nothing left to do.
    void ending(QPrivateSignal);

private:
    void run(const ImportOptions &options);
    void end();

    ImportResult m_result;
    std::atomic<bool> m_isStopped = false;
    std::unique_ptr<numeric::HelperThreads> m_thread; ///< last: it uses the others
};
