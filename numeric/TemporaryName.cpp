#include "numeric/TemporaryName.h"

#include <QFile>

#include <atomic>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace numeric
{

/// Entries are never freed: a signal may come while another thread reads the list.
struct TemporaryName::Entry {
    const QByteArray name;
    std::atomic<bool> isOurs{true};
    Entry *next = nullptr;
};

namespace
{

enum State { running, held, ending };
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<void *>::is_always_lock_free);
std::atomic<int> state{running};
std::atomic<int> waitingSignal{0};
std::atomic<void *> newestEntry{nullptr}; // of an Entry, whose name is private

} // namespace

TemporaryName::TemporaryName(const QString &path)
    : m_path(path)
    , m_entry(new Entry{QFile::encodeName(path)})
{
    void *newest = newestEntry;
    do
        m_entry->next = static_cast<Entry *>(newest);
    while (!newestEntry.compare_exchange_weak(newest, m_entry));
}

TemporaryName::~TemporaryName()
{
    if (m_entry->isOurs)
        QFile::remove(m_path);
    keep();
}

void TemporaryName::keep()
{
    m_entry->isOurs = false;
}

#ifdef Q_OS_UNIX

/// Called by a signal: only what may be called then.
void removeTemporaryFiles()
{
    const auto *entry = static_cast<TemporaryName::Entry *>(newestEntry.load());
    for (; entry != nullptr; entry = entry->next) {
        if (entry->isOurs)
            ::unlink(entry->name.constData());
    }
}

namespace
{

/// Either holds or ends, whichever comes first; the other one waits for it.
extern "C" void endBySignal(int number)
{
    waitingSignal = number;
    int before = running;
    if (!state.compare_exchange_strong(before, ending) && before == held)
        return;
    removeTemporaryFiles();
    std::signal(number, SIG_DFL);
    std::raise(number); // comes when this function has returned
}

} // namespace

void prepareForSignals()
{
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        struct sigaction action = {};
        action.sa_handler = endBySignal;
        action.sa_flags = SA_RESTART;
        struct sigaction before = {};
        if (sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_DFL) // a nohup stays one
            sigaction(number, &action, nullptr);
    }
}

HeldSignals::HeldSignals()
{
    int before = running;
    while (!state.compare_exchange_strong(before, held) && before == ending)
        ::pause(); // until the program is gone
}

HeldSignals::~HeldSignals()
{
    state = running;
    if (const int number = waitingSignal)
        std::raise(number);
}

#else

void prepareForSignals() {}
HeldSignals::HeldSignals() = default;
HeldSignals::~HeldSignals() = default;

#endif

} // namespace numeric
