#pragma once

#include "analysis/drawing/MapDrawing.h"

class AEPoint;
class DispMBase;
class QStylePainter;

/// The map of one energy row as it was measured.
class DataMapView
{
public:
    explicit DataMapView(DispMBase *map);

    /// Shows the map of another row; null: of none.
    void show(const AEPoint *row);
    const AEPoint *row() const { return m_row; }
    /// To be called when the row has another file.
    void refresh();
    /// To be called when the row has another energy.
    void showTitle();

    ShownMap shown() const;
    void draw(QStylePainter *p);
    /// Shows the value of the cell at (x, y) beside the map.
    void showValueAt(double x, double y);

private:
    DispMBase *m_map;
    const AEPoint *m_row = nullptr;
};
