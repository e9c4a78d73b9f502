#pragma once

#include "ui_ARefFile.h"

#include <QFrame>
#include <QLineEdit>
#include <QString>

/// One reference compound: its spectrum, its valence, whether it is used, and what the analysis found for it.
class ARefFile : public QFrame
{
    Q_OBJECT

public:
    explicit ARefFile(QWidget *parent = nullptr);

    AXafsFileSelect *selector() const { return ui.XafsFS; }

    bool isUsed() const;
    /// changedUse() is emitted when this changes the state.
    void setUsed(bool used);
    /// 0 when the field holds no number.
    double valence() const;
    QString valenceText() const;
    void setValenceText(const QString &text);
    QLineEdit *valenceEdit() const { return ui.Valence; }

    /// The title of the row, such as "Ref 2".
    void setTitle(const QString &title);
    /// Titles above the fields, for the first row of a list; the columns are as wide without them. On at first.
    void showTitles(bool areShown);
    /// The widths, pixels, of what stands before the spectrum's file and of each of the two results behind it: a row
    /// of another kind that lines up with this one needs them.
    int widthBeforeFile() const;
    int resultWidth() const { return ui.RatioDisp->minimumWidth(); }
    /// Six significant digits.
    void setRatio(double ratio);
    void setAmount(double amount);
    /// What the tool tip of the ratio says of it besides.
    void noteRatio(const QString &note);
    void clearResults();

signals:
    void changedUse(bool f);
    void selectedFile();
    void foundNewEdge(double);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    Ui_ARefFile ui;
};
