#include "numeric/Sha256.h"

#include <QFile>
#include <QFileInfo>

#ifdef FLOKLUK_HAVE_CRYPTO
#include <memory>

#include <openssl/evp.h>
#else
#include <QCryptographicHash>
#endif

namespace numeric
{

namespace
{

#ifdef FLOKLUK_HAVE_CRYPTO

/// Of all that is left to be read; empty when that fails. Uses the processor's own instructions where it has them.
QByteArray sumOf(QFile *file)
{
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1)
        return QByteArray();
    QByteArray piece(1 << 20, Qt::Uninitialized);
    qint64 length = 0;
    while ((length = file->read(piece.data(), piece.size())) > 0) {
        if (EVP_DigestUpdate(context.get(), piece.constData(), static_cast<std::size_t>(length)) != 1)
            return QByteArray();
    }
    QByteArray sum(EVP_MD_size(EVP_sha256()), Qt::Uninitialized);
    const bool isDone =
        length == 0 && EVP_DigestFinal_ex(context.get(), reinterpret_cast<unsigned char *>(sum.data()), nullptr) == 1;
    return isDone ? sum : QByteArray();
}

#else

QByteArray sumOf(QFile *file)
{
    QCryptographicHash sum(QCryptographicHash::Sha256);
    return sum.addData(file) ? sum.result() : QByteArray();
}

#endif

} // namespace

QByteArray sha256OfFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return QByteArray();
    return sumOf(&file).toHex();
}

} // namespace numeric
