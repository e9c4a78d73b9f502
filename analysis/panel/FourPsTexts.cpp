// What the header menus of the displays give as text.

#include "analysis/drawing/PlottedText.h"
#include "analysis/panel/FourPs.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ShownQuantity.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"
#include "numeric/OutputFile.h"

#include <QFileDialog>
#include <QMenu>

void FourPs::offerTexts()
{
    askMapFile = [this] {
        return QFileDialog::getSaveFileName(this, tr("Save shown map as text..."), ui.SaveFSelect->dir(),
                                            QStringLiteral("*.txt"));
    };
    for (const Displays::DispId id : qAsConst(m_displays->ids)) {
        m_displays->dabs[id]->headerMenu()->setValues([this, id] { return plottedText(id); });
    }
    const auto offer = [this](DispMBase *display, std::function<ShownMap()> map) {
        display->headerMenu()->setValues([map] { return QString::fromLatin1(plottedtext::ofMap(map(), '\t')); });
        connect(display->headerMenu()->menu->addAction(tr("Save shown map as text...")), &QAction::triggered, this,
                [this, map] { saveMapText(map()); });
    };
    offer(ui.ResultMap, [this] { return shownResultMap(); });
    offer(m_dataMap.get(), [this] { return dataMap(m_dataMapRow); });
}

QString FourPs::plottedText(Displays::DispId id) const
{
    switch (id) {
    case Displays::Muts:
        return plottedtext::ofCurves(shownCurves());
    case Displays::LcfVsMps:
        return plottedtext::ofComparison(m_comparisons);
    case Displays::HistA:
        return plottedtext::ofHistogram(m_quantityHistogram.isSet() ? m_quantityHistogram : m_valenceHistogram);
    case Displays::HistDMut:
        return plottedtext::ofHistogram(m_thicknessHistogram);
    case Displays::DMutVorA: {
        const auto [first, second] = usedValences();
        numeric::Plane valences;
        valences.resize(m_results.count());
        mixedValences(first, second, m_results.a(), m_results.count(), valences.data());
        return plottedtext::ofPoints(tr("Valence"), tr("Thick."), valences.data(), m_results.t(), m_results.count());
    }
    case Displays::M2M3: {
        const M2M3Input input = m2m3Input();
        numeric::Plane m2, m3;
        m2.resize(input.r.count);
        m3.resize(input.r.count);
        for (std::size_t i = 0; i < input.r.count; ++i) {
            const QPointF point = pointOf(input, i);
            m2.data()[i] = point.x();
            m3.data()[i] = point.y();
        }
        return plottedtext::ofPoints(input.xTitle, input.yTitle, m2.data(), m3.data(), input.r.count);
    }
    default: { // the graph of one spectrum
        const AMutE &spectrum = m_selectors.at(id)->spectrum();
        return plottedtext::ofCurves({{spectrum.fileName(), Qt::black, spectrumPoints(spectrum, AMutE::Raw)}});
    }
    }
}

void FourPs::saveMapText(const ShownMap &map)
{
    const QString path = askMapFile();
    if (path.isEmpty())
        return;
    numeric::OutputFile file(path);
    if (!file.open()) {
        message(tr("Can't open the file [%1]").arg(path));
        return;
    }
    file.write(plottedtext::ofMap(map, ' '));
    if (!file.commit())
        message(tr("Can't write the file [%1]").arg(path));
}
