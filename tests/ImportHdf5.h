#pragma once

#include <hdf5.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace importtools
{

/// How a dataset is stored.
struct Storage {
    hid_t type = -1; ///< in the file; -1: doubles
    std::vector<hsize_t> chunk = {};
    bool isPacked = false;
    bool isEmpty = false;
};

/// Makes an HDF5 file with the library itself; groups are made on the way.
class Hdf5Maker
{
public:
    explicit Hdf5Maker(const QString &path)
        : m_file(H5Fcreate(path.toLocal8Bit().constData(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT))
        , m_links(H5Pcreate(H5P_LINK_CREATE))
    {
        H5Pset_create_intermediate_group(m_links, 1);
    }
    ~Hdf5Maker()
    {
        H5Pclose(m_links);
        H5Fclose(m_file);
    }

    void numbers(const char *path, const std::vector<double> &values, const std::vector<hsize_t> &shape,
                 const Storage &storage = Storage())
    {
        const hid_t space = H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr);
        const hid_t properties = H5Pcreate(H5P_DATASET_CREATE);
        if (!storage.chunk.empty())
            H5Pset_chunk(properties, static_cast<int>(storage.chunk.size()), storage.chunk.data());
        if (storage.isPacked)
            H5Pset_deflate(properties, 6);
        const hid_t type = storage.type < 0 ? H5T_NATIVE_DOUBLE : storage.type;
        const hid_t dataset = H5Dcreate2(m_file, path, type, space, m_links, properties, H5P_DEFAULT);
        if (!storage.isEmpty)
            H5Dwrite(dataset, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
        H5Dclose(dataset);
        H5Pclose(properties);
        H5Sclose(space);
    }
    void list(const char *path, const std::vector<double> &values) { numbers(path, values, {values.size()}); }

    void text(const char *path, const QByteArray &text)
    {
        const hid_t type = textType(static_cast<std::size_t>(text.size()));
        const hid_t space = H5Screate(H5S_SCALAR);
        const hid_t dataset = H5Dcreate2(m_file, path, type, space, m_links, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, text.constData());
        H5Dclose(dataset);
        H5Sclose(space);
        H5Tclose(type);
    }

    /// An attribute of texts, of variable length, as newer programs write them; one text for one value.
    void attribute(const char *owner, const char *name, const QStringList &texts)
    {
        const hid_t type = textType(H5T_VARIABLE);
        std::vector<QByteArray> bytes;
        std::vector<const char *> pointers;
        for (const QString &text : texts)
            bytes.push_back(text.toUtf8());
        for (const QByteArray &one : bytes)
            pointers.push_back(one.constData());
        const hsize_t count = pointers.size();
        const hid_t space = count == 1 ? H5Screate(H5S_SCALAR) : H5Screate_simple(1, &count, nullptr);
        add(owner, name, type, space, pointers.data());
        H5Tclose(type);
    }
    void attribute(const char *owner, const char *name, int number)
    {
        add(owner, name, H5T_NATIVE_INT, H5Screate(H5S_SCALAR), &number);
    }

private:
    static hid_t textType(std::size_t size)
    {
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, size);
        return type;
    }
    void add(const char *owner, const char *name, hid_t type, hid_t space, const void *values)
    {
        const hid_t attribute =
            H5Acreate_by_name(m_file, owner, name, type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Awrite(attribute, type, values);
        H5Aclose(attribute);
        H5Sclose(space);
    }

    hid_t m_file;
    hid_t m_links;
};

} // namespace importtools
