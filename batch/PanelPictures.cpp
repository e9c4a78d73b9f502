#include "batch/PanelPictures.h"

#include "analysis/panel/FourPs.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultView.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h"

#include <QDir>
#include <QMetaEnum>

#include <algorithm>

namespace
{

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

/// The size of the drawing area for a map with square cells.
QSize mapArea(int width, int height)
{
    constexpr double side = 500;
    constexpr double shareOfMap = 0.85; // the margins take the rest
    const double cells = std::max({width, height, 1});
    return (QSizeF(width, height) * (side / cells) / shareOfMap).toSize().expandedTo(QSize(200, 200));
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
        const DisplayPicture picture = menu.picture();
        const QString problem = picture.save(path, picture.printScale());
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
        if (!panel.graphs().hasContents(id))
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
    const Analysis &analysis = panel->analysis();
    DispMBase *const map = panel->resultMap();
    ResultView view;
    for (const ResultQuantity &quantity : resultQuantities) {
        view.show(analysis.results(), quantity.position, analysis.runValences());
        if (!view.values() || analysis.results().isZero(quantity.position))
            continue;
        panel->showQuantity(quantity.position);
        const PoppedOut<DispMBase> popped(map, mapArea(view.map().grid.nx, view.map().grid.ny));
        if (!panel->selectedNewMap()) { // it has no range of its own
            if (const auto range = percentileRange(view.values(), view.count()))
                map->setLimits(range->min, range->max);
        }
        if (!folder->save(*map->headerMenu(), QLatin1String("Map_") + fileNamePart(quantity.name)))
            return false;
    }
    return true;
}

bool saveDataMaps(FourPs *panel, PictureFolder *folder)
{
    const QVector<PointInput> points = panel->input().points;
    panel->dataMap()->setAttribute(Qt::WA_DontShowOnScreen);
    for (int row = 0; row < points.size(); ++row) {
        const A2DData *const map = points[row].map;
        if (!map)
            continue;
        panel->showDataMap(row);
        const PoppedOut<DispMBase> popped(panel->dataMap(), mapArea(map->nx(), map->ny()));
        if (!folder->save(*panel->dataMap()->headerMenu(), QStringLiteral("Data_%1").arg(row + 1)))
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
