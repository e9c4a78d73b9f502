#pragma once

#include <hdf5.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <utility>

/// Owns an identifier of the HDF5 library.
class Hdf5Id
{
public:
    using Close = herr_t (*)(hid_t);
    Hdf5Id() = default;
    Hdf5Id(hid_t id, Close close)
        : m_id(id)
        , m_close(close)
    {
    }
    Hdf5Id(Hdf5Id &&other) noexcept { *this = std::move(other); }
    Hdf5Id &operator=(Hdf5Id &&other) noexcept
    {
        std::swap(m_id, other.m_id);
        std::swap(m_close, other.m_close);
        return *this;
    }
    ~Hdf5Id()
    {
        if (m_id >= 0)
            m_close(m_id);
    }
    bool isValid() const { return m_id >= 0; }
    operator hid_t() const { return m_id; }

private:
    hid_t m_id = -1;
    Close m_close = nullptr;
};

/// A dataset as --list and the layouts see it.
struct Hdf5Dataset {
    QString path;
    QVector<qint64> shape; ///< empty for a single value
    QString type;          ///< "float64", "uint16", "text", ...
    bool isNumeric = false;

    bool exists() const { return !path.isEmpty(); }
    int rank() const { return shape.size(); }
};

/// An HDF5 file that is read. Not to be used by two threads at once.
class Hdf5File
{
public:
    /// Null, with one sentence, when it cannot be opened.
    static std::shared_ptr<Hdf5File> open(const QString &path, QString *error);

    QString name() const { return m_name; } ///< the path of the file
    hid_t id() const { return m_file; }

    /// All datasets, links followed; cut off after some ten thousand objects.
    QVector<Hdf5Dataset> datasets() const;
    /// Names of the objects in a group; empty when it is none.
    QStringList children(const QString &group) const;
    /// The dataset, which does not exist() when there is none.
    Hdf5Dataset dataset(const QString &path) const;

    /// All values of a numeric dataset of at most a million; empty when it is none or cannot be read.
    QVector<double> numbers(const QString &path) const;
    /// The first text of a dataset of texts; empty when it is none.
    QString text(const QString &path) const;
    /// An attribute of a group or dataset as texts, numbers too; empty without one.
    QStringList attribute(const QString &path, const char *name) const;

private:
    void collect(const QString &group, int depth, int *visited, QVector<Hdf5Dataset> *found) const;
    /// The object, closed by whoever asks; not valid when a part of the path is missing.
    Hdf5Id object(const QString &path) const;

    QString m_name;
    Hdf5Id m_file;
};
