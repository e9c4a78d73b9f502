// The maps, and the regions of the result map: how they are made, and where they are outlined.

#include "analysis/panel/FourPs.h"
#include "analysis/panel/RegionPicker.h"
#include "analysis/panel/RegionsView.h"
#include "analysis/panel/ShiftDialog.h"
#include "analysis/results/ResultQuantities.h"
#include "controls/Field.h"
#include "display/DispABase.h"
#include "display/HeaderMenu.h"
#include "numeric/FieldText.h"

#include <QAction>
#include <QFileInfo>
#include <QInputDialog>

void FourPs::connectMaps()
{
    connect(ui.ResultMap, &DispMBase::draw, this, &FourPs::drawMap);
    connect(ui.ResultMap, &DispMBase::nowPos, this, &FourPs::receiveNowPosInMap);
    connect(ui.ResultMap, &DispMBase::mDClicked, this, &FourPs::dClickedInMap);
    connect(m_dataMapDisplay.get(), &DispMBase::draw, this, &FourPs::drawDMap);
    connect(m_dataMapDisplay.get(), &DispMBase::nowPos, this, &FourPs::receiveNowPosInDMap);
    for (const QLineEdit *const limit : {ui.MaskBelow, ui.ErrorAbove})
        connect(limit, &QLineEdit::textChanged, this, [this] { m_resultMap.refresh(); });
    connect(ui.MaskBelow, &QLineEdit::textChanged, m_regions.get(), &RegionsView::refresh); // material is others
    m_resultMap.longestWait = [this] {
        return longestQuietMap;
    };
    m_resultMap.tell = [this](const QString &text) {
        showStatus(text);
    };
    for (QRadioButton *const button : qAsConst(m_mapButtons)) {
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                selectedNewMap();
        });
    }
    ui.ResultMap->headerMenu()->proposedName = [this] {
        return pictureName();
    };
}

/// "cell1_Valence": after the result file and the quantity.
QString FourPs::pictureName() const
{
    const QString result = QFileInfo(ui.SaveFSelect->fileText()).completeBaseName();
    QString quantity = QLatin1String(quantityAt(m_resultMap.quantity())->name);
    if (m_resultMap.shownKind() != ResultMapView::Kind::Value)
        quantity += QLatin1String(m_resultMap.shownKind() == ResultMapView::Kind::Error ? "_error" : "_misfit");
    return result.isEmpty() ? QString() : result + QLatin1Char('_') + quantity;
}

void FourPs::connectRegions()
{
    askThickness = [this] {
        return thicknessFromDialog();
    };
    connect(m_regionPicker.get(), &RegionPicker::picked, m_regions.get(), &RegionsView::addRectangle);
    connect(m_regions.get(), &RegionsView::changed, this, [this] {
        ui.ResultMap->area()->update();
        m_dataMapDisplay->area()->update();
    });
    connect(m_regions.get(), &RegionsView::tooMany, this,
            [this] { showStatus(tr("There are %1 regions already; clear them first.").arg(RegionsView::most)); });
    HeaderMenu *const menu = ui.ResultMap->headerMenu();
    connect(menu->add(tr("Region: this pixel")), &QAction::triggered, this, [this] {
        if (const auto pixel = m_regionPicker->takePixel())
            m_regions->addPixel(*pixel);
        else
            showStatus(tr("Point at a pixel of the result map first."));
    });
    connect(menu->add(tr("Region: above thickness...")), &QAction::triggered, this, [this] {
        if (const auto thickness = askThickness())
            m_regions->addAbove(*thickness);
    });
    connect(menu->add(tr("Regions: show")), &QAction::triggered, m_regions.get(), [this] {
        m_regions->show();
        m_regions->raise();
    });
    connect(menu->add(tr("Regions: clear")), &QAction::triggered, m_regions.get(), &RegionsView::clear);
    connect(menu->add(tr("Energy shift of the maps...")), &QAction::triggered, this, &FourPs::lookForShift);
    tellOfCopies(m_regions->graph()->headerMenu(), m_regions->graph()->ui.Title);
}

std::optional<double> FourPs::thicknessFromDialog()
{
    QInputDialog dialog(this);
    dialog.setLocale(QLocale::c()); // a decimal point
    dialog.setWindowTitle(tr("Region: above thickness"));
    dialog.setLabelText(tr("All pixels with at least this amount (t/ts):"));
    dialog.setInputMode(QInputDialog::DoubleInput);
    dialog.setDoubleDecimals(4);
    dialog.setDoubleRange(-1e9, 1e9);
    dialog.setDoubleValue(number(ui.MaskBelow));
    return dialog.exec() == QDialog::Accepted ? std::optional<double>(dialog.doubleValue()) : std::nullopt;
}

/// What is found is only told; the dE of the references change when the user wants it.
void FourPs::lookForShift()
{
    auto *const dialog = new ShiftDialog(m_inputs.gather(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &ShiftDialog::applied, this, [this](double shift) {
        shiftReferences(shift);
        message(tr("The dE of all references was changed by %1 eV.").arg(fieldText(shift)));
    });
    dialog->open();
}

void FourPs::drawMap(QStylePainter *p)
{
    m_resultMap.draw(p);
    resultdrawing::drawOutlines(p, ui.ResultMap->area()->cc, m_regions->outlines());
    m_regionPicker->draw(p);
}

void FourPs::drawDMap(QStylePainter *p)
{
    m_dataMap.draw(p);
    resultdrawing::drawOutlines(p, m_dataMapDisplay->area()->cc, m_regions->outlines());
}
