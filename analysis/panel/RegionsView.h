#pragma once

#include "analysis/drawing/RegionDrawing.h"
#include "analysis/model/Quality.h"

#include <QFrame>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>
#include <vector>

class Analysis;
class DispABase;
class PanelInputs;
class QLabel;
class QPoint;
class QStylePainter;
class QTableWidget;

/// A window with the regions of the result map: for the chosen one the mean spectrum and its fit, and a table of all.
/// Regions stay when results are calculated anew; their numbers follow.
class RegionsView : public QFrame
{
    Q_OBJECT

public:
    static constexpr int most = resultdrawing::regionColourCount;

    /// `request`: what standard errors are asked for with.
    RegionsView(const PanelInputs &inputs, const Analysis &analysis, Quality *quality,
                std::function<UncertaintyRequest()> request);

    ~RegionsView() override;

    /// Choose what they add and open the window. Beyond `most` nothing is added, and tooMany() is emitted.
    void addRectangle(const PixelRectangle &pixels);
    void addPixel(const QPoint &pixel);
    void addAbove(double thickness);
    void clear();
    /// Puts others in the place of all regions, without opening the window: the first `most`.
    void take(const std::vector<Region> &regions);

    const std::vector<Region> &regions() const { return m_regions; }
    /// As many as there are regions, or none when they cannot be had.
    const std::vector<RegionStatistics> &statistics() const { return m_statistics; }
    /// On a map of as many columns and rows as the results.
    QVector<RegionOutline> outlines() const;
    /// To be called when results or spectra are others; calculates while the window is open.
    void refresh();

    DispABase *graph() const { return m_graph; }
    /// The table, and the spectrum of the chosen region with its fit, as tab-separated text with a line of titles.
    QString tableText() const;
    QString spectrumText() const;

signals:
    /// Other regions are to be outlined.
    void changed();
    void tooMany();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void setUpTable();
    void offerMenu();
    void add(const Region &region);
    void removeChosen();
    void fillTable();
    void showChosen();
    int chosen() const;
    const RegionStatistics *chosenStatistics() const;
    RegionGraphInput graphInput() const;

    const PanelInputs &m_inputs;
    const Analysis &m_analysis;
    Quality &m_quality;
    std::function<UncertaintyRequest()> m_request;
    DispABase *m_graph;
    QLabel *m_line;
    QTableWidget *m_table;
    std::vector<Region> m_regions;
    QVector<int> m_colours; ///< of each region: a region keeps its own when others go
    std::vector<RegionStatistics> m_statistics;
    FittedCurve m_curve; ///< of the chosen region
    int m_made = 0;      ///< rectangles so far, for their names
};
