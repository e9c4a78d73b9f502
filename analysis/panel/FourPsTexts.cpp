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
        return plottedtext::of(mutsInput());
    case Displays::LcfVsMps:
        return plottedtext::of(comparisonInput());
    case Displays::HistA:
    case Displays::HistDMut:
        return plottedtext::of(histogramInput(id));
    case Displays::DMutVorA:
        return plottedtext::of(scatterInput());
    case Displays::M2M3:
        return plottedtext::of(m2m3Input());
    default: { // the graph of one spectrum
        const AMutE &spectrum = m_selectors.at(id)->spectrum();
        MutsInput input;
        input.xTitle = tr("Eng.[eV]");
        input.curves = {{spectrum.fileName(), Qt::black, spectrumPoints(spectrum, AMutE::Raw)}};
        return plottedtext::of(input);
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
