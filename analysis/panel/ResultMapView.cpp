#include "analysis/panel/ResultMapView.h"

#include "analysis/drawing/PlottedText.h"
#include "analysis/model/Analysis.h"
#include "analysis/panel/PanelInputs.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ShownQuantity.h"
#include "controls/Field.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "display/MouseC.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QMenu>
#include <QRadioButton>

int chosenPosition(const QVector<QRadioButton *> &buttons)
{
    for (int position = buttons.size() - 1; position > 0; --position) {
        if (buttons[position]->isChecked())
            return position;
    }
    return 0;
}

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("FourPs", text);
}

std::optional<double> limitIn(const QLineEdit *field)
{
    return field->text().isEmpty() ? std::nullopt : std::optional<double>(number(field));
}

} // namespace

ResultMapView::ResultMapView(const ResultMapControls &controls, const PanelInputs &inputs, const Analysis &analysis,
                             Quality *quality)
    : m_controls(controls)
    , m_map(controls.map)
    , m_inputs(inputs)
    , m_analysis(analysis)
    , m_quality(*quality)
{
    m_map->percentiles = [this] {
        return m_view.values() ? percentileRange(m_view.values(), m_view.count(), m_view.mask()) : std::nullopt;
    };
    addMenu();
}

void ResultMapView::addMenu()
{
    QAction *const show = m_map->headerMenu()->add(translated(QT_TRANSLATE_NOOP("FourPs", "Show")));
    auto *const menu = new QMenu(m_map->headerMenu()->menu);
    show->setMenu(menu);
    m_kinds = new QActionGroup(menu);
    const char *const names[] = {QT_TRANSLATE_NOOP("FourPs", "Value"),
                                 QT_TRANSLATE_NOOP("FourPs", "± (standard error)"),
                                 QT_TRANSLATE_NOOP("FourPs", "Misfit (chi² / (n - p))")};
    for (int i = 0; i < 3; ++i) {
        QAction *const action = m_kinds->addAction(menu->addAction(translated(names[i])));
        action->setCheckable(true);
        action->setChecked(i == 0);
        QObject::connect(action, &QAction::triggered, m_map, [this, i] { choose(static_cast<Kind>(i)); });
    }
}

void ResultMapView::choose(Kind kind)
{
    m_kinds->actions().at(static_cast<int>(kind))->setChecked(true);
    m_wanted = kind;
    select();
}

std::optional<ValueRange> ResultMapView::ownRange() const
{
    return m_kind == Kind::Value ? m_analysis.colourRange(quantity(), m_inputs.gather()) : m_range;
}

UncertaintyRequest ResultMapView::request() const
{
    return {limitIn(m_controls.hideBelow), isFraction(quantity())};
}

/// Calculates what is not known. Null, and no standard errors, when there are none.
const UncertaintyMap *ResultMapView::findErrors()
{
    m_areErrorsSought = true;
    const UncertaintyMap *const map = m_quality.map(m_inputs.gather(), request());
    const numeric::Plane *const errors = map ? standardErrors(*map, quantity()) : nullptr;
    m_errors = errors ? errors->share() : numeric::Plane();
    return map;
}

/// What the user wants to see besides the values; returns why not.
QString ResultMapView::showQuality()
{
    const std::optional<double> limit = limitIn(m_controls.errorAbove);
    if ((m_wanted == Kind::Value && !limit) || !m_view.values())
        return QString();
    const UncertaintyMap *const map = findErrors();
    if (!map)
        return m_quality.problem();
    if (limit && m_errors.size() > 0)
        m_view.hideAbove(m_errors.data(), *limit);
    const bool isMisfit = m_wanted == Kind::Misfit;
    if (isMisfit)
        m_misfit = map->misfit.share();
    const numeric::Plane &plane = isMisfit ? m_misfit : m_errors;
    if (plane.size() == 0 && isMisfit)
        return translated(QT_TRANSLATE_NOOP("FourPs", "There is no misfit: as many energies as unknowns."));
    if (plane.size() == 0)
        return translated(QT_TRANSLATE_NOOP("FourPs", "%1 has no standard error."))
            .arg(translated(quantityAt(quantity())->name));
    if (m_wanted == Kind::Value)
        return QString();
    m_kind = m_wanted;
    m_view.showInstead(plane.data());
    if (const auto range = percentileRange(plane.data(), plane.size(), m_view.mask(), 0.0, 0.98))
        m_range = ValueRange{0.0, range->max};
    return QString();
}

QString ResultMapView::shownName() const
{
    QString name = translated(quantityAt(quantity())->name);
    if (m_kind == Kind::Value)
        return name;
    return m_kind == Kind::Error ? name + QStringLiteral(" ±") : translated(QT_TRANSLATE_NOOP("FourPs", "misfit"));
}

void ResultMapView::refresh()
{
    m_kind = Kind::Value;
    m_range.reset();
    m_errors.clear(); // before others are calculated: what is shared is not written to
    m_misfit.clear();
    m_areErrorsSought = false;
    m_view.show(m_analysis.results(), quantity(), m_analysis.runValences(), limitIn(m_controls.hideBelow));
    const QString problem = showQuality();
    m_map->setTitle(translated(QT_TRANSLATE_NOOP("FourPs", "Result map, %1")).arg(shownName()), shownName());
    showGrid(m_map, shown().grid);
    m_map->picture.invalidate();
    m_map->area()->update();
    if (tell && !problem.isEmpty())
        tell(problem);
}

bool ResultMapView::select()
{
    refresh();
    const std::optional<ValueRange> range = ownRange();
    m_map->takeLimits(range);
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
    m_map->showError(errorText(x, y));
}

/// "± 0.041"; nothing where there is none or the mouse would have to wait for it.
QString ResultMapView::errorText(double x, double y)
{
    if (m_kind != Kind::Value || !m_view.values())
        return QString();
    if (!m_areErrorsSought && m_quality.expectedSeconds(request()) < (longestWait ? longestWait() : 0.0))
        findErrors();
    const ShownMap errors = {m_errors.data(), m_errors.size(), shown().grid};
    const std::optional<std::size_t> cell = cellAt(errors, x, y);
    return cell ? QStringLiteral("± ") + QString::number(errors.values[*cell], 'g', 2) : QString();
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
