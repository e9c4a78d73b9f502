#pragma once

#include "analysis/job/Job.h"
#include "analysis/model/Analysis.h"
#include "analysis/model/Quality.h"
#include "analysis/panel/DataMapView.h"
#include "analysis/panel/FindingMarks.h"
#include "analysis/panel/Graphs.h"
#include "analysis/panel/PanelInputs.h"
#include "analysis/panel/Recalculation.h"
#include "analysis/panel/ResultMapView.h"
#include "analysis/panel/StaleMark.h"
#include "display/DispMBase.h"
#include "spectrum/RefFiles.h"

#include "ui_FourPs.h"

#include <QFrame>
#include <QStylePainter>
#include <QTimer>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

class FieldMarkers;
class HeaderMenu;
class QFileDialog;
class QLabel;
class QPushButton;
class RegionPicker;
class RegionsView;

/// The analysis panel: it holds every control of the program, hands what is set to the analysis and shows what comes
/// back. Its slots gather, run and show; no rule stands in it.
class FourPs : public QFrame
{
    Q_OBJECT

public:
    explicit FourPs(QWidget *parent = nullptr);
    ~FourPs() override;

    /// Where nothing has to be scrolled and the map is large enough to be read.
    QSize sizeHint() const override;

    /// Everything as it is set now.
    AnalysisInput input() const { return m_inputs.gather(); }
    /// What was calculated, and how each step went.
    const Analysis &analysis() const { return m_analysis; }
    /// How far that can be trusted, and what the displays ask it for.
    Quality &quality() { return m_quality; }
    UncertaintyRequest qualityRequest() const { return m_resultMap.request(); }
    /// Whether the quantity at `position` goes into the result file; no for a position that does not exist.
    bool recordsQuantity(int position) const;
    const Graphs &graphs() const { return m_graphs; }
    QString messages() const { return ui.Messages->toPlainText(); }
    Displays *displays() const { return m_displays.get(); }
    DispMBase *resultMap() const { return ui.ResultMap; }
    RegionsView *regions() const { return m_regions.get(); }
    DispMBase *dataMap() const { return m_dataMapDisplay.get(); }
    /// Shows the map of a result quantity (see ResultPosition), as its button does.
    void showQuantity(int position) { m_mapButtons.at(position)->setChecked(true); }
    /// Shows its standard error or the misfit instead, as the map's menu does.
    void showKind(ResultMapView::Kind kind) { m_resultMap.choose(kind); }
    ResultMapView::Kind shownKind() const { return m_resultMap.shownKind(); }
    /// Shows the measured map of an energy row, counted from 0, as its button does.
    void showDataMap(int row) { m_inputs.points().at(row)->showMapButton()->setChecked(true); }

    /// The folder that was used last; empty at first.
    QString directory() const { return ui.SaveFSelect->dir(); }

    /// Takes the inputs and settings of a job in the place of all present ones and calculates, unless a scope of
    /// recalculation() holds that back. `loading` hears of every file before it is read. Returns one sentence,
    /// beginning with the key in the job, for each file that could not be loaded. Settings that the panel does not have
    /// are left out (see PanelSettings).
    QStringList load(const Job &job, const std::function<void(const QString &file)> &loading = {});
    /// Adds a shift, eV, to the dE of every reference that is loaded, and calculates.
    void shiftReferences(double shift);
    /// Puts the regions of a job in the place of those of the result map.
    void takeRegions(const Job &job);
    /// How many energy rows have neither a map nor an energy.
    int emptyRows() const { return m_inputs.emptyPoints().size(); }
    /// Fills those with energies (eV) and uses them, from the first on, as far as there are such rows. `vPoint`: which
    /// of them becomes the V point where no row is it; -1: none.
    void useEnergies(const QVector<double> &energies, int vPoint);
    /// The present inputs and settings as a job.
    Job job() const;
    /// What is changed within a scope of it is calculated once, at its end.
    Recalculation &recalculation() { return m_recalculation; }

    /// write(), but the files wait for the others of the set; null: they do not.
    void writeInto(numeric::FileSet *set);

    /// Ask for the name of the file that gets a map as text and for a job file; an empty answer is a change of mind.
    std::function<QString()> askMapFile;
    std::function<QString()> askJobFile;
    /// Offers to import files that are not the program's own, and the spectra that came with them; without any by the
    /// button. False when none of them can be imported.
    std::function<bool(const QStringList &others, const QStringList &spectra)> importFiles;
    /// Opens the planning of energies.
    std::function<void()> planEnergies;
    /// Asks for the amount that the pixels of a region have at least; none is a change of mind.
    std::function<std::optional<double>()> askThickness;
    /// Opens a page of the manual with the desktop's program for it; false when there is none.
    std::function<bool(const QString &page)> openPage;
    /// Seconds: a map that is expected to take longer is not calculated unless it is asked for.
    double longestQuietMap = 0.3;

    /// Writes one line into the message area.
    void message(const QString &text);

public slots:
    /// Automatic histogram ranges, then calcMap(), calcTarget() and lcf().
    void calcBoth() { m_recalculation.wanted(); }
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
    /// Opens the manual in the program's language (see manual::firstPage). The message area says why it cannot.
    void openManual();
    /// Asks for a job file; then loadConditions().
    void chooseConditions();
    /// Loads a job file. What is wrong goes into the message area; a job with a mistake in itself changes nothing.
    void loadConditions(const QString &path);
    /// Takes files and folders that were dropped: maps into the energy rows, spectra into empty references, a single
    /// job as loadConditions() does. What is none of these is named in the message area.
    void receiveDroppedFiles(const QStringList &paths);
    /// Every file dialog opens in this directory from now on.
    void receiveNewDir(const QString &dir);
    /// Loads spectra that are only displayed.
    void receiveNewDispFiles(const QStringList &paths);
    /// Fills the energy rows with map files, from the first row on, and uses them; without any V mark, the one nearest
    /// to the edge gets it.
    void receiveNewPaths(const QStringList &paths);
    /// Takes the chosen spectra out of those that are only displayed.
    void removeAFile();
    void changedSubBGTypeForRef(bool f);
    void changedSubBGTypeForTarget(bool f);
    /// Shows or hides the controls that are rarely changed.
    void dispCalcConditions(bool f);

    /// Shows the chosen quantity in the result map, in its own colour range. False when it has none and the last one
    /// stays.
    bool selectedNewMap() { return m_resultMap.select(); }
    /// Draws the measured map anew from its data.
    void updateDMap() { m_dataMap.refresh(); }

    /// Paints a graph for Displays.
    void draw(Displays::DispId id, DispABase *dab, QStylePainter *p) { m_graphs.draw(id, dab, p); }
    /// Paint the maps with the outlines of the regions.
    void drawMap(QStylePainter *p);
    void drawDMap(QStylePainter *p);
    void receiveNowPosInMap(double x, double y) { m_resultMap.showValueAt(x, y); }
    void receiveNowPosInDMap(double x, double y) { m_dataMap.showValueAt(x, y); }
    void dClickedInMap(MouseC *m) { m_resultMap.doubleClick(*m); }
    /// A press among all spectra: a click reports the energy and the values of the spectra there, unless it becomes a
    /// double click; a drag reports nothing.
    void mPressedInAllMut(MouseC *m);
    void clearLCFvs4PS(MouseC *m);
    /// Later fits get the next colour.
    void newColorLCFvs4PS(MouseC *m);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    /// Return presses the button that has the keyboard.
    void keyPressEvent(QKeyEvent *event) override;

private:
    const Ui_FourPs &setUpForm();
    void placeControls();
    void setUpDisplays();
    void setUpMarkers();
    void offerTexts();
    QString fileFrom(QFileDialog *dialog);
    using MapText = std::function<QByteArray(char separator)>;
    void offerMapText(DispMBase *display, const MapText &text);
    void tellOfCopies(const HeaderMenu *header, const QLabel *title);
    QString pictureName() const;
    void connectSpectra();
    void connectReference(int i);
    void connectEnergyRows();
    void connectConditions();
    void connectResults();
    void connectClicks(DispABase *all);
    void connectButtons();
    void connectKeys();
    void press(QPushButton *button);
    void connectFileLists();
    void connectStaleMark();

    /// Shows one line that lasts until the next one.
    void showStatus(const QString &text);
    /// Tells what a step has to say.
    StepOutcome report(const StepOutcome &outcome);
    void calculateAll();
    void calculateDue();
    void recalculateQuietly() { m_recalculation.wanted(Recalculation::Wanted::Quietly); }
    void setAutoRanges();
    void showFindings();
    void showMapResults();
    void showTargetResults();
    void clearTarget();
    void showFit();
    void refreshStaleMark();
    void repaintDisplays();
    void repaintGraphs(std::initializer_list<Displays::DispId> ids);

    void takeSpectra(const QStringList &paths);
    void useReference(int i);
    void askForValence(int i);
    void askForNextValence(int i);
    void receiveEditedEdge();
    void receiveChangedUse(int i);
    void receiveUpdatedRef(int i);
    void receiveUpdatedTarget();
    void receiveNewMap();
    void receiveMarker(QLineEdit *field, const QString &before);
    QString markerName(const QLineEdit *field) const;
    void showMovingMarker();
    void receiveReleaseInAllMut(const MouseC &mouse);
    void forgetClick();
    void reportValues();
    void placeEnergyMarkers();
    void showEnergyWindow(bool full);
    void connectMaps();
    void connectRegions();
    void lookForShift();
    std::optional<double> thicknessFromDialog();
    void chooseHistograms();
    void showDataMapOf(AEPoint *row, bool isShown);
    void showSomeDataMap();
    void writeJob(const QString &result, bool areOld);
    void saveMapText(const QByteArray &text);
    QStringList edgeTexts() const;

    Ui_FourPs ui;
    PanelInputs m_inputs;
    Analysis m_analysis;
    Quality m_quality{m_analysis};
    std::unique_ptr<Displays> m_displays;
    std::unique_ptr<DispMBase> m_dataMapDisplay;
    QVector<QCheckBox *> m_recordBoxes; ///< by position of the result quantity
    QVector<QRadioButton *> m_mapButtons;
    QVector<QRadioButton *> m_histogramButtons;
    Graphs m_graphs;
    ResultMapView m_resultMap;
    DataMapView m_dataMap;
    std::unique_ptr<RegionPicker> m_regionPicker;
    std::unique_ptr<RegionsView> m_regions;
    StaleMark m_staleMark;
    Recalculation m_recalculation;
    FindingMarks m_findingMarks;
    double m_secondsPerValue;                ///< that a map calculation takes, as last measured; see calculateDue()
    RefFiles m_refFiles;                     ///< whichever reference row something happens in
    FieldMarkers *m_energyMarkers = nullptr; ///< of the display of all spectra
    QTimer m_clickTimer;                     ///< until a click among all spectra cannot become a double click
    std::optional<double> m_clickedEnergy;   ///< eV
    QStringList m_appliedEdge;               ///< what the fields of the edge said when it was applied
    QStringList m_shownEdge;                 ///< and when the spectra were drawn with it, while a marker moves
};
