#pragma once

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/M2M3Drawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/PointCloud.h"
#include "analysis/drawing/ScatterDrawing.h"
#include "analysis/model/AnalysisInput.h"
#include "display/CColors.h"
#include "display/Displays.h"

#include <QString>
#include <QVector>

#include <tuple>

class Analysis;
class PanelInputs;
class Ui_FourPs;

/// What the graphs show: for each of them the values of its picture, from which it is drawn and copied as text alike.
class Graphs
{
public:
    Graphs(const Ui_FourPs &form, const PanelInputs &inputs, const Analysis &analysis);

    /// Paints a graph; one of a single spectrum, which its row paints, is left as it is.
    void draw(Displays::DispId id, DispABase *display, QStylePainter *p) const;
    /// Whether there is anything to show.
    bool hasContents(Displays::DispId id) const;
    /// What a graph shows, as tab-separated text.
    QString text(Displays::DispId id) const;
    /// The values of all spectra shown together at an energy in eV: "ref1.dat 0.812, ref2.dat 0.734".
    QString valuesAt(double energy) const;
    /// How many colours the fits have in turn.
    int colours() const { return m_colours.colors.size(); }

    MutsInput spectra() const;
    LcfVsMpsInput comparison() const;
    HistogramInput shownHistogram() const;
    HistogramInput thicknessHistogram() const;
    ScatterInput scatter() const;
    M2M3Input steps() const;

private:
    /// A spectrum among all of them.
    struct ShownSpectrum {
        AMutE spectrum;
        QColor colour;
        Qt::PenStyle style = Qt::SolidLine;
    };
    /// Another number for another state.
    template <class State>
    class Revision
    {
    public:
        quint64 of(const State &state)
        {
            if (m_number == 0 || !(state == m_state)) {
                m_state = state;
                ++m_number;
            }
            return m_number;
        }

    private:
        State m_state = {};
        quint64 m_number = 0;
    };

    int shownType() const;
    QVector<ShownSpectrum> shownSpectra(const AnalysisInput &input) const;
    QVector<HistogramPart> parts(const QVector<HistogramBins> &bins) const;

    const Ui_FourPs &ui;
    const PanelInputs &m_inputs;
    const Analysis &m_analysis;
    CColors m_colours;
    mutable Revision<std::tuple<quint64, double, double>> m_scatterRevision; ///< run, V1 and V2
    mutable Revision<std::tuple<const A2DData *, const A2DData *, const A2DData *, quint64>> m_stepsRevision;
    mutable ScatterCache m_scatterCache, m_stepsCache;
};
