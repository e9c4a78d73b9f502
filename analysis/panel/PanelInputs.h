#pragma once

#include "analysis/model/AnalysisInput.h"
#include "display/Histgram.h"
#include "spectrum/AMutE.h"

#include <QVector>

#include <memory>
#include <vector>

class AEPoint;
class ARefFile;
class AXafsFileSelect;
class Ui_FourPs;

/// What the user sets on the panel: the reference and energy rows, the target and the conditions, read into a snapshot;
/// and what keeps the energy rows in step with the spectra.
class PanelInputs
{
public:
    explicit PanelInputs(const Ui_FourPs &form);

    /// Everything as it is set now. A text that is no number counts as 0.
    AnalysisInput gather() const;
    EdgeSettings edge() const;
    const Histgram &valenceHistogram() const { return m_valences; }
    const Histgram &thicknessHistogram() const { return m_thicknesses; }
    /// What the fields of a histogram say.
    static HistogramSettings settingsOf(const Histgram &histogram);
    /// Another number whenever a map was loaded.
    quint64 mapRevision() const { return m_mapRevision; }

    /// In panel order.
    const QVector<ARefFile *> &references() const { return m_references; }
    const QVector<AEPoint *> &points() const { return m_points; }
    /// Those with neither a file nor an energy.
    QVector<AEPoint *> emptyPoints() const;
    /// Of the references in order, then of the target.
    const QVector<AXafsFileSelect *> &selectors() const { return m_selectors; }
    AXafsFileSelect *selector(int reference) const { return m_selectors.at(reference); }
    AXafsFileSelect *target() const { return m_selectors.last(); }
    /// Spectra that are only displayed, parallel to their list on the panel, whose items hold the paths.
    static constexpr int pathRole = Qt::UserRole;
    std::vector<std::unique_ptr<AMutE>> &displaySpectra() { return m_displaySpectra; }
    const std::vector<std::unique_ptr<AMutE>> &displaySpectra() const { return m_displaySpectra; }

    /// Gives the edge and the ends of the ranges to a spectrum, to those of all rows, or to all spectra, whose lines
    /// are fitted then.
    void applyEdge(AMutE *spectrum) const;
    void applyEdgeToRows();
    void applyEdgeToAll();

    /// Show the value of one spectrum at the energy of every row, or all values of one row. What does not lie within a
    /// spectrum leaves an empty field.
    void refreshReference(int reference);
    void refreshTarget();
    void refreshPoint(AEPoint *row);

    /// To be called when a row has loaded its map.
    void noteMap(AEPoint *row);

private:
    Conditions conditions() const;
    QVector<const A2DData *> mapsBeside(const AEPoint *row) const;
    void refreshReferenceAt(int reference, AEPoint *row);
    void refreshTargetAt(AEPoint *row);

    const Ui_FourPs &ui;
    Histgram m_valences, m_thicknesses; ///< their fields; what is counted belongs to the analysis
    QVector<ARefFile *> m_references;
    QVector<AXafsFileSelect *> m_selectors;
    QVector<AEPoint *> m_points;
    QVector<MapFile> m_mapFiles; ///< as loaded, per row
    quint64 m_mapRevision = 0;
    std::vector<std::unique_ptr<AMutE>> m_displaySpectra;
};
