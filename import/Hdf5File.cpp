#include "import/Hdf5File.h"

#include "import/ImportText.h"

#include <QDir>
#include <QFile>

#include <vector>

namespace
{

constexpr int mostObjects = 20000;
constexpr int deepest = 16;
constexpr hssize_t mostNumbers = 1000000;
constexpr std::size_t longestText = 65536;

QString typeName(hid_t type)
{
    const std::size_t bits = H5Tget_size(type) * 8;
    switch (H5Tget_class(type)) {
    case H5T_INTEGER:
        return (H5Tget_sign(type) == H5T_SGN_NONE ? QStringLiteral("uint%1") : QStringLiteral("int%1")).arg(bits);
    case H5T_FLOAT:
        return QStringLiteral("float%1").arg(bits);
    case H5T_STRING:
        return QStringLiteral("text");
    default:
        return QStringLiteral("other");
    }
}

/// Texts of a dataset or attribute, read by `read(type in memory, buffer)`.
template <class Read>
QStringList readTexts(hid_t type, hid_t space, Read read)
{
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if (count < 1 || count > 10000)
        return {};
    const auto texts = static_cast<std::size_t>(count);
    QStringList found;
    const Hdf5Id memoryType(H5Tcopy(H5T_C_S1), H5Tclose);
    H5Tset_cset(memoryType, H5Tget_cset(type));
    if (H5Tis_variable_str(type) > 0) {
        H5Tset_size(memoryType, H5T_VARIABLE);
        std::vector<char *> pointers(texts, nullptr);
        if (read(memoryType, static_cast<void *>(pointers.data())) < 0)
            return {};
        for (const char *const pointer : pointers)
            found << QString::fromUtf8(pointer);
        H5Dvlen_reclaim(memoryType, space, H5P_DEFAULT, static_cast<void *>(pointers.data()));
        return found;
    }
    const std::size_t length = H5Tget_size(type);
    if (length == 0 || length > longestText)
        return {};
    H5Tset_size(memoryType, length);
    H5Tset_strpad(memoryType, H5Tget_strpad(type));
    std::vector<char> bytes(length * texts);
    if (read(memoryType, bytes.data()) < 0)
        return {};
    for (std::size_t i = 0; i < texts; ++i) {
        const QByteArray one(bytes.data() + i * length, static_cast<int>(length));
        found << QString::fromUtf8(one.constData(),
                                   static_cast<int>(qstrnlen(one.constData(), static_cast<uint>(length))))
                     .trimmed();
    }
    return found;
}

} // namespace

std::shared_ptr<Hdf5File> Hdf5File::open(const QString &path, QString *error)
{
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); // what went wrong is told in one sentence, not as a stack of calls
    auto file = std::make_shared<Hdf5File>();
    file->m_name = QDir::toNativeSeparators(path);
    file->m_file = Hdf5Id(H5Fopen(QFile::encodeName(path).constData(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose);
    if (file->m_file.isValid())
        return file;
    *error = ImportText::tr("%1 is no whole HDF5 file: it is damaged or cut off").arg(file->m_name);
    return nullptr;
}

Hdf5Id Hdf5File::object(const QString &path) const
{
    const QByteArray name = path.toUtf8();
    return Hdf5Id(H5Oopen(m_file, name.constData(), H5P_DEFAULT), H5Oclose);
}

QStringList Hdf5File::children(const QString &group) const
{
    const Hdf5Id parent = object(group);
    QStringList names;
    if (!parent.isValid() || H5Iget_type(parent) != H5I_GROUP)
        return names;
    const auto add = [](hid_t, const char *name, const H5L_info_t *, void *list) -> herr_t {
        *static_cast<QStringList *>(list) << QString::fromUtf8(name);
        return static_cast<QStringList *>(list)->size() < mostObjects ? 0 : 1;
    };
    H5Literate(parent, H5_INDEX_NAME, H5_ITER_NATIVE, nullptr, add, &names);
    return names;
}

void Hdf5File::collect(const QString &group, int depth, int *visited, QVector<Hdf5Dataset> *found) const
{
    for (const QString &name : children(group)) {
        if (++*visited > mostObjects)
            return;
        const QString path = group + (group.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/")) + name;
        const Hdf5Dataset one = dataset(path);
        if (one.exists())
            found->append(one);
        else if (depth < deepest)
            collect(path, depth + 1, visited, found);
    }
}

QVector<Hdf5Dataset> Hdf5File::datasets() const
{
    QVector<Hdf5Dataset> found;
    int visited = 0;
    collect(QStringLiteral("/"), 0, &visited, &found);
    return found;
}

Hdf5Dataset Hdf5File::dataset(const QString &path) const
{
    Hdf5Dataset found;
    const Hdf5Id one = object(path);
    if (!one.isValid() || H5Iget_type(one) != H5I_DATASET)
        return found;
    const Hdf5Id type(H5Dget_type(one), H5Tclose);
    const Hdf5Id space(H5Dget_space(one), H5Sclose);
    const int rank = H5Sget_simple_extent_ndims(space);
    if (!type.isValid() || rank < 0)
        return found;
    std::vector<hsize_t> lengths(static_cast<std::size_t>(rank) + 1);
    H5Sget_simple_extent_dims(space, lengths.data(), nullptr);
    for (int i = 0; i < rank; ++i)
        found.shape << static_cast<qint64>(lengths[static_cast<std::size_t>(i)]);
    found.path = path;
    found.type = typeName(type);
    const H5T_class_t kind = H5Tget_class(type);
    found.isNumeric = kind == H5T_INTEGER || kind == H5T_FLOAT;
    return found;
}

QVector<double> Hdf5File::numbers(const QString &path) const
{
    const Hdf5Dataset description = dataset(path);
    const Hdf5Id one = object(path);
    if (!description.isNumeric)
        return {};
    const Hdf5Id space(H5Dget_space(one), H5Sclose);
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if (count < 1 || count > mostNumbers)
        return {};
    QVector<double> values(static_cast<int>(count));
    if (H5Dread(one, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()) < 0)
        return {};
    return values;
}

QString Hdf5File::text(const QString &path) const
{
    const Hdf5Id one = object(path);
    if (!one.isValid() || H5Iget_type(one) != H5I_DATASET)
        return QString();
    const Hdf5Id type(H5Dget_type(one), H5Tclose);
    const Hdf5Id space(H5Dget_space(one), H5Sclose);
    if (H5Tget_class(type) != H5T_STRING)
        return QString();
    const hid_t id = one;
    return readTexts(type, space,
                     [id](hid_t memoryType, void *buffer) {
                         return H5Dread(id, memoryType, H5S_ALL, H5S_ALL, H5P_DEFAULT, buffer);
                     })
        .value(0);
}

QStringList Hdf5File::attribute(const QString &path, const char *name) const
{
    const Hdf5Id owner = object(path);
    if (!owner.isValid() || H5Aexists(owner, name) <= 0)
        return {};
    const Hdf5Id attribute(H5Aopen(owner, name, H5P_DEFAULT), H5Aclose);
    const Hdf5Id type(H5Aget_type(attribute), H5Tclose);
    const Hdf5Id space(H5Aget_space(attribute), H5Sclose);
    const hid_t id = attribute;
    const H5T_class_t kind = H5Tget_class(type);
    if (kind == H5T_STRING)
        return readTexts(type, space, [id](hid_t memoryType, void *buffer) { return H5Aread(id, memoryType, buffer); });
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if ((kind != H5T_INTEGER && kind != H5T_FLOAT) || count < 1 || count > 10000)
        return {};
    std::vector<double> values(static_cast<std::size_t>(count));
    QStringList found;
    if (H5Aread(id, H5T_NATIVE_DOUBLE, values.data()) >= 0) {
        for (const double value : values)
            found << QString::number(value, 'g', 15);
    }
    return found;
}
