#include "mapdata/AEPoint.h"

#include "controls/CompactControls.h"
#include "controls/Field.h"
#include "controls/NumberTyping.h"
#include "controls/WaitCursor.h"
#include "mapdata/MapFileReader.h"

#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>

AEPoint::LoadReport AEPoint::reportOf(const QString &path) const
{
    const QString name = QFileInfo(path).fileName();
    switch (m_result.problem) {
    case MapLoadProblem::NotOpened:
    case MapLoadProblem::NotRead:
        if (m_result.systemText.isEmpty())
            return {tr("Cannot read %1").arg(name), true};
        return {tr("Cannot read %1: %2").arg(name, m_result.systemText), true};
    case MapLoadProblem::NoMemory:
        return {tr("Not enough memory for %1").arg(name), true};
    case MapLoadProblem::LineTooLong:
        return {tr("No map data in %1: a line is longer than 64 MB").arg(name), true};
    case MapLoadProblem::NoRecords:
        return {tr("No map data in %1").arg(name), true};
    case MapLoadProblem::NoSize:
        return {tr("No map size in %1").arg(name), true};
    case MapLoadProblem::None:
        break;
    }
    const QString size = QStringLiteral("%1 x %2").arg(m_data.nx()).arg(m_data.ny());
    if (static_cast<qint64>(m_data.nx()) * m_data.ny() == m_data.count())
        return {size, false};
    return {tr("%1 points, not %2").arg(m_data.count()).arg(size), true};
}

AEPoint::AEPoint(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    new NumberTyping(ui.Energy);
    m_mutFields = {ui.Mut1, ui.Mut2, ui.Mut3, ui.Mut4};
    ui.FileSelect->setSingleLine();
    ui.FileSelect->showDE(false);
    compact::fitButton(ui.ShowMapB);
    compact::fitField(ui.Energy, QStringLiteral("0000.000"), QStringLiteral("00000.000"));
    for (QLineEdit *const field : {ui.MutT, ui.Mut1, ui.Mut2, ui.Mut3, ui.Mut4})
        compact::fitField(field, QStringLiteral("-0.0000"), QStringLiteral("-0.00000"));
    ui.NumDisp->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00")));
    // Rows with and without titles are as wide, so that their columns line up.
    for (QLabel *const title : titles()) {
        int row = 0, column = 0, rows = 0, columns = 0;
        ui.gridLayout->getItemPosition(ui.gridLayout->indexOf(title), &row, &column, &rows, &columns);
        ui.gridLayout->setColumnMinimumWidth(column, title->sizeHint().width());
    }
    showTitles(false);

    connect(ui.FileSelect, &AFileSelect::newDir, this, &AEPoint::newDir);
    connect(ui.FileSelect, &AFileSelect::newFilePath, this, &AEPoint::loadData);
    connect(ui.Energy, &QLineEdit::editingFinished, this, &AEPoint::inNewEnergy);
    for (QCheckBox *const box : {ui.UseCB, ui.VPointCB, ui.LCFCB})
        connect(box, &QCheckBox::clicked, this, &AEPoint::changedCB);
}

QVector<QLabel *> AEPoint::titles() const
{
    return {ui.UseTitle,  ui.VPointTitle, ui.LCFTitle,  ui.EnergyTitle, ui.FileTitle,
            ui.MutTTitle, ui.Mut1Title,   ui.Mut2Title, ui.Mut3Title,   ui.Mut4Title};
}

void AEPoint::showTitles(bool areShown)
{
    for (QLabel *const title : titles())
        title->setVisible(areShown);
}

double AEPoint::energy() const
{
    return number(ui.Energy);
}

QString AEPoint::energyText() const
{
    return ui.Energy->text();
}

void AEPoint::setEnergyText(const QString &text)
{
    ui.Energy->setText(text);
    ui.Energy->setCursorPosition(0);
}

bool AEPoint::isUsed() const
{
    return ui.UseCB->isChecked();
}

bool AEPoint::isVPoint() const
{
    return ui.VPointCB->isChecked();
}

bool AEPoint::isForLCF() const
{
    return ui.LCFCB->isChecked();
}

void AEPoint::setUsed(bool used)
{
    ui.UseCB->setChecked(used);
}

void AEPoint::setVPoint(bool vPoint)
{
    ui.VPointCB->setChecked(vPoint);
}

void AEPoint::setForLCF(bool forLCF)
{
    ui.LCFCB->setChecked(forLCF);
}

double AEPoint::targetValue() const
{
    return number(ui.MutT);
}

double AEPoint::referenceValue(int reference) const
{
    const QLineEdit *const field = m_mutFields.value(reference);
    return field ? number(field) : 0.0;
}

void AEPoint::setTargetValue(double value)
{
    showNumber(ui.MutT, value);
}

void AEPoint::clearTargetValue()
{
    ui.MutT->clear();
}

void AEPoint::setReferenceValue(int reference, double value)
{
    if (QLineEdit *const field = m_mutFields.value(reference))
        showNumber(field, value);
}

void AEPoint::clearReferenceValue(int reference)
{
    if (QLineEdit *const field = m_mutFields.value(reference))
        field->clear();
}

void AEPoint::setNumber(int place)
{
    ui.NumDisp->setText(QString::number(place));
    ui.FileSelect->setDialogTitle(tr("Energy %1: choose a map").arg(place));
}

void AEPoint::warnOfSize(bool isOther)
{
    ui.FileSelect->setExInfo(m_report.text, m_report.isWarning || isOther);
}

void AEPoint::loadData(const QString &path)
{
    m_loaded = false;
    {
        const WaitCursor wait;
        MapReadOptions options;
        options.others = m_otherMaps();
        m_result = loadMapFile(path, &m_data, options);
    }
    m_report = path.isEmpty() ? LoadReport() : reportOf(path);
    warnOfSize(false);
    const bool isLoaded = m_result.loaded; // whoever hears of the energy may load again
    if (!m_result.energyText.isNull()) {
        setEnergyText(m_result.energyText);
        inNewEnergy();
    }
    if (!isLoaded)
        return;
    m_loaded = true;
    emit newData();
}

void AEPoint::inNewEnergy()
{
    emit newEnergy(energy());
}

void AEPoint::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void AEPoint::dropEvent(QDropEvent *event)
{
    const QString path = AFileSelect::droppedFile(*event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    ui.FileSelect->chooseByHand(path);
}
