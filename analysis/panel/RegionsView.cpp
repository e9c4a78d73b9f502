#include "analysis/panel/RegionsView.h"

#include "analysis/model/Analysis.h"
#include "analysis/model/UncertaintyText.h"
#include "analysis/panel/PanelInputs.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"
#include "numeric/FieldText.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPoint>
#include <QStylePainter>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <utility>

RegionsView::RegionsView(const PanelInputs &inputs, const Analysis &analysis, Quality *quality,
                         std::function<UncertaintyRequest()> request)
    : m_inputs(inputs)
    , m_analysis(analysis)
    , m_quality(*quality)
    , m_request(std::move(request))
    , m_graph(new DispABase)
    , m_line(new QLabel)
    , m_table(new QTableWidget)
{
    setObjectName(QStringLiteral("Regions"));
    setWindowTitle(tr("Regions"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating); // the next rectangle is dragged in the map
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(m_graph, 1);
    layout->addWidget(m_line);
    layout->addWidget(m_table);
    m_graph->ui.PopDockB->hide(); // it has a window of its own
    m_graph->xTitleInArea = m_graph->yTitleInArea = true;
    m_line->setObjectName(QStringLiteral("RegionLine"));
    m_line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_line->setWordWrap(true);
    m_line->setToolTip(tr("Mean valence, weighted with the amounts, and mean amount per pixel; scatter of the valences "
                          "and what the noise explains of it; chi² / (n - p) of the mean spectrum"));
    setUpTable();
    offerMenu();
    connect(m_graph, &DispABase::draw, this,
            [this](QStylePainter *p) { resultdrawing::drawRegion(m_graph, p, graphInput()); });
    resize(800, 600);
}

RegionsView::~RegionsView()
{
    m_table->disconnect(this); // it goes after what its slots look at
}

void RegionsView::setUpTable()
{
    m_table->setObjectName(QStringLiteral("RegionTable"));
    const QStringList titles = regionTitles();
    m_table->setColumnCount(titles.size());
    m_table->setHorizontalHeaderLabels(titles);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setHighlightSections(false);
    const int row = m_table->fontMetrics().height() + 6;
    m_table->verticalHeader()->setDefaultSectionSize(row);
    m_table->setFixedHeight(m_table->horizontalHeader()->sizeHint().height() + 5 * row + 4);
    m_table->setToolTip(
        tr("A click chooses the region whose spectrum is shown; corners in pixels, amount: the sum over "
           "the region, mean: weighted with the amounts, ±: its standard error"));
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &RegionsView::showChosen);
}

void RegionsView::offerMenu()
{
    HeaderMenu *const menu = m_graph->headerMenu();
    menu->setValues([this] { return spectrumText(); });
    connect(menu->add(tr("Copy table")), &QAction::triggered, this,
            [this] { QApplication::clipboard()->setText(tableText()); });
    connect(menu->add(tr("Remove this region")), &QAction::triggered, this, &RegionsView::removeChosen);
    connect(menu->add(tr("Regions: clear")), &QAction::triggered, this, &RegionsView::clear);
}

void RegionsView::addRectangle(const PixelRectangle &pixels)
{
    add({tr("Region %1").arg(m_made + 1), pixels, std::nullopt});
}

void RegionsView::addPixel(const QPoint &pixel)
{
    add({tr("Pixel %1, %2").arg(pixel.x()).arg(pixel.y()), PixelRectangle{pixel.x(), pixel.y(), pixel.x(), pixel.y()},
         std::nullopt});
}

void RegionsView::addAbove(double thickness)
{
    add({QStringLiteral("t ≥ %1").arg(fieldText(thickness)), std::nullopt, thickness});
}

void RegionsView::add(const Region &region)
{
    if (m_regions.size() >= most) {
        emit tooMany();
        return;
    }
    if (region.rectangle)
        ++m_made;
    int colour = 0;
    while (m_colours.contains(colour))
        ++colour;
    m_regions.push_back(region);
    m_colours.append(colour);
    m_statistics.clear();
    show();
    raise();
    refresh();
    m_table->selectRow(m_table->rowCount() - 1);
    emit changed();
}

void RegionsView::removeChosen()
{
    const int row = chosen();
    if (row < 0)
        return;
    m_regions.erase(m_regions.begin() + row);
    m_colours.removeAt(row);
    refresh();
    emit changed();
}

void RegionsView::clear()
{
    m_regions.clear();
    m_colours.clear();
    m_made = 0;
    refresh();
    emit changed();
}

void RegionsView::take(const std::vector<Region> &regions)
{
    m_regions.clear();
    m_colours.clear();
    m_made = 0;
    for (const Region &region : regions) {
        if (m_colours.size() == most)
            break;
        m_colours.append(m_colours.size());
        m_regions.push_back(region);
        if (auto &pixels = m_regions.back().rectangle) { // a job's corners come in any order
            ++m_made;
            std::tie(pixels->x0, pixels->x1) = std::minmax({pixels->x0, pixels->x1});
            std::tie(pixels->y0, pixels->y1) = std::minmax({pixels->y0, pixels->y1});
        }
    }
    refresh();
    emit changed();
}

QVector<RegionOutline> RegionsView::outlines() const
{
    QVector<RegionOutline> outlines;
    const PixelRectangle all = {0, 0, m_analysis.results().width() - 1, m_analysis.results().height() - 1};
    for (int i = 0; i < m_colours.size(); ++i) {
        const Region &region = m_regions[static_cast<std::size_t>(i)];
        outlines.append(
            {region.rectangle.value_or(all), resultdrawing::regionColour(m_colours[i]), region.above.has_value()});
    }
    return outlines;
}

void RegionsView::showEvent(QShowEvent *event)
{
    QFrame::showEvent(event);
    refresh();
}

void RegionsView::refresh()
{
    m_statistics.clear();
    if (!isVisible())
        return;
    if (!m_regions.empty())
        m_statistics = m_quality.statistics(m_inputs.gather(), m_request(), m_regions);
    fillTable();
    showChosen();
}

void RegionsView::fillTable()
{
    const QSignalBlocker blocker(m_table);
    const int row = std::max(0, chosen());
    m_table->setRowCount(m_colours.size());
    const ResultRecords &results = m_analysis.results();
    for (int i = 0; i < m_colours.size(); ++i) {
        const auto at = static_cast<std::size_t>(i);
        const RegionStatistics statistics = at < m_statistics.size() ? m_statistics[at] : RegionStatistics();
        const QStringList cells = regionCells(m_regions[at], statistics, results.width(), results.height(), 4);
        for (int column = 0; column < cells.size(); ++column) {
            auto *const item = new QTableWidgetItem(cells[column]);
            item->setTextAlignment(Qt::AlignVCenter | (column == 0 ? Qt::AlignLeft : Qt::AlignRight));
            m_table->setItem(i, column, item);
        }
        QPixmap swatch(12, 12);
        swatch.fill(resultdrawing::regionColour(m_colours[i]));
        m_table->item(i, 0)->setIcon(swatch);
    }
    if (!m_colours.isEmpty())
        m_table->selectRow(std::min(row, m_colours.size() - 1));
}

int RegionsView::chosen() const
{
    const int row = m_table->currentRow();
    return row < m_colours.size() ? row : -1;
}

const RegionStatistics *RegionsView::chosenStatistics() const
{
    const auto row = static_cast<std::size_t>(chosen());
    return chosen() >= 0 && row < m_statistics.size() ? &m_statistics[row] : nullptr;
}

void RegionsView::showChosen()
{
    const RegionStatistics *const statistics = chosenStatistics();
    m_curve = statistics && statistics->pixels > 0 ? fittedCurve(*m_analysis.run(), statistics->fit, m_inputs.gather())
                                                   : FittedCurve();
    if (statistics)
        m_line->setText(regionLine(*statistics));
    else
        m_line->setText(m_regions.empty() ? tr("No region: drag one with Control in the result map.")
                                          : m_quality.problem());
    m_graph->ui.Title->setText(chosen() >= 0 ? m_regions[static_cast<std::size_t>(chosen())].name : tr("Regions"));
    m_graph->area()->update();
}

RegionGraphInput RegionsView::graphInput() const
{
    RegionGraphInput input;
    input.xTitle = tr("Energy [eV]");
    input.yTitle = tr("Absorption");
    input.residualTitle = tr("Residual / s");
    input.fitName = tr("Fit");
    input.backgroundName = tr("Background");
    const RegionStatistics *const statistics = chosenStatistics();
    if (!statistics || statistics->pixels == 0)
        return input;
    input.points = statistics->points;
    input.hasResiduals = statistics->fit.degrees > 0;
    input.curve = m_curve;
    for (const RunReference &reference : m_analysis.run()->references)
        input.names << reference.name;
    input.colour = resultdrawing::regionColour(m_colours.at(chosen()));
    return input;
}

QString RegionsView::tableText() const
{
    QStringList lines = {regionTitles().join(QLatin1Char('\t'))};
    const ResultRecords &results = m_analysis.results();
    for (std::size_t i = 0; i < m_statistics.size(); ++i)
        lines << regionCells(m_regions[i], m_statistics[i], results.width(), results.height()).join(QLatin1Char('\t'));
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString RegionsView::spectrumText() const
{
    return resultdrawing::regionText(graphInput());
}
