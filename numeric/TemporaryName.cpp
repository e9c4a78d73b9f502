#include "numeric/TemporaryName.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#endif

namespace numeric
{

/// Entries are never freed: a signal may come while another thread reads the list.
struct TemporaryName::Entry {
    const QByteArray name;
    const bool isFolder;
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

TemporaryName::TemporaryName(const QString &path, bool isFolder)
    : m_path(path)
    , m_entry(new Entry{QFile::encodeName(path), isFolder})
{
    void *newest = newestEntry;
    do
        m_entry->next = static_cast<Entry *>(newest);
    while (!newestEntry.compare_exchange_weak(newest, m_entry));
}

TemporaryName::~TemporaryName()
{
    if (m_entry->isOurs && m_entry->isFolder)
        QDir(m_path).removeRecursively();
    else if (m_entry->isOurs)
        QFile::remove(m_path);
    keep();
}

void TemporaryName::keep()
{
    m_entry->isOurs = false;
}

TemporaryFolder::TemporaryFolder()
{
    const HeldSignals held; // between the folder and its entry
    QTemporaryDir folder;
    folder.setAutoRemove(false);
    if (folder.isValid())
        m_name.reset(new TemporaryName(folder.path(), true));
}

#ifdef Q_OS_UNIX

namespace
{

#ifdef Q_OS_LINUX

/// Removes a folder with all that is in it by system calls alone, as readdir() may not be called by a signal. Tries
/// again while other threads still write into it.
void removeFolder(int parent, const char *name, int depth)
{
    constexpr int tries = 8;
    for (int i = 0; i < tries; ++i) {
        const int folder = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (folder < 0)
            return;
        alignas(dirent64) char entries[4096];
        for (ssize_t size = 0; (size = ::getdents64(folder, entries, sizeof entries)) > 0;) {
            for (ssize_t at = 0; at < size;) {
                const auto *entry = reinterpret_cast<const dirent64 *>(entries + at);
                at += entry->d_reclen;
                const bool isItself = std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0;
                if (!isItself && ::unlinkat(folder, entry->d_name, 0) != 0 && depth > 0)
                    removeFolder(folder, entry->d_name, depth - 1);
            }
        }
        ::close(folder);
        if (::unlinkat(parent, name, AT_REMOVEDIR) == 0)
            return;
    }
}

void removeFolder(const char *name)
{
    constexpr int depth = 4; // of folders in it
    removeFolder(AT_FDCWD, name, depth);
}

#else

void removeFolder(const char *name)
{
    ::rmdir(name); // where it is empty
}

#endif

} // namespace

/// Called by a signal: only what may be called then.
void removeTemporaryFiles()
{
    const auto *entry = static_cast<TemporaryName::Entry *>(newestEntry.load());
    for (; entry != nullptr; entry = entry->next) {
        if (entry->isOurs && entry->isFolder)
            removeFolder(entry->name.constData());
        else if (entry->isOurs)
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
