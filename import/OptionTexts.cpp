#include "import/OptionTexts.h"

#include <QStringList>

#include <cmath>

bool readNumbers(const QString &text, QVector<double> *numbers)
{
    for (const QString &part : text.split(QLatin1Char(','))) {
        bool good = false;
        numbers->append(part.trimmed().toDouble(&good));
        if (!good || !std::isfinite(numbers->last()))
            return false;
    }
    return true;
}

bool readRegion(const QString &text, QRect *region)
{
    QVector<int> corners;
    for (const QString &part : text.split(QLatin1Char(','))) {
        bool good = false;
        corners << part.trimmed().toInt(&good);
        if (!good || corners.last() < 0)
            return false;
    }
    if (corners.size() != 4 || corners[2] <= corners[0] || corners[3] <= corners[1])
        return false;
    *region = QRect(corners[0], corners[1], corners[2] - corners[0], corners[3] - corners[1]);
    return true;
}

bool readPick(const QString &text, ImportOptions *options)
{
    bool isCount = false;
    const int count = text.toInt(&isCount);
    if (!isCount || count >= 100)
        return readNumbers(text, &options->pickEnergies) && options->pickEnergies.size() <= 8;
    options->pickCount = count;
    return count >= 2 && count <= 8;
}

QString withoutColons(const QString &path)
{
    return path.startsWith(QLatin1String("::")) ? path.mid(2) : path;
}
