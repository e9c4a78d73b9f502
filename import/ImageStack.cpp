#include "import/ImageStack.h"

#include "import/ImportText.h"

#include <algorithm>

bool averageFrames(FrameSource *frames, Image *mean, QString *error)
{
    if (!frames->read(0, mean, error))
        return false;
    Image next;
    for (int i = 1; i < frames->count(); ++i) {
        if (!frames->read(i, &next, error))
            return false;
        std::transform(mean->values.begin(), mean->values.end(), next.values.begin(), mean->values.begin(),
                       [](double sum, double value) { return sum + value; });
    }
    for (double &value : mean->values)
        value /= frames->count();
    return true;
}

bool isImageSize(qint64 width, qint64 height, const QString &file, QString *error)
{
    if (width < 1 || height < 1)
        *error = ImportText::tr("%1 holds an image without pixels").arg(file);
    else if (width > longestSide || height > longestSide || width * height > mostPixels)
        *error = ImportText::tr("%1 holds images of %2 columns and %3 rows, which is more than is taken")
                     .arg(file)
                     .arg(width)
                     .arg(height);
    else
        return true;
    return false;
}

QVector<double> inEv(QVector<double> energies, const QString &unit)
{
    const bool isKeV = unit.contains(QLatin1String("kev"), Qt::CaseInsensitive);
    const bool isEv = !isKeV && unit.contains(QLatin1String("ev"), Qt::CaseInsensitive);
    const bool areSmall = std::all_of(energies.begin(), energies.end(), [](double energy) { return energy < 100.0; });
    if (isKeV || (!isEv && areSmall)) {
        for (double &energy : energies)
            energy *= 1000.0;
    }
    return energies;
}

QString energyPart(const QString &source, const QVector<double> &given, const QVector<double> &taken,
                   const QString &unit)
{
    const bool isGuess = !unit.contains(QLatin1String("ev"), Qt::CaseInsensitive) && given != taken;
    return QStringLiteral("energy: ") + source + (isGuess ? QStringLiteral(" (taken for keV)") : QString());
}
