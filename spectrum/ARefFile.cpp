#include "spectrum/ARefFile.h"

#include "controls/CompactControls.h"
#include "controls/Field.h"
#include "controls/NumberTyping.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QRadioButton>

ARefFile::ARefFile(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    new NumberTyping(ui.Valence);
    compact::fitColumn(ui.Valence, ui.ValenceLabel, QStringLiteral("-0.00"));
    for (QLineEdit *const field : {ui.RatioDisp, ui.AmountDisp})
        compact::fitColumn(field, ui.RatioLabel, QStringLiteral("-0.000000"));

    connect(ui.UseCB, &QRadioButton::toggled, this, &ARefFile::changedUse);
    connect(ui.XafsFS, &AFileSelect::selectedFile, this, &ARefFile::selectedFile);
    connect(ui.XafsFS, &AXafsFileSelect::foundNewEdge, this, &ARefFile::foundNewEdge);
}

bool ARefFile::isUsed() const
{
    return ui.UseCB->isChecked();
}

void ARefFile::setUsed(bool used)
{
    ui.UseCB->setChecked(used);
}

double ARefFile::valence() const
{
    return number(ui.Valence);
}

QString ARefFile::valenceText() const
{
    return ui.Valence->text();
}

void ARefFile::setValenceText(const QString &text)
{
    ui.Valence->setText(text);
}

void ARefFile::setTitle(const QString &title)
{
    ui.RefName->setText(title);
    ui.XafsFS->setDialogTitle(tr("%1: choose a spectrum").arg(title));
}

void ARefFile::showTitles(bool areShown)
{
    for (QLabel *const title : {ui.ValenceLabel, ui.RatioLabel, ui.AmountLabel})
        title->setVisible(areShown);
    ui.XafsFS->showTitles(areShown);
}

int ARefFile::widthBeforeFile() const
{
    const int gaps = 2 * ui.gridLayout->horizontalSpacing();
    return ui.RefName->sizeHint().width() + ui.UseCB->sizeHint().width() + ui.Valence->minimumWidth() + gaps;
}

void ARefFile::setRatio(double ratio)
{
    showNumber(ui.RatioDisp, ratio);
}

void ARefFile::setAmount(double amount)
{
    showNumber(ui.AmountDisp, amount);
}

void ARefFile::noteRatio(const QString &note)
{
    showNote(ui.RatioDisp, note);
}

void ARefFile::clearResults()
{
    noteRatio(QString());
    ui.RatioDisp->clear();
    ui.AmountDisp->clear();
}

void ARefFile::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedFile(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ARefFile::dropEvent(QDropEvent *event)
{
    const QString path = AFileSelect::droppedFile(*event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    ui.XafsFS->chooseByHand(path);
}
