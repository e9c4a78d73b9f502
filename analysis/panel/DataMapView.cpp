#include "analysis/panel/DataMapView.h"

#include "analysis/results/QuantityRange.h"
#include "analysis/results/ShownQuantity.h"
#include "display/DispMBase.h"
#include "mapdata/AEPoint.h"

#include <QCoreApplication>

DataMapView::DataMapView(DispMBase *map)
    : m_map(map)
{
    map->percentiles = [this]() -> std::optional<ValueRange> {
        const ShownMap values = shown();
        return values.values ? percentileRange(values.values, values.count) : std::nullopt;
    };
    refresh();
}

void DataMapView::show(const AEPoint *row)
{
    m_row = row;
    refresh();
}

void DataMapView::showTitle()
{
    m_map->setTitle(m_row ? QCoreApplication::translate("FourPs", "Data map, %1 eV").arg(m_row->energyText())
                          : QCoreApplication::translate("FourPs", "Data map"));
}

void DataMapView::refresh()
{
    showTitle();
    const ShownMap map = shown();
    showGrid(m_map, map.grid);
    m_map->picture.invalidate();
    m_map->area()->update();
}

ShownMap DataMapView::shown() const
{
    if (!m_row || !m_row->loaded())
        return {};
    const A2DData &map = m_row->data();
    return {map.absorptions().data(), map.absorptions().size(), map.grid()};
}

void DataMapView::draw(QStylePainter *p)
{
    resultdrawing::drawDataMap(m_map, p, shown());
}

void DataMapView::showValueAt(double x, double y)
{
    m_map->showValue(cellText(shown(), x, y));
}
