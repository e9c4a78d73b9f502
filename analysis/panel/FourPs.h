#pragma once

#include "analysis/drawing/HistogramDrawing.h"
#include "analysis/drawing/LcfVsMpsDrawing.h"
#include "analysis/drawing/M2M3Drawing.h"
#include "analysis/drawing/MapDrawing.h"
#include "analysis/drawing/MutsDrawing.h"
#include "analysis/drawing/ScatterDrawing.h"
#include "analysis/job/Job.h"
#include "analysis/methods/FourPoints.h"
#include "analysis/methods/LinearCombination.h"
#include "analysis/methods/NonEquivalent.h"
#include "analysis/panel/FieldMarkers.h"
#include "analysis/results/QuantityRange.h"
#include "analysis/results/ResultRecords.h"
#include "display/CColors.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "spectrum/AMutE.h"
#include "spectrum/RefFiles.h"

#include "ui_FourPs.h"

#include <QFrame>
#include <QMap>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// The analysis panel: it owns every control of the program, keeps the energy rows in step with the spectra, runs the
/// checks and the methods and reports in its message area. Everything is read from the controls at the moment of use;
/// numbers are texts, and a text that is no number counts as 0.
class FourPs : public QFrame
{
    Q_OBJECT

public:
    explicit FourPs(QWidget *parent = nullptr);
    ~FourPs() override;

    Displays *displays() const { return m_displays.get(); }
    DispMBase *resultMap() const { return ui.ResultMap; }
    DispMBase *dataMap() const { return m_dataMap.get(); }
    const QVector<ARefFile *> &references() const { return m_references; }
    AXafsFileSelect *target() const { return ui.TargetFS; }
    const QVector<AEPoint *> &energyRows() const { return m_energyRows; }
    QString messages() const { return ui.Messages->toPlainText(); }
    const ResultRecords &results() const { return m_results; }
    double targetA() const { return m_targetA; }
    double targetValence() const { return m_targetValence; }
    /// What was found for the target last by each method; null as long as it has found nothing.
    const FourPointsResult *targetFourPoints() const { return pointerTo(m_targetFourPoints); }
    const NonEquivalentValues *targetNonEquivalent() const { return pointerTo(m_targetNonEquivalent); }
    const LinearCombination *fit() const { return m_fit.get(); }
    /// The references that take part in a calculation: used and loaded.
    QVector<ARefFile *> validReferences() const;

    /// The plane of a result quantity (see ResultPosition) as the result map shows it; null when the last method does
    /// not compute it. May stand in `work`.
    const double *quantity(int position, numeric::Plane *work) const;
    /// Shows the map of a result quantity, as its button does.
    void showQuantity(int position) { m_mapButtons.at(position)->setChecked(true); }

    /// Takes the inputs and settings of a job in the place of all present ones; calculates and writes nothing.
    /// `loading` hears of every file before it is read. Returns one sentence, beginning with the key in the job, for
    /// each file that could not be loaded. Settings that the panel does not have are left out (see PanelSettings).
    QStringList load(const Job &job, const std::function<void(const QString &file)> &loading = {});
    /// The present inputs and settings as a job.
    Job job() const;

    /// Asks for the name of the file that gets a map as text; an empty answer is a change of mind.
    std::function<QString()> askMapFile;

    /// What the user asks for.
    enum class Step { Map, Target, Fit, Write };

signals:
    /// A step was refused or failed; `text` says why and stands, but for a histogram that could not be written, in the
    /// message area too.
    void refused(FourPs::Step step, const QString &text);

public slots:
    /// Automatic histogram ranges, then calcMap(), calcTarget() and lcf().
    void calcBoth();
    /// Checks, then the chosen method for every pixel. A check that fails writes one message and changes nothing.
    void calcMap();
    /// Checks, then the chosen method for the target spectrum.
    void calcTarget();
    /// calcMap(), then write().
    void calcAndWrite();
    /// Fits the target by the references over the energies marked for it.
    void lcf();
    /// Writes the results of the last map calculation and the two histograms.
    void write();

    /// Takes an edge energy (eV) that a spectrum was found to have, unless the user keeps his own; then setEdge().
    void noticedNewEdge(double e);
    /// Applies edge energy and ranges to every spectrum, refreshes the energy rows and recalculates per reference.
    void setEdge();
    /// A selector (the sender) has loaded a file: refreshes its values and recalculates.
    void receiveNewFile(const QString &fname);
    /// Refreshes the values of reference i (from 0) in the energy rows, recalculates and repaints; nothing when that
    /// spectrum is not valid.
    void receiveNewRef(int i);
    void receiveNewRef1() { receiveNewRef(0); }
    void receiveNewRef2() { receiveNewRef(1); }
    void receiveNewRef3() { receiveNewRef(2); }
    void receiveNewRef4() { receiveNewRef(3); }
    /// Refreshes the target's values in the energy rows and repaints.
    void receiveNewTarget();
    /// The energy of a row (the sender) has changed: refreshes that row's values.
    void receiveNewEnergy(double e);
    /// The present inputs and settings go to the clipboard as a job for flokluk-batch.
    void copyConditions();
    /// Every file dialog opens in this directory from now on.
    void receiveNewDir(const QString &dir);
    /// Loads spectra that are only displayed.
    void receiveNewDispFiles(const QStringList &paths);
    /// Fills the energy rows with map files, from the first row on.
    void receiveNewPaths(const QStringList &paths);
    /// Takes the chosen spectra out of those that are only displayed.
    void removeAFile();
    void changedSubBGTypeForRef(bool f);
    void changedSubBGTypeForTarget(bool f);
    /// Shows or hides the controls that are rarely changed.
    void dispCalcConditions(bool f);

    /// Shows the chosen quantity in the result map, in its own colour range. False when it has none and the last one
    /// stays.
    bool selectedNewMap();
    /// Draws the measured map anew from its data.
    void updateDMap();

    /// Paints a graph for Displays.
    void draw(Displays::DispId id, DispABase *dab, QStylePainter *p);
    void drawMap(QStylePainter *p);
    void drawDMap(QStylePainter *p);
    void receiveNowPosInMap(double x, double y);
    void receiveNowPosInDMap(double x, double y);
    /// The colour range of the result map, non-equivalent results only. Plain: the quantity's own; with Shift: all
    /// finite values; with Control: from their 2nd to their 98th percentile.
    void dClickedInMap(MouseC *m);
    /// A press beside the markers: reports the energy and the values of the spectra there.
    void mPressedInAllMut(MouseC *m);
    void clearLCFvs4PS(MouseC *m);
    /// Later fits get the next colour.
    void newColorLCFvs4PS(MouseC *m);

private:
    template <class Value>
    static const Value *pointerTo(const std::optional<Value> &value)
    {
        return value ? &*value : nullptr;
    }

    /// The energy rows that take part in a calculation.
    struct UsedRows {
        QVector<AEPoint *> all;     ///< in panel order
        QVector<AEPoint *> anchors; ///< those without the V mark
        AEPoint *vPoint = nullptr;  ///< the last one with it
    };
    UsedRows usedRows(bool withMap) const;
    QVector<ARefFile *> usedReferences() const;

    void placeControls();
    void setUpHistograms();
    void setUpDisplays();
    void setUpMarkers();
    void setUpQuantities();
    void connectStaleMark();
    void connectSpectra();
    void connectEnergyRows();
    void connectConditions();
    void connectResults();
    void connectButtons();

    /// Writes one line into the message area.
    void message(const QString &text);
    /// Says why a step is not done.
    void refuse(Step step, const QString &text);
    bool loadSpectrum(AXafsFileSelect *selector, const QString &file, double dE);
    bool loadEnergy(AEPoint *row, const Job::Energy &energy);
    void repaintDisplays();
    void showAllSpectra();
    void markStale();
    void clearStaleMark();
    void showEnergyWindow(bool full);

    void applyEdge(AMutE *spectrum) const;
    void showMovingEdge();
    void receiveMarker(QLineEdit *field);
    void placeEnergyMarkers();
    void receiveUpdatedRef(int i);
    void receiveNewMap();
    void refreshReferenceValue(int i, AEPoint *row);
    void refreshTargetValue(AEPoint *row);

    void setAutoRanges();
    bool enoughReferences(Step step, int valid);
    FourPointsVariant variantFor(Step step, int n);
    FourPointsReferences fourPointsReferences(const UsedRows &rows) const;
    double valenceOf(double a) const;
    void calcFourPointsTarget(const UsedRows &rows, FourPointsVariant variant);
    void calcFourPointsMap(const UsedRows &rows, FourPointsVariant variant);
    void finishMap(const UsedRows &rows);
    void calcNonEquivalentTarget(const UsedRows &rows, bool victoreen);
    void calcNonEquivalentMap(const UsedRows &rows, bool victoreen);
    void warnOfOtherSizes(const UsedRows &rows);
    void reportTooLarge(const A2DData &map);
    void showFitQuality();

    /// A spectrum of the display of all spectra.
    struct ShownSpectrum {
        const AMutE *spectrum;
        QColor colour;
        Qt::PenStyle style;
    };
    int mapQuantity() const;
    int histogramQuantity() const;
    bool recordsQuantity(int position) const;
    std::pair<double, double> usedValences() const;
    std::optional<ValueRange> rangeOf(int position) const;
    void showMapTitle();
    void refreshShownMap();
    void refreshShownHistograms();
    void showOtherHistogram();
    void showDataMap(AEPoint *row, bool isShown);
    ShownMap dataMap(const AEPoint *row) const;
    int shownType() const;
    QVector<ShownSpectrum> shownSpectra() const;
    QVector<HistogramPart> histogramParts(const QVector<HistogramBins> &bins) const;
    void offerTexts();
    QString plottedText(Displays::DispId id) const;
    void saveMapText(const ShownMap &map);
    ShownMap shownResultMap() const;
    QVector<MutsCurve> shownCurves() const;
    MutsInput mutsInput() const;
    LcfVsMpsInput comparisonInput() const;
    HistogramInput histogramInput(Displays::DispId id) const;
    ScatterInput scatterInput() const;
    M2M3Input m2m3Input() const;

    Ui_FourPs ui;
    QVector<ARefFile *> m_references;
    RefFiles m_refFiles;                    ///< whichever reference row something happens in
    QVector<AXafsFileSelect *> m_selectors; ///< the references' in order, then the target's
    QVector<AEPoint *> m_energyRows;
    std::vector<std::unique_ptr<AMutE>> m_displaySpectra; ///< parallel to the list SelectedFs
    std::unique_ptr<Displays> m_displays;
    std::unique_ptr<DispMBase> m_dataMap;
    FieldMarkers *m_energyMarkers = nullptr; ///< of the display of all spectra
    Histgram m_valenceHistogram;
    Histgram m_thicknessHistogram;
    QVector<QCheckBox *> m_recordBoxes; ///< by position of the result quantity
    QVector<QRadioButton *> m_mapButtons;
    QVector<QRadioButton *> m_histogramButtons;
    CColors m_colours;
    ResultRecords m_results;
    const double *m_shown = nullptr;   ///< the plane that the result map shows; null: not computed
    numeric::Plane m_shownWork;        ///< for planes that do not stand in the records
    std::vector<quint8> m_mask;        ///< empty: nothing is hidden
    AEPoint *m_dataMapRow = nullptr;   ///< whose map the data map shows
    HistogramBins m_quantityHistogram; ///< of the chosen quantity, unless that is the valence
    ValueRange m_quantityRange;
    QVector<HistogramBins> m_valenceParts; ///< per reference, where wanted
    QVector<HistogramBins> m_thicknessParts;
    std::unique_ptr<LinearCombination> m_fit;
    QVector<ComparisonRecord> m_comparisons;
    int m_colourIndex = 0;
    double m_targetA = 0.0;
    double m_targetValence = 0.0;
    std::optional<FourPointsResult> m_targetFourPoints;
    std::optional<NonEquivalentValues> m_targetNonEquivalent;
    bool m_isLoading = false; ///< several files are being loaded: one calculation at the end
};
