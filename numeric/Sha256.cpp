#include "numeric/Sha256.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace numeric
{

QByteArray sha256OfFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    QCryptographicHash sum(QCryptographicHash::Sha256);
    return sum.addData(&file) ? sum.result().toHex() : QByteArray();
}

} // namespace numeric
