#include "analysis/panel/FourPs.h"

#include "analysis/results/ResultQuantities.h"
#include "controls/Field.h"
#include "controls/WindowButton.h"
#include "display/DispABase.h"

#include <QFontDatabase>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStylePainter>
#include <QTextCursor>

namespace
{
constexpr QSize separateWindow(560, 500);
}

FourPs::FourPs(QWidget *parent)
    : QFrame(parent)
    , m_displays(new Displays)
    , m_dataMap(new DispMBase)
{
    ui.setupUi(this);
    placeControls();
    setUpHistograms();
    setUpDisplays();
    setUpMarkers();
    setUpQuantities();
    connectStaleMark(); // first: the slots that recalculate take the mark away again
    connectSpectra();
    connectEnergyRows();
    connectConditions();
    connectResults();
    offerTexts();
    connectButtons();
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        applyEdge(&selector->spectrum());
    clearStaleMark();
}

FourPs::~FourPs()
{
    // A field that is being edited reports its text when its window goes away with the panel: too late for the slots.
    for (const QObject *const child : findChildren<QObject *>())
        child->disconnect(this);
}

void FourPs::placeControls()
{
    m_references = {ui.Ref1File, ui.Ref2File, ui.Ref3File, ui.Ref4File};
    m_energyRows = {ui.Energy1, ui.Energy2, ui.Energy3, ui.Energy4, ui.Energy5, ui.Energy6, ui.Energy7, ui.Energy8};
    for (int i = 0; i < m_references.size(); ++i) {
        m_references[i]->setTitle(tr("Ref %1").arg(i + 1));
        m_references[i]->setUsed(i < 2);
        m_selectors.append(m_references[i]->selector());
    }
    m_selectors.append(ui.TargetFS);
    for (int i = 0; i < m_energyRows.size(); ++i)
        m_energyRows[i]->setNumber(i + 1);
    m_energyRows.first()->showTitles(true);
    for (AFileSelect *const several : {ui.MapFsSelect, ui.DispFSelect}) {
        several->setMultiple(true);
        several->setMode(AFileSelect::Read);
        several->showDE(false);
        several->setSingleLine();
    }
    ui.SaveFSelect->setMode(AFileSelect::Write);
    ui.SaveFSelect->setDefaultSuffix(QStringLiteral("dat"));
    ui.SaveFSelect->showDE(false);
    ui.MoreConds->hide();
    ui.Messages->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // numbers stand below each other
}

void FourPs::setUpHistograms()
{
    m_valenceHistogram.minEdit = ui.HgAFrom;
    m_valenceHistogram.maxEdit = ui.HgATo;
    m_valenceHistogram.numEdit = ui.HgABoxes;
    m_valenceHistogram.check = ui.HgAAuto;
    m_thicknessHistogram.minEdit = ui.HgTFrom;
    m_thicknessHistogram.maxEdit = ui.HgTTo;
    m_thicknessHistogram.numEdit = ui.HgTBoxes;
    m_thicknessHistogram.check = ui.HgTAuto;
}

void FourPs::setUpDisplays()
{
    m_displays->setWindowTitle(tr("Graphs"));
    m_dataMap->setWindowTitle(tr("Data map"));
    m_dataMap->setAttribute(Qt::WA_QuitOnClose, false);
    m_dataMap->ui.Title->setText(tr("Data map"));
    m_dataMap->resize(separateWindow);
    new WindowButton(ui.ShowDAB, m_displays.get(), this);
    new WindowButton(ui.ShowDMap, m_dataMap.get(), this);
    for (int i = 0; i < m_selectors.size(); ++i)
        m_selectors[i]->setDisplay(m_displays->dabs[i]->area());
    auto *const scatter = m_displays->dabs[Displays::M2M3];
    scatter->resize(separateWindow);
    scatter->setWindowTitle(scatter->ui.Title->text());
    scatter->setAttribute(Qt::WA_QuitOnClose, false);
    new WindowButton(ui.ShowM2M3, scatter, this);
}

void FourPs::setUpMarkers()
{
    for (int i = 0; i < m_selectors.size(); ++i) {
        auto *const markers = new FieldMarkers(m_displays->dabs[i]->area(), this);
        markers->add(ui.EdgeE);
        markers->add(ui.PreEEndDE, 0);
        markers->add(ui.PostEStartDE, 0);
        connect(markers, &FieldMarkers::moving, this, &FourPs::showMovingEdge);
        connect(markers, &FieldMarkers::edited, this, &FourPs::receiveMarker);
    }
    m_energyMarkers = new FieldMarkers(m_displays->dabs[Displays::Muts]->area(), this);
    connect(m_energyMarkers, &FieldMarkers::moving, this, &FourPs::showMovingEdge);
    connect(m_energyMarkers, &FieldMarkers::edited, this, &FourPs::receiveMarker);
    placeEnergyMarkers();
}

void FourPs::setUpQuantities()
{
    for (const ResultQuantity &quantity : resultQuantities) {
        m_recordBoxes.append(findChild<QCheckBox *>(QLatin1String(quantity.recordBox)));
        m_mapButtons.append(findChild<QRadioButton *>(QLatin1String(quantity.mapButton)));
        m_histogramButtons.append(findChild<QRadioButton *>(QLatin1String(quantity.histogramButton)));
    }
    showMapTitle();
}

void FourPs::connectSpectra()
{
    using Slot = void (FourPs::*)();
    const Slot receiveRef[] = {&FourPs::receiveNewRef1, &FourPs::receiveNewRef2, &FourPs::receiveNewRef3,
                               &FourPs::receiveNewRef4};
    connect(&m_refFiles, &RefFiles::selectedFile, this, &FourPs::repaintDisplays);
    for (int i = 0; i < m_references.size(); ++i) {
        connect(m_references[i], &ARefFile::changedUse, this, receiveRef[i]);
        connect(m_references[i]->valenceEdit(), &QLineEdit::editingFinished, this, [this] {
            refreshShownMap();
            repaintDisplays();
        });
        connect(m_selectors[i], &AXafsFileSelect::updated, this, [this, i] { receiveUpdatedRef(i); });
        connect(m_selectors[i], &AFileSelect::newFilePath, this, [this, i] {
            if (!m_selectors[i]->valid()) // a file that is no spectrum took its place
                receiveUpdatedRef(i);
        });
    }
    connect(ui.TargetFS, &AXafsFileSelect::updated, this, &FourPs::receiveNewTarget);
    for (AXafsFileSelect *const selector : qAsConst(m_selectors)) {
        connect(selector, &AXafsFileSelect::foundNewEdge, this, &FourPs::noticedNewEdge);
        connect(selector, &AFileSelect::newFilePath, this, &FourPs::receiveNewFile);
        connect(selector, &AFileSelect::newFilePath, this, &FourPs::showAllSpectra);
        connect(selector, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    }
}

void FourPs::connectEnergyRows()
{
    for (AEPoint *const row : qAsConst(m_energyRows)) {
        connect(row, &AEPoint::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AEPoint::newEnergy, this, &FourPs::receiveNewEnergy);
        connect(row, &AEPoint::newData, this, &FourPs::receiveNewMap);
        connect(row, &AEPoint::changedCB, this, [this] {
            placeEnergyMarkers();
            repaintDisplays();
        });
        for (const auto changed : {&AEPoint::newData, &AEPoint::changedCB}) // other points, other ranges
            connect(row, changed, m_displays->dabs[Displays::M2M3], &DispABase::clearScale);
    }
}

void FourPs::connectConditions()
{
    for (QLineEdit *const edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE})
        connect(edit, &QLineEdit::editingFinished, this, &FourPs::setEdge);
    connect(ui.SubPostEforRef, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForRef);
    connect(ui.SubPostEforTarget, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForTarget);
    for (QAbstractButton *const button :
         std::initializer_list<QAbstractButton *>{ui.NNone, ui.NByEJ, ui.NBySubPre, ui.NBy2Vics})
        connect(button, &QAbstractButton::toggled, this, &FourPs::showAllSpectra);
    connect(ui.FullRangeCB, &QCheckBox::toggled, this, &FourPs::showEnergyWindow);
}

void FourPs::connectResults()
{
    connect(m_displays.get(), &Displays::draw, this, &FourPs::draw);
    DispABase *const muts = m_displays->dabs[Displays::Muts];
    connect(muts, &DispABase::mPressed, this, &FourPs::mPressedInAllMut);
    DispABase *const comparison = m_displays->dabs[Displays::LcfVsMps];
    connect(comparison, &DispABase::mReleased, this, &FourPs::newColorLCFvs4PS);
    connect(comparison, &DispABase::mDClicked, this, &FourPs::clearLCFvs4PS);

    connect(ui.ResultMap, &DispMBase::draw, this, &FourPs::drawMap);
    connect(ui.ResultMap, &DispMBase::nowPos, this, &FourPs::receiveNowPosInMap);
    connect(ui.ResultMap, &DispMBase::mDClicked, this, &FourPs::dClickedInMap);
    connect(m_dataMap.get(), &DispMBase::draw, this, &FourPs::drawDMap);
    connect(m_dataMap.get(), &DispMBase::nowPos, this, &FourPs::receiveNowPosInDMap);
    connect(ui.MaskBelow, &QLineEdit::textChanged, this, &FourPs::refreshShownMap);
    for (QRadioButton *const button : qAsConst(m_mapButtons)) {
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                selectedNewMap();
        });
    }
    for (AEPoint *const row : qAsConst(m_energyRows)) {
        connect(row->showMapButton(), &QPushButton::toggled, this, [this, row](bool on) { showDataMap(row, on); });
        connect(row->fileSelect(), &AFileSelect::newFilePath, this, &FourPs::updateDMap); // also when cleared
    }
    for (QRadioButton *const button : qAsConst(m_histogramButtons))
        connect(button, &QRadioButton::toggled, this, &FourPs::showOtherHistogram);
    for (QCheckBox *const box : {ui.HgAPerRef, ui.HgTPerRef})
        connect(box, &QCheckBox::toggled, this, &FourPs::showOtherHistogram);
    connect(ui.M2M3Blue, &QCheckBox::toggled, this, &FourPs::repaintDisplays);
}

void FourPs::showOtherHistogram()
{
    refreshShownHistograms();
    for (const Displays::DispId id : {Displays::HistA, Displays::HistDMut}) {
        m_displays->dabs[id]->clearScale();
        m_displays->dabs[id]->area()->update();
    }
}

void FourPs::connectButtons()
{
    connect(ui.CalcMapB, &QPushButton::clicked, this, &FourPs::calcMap);
    connect(ui.LCFB, &QPushButton::clicked, this, &FourPs::lcf);
    connect(ui.WriteB, &QPushButton::clicked, this, &FourPs::write);
    connect(ui.CalcWriteB, &QPushButton::clicked, this, &FourPs::calcAndWrite);
    connect(ui.DispCondsB, &QPushButton::toggled, this, &FourPs::dispCalcConditions);
    connect(ui.CopyConditions, &QPushButton::clicked, this, &FourPs::copyConditions);
    connect(ui.ClearMessages, &QPushButton::clicked, ui.Messages, &QTextEdit::clear);

    connect(ui.MapFsSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewPaths);
    connect(ui.DispFSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewDispFiles);
    connect(ui.RemoveAFile, &QPushButton::clicked, this, &FourPs::removeAFile);
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

/// Whatever changes what a map calculation would find marks the "Calc." button until one has been done.
void FourPs::connectStaleMark()
{
    connect(&m_refFiles, &RefFiles::changedUse, this, &FourPs::markStale);
    for (ARefFile *const reference : qAsConst(m_references)) {
        m_refFiles.add(reference);
        connect(reference->valenceEdit(), &QLineEdit::textEdited, this, &FourPs::markStale);
        connect(reference->selector(), &AXafsFileSelect::updated, this, &FourPs::markStale);
    }
    for (const AXafsFileSelect *const selector : qAsConst(m_selectors)) // the target's edge is everybody's
        connect(selector, &AXafsFileSelect::foundNewEdge, this, &FourPs::markStale);
    for (AEPoint *const row : qAsConst(m_energyRows)) {
        connect(row->energyEdit(), &QLineEdit::textChanged, this, &FourPs::markStale);
        connect(row, &AEPoint::newData, this, &FourPs::markStale);
        connect(row->fileSelect(), &AFileSelect::newFilePath, this, [this, row] {
            if (!row->loaded()) // what is loaded has been announced by now, and calculated where that was possible
                markStale();
        });
        connect(row, &AEPoint::changedCB, this, &FourPs::markStale);
    }
    for (QAbstractButton *const button : std::initializer_list<QAbstractButton *>{
             ui.TypeNonEquiv, ui.TypeTMKisExact, ui.NonEquivBGVic, ui.SubPostEforRef, ui.SubPostEforTarget})
        connect(button, &QAbstractButton::toggled, this, &FourPs::markStale);
    for (QLineEdit *const edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE, ui.HgAFrom, ui.HgATo, ui.HgABoxes,
                                  ui.HgTFrom, ui.HgTTo, ui.HgTBoxes})
        connect(edit, &QLineEdit::textEdited, this, &FourPs::markStale);
}

void FourPs::message(const QString &text)
{
    // At the end, wherever the user has clicked meanwhile.
    ui.Messages->moveCursor(QTextCursor::End);
    ui.Messages->insertPlainText(text.simplified() + QLatin1Char('\n'));
    ui.Messages->ensureCursorVisible();
}

void FourPs::refuse(Step step, const QString &text)
{
    message(text);
    emit refused(step, text);
}

void FourPs::repaintDisplays()
{
    for (DispABase *const display : qAsConst(m_displays->dabs))
        display->area()->update();
}

/// Other spectra, or values on another scale: a zoom into the former ones would show nothing.
void FourPs::showAllSpectra()
{
    m_displays->dabs[Displays::Muts]->clearScale();
    repaintDisplays();
}

void FourPs::markStale()
{
    constexpr int size = 10; // pixels
    QPixmap dot(size, size);
    dot.fill(Qt::transparent);
    QPainter painter(&dot);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(230, 120, 0));
    painter.drawEllipse(1, 1, size - 2, size - 2);
    painter.end();
    ui.CalcMapB->setIcon(QIcon(dot));
}

void FourPs::clearStaleMark()
{
    ui.CalcMapB->setIcon(QIcon());
}

void FourPs::showEnergyWindow(bool full)
{
    for (AXafsFileSelect *const selector : qAsConst(m_selectors))
        selector->setFullRange(full);
    m_displays->dabs[Displays::Muts]->clearScale();
    repaintDisplays();
}

void FourPs::dispCalcConditions(bool f)
{
    ui.MoreConds->setVisible(f);
    layout()->activate(); // the message area has another height from here on
    ui.Messages->ensureCursorVisible();
}

/// The edge and the energies in use can be moved in the display of all spectra.
void FourPs::placeEnergyMarkers()
{
    m_energyMarkers->clear();
    m_energyMarkers->add(ui.EdgeE);
    for (AEPoint *const row : qAsConst(m_energyRows)) {
        if (row->isUsed())
            m_energyMarkers->add(row->energyEdit());
    }
}

/// A marker was let go: the same as if its field had been edited.
void FourPs::receiveMarker(QLineEdit *field)
{
    for (AEPoint *const row : qAsConst(m_energyRows)) {
        if (row->energyEdit() == field) {
            row->inNewEnergy();
            return;
        }
    }
    markStale();
    setEdge();
}
