#include "batch/PanelPictures.h"

#include "analysis/methods/ResultPosition.h"
#include "analysis/model/Quality.h"
#include "analysis/panel/FourPs.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultView.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/DisplayPicture.h"
#include "display/HeaderMenu.h"
#include "display/PopBase.h" // IWYU pragma: keep
#include "numeric/HelperThreads.h"

#include <QDir>
#include <QFileInfo>
#include <QMetaEnum>

#include <algorithm>
#include <memory>
#include <vector>

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

QString pathIn(const QString &folder, const QString &stem, const QString &name)
{
    return QDir(folder).filePath(stem + QLatin1Char('_') + name + QLatin1String(".png"));
}

QString graphName(Displays::DispId id)
{
    return QLatin1String(QMetaEnum::fromType<Displays::DispId>().valueToKey(id));
}

QString mapName(const ResultQuantity &quantity)
{
    return QLatin1String("Map_") + QString::fromLatin1(quantity.name).remove(QLatin1Char(' '));
}

QString errorMapName(const ResultQuantity &quantity)
{
    return mapName(quantity) + QLatin1String("_error");
}

QString misfitMapName()
{
    return QStringLiteral("Map_Misfit");
}

bool hasError(const ResultQuantity &quantity)
{
    return quantity.position == ResultPosition::valence || quantity.position == ResultPosition::amount ||
           isFraction(quantity.position);
}

QString dataMapName(int row)
{
    return QStringLiteral("Data_%1").arg(row + 1);
}

/// Makes a folder and those above it that are missing. Not QDir::mkpath(), which takes "link/.." for nothing.
bool makeFolder(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return true;
    const bool hasName = !info.fileName().isEmpty(); // a slash at the end has none
    return info.path() != path && makeFolder(info.path()) && (!hasName || QDir().mkdir(path));
}

class PictureFolder
{
public:
    PictureFolder(const QString &folder, const QString &stem, numeric::FileSet *set)
        : m_folder(folder)
        , m_stem(stem)
        , m_set(set)
    {
    }

    bool make() { return makeFolder(m_folder) || fail(QStringLiteral("cannot make the folder %1").arg(m_folder)); }
    /// Draws it while the one before is being encoded; what goes wrong with this one shows with the next or in
    /// finish().
    bool save(const HeaderMenu &menu, const QString &name)
    {
        const DisplayPicture picture = menu.picture();
        const QImage image = picture.toImage(picture.printScale());
        if (!finish())
            return false;
        m_path = pathIn(m_folder, m_stem, name);
        if (picture.fullSize().isEmpty())
            return failWriting(DisplayPicture::nothingToSee());
        const auto encode = [this, image] {
            m_bytes = DisplayPicture::pngOf(image);
        };
        m_encoder = std::make_unique<numeric::HelperThreads>(1);
        if (!m_encoder->start(encode))
            encode();
        return true;
    }
    /// Writes the picture that is being encoded, if any.
    bool finish()
    {
        if (!m_encoder)
            return true;
        m_encoder->finish();
        m_encoder.reset();
        const QString problem = DisplayPicture::saveBytes(m_path, m_bytes, m_set);
        m_bytes.clear();
        return problem.isEmpty() || failWriting(problem);
    }
    QString error() const { return m_error; }

private:
    bool fail(const QString &error)
    {
        m_error = error;
        return false;
    }
    bool failWriting(const QString &problem)
    {
        return fail(QStringLiteral("cannot write the picture %1: %2").arg(m_path, problem));
    }

    QString m_folder;
    QString m_stem;
    numeric::FileSet *m_set;
    QString m_error;
    QString m_path;     // of the picture that is being encoded
    QByteArray m_bytes; // of it, when that is done
    std::unique_ptr<numeric::HelperThreads> m_encoder;
};

bool saveGraphs(const FourPs &panel, PictureFolder *folder)
{
    const Displays &displays = *panel.displays();
    for (int i = 0; i < displays.dabs.size(); ++i) {
        const Displays::DispId id = displays.ids[i];
        if (!panel.graphs().hasContents(id))
            continue;
        const int width = id == Displays::Muts ? 2 * graphWidth : graphWidth;
        const PoppedOut<DispABase> popped(displays.dabs[i], QSize(width, graphHeight));
        if (!folder->save(*displays.dabs[i]->headerMenu(), graphName(id)))
            return false;
    }
    return true;
}

/// The quantities that the results have.
std::vector<ResultQuantity> quantitiesOf(const Analysis &analysis)
{
    std::vector<ResultQuantity> quantities;
    ResultView view;
    for (const ResultQuantity &quantity : resultQuantities) {
        view.show(analysis.results(), quantity.position, analysis.runValences());
        if (view.values() && !analysis.results().isZero(quantity.position))
            quantities.push_back(quantity);
    }
    return quantities;
}

bool saveResultMaps(FourPs *panel, PictureFolder *folder)
{
    const Analysis &analysis = panel->analysis();
    DispMBase *const map = panel->resultMap();
    ResultView view;
    for (const ResultQuantity &quantity : quantitiesOf(analysis)) {
        view.show(analysis.results(), quantity.position, analysis.runValences());
        panel->showQuantity(quantity.position);
        const PoppedOut<DispMBase> popped(map, mapArea(view.map().grid.nx, view.map().grid.ny));
        if (!panel->selectedNewMap()) { // it has no range of its own
            if (const auto range = percentileRange(view.values(), view.count()))
                map->setLimits(range->min, range->max);
        }
        if (!folder->save(*map->headerMenu(), mapName(quantity)))
            return false;
    }
    return true;
}

/// What of it is not to be had is left out.
bool saveQualityMap(FourPs *panel, ResultMapView::Kind kind, const QString &name, PictureFolder *folder)
{
    panel->showKind(kind);
    if (panel->shownKind() != kind)
        return true;
    const ResultRecords &results = panel->analysis().results();
    const PoppedOut<DispMBase> popped(panel->resultMap(), mapArea(results.width(), results.height()));
    panel->selectedNewMap();
    return folder->save(*panel->resultMap()->headerMenu(), name);
}

/// Standard errors and misfit, behind all values so that these look as they would without.
bool saveQualityMaps(FourPs *panel, PictureFolder *folder)
{
    const std::vector<ResultQuantity> quantities = quantitiesOf(panel->analysis());
    bool isSaved = true;
    for (const ResultQuantity &quantity : quantities) {
        if (!hasError(quantity))
            continue;
        panel->showQuantity(quantity.position);
        isSaved = isSaved && saveQualityMap(panel, ResultMapView::Kind::Error, errorMapName(quantity), folder);
    }
    if (!quantities.empty())
        isSaved = isSaved && saveQualityMap(panel, ResultMapView::Kind::Misfit, misfitMapName(), folder);
    panel->showKind(ResultMapView::Kind::Value);
    return isSaved;
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
        if (!folder->save(*panel->dataMap()->headerMenu(), dataMapName(row)))
            return false;
    }
    return true;
}

} // namespace

bool savePictures(FourPs *panel, const QString &folder, const QString &stem, numeric::FileSet *set, QString *error)
{
    PictureFolder pictures(folder, stem, set);
    const bool saved = pictures.make() && saveGraphs(*panel, &pictures) && saveResultMaps(panel, &pictures) &&
                       saveQualityMaps(panel, &pictures) && saveDataMaps(panel, &pictures) && pictures.finish();
    *error = pictures.error();
    return saved;
}

QStringList pictureFiles(const QString &folder, const QString &stem)
{
    QStringList names;
    const QMetaEnum graphs = QMetaEnum::fromType<Displays::DispId>();
    for (int i = 0; i < graphs.keyCount(); ++i)
        names << graphName(static_cast<Displays::DispId>(graphs.value(i)));
    for (const ResultQuantity &quantity : resultQuantities) {
        names << mapName(quantity);
        if (hasError(quantity))
            names << errorMapName(quantity);
    }
    names << misfitMapName();
    for (int row = 0; row < Job::maxEnergies; ++row)
        names << dataMapName(row);
    for (QString &name : names)
        name = pathIn(folder, stem, name);
    return names;
}
