#pragma once

#include "analysis/drawing/MapDrawing.h"
#include "analysis/results/ResultView.h"

#include <QByteArray>
#include <QVector>

#include <optional>

class Analysis;
class DispMBase;
class MouseC;
class PanelInputs;
class QLineEdit;
class QRadioButton;
class QStylePainter;

/// The position of the chosen button among those of the result quantities; of several the last, without one the first.
int chosenPosition(const QVector<QRadioButton *> &buttons);

/// The map of the results: the quantity that its button chooses, in the colours of the map's bar.
class ResultMapView
{
public:
    /// The buttons stand in the order of the quantities. Pixels whose amount is below the number in `hideBelow` are
    /// hidden; an empty field hides none.
    ResultMapView(DispMBase *map, const QVector<QRadioButton *> &buttons, const QLineEdit *hideBelow,
                  const PanelInputs &inputs, const Analysis &analysis);

    /// The quantity (see ResultPosition) that is shown.
    int quantity() const { return chosenPosition(m_buttons); }
    /// To be called when the results, the valences or the hidden pixels are others.
    void refresh();
    /// Shows the chosen quantity in its own colour range. False when it has none and the last one stays.
    bool select();

    const ShownMap &shown() const { return m_view.map(); }
    /// The values that are shown, "nan" for hidden pixels: see plottedtext::ofMap.
    QByteArray text(char separator) const;
    void draw(QStylePainter *p);
    /// Shows the value of the cell at (x, y) beside the map.
    void showValueAt(double x, double y);
    /// The colour range, non-equivalent results only. Plain: the quantity's own; with Shift: all finite values that are
    /// shown; with Control: from their 2nd to their 98th percentile.
    void doubleClick(const MouseC &mouse);

private:
    std::optional<ValueRange> ownRange() const;

    DispMBase *m_map;
    QVector<QRadioButton *> m_buttons;
    const QLineEdit *m_hideBelow;
    const PanelInputs &m_inputs;
    const Analysis &m_analysis;
    ResultView m_view;
};
