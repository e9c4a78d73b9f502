#include "analysis/panel/FourPs.h"

#include "analysis/drawing/PlottedText.h"
#include "analysis/panel/FieldMarkers.h"
#include "analysis/panel/RegionPicker.h"
#include "analysis/panel/RegionsView.h"
#include "analysis/results/ResultQuantities.h"
#include "controls/CompactControls.h"
#include "controls/NumberTyping.h"
#include "controls/WindowButton.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QMenu>

namespace
{

constexpr QSize separateWindow(560, 500);
constexpr QSize graphsWindow(1340, 853); // their titles are not cut
constexpr QSize comfortable(1356, 690);  // pixels, for a screen of 1366 x 768

/// The displays of single spectra, in the order of the selectors.
constexpr Displays::DispId spectrumDisplays[] = {Displays::Ref1, Displays::Ref2, Displays::Ref3, Displays::Ref4,
                                                 Displays::Target};

/// The controls of the result quantities, in their order.
template <class Control>
QVector<Control *> quantityControls(const QWidget *panel, const char *ResultQuantity::*name)
{
    QVector<Control *> controls;
    for (const ResultQuantity &quantity : resultQuantities)
        controls.append(panel->findChild<Control *>(QLatin1String(quantity.*name)));
    return controls;
}

/// A display that has a window of its own cannot be popped out of another one: its button closes the window.
void standAlone(QPushButton *popDock, QWidget *display)
{
    popDock->disconnect(display);
    popDock->setToolTip(FourPs::tr("Close this window"));
    QObject::connect(popDock, &QPushButton::clicked, display, &QWidget::close);
}

} // namespace

FourPs::FourPs(QWidget *parent)
    : QFrame(parent)
    , m_inputs(setUpForm())
    , m_displays(new Displays)
    , m_dataMapDisplay(new DispMBase)
    , m_recordBoxes(quantityControls<QCheckBox>(this, &ResultQuantity::recordBox))
    , m_mapButtons(quantityControls<QRadioButton>(this, &ResultQuantity::mapButton))
    , m_histogramButtons(quantityControls<QRadioButton>(this, &ResultQuantity::histogramButton))
    , m_graphs(ui, m_inputs, m_analysis)
    , m_resultMap({ui.ResultMap, m_mapButtons, ui.MaskBelow, ui.ErrorAbove}, m_inputs, m_analysis, &m_quality)
    , m_dataMap(m_dataMapDisplay.get())
    , m_regionPicker(new RegionPicker(
          ui.ResultMap, [this] { return QSize(m_resultMap.shown().grid.nx, m_resultMap.shown().grid.ny); }))
    , m_regions(new RegionsView(m_inputs, m_analysis, &m_quality, [this] { return m_resultMap.request(); }))
    , m_staleMark(ui.CalcMapB)
    , m_recalculation([this](Recalculation::Wanted what) {
        what == Recalculation::Wanted::Whole ? calculateAll() : calculateDue();
    })
    , m_findingMarks(ui, m_inputs)
    , m_secondsPerValue(2e-8) // until it is measured; several times what it is
    , m_appliedEdge(edgeTexts())
    , m_shownEdge(m_appliedEdge)
{
    placeControls();
    setUpDisplays();
    setUpMarkers();
    connectSpectra();
    connectEnergyRows();
    connectConditions();
    connectResults();
    connectButtons();
    connectKeys();
    connectFileLists();
    offerTexts();
    connectMaps();
    connectRegions();
    connectStaleMark(); // last: what the other slots change is compared then
    m_inputs.applyEdgeToRows();
    m_resultMap.refresh();
}

FourPs::~FourPs()
{
    // A field that is being edited reports its text when its window goes away with the panel: too late for the slots.
    for (const QObject *const child : findChildren<QObject *>())
        child->disconnect(this);
}

QSize FourPs::sizeHint() const
{
    return ui.Contents->minimumSizeHint().expandedTo(comfortable);
}

const Ui_FourPs &FourPs::setUpForm()
{
    ui.setupUi(this);
    for (QLineEdit *const field : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE, ui.HgAFrom, ui.HgATo, ui.HgABoxes,
                                   ui.HgTFrom, ui.HgTTo, ui.HgTBoxes, ui.MaskBelow, ui.ErrorAbove})
        new NumberTyping(field);
    return ui;
}

void FourPs::placeControls()
{
    for (int i = 0; i < m_inputs.references().size(); ++i) {
        m_inputs.references()[i]->setTitle(tr("Ref %1").arg(i + 1));
        m_inputs.references()[i]->setUsed(i < 2);
        m_inputs.references()[i]->showTitles(i == 0);
    }
    const ARefFile *const above = m_inputs.references().first();
    ui.TargetName->setFixedWidth(above->widthBeforeFile());
    for (QWidget *const field : {static_cast<QWidget *>(ui.TargetDMutLabel), static_cast<QWidget *>(ui.TargetDMut)})
        field->setFixedWidth(above->resultWidth());
    ui.TargetFS->showTitles(false);
    ui.TargetFS->setDialogTitle(tr("Target: choose a spectrum"));
    for (int i = 0; i < m_inputs.points().size(); ++i)
        m_inputs.points()[i]->setNumber(i + 1);
    m_inputs.points().first()->showTitles(true);
    for (AFileSelect *const several : {ui.MapFsSelect, ui.DispFSelect}) {
        several->setMultiple(true);
        several->setMode(AFileSelect::Read);
        several->showDE(false);
        several->setSingleLine();
    }
    ui.MapFsSelect->setDialogTitle(tr("Several maps: choose their files"));
    ui.DispFSelect->setDialogTitle(tr("Spectra for display: choose their files"));
    ui.SaveFSelect->setMode(AFileSelect::Write);
    ui.SaveFSelect->setDialogTitle(tr("Results: name a file to write"));
    ui.SaveFSelect->showTitles(false);
    ui.SaveFSelect->keepInfoLine(); // else every write would resize the map
    ui.SaveFSelect->setDefaultSuffix(QStringLiteral("dat"));
    ui.SaveFSelect->showDE(false);
    for (QLineEdit *const field : findChildren<QLineEdit *>())
        field->setAcceptDrops(false); // else they take the name of a file as text
    compact::fitButton(ui.ClearMessages);
    compact::fitButton(ui.ManualB);
    const int pages = qMax(ui.Conditions->sizeHint().height(), ui.MorePages->sizeHint().height());
    ui.Conditions->setFixedHeight(pages); // they take turns in one place
    ui.MorePages->setFixedHeight(pages);
    ui.MoreConds->hide();
    ui.Messages->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // numbers stand below each other
}

void FourPs::setUpDisplays()
{
    m_displays->setWindowTitle(tr("Graphs"));
    m_displays->resize(graphsWindow);
    m_dataMapDisplay->setAttribute(Qt::WA_QuitOnClose, false);
    m_dataMapDisplay->setWindowTitle(tr("Data map"));
    m_dataMapDisplay->resize(separateWindow);
    standAlone(m_dataMapDisplay->ui.PopDockB, m_dataMapDisplay.get());
    connect(ui.ShowDMap, &QPushButton::clicked, this, &FourPs::showSomeDataMap);
    new WindowButton(ui.ShowDAB, m_displays.get(), this);
    new WindowButton(ui.ShowDMap, m_dataMapDisplay.get(), this);
    for (int i = 0; i < m_inputs.selectors().size(); ++i)
        m_inputs.selectors()[i]->setDisplay(m_displays->display(spectrumDisplays[i])->area());
    DispABase *const steps = m_displays->display(Displays::M2M3);
    steps->resize(separateWindow);
    steps->setWindowTitle(steps->ui.Title->text());
    steps->setAttribute(Qt::WA_QuitOnClose, false);
    standAlone(steps->ui.PopDockB, steps);
    new WindowButton(ui.ShowM2M3, steps, this);
}

void FourPs::setUpMarkers()
{
    const auto connectMarkers = [this](FieldMarkers *markers) {
        connect(markers, &FieldMarkers::moving, this, &FourPs::showMovingMarker);
        connect(markers, &FieldMarkers::edited, this, &FourPs::receiveMarker);
    };
    for (const Displays::DispId id : spectrumDisplays) {
        auto *const markers = new FieldMarkers(m_displays->display(id)->area(), this);
        markers->add(ui.EdgeE);
        markers->add(ui.PreEEndDE, 0);
        markers->add(ui.PostEStartDE, 0);
        connectMarkers(markers);
    }
    m_energyMarkers = new FieldMarkers(m_displays->display(Displays::Muts)->area(), this);
    connectMarkers(m_energyMarkers);
    placeEnergyMarkers();
}

void FourPs::offerTexts()
{
    askMapFile = [this] {
        QFileDialog dialog(this, tr("Save shown map as text..."), QString(), QStringLiteral("*.txt"));
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(QStringLiteral("txt"));
        return fileFrom(&dialog);
    };
    askJobFile = [this] {
        QFileDialog dialog(this, tr("Load conditions: choose a job"), QString(), tr("Jobs (*.json);;All (* *.*)"));
        dialog.setFileMode(QFileDialog::ExistingFile);
        return fileFrom(&dialog);
    };
    for (const Displays::DispId id : qAsConst(m_displays->ids)) {
        const DispABase *const display = m_displays->display(id);
        display->headerMenu()->setValues([this, id] { return m_graphs.text(id); });
        tellOfCopies(display->headerMenu(), display->ui.Title);
    }
    offerMapText(ui.ResultMap, [this](char separator) { return m_resultMap.text(separator); });
    offerMapText(m_dataMapDisplay.get(),
                 [this](char separator) { return plottedtext::ofMap(m_dataMap.shown(), separator); });
}

/// The file that the user chooses in a dialog, which starts in the folder used last.
QString FourPs::fileFrom(QFileDialog *dialog)
{
    dialog->setWindowModality(Qt::WindowModal);
    if (!ui.SaveFSelect->dir().isEmpty())
        dialog->setDirectory(ui.SaveFSelect->dir());
    if (dialog->exec() != QDialog::Accepted)
        return QString();
    receiveNewDir(dialog->directory().canonicalPath());
    return dialog->selectedFiles().value(0);
}

void FourPs::offerMapText(DispMBase *display, const MapText &text)
{
    HeaderMenu *const header = display->headerMenu();
    header->setValues([text] { return QString::fromLatin1(text('\t')); });
    tellOfCopies(header, display->ui.Title);
    connect(header->add(tr("Save shown map as text...")), &QAction::triggered, this,
            [this, text] { saveMapText(text(' ')); });
}

void FourPs::tellOfCopies(const HeaderMenu *header, const QLabel *title)
{
    connect(header, &HeaderMenu::copiedValues, this,
            [this, title] { showStatus(tr("saved the values of \"%1\" on the clipboard").arg(title->text())); });
}

void FourPs::connectSpectra()
{
    connect(&m_refFiles, &RefFiles::selectedFile, this, &FourPs::repaintDisplays);
    for (int i = 0; i < m_inputs.references().size(); ++i)
        connectReference(i);
    connect(ui.TargetFS, &AXafsFileSelect::updated, this, &FourPs::receiveUpdatedTarget);
    for (AXafsFileSelect *const selector : m_inputs.selectors()) {
        connect(selector, &AXafsFileSelect::foundNewEdge, this, [this, selector](double edge) {
            if (!selector->lastReadSucceeded()) // it is the edge of the file before
                return;
            if (selector->isChosenByHand() && selector != m_inputs.target())
                useReference(m_inputs.selectors().indexOf(selector));
            noticedNewEdge(edge);
        });
        connect(selector, &AFileSelect::newFilePath, this, &FourPs::receiveNewFile);
        connect(selector, &AFileSelect::newFilePath, this, &FourPs::repaintDisplays);
        connect(selector, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    }
}

void FourPs::connectReference(int i)
{
    ARefFile *const reference = m_inputs.references()[i];
    AXafsFileSelect *const selector = m_inputs.selector(i);
    m_refFiles.add(reference);
    connect(reference, &ARefFile::changedUse, this, [this, i] { receiveChangedUse(i); });
    connect(reference->valenceEdit(), &QLineEdit::editingFinished, this, &FourPs::repaintDisplays);
    connect(reference->valenceEdit(), &QLineEdit::editingFinished, this, &FourPs::recalculateQuietly);
    connect(
        reference->valenceEdit(), &QLineEdit::returnPressed, this, [this, i] { askForNextValence(i); },
        Qt::QueuedConnection); // the field is done with its own then
    connect(selector, &AXafsFileSelect::updated, this, [this, i] { receiveUpdatedRef(i); });
    connect(selector, &AFileSelect::newFilePath, this, [this, i, selector] {
        if (!selector->valid()) // a file that is no spectrum took its place
            receiveUpdatedRef(i);
    });
}

void FourPs::connectEnergyRows()
{
    for (AEPoint *const row : m_inputs.points()) {
        connect(row, &AEPoint::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AEPoint::newEnergy, this, &FourPs::receiveNewEnergy);
        connect(row, &AEPoint::newData, this, &FourPs::receiveNewMap);
        connect(row, &AEPoint::changedCB, this, [this] {
            placeEnergyMarkers();
            repaintDisplays();
            recalculateQuietly();
        });
        connect(row->showMapButton(), &QPushButton::toggled, this, [this, row](bool on) { showDataMapOf(row, on); });
        connect(row->fileSelect(), &AFileSelect::newFilePath, this, [this, row] { // also when cleared
            updateDMap();
            placeEnergyMarkers();
            if (!row->loaded())
                recalculateQuietly();
        });
        connect(row->energyEdit(), &QLineEdit::editingFinished, this, &FourPs::recalculateQuietly);
        connect(row->energyEdit(), &QLineEdit::textChanged, this, [this] { m_dataMap.showTitle(); });
    }
}

void FourPs::connectConditions()
{
    for (QLineEdit *const edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE})
        connect(edit, &QLineEdit::editingFinished, this, &FourPs::receiveEditedEdge);
    connect(ui.SubPostEforRef, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForRef);
    connect(ui.SubPostEforTarget, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForTarget);
    for (QAbstractButton *const button :
         std::initializer_list<QAbstractButton *>{ui.NNone, ui.NByEJ, ui.NBySubPre, ui.NBy2Vics})
        connect(button, &QAbstractButton::toggled, this, [this] { repaintGraphs({Displays::Muts}); });
    connect(ui.FullRangeCB, &QCheckBox::toggled, this, &FourPs::showEnergyWindow);
    for (const QRadioButton *const button :
         {ui.TypeFourPs, ui.TypeNonEquiv, ui.TypeTMKisExact, ui.TypeTMKisLS, ui.NonEquivBGLinear, ui.NonEquivBGVic}) {
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on) // the other one of the pair is off by then
                recalculateQuietly();
        });
    }
    for (const Histgram *const histogram : {&m_inputs.valenceHistogram(), &m_inputs.thicknessHistogram()}) {
        for (const QLineEdit *const field : {histogram->minEdit, histogram->maxEdit, histogram->numEdit})
            connect(field, &QLineEdit::editingFinished, this, &FourPs::recalculateQuietly);
        connect(histogram->check, &QCheckBox::toggled, this, [this] {
            setAutoRanges();
            recalculateQuietly();
        });
    }
}

void FourPs::connectResults()
{
    connect(m_displays.get(), &Displays::draw, this, &FourPs::draw);
    connectClicks(m_displays->display(Displays::Muts));
    DispABase *const comparison = m_displays->display(Displays::LcfVsMps);
    connect(comparison, &DispABase::mReleased, this, &FourPs::newColorLCFvs4PS);
    connect(comparison, &DispABase::mDClicked, this, &FourPs::clearLCFvs4PS);

    for (QRadioButton *const button : qAsConst(m_histogramButtons))
        connect(button, &QRadioButton::toggled, this, &FourPs::chooseHistograms);
    for (QCheckBox *const box : {ui.HgAPerRef, ui.HgTPerRef})
        connect(box, &QCheckBox::toggled, this, &FourPs::chooseHistograms);
    connect(ui.M2M3Blue, &QCheckBox::toggled, this, [this] { repaintGraphs({Displays::M2M3}); });
}

void FourPs::connectButtons()
{
    connect(ui.CalcMapB, &QPushButton::clicked, this, &FourPs::calcMap);
    connect(ui.LCFB, &QPushButton::clicked, this, &FourPs::lcf);
    connect(ui.WriteB, &QPushButton::clicked, this, &FourPs::write);
    connect(ui.CalcWriteB, &QPushButton::clicked, this, &FourPs::calcAndWrite);
    connect(ui.DispCondsB, &QPushButton::toggled, this, &FourPs::dispCalcConditions);
    connect(ui.CopyConditions, &QPushButton::clicked, this, &FourPs::copyConditions);
    connect(ui.LoadConditions, &QPushButton::clicked, this, &FourPs::chooseConditions);
    connect(ui.ImportFiles, &QPushButton::clicked, this, [this] {
        if (importFiles)
            importFiles({}, {});
    });
    connect(ui.PlanEnergies, &QPushButton::clicked, this, [this] {
        if (planEnergies)
            planEnergies();
    });
    connect(ui.ClearMessages, &QPushButton::clicked, ui.Messages, &QTextEdit::clear);
    connect(ui.ManualB, &QPushButton::clicked, this, &FourPs::openManual);
    connect(ui.RemoveAFile, &QPushButton::clicked, this, &FourPs::removeAFile);
}

void FourPs::connectFileLists()
{
    connect(ui.MapFsSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewPaths);
    connect(ui.DispFSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewDispFiles);
    // A dropped file comes alone, an empty path from the "Clear" button.
    connect(ui.MapFsSelect, &AFileSelect::newFilePath, this, [this](const QString &path) {
        if (!path.isEmpty())
            receiveNewPaths({path});
    });
    connect(ui.DispFSelect, &AFileSelect::newFilePath, this, [this](const QString &path) {
        if (!path.isEmpty())
            receiveNewDispFiles({path});
    });
    for (AFileSelect *const selector : {ui.MapFsSelect, ui.DispFSelect, ui.SaveFSelect})
        connect(selector, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
}

/// Whatever the user can change may change what a map calculation would find.
void FourPs::connectStaleMark()
{
    for (const QLineEdit *const field : findChildren<QLineEdit *>()) {
        if (!ui.ResultMap->isAncestorOf(field)) // whose read-outs follow the mouse
            connect(field, &QLineEdit::textChanged, this, &FourPs::refreshStaleMark);
    }
    for (const QAbstractButton *const button : findChildren<QAbstractButton *>())
        connect(button, &QAbstractButton::toggled, this, &FourPs::refreshStaleMark);
    for (const AFileSelect *const selector : findChildren<AFileSelect *>())
        connect(selector, &AFileSelect::selectedFile, this, &FourPs::refreshStaleMark);
}
