#include "import/Import.h"
#include "version/Version.h"

#include <QStringList>

#ifdef FLOKLUK_HAVE_HDF5
#include <hdf5.h> // IWYU pragma: keep
#endif
#ifdef FLOKLUK_HAVE_TIFF
#include <tiffio.h>
#endif
#ifdef FLOKLUK_HAVE_ZLIB
#include <zlib.h>
#endif

QString importVersion()
{
    QString text = versionLine(QStringLiteral("flokluk-import")) + QLatin1Char('\n');
#ifdef FLOKLUK_HAVE_HDF5
    unsigned major = 0, minor = 0, release = 0;
    H5get_libversion(&major, &minor, &release);
    text += QStringLiteral("with HDF5 %1.%2.%3\n").arg(major).arg(minor).arg(release);
#else
    text += QStringLiteral("without HDF5: no HDF5 files\n");
#endif
#ifdef FLOKLUK_HAVE_TIFF
    text += QStringLiteral("with %1\n").arg(QString::fromLatin1(TIFFGetVersion()).section(QLatin1Char('\n'), 0, 0));
#else
    text += QStringLiteral("without libtiff: no TIFF files\n");
#endif
#ifdef FLOKLUK_HAVE_ZLIB
    text += QStringLiteral("with zlib %1\n").arg(QString::fromLatin1(zlibVersion()));
#else
    text += QStringLiteral("without zlib: no compressed projects\n");
#endif
#ifdef FLOKLUK_HAVE_KISSFFT
    text += QStringLiteral("with kissfft\n");
#else
    text += QStringLiteral("without kissfft: no --align\n");
#endif
    return text;
}
