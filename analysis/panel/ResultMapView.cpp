#include "analysis/panel/ResultMapView.h"

#include "analysis/drawing/PlottedText.h"
#include "analysis/model/Analysis.h"
#include "analysis/panel/PanelInputs.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ShownQuantity.h"
#include "controls/Field.h"
#include "display/DispMBase.h"
#include "display/MouseC.h"

#include <QCoreApplication>
#include <QRadioButton>

int chosenPosition(const QVector<QRadioButton *> &buttons)
{
    for (int position = buttons.size() - 1; position > 0; --position) {
        if (buttons[position]->isChecked())
            return position;
    }
    return 0;
}

ResultMapView::ResultMapView(DispMBase *map, const QVector<QRadioButton *> &buttons, const QLineEdit *hideBelow,
                             const PanelInputs &inputs, const Analysis &analysis)
    : m_map(map)
    , m_buttons(buttons)
    , m_hideBelow(hideBelow)
    , m_inputs(inputs)
    , m_analysis(analysis)
{
    map->percentiles = [this] {
        return m_view.values() ? percentileRange(m_view.values(), m_view.count(), m_view.mask()) : std::nullopt;
    };
}

std::optional<ValueRange> ResultMapView::ownRange() const
{
    return m_analysis.colourRange(quantity(), m_inputs.gather());
}

void ResultMapView::refresh()
{
    const auto limit = m_hideBelow->text().isEmpty() ? std::nullopt : std::optional<double>(number(m_hideBelow));
    m_view.show(m_analysis.results(), quantity(), m_analysis.runValences(), limit);
    m_map->setTitle(QCoreApplication::translate("FourPs", "Result map, %1")
                        .arg(QCoreApplication::translate("FourPs", quantityAt(quantity())->name)));
    showGrid(m_map, shown().grid);
    m_map->picture.invalidate();
    m_map->area()->update();
}

bool ResultMapView::select()
{
    const std::optional<ValueRange> range = ownRange();
    m_map->takeLimits(range);
    refresh();
    m_map->bar()->update();
    return range.has_value();
}

QByteArray ResultMapView::text(char separator) const
{
    return plottedtext::ofMap(shown(), separator, m_view.mask());
}

void ResultMapView::draw(QStylePainter *p)
{
    ResultMapInput input;
    input.map = shown();
    input.mask = m_view.mask();
    input.limits = ownRange();
    input.notComputed = QCoreApplication::translate("FourPs", "not computed by this method");
    resultdrawing::drawResultMap(m_map, p, input);
}

void ResultMapView::showValueAt(double x, double y)
{
    m_map->showValue(cellText(shown(), x, y));
}

void ResultMapView::doubleClick(const MouseC &mouse)
{
    const bool isNonEquivalent = m_analysis.results().method() == ResultRecords::Method::NonEquivalent;
    if (!isNonEquivalent || !m_view.values() || mouse.dClickButton != Qt::LeftButton)
        return;
    const int modifiers = mouse.dClickModifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    if (modifiers == Qt::NoModifier) {
        m_map->takeLimits(ownRange());
    } else if (modifiers == Qt::ShiftModifier) {
        if (const auto range = finiteRange(m_view.values(), m_view.count(), m_view.mask()))
            m_map->chooseLimits(*range);
    } else if (modifiers == Qt::ControlModifier) {
        if (const auto range = percentileRange(m_view.values(), m_view.count(), m_view.mask()))
            m_map->chooseLimits(*range);
    }
    m_map->bar()->update();
    m_map->area()->update();
}
