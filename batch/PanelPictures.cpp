#include "batch/PanelPictures.h"

#include "analysis/panel/FourPs.h"
#include "analysis/results/ResultQuantities.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h"

#include <QDir>
#include <QMetaEnum>

#include <algorithm>

namespace
{

constexpr double scale = 2; // as pictures saved by hand

/// A display out of its window, in the size that its picture is to have, for as long as this lives. Nothing comes up
/// on the screen.
template <class Display>
class PoppedOut
{
public:
    PoppedOut(Display *display, const QSize &area)
        : m_display(display)
    {
        display->pop->setAttribute(Qt::WA_DontShowOnScreen);
        display->popDock();
        display->pop->resize(display->pop->size() + area - display->area()->size());
        display->clearScale();
    }
    ~PoppedOut() { m_display->popDock(); }
    PoppedOut(const PoppedOut &) = delete;
    PoppedOut &operator=(const PoppedOut &) = delete;

private:
    Display *m_display;
};

constexpr int graphWidth = 560; // pixels on screen
constexpr int graphHeight = 460;

/// The size of the drawing area for a map with square cells. Cells that are outlined but small would be hidden by
/// their outlines: the map is made so small that they are not outlined.
QSize mapArea(int width, int height)
{
    constexpr double side = 500;
    constexpr double outlined = 3, outlinedWell = 6;
    constexpr double shareOfMap = 0.85; // the margins take the rest
    const double cells = std::max({width, height, 1});
    double cell = side / cells;
    if (cell >= outlined && cell < outlinedWell)
        cell = 0.97 * outlined;
    return (QSizeF(width, height) * cell / shareOfMap).toSize().expandedTo(QSize(200, 200));
}

bool hasContents(const FourPs &panel, Displays::DispId id)
{
    const bool hasResults = panel.results().count() > 0;
    switch (id) {
    case Displays::Ref1:
    case Displays::Ref2:
    case Displays::Ref3:
    case Displays::Ref4:
        return panel.references().at(id - Displays::Ref1)->selector()->valid();
    case Displays::Target:
        return panel.target()->valid();
    case Displays::LcfVsMps:
        return panel.fit() != nullptr;
    case Displays::Muts:
        return true;
    default:
        return hasResults;
    }
}

/// "Ratio 1" as a part of a file name.
QString fileNamePart(const char *name)
{
    return QString::fromLatin1(name).remove(QLatin1Char(' '));
}

class PictureFolder
{
public:
    PictureFolder(const QString &folder, const QString &stem)
        : m_folder(folder)
        , m_stem(stem)
    {
    }

    bool make() { return QDir().mkpath(m_folder) || fail(QStringLiteral("cannot make the folder %1").arg(m_folder)); }
    bool save(const HeaderMenu &menu, const QString &name)
    {
        const QString path = QDir(m_folder).filePath(m_stem + QLatin1Char('_') + name + QLatin1String(".png"));
        const QString problem = menu.picture().save(path, scale);
        return problem.isEmpty() || fail(QStringLiteral("cannot write the picture %1: %2").arg(path, problem));
    }
    QString error() const { return m_error; }

private:
    bool fail(const QString &error)
    {
        m_error = error;
        return false;
    }

    QString m_folder;
    QString m_stem;
    QString m_error;
};

bool saveGraphs(const FourPs &panel, PictureFolder *folder)
{
    const Displays &displays = *panel.displays();
    const QMetaEnum names = QMetaEnum::fromType<Displays::DispId>();
    for (int i = 0; i < displays.dabs.size(); ++i) {
        const Displays::DispId id = displays.ids[i];
        if (!hasContents(panel, id))
            continue;
        const int width = id == Displays::Muts ? 2 * graphWidth : graphWidth;
        const PoppedOut<DispABase> popped(displays.dabs[i], QSize(width, graphHeight));
        if (!folder->save(*displays.dabs[i]->headerMenu(), QLatin1String(names.valueToKey(id))))
            return false;
    }
    return true;
}

bool saveResultMaps(FourPs *panel, PictureFolder *folder)
{
    numeric::Plane work;
    const ResultRecords &results = panel->results();
    DispMBase *const map = panel->resultMap();
    for (const ResultQuantity &quantity : resultQuantities) {
        const double *const values = panel->quantity(quantity.position, &work);
        if (!values || results.isZero(quantity.position))
            continue;
        panel->showQuantity(quantity.position);
        const PoppedOut<DispMBase> popped(map, mapArea(results.width(), results.height()));
        if (!panel->selectedNewMap()) { // it has no range of its own
            if (const auto range = percentileRange(values, results.count()))
                map->setLimits(range->min, range->max);
        }
        if (!folder->save(*map->headerMenu(), QLatin1String("Map_") + fileNamePart(quantity.name)))
            return false;
    }
    return true;
}

bool saveDataMaps(FourPs *panel, PictureFolder *folder)
{
    const QVector<AEPoint *> &rows = panel->energyRows();
    panel->dataMap()->setAttribute(Qt::WA_DontShowOnScreen);
    for (int i = 0; i < rows.size(); ++i) {
        if (!rows[i]->loaded())
            continue;
        rows[i]->showMapButton()->setChecked(true);
        const A2DData &data = rows[i]->data();
        const PoppedOut<DispMBase> popped(panel->dataMap(), mapArea(data.nx(), data.ny()));
        if (!folder->save(*panel->dataMap()->headerMenu(), QStringLiteral("Data_%1").arg(i + 1)))
            return false;
    }
    return true;
}

} // namespace

bool savePictures(FourPs *panel, const QString &folder, const QString &stem, QString *error)
{
    PictureFolder pictures(folder, stem);
    const bool saved = pictures.make() && saveGraphs(*panel, &pictures) && saveResultMaps(panel, &pictures) &&
                       saveDataMaps(panel, &pictures);
    *error = pictures.error();
    return saved;
}
