#include "import/Gunzip.h"

#include "import/ImportText.h"

#ifdef FLOKLUK_HAVE_ZLIB
#include <zlib.h>
#endif

bool isGzip(const QByteArray &bytes)
{
    return bytes.startsWith("\x1f\x8b");
}

#ifdef FLOKLUK_HAVE_ZLIB

bool gunzip(const QByteArray &bytes, QByteArray *text, QString *error)
{
    constexpr int withGzipHeader = 16 + MAX_WBITS;
    constexpr int piece = 1 << 18;
    const qint64 most = qMin<qint64>(qint64(bytes.size()) * 100 + (1 << 20), qint64(1) << 29);
    z_stream stream{};
    if (inflateInit2(&stream, withGzipHeader) != Z_OK) {
        *error = ImportText::tr("zlib could not be started");
        return false;
    }
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData())); // zlib only reads from it
    stream.avail_in = static_cast<uInt>(bytes.size());
    int status = Z_OK;
    text->clear();
    while (status == Z_OK && text->size() <= most) {
        const int before = text->size();
        text->resize(before + piece);
        stream.next_out = reinterpret_cast<Bytef *>(text->data() + before);
        stream.avail_out = piece;
        status = inflate(&stream, Z_NO_FLUSH);
        text->resize(before + piece - static_cast<int>(stream.avail_out));
    }
    inflateEnd(&stream);
    if (status == Z_STREAM_END)
        return true;
    text->clear();
    *error = status == Z_OK ? ImportText::tr("it unpacks to far more than such a file holds")
                            : ImportText::tr("the compressed data are damaged or end too early");
    return false;
}

#else

bool gunzip(const QByteArray &, QByteArray *, QString *error)
{
    *error = builtWithout(ImportText::tr("unpacking it"), QStringLiteral("zlib"));
    return false;
}

#endif
