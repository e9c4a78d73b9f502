#pragma once

#include "analysis/drawing/MapDrawing.h"
#include "analysis/model/Quality.h"
#include "analysis/results/ResultView.h"
#include "numeric/Plane.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>

class Analysis;
class DispMBase;
class MouseC;
class PanelInputs;
class QActionGroup;
class QLineEdit;
class QRadioButton;
class QStylePainter;

/// The position of the chosen button among those of the result quantities; of several the last, without one the first.
int chosenPosition(const QVector<QRadioButton *> &buttons);

/// The controls of the map of the results.
struct ResultMapControls {
    DispMBase *map;
    QVector<QRadioButton *> buttons; ///< in the order of the quantities
    const QLineEdit *hideBelow;      ///< pixels with a smaller amount are hidden; empty: none is
    const QLineEdit *errorAbove;     ///< and those with a larger standard error of the shown quantity
};

/// The map of the results: the quantity that its button chooses, its standard error or the misfit, in the colours of
/// the map's bar.
class ResultMapView
{
public:
    enum class Kind { Value, Error, Misfit };

    ResultMapView(const ResultMapControls &controls, const PanelInputs &inputs, const Analysis &analysis,
                  Quality *quality);

    /// The quantity (see ResultPosition) that is shown.
    int quantity() const { return chosenPosition(m_controls.buttons); }
    /// "Valence", "Valence ±" or "misfit", in the language of the program.
    QString shownName() const;
    /// The kind that the menu asks for; the values are shown where there is no such thing.
    void choose(Kind kind);
    Kind shownKind() const { return m_kind; }
    /// To be called when the results, the valences or the hidden pixels are others.
    void refresh();
    /// Shows the chosen quantity in its own colour range. False when it has none and the last one stays.
    bool select();

    /// What the standard errors of the shown quantity are asked for with.
    UncertaintyRequest request() const;
    const ShownMap &shown() const { return m_view.map(); }
    /// The values that are shown, "nan" for hidden pixels: see plottedtext::ofMap.
    QByteArray text(char separator) const;
    void draw(QStylePainter *p);
    /// Shows the value of the cell at (x, y) beside the map, and its standard error where this is known or takes no
    /// longer than `longestWait`.
    void showValueAt(double x, double y);
    /// The colour range, non-equivalent results only. Plain: the quantity's own; with Shift: all finite values that are
    /// shown; with Control: from their 2nd to their 98th percentile.
    void doubleClick(const MouseC &mouse);

    /// Seconds that the mouse may wait.
    std::function<double()> longestWait;
    /// Tells the user one sentence.
    std::function<void(const QString &text)> tell;

private:
    void addMenu();
    QString showQuality();
    const UncertaintyMap *findErrors();
    std::optional<ValueRange> ownRange() const;
    QString errorText(double x, double y);

    ResultMapControls m_controls;
    DispMBase *m_map;
    const PanelInputs &m_inputs;
    const Analysis &m_analysis;
    Quality &m_quality;
    QActionGroup *m_kinds = nullptr;
    ResultView m_view;
    Kind m_wanted = Kind::Value;
    Kind m_kind = Kind::Value;
    bool m_areErrorsSought = false;
    numeric::Plane m_errors;           ///< of the shown quantity; empty: not known
    numeric::Plane m_misfit;           ///< while it is shown
    std::optional<ValueRange> m_range; ///< of standard errors or misfit
};
