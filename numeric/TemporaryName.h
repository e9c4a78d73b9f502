#pragma once

#include <QString>

#include <memory>

namespace numeric
{

/// To be called once, at the start of a program. A signal that ends the program (interrupt, terminate, hang up, nobody
/// reads any more) then takes the temporary files with it before it is obeyed; a file that outgrows a limit is a failed
/// write instead of the end of the program.
void prepareForSignals();

/// The name of a file that is not to stay: the file is removed when this ends, or before a signal is obeyed, unless it
/// is kept.
class TemporaryName
{
public:
    /// Best made before the file.
    explicit TemporaryName(const QString &path)
        : TemporaryName(path, false)
    {
    }
    ~TemporaryName();
    TemporaryName(const TemporaryName &) = delete;
    TemporaryName &operator=(const TemporaryName &) = delete;

    const QString &path() const { return m_path; }
    /// The file has another name now, or is no longer ours to remove.
    void keep();

private:
    struct Entry;
    friend void removeTemporaryFiles();
    friend class TemporaryFolder;
    TemporaryName(const QString &path, bool isFolder);

    QString m_path;
    Entry *m_entry;
};

/// A new folder of its own in the folder for temporary files. With all that is in it, it is removed when this ends, or
/// (on Linux) before a signal is obeyed.
class TemporaryFolder
{
public:
    TemporaryFolder();

    bool isValid() const { return m_name != nullptr; }
    /// Empty where no folder could be made.
    QString path() const { return m_name ? m_name->path() : QString(); }

private:
    std::unique_ptr<TemporaryName> m_name;
};

/// While it lives a signal that ends the program waits; it is obeyed afterwards. Not to be nested.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;
};

} // namespace numeric
