#include "spectrum/ARefFile.h"

#include "controls/CompactControls.h"
#include "controls/Field.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QRadioButton>

ARefFile::ARefFile(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    for (QLineEdit *const field : {ui.RatioDisp, ui.AmountDisp})
        compact::fitField(field, QStringLiteral("-0.0000"), QStringLiteral("-0.00000e-00"));

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
}

void ARefFile::setRatio(double ratio)
{
    showNumber(ui.RatioDisp, ratio);
}

void ARefFile::setAmount(double amount)
{
    showNumber(ui.AmountDisp, amount);
}

void ARefFile::clearResults()
{
    ui.RatioDisp->clear();
    ui.AmountDisp->clear();
}

void ARefFile::dragEnterEvent(QDragEnterEvent *event)
{
    if (!AFileSelect::droppedPath(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void ARefFile::dropEvent(QDropEvent *event)
{
    const QString path = AFileSelect::droppedPath(*event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    ui.XafsFS->choose(path);
}
