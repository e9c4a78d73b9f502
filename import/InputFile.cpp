#include "import/InputFile.h"

#include "import/ImportText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

bool open(QFile *file, QString *error)
{
    const QFileInfo info(file->fileName());
    const QString name = QDir::toNativeSeparators(file->fileName());
    if (!info.exists())
        *error = ImportText::tr("%1: there is no such file").arg(name);
    else if (!info.isFile() || !file->open(QIODevice::ReadOnly))
        *error = ImportText::tr("%1 cannot be read").arg(name);
    else if (info.size() == 0)
        *error = ImportText::tr("%1 is empty").arg(name);
    else
        return true;
    return false;
}

/// The signature of HDF5 stands at 0, 512, 1024, 2048, ... (HDF5 File Format, section II.A).
bool isHdf5(QFile *file)
{
    constexpr qint64 farthest = 1 << 20;
    for (qint64 at = 0; at <= farthest && at < file->size(); at = at == 0 ? 512 : at * 2) {
        if (file->seek(at) && file->read(8) == QByteArray("\x89HDF\r\n\x1a\n", 8))
            return true;
    }
    return false;
}

} // namespace

NamedPart splitName(const QString &name)
{
    const int at = name.indexOf(QLatin1String("::"));
    return at < 0 ? NamedPart{name, QString()} : NamedPart{name.left(at), name.mid(at + 2)};
}

bool kindOf(const QString &path, InputKind *kind, QString *error)
{
    QFile file(path);
    if (!open(&file, error))
        return false;
    const QByteArray start = file.read(4096);
    const QByteArray magic = start.left(4);
    if (magic == QByteArray("II*\0", 4) || magic == QByteArray("MM\0*", 4) || magic == QByteArray("II+\0", 4) ||
        magic == QByteArray("MM\0+", 4))
        *kind = InputKind::Tiff;
    else if (start.contains("ScanDefinition"))
        *kind = InputKind::StackHeader;
    else if (isHdf5(&file))
        *kind = InputKind::Hdf5;
    else
        *kind = InputKind::Spectrum;
    return true;
}

bool readFile(const QString &path, QByteArray *bytes, QString *error)
{
    constexpr qint64 most = qint64(1) << 29;
    QFile file(path);
    if (!open(&file, error))
        return false;
    if (file.size() > most) {
        *error = ImportText::tr("%1 is too large for what it should be").arg(QDir::toNativeSeparators(path));
        return false;
    }
    *bytes = file.readAll();
    return true;
}

QString builtWithout(const QString &what, const QString &library)
{
    return ImportText::tr("%1 needs %2, which this program was built without").arg(what, library);
}
