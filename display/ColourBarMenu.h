#pragma once

#include "display/ColourTable.h"

#include <QMenu>

class QActionGroup;

/// What a colour bar's menu offers: the types of colour scale by their numbers, and behind them scales of its own.
constexpr int offeredScales = colourTableTypes + 2;
ColourTable offeredScale(int position);

/// The menu of a colour bar: the colour scales, each with a small picture, their inversion, and limits by percentile.
class ColourBarMenu : public QMenu
{
    Q_OBJECT

public:
    explicit ColourBarMenu(QWidget *parent);

    /// Ticks what the bar shows.
    void setChosen(int position, bool inverted);

signals:
    void scaleChosen(int position); ///< among the offered scales
    void invertedChosen(bool inverted);
    void percentilesChosen();

private:
    QActionGroup *m_scales;
    QAction *m_inverted;
};
