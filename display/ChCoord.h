#pragma once

#include <QObject>

/// Converts between real (data) coordinates and pixel coordinates of one drawing surface. Real values from rx0 to rx1
/// and ry0 to ry1 are drawn between the edges isx0, isx1 and isy0, isy1 of the inner rectangle; sy0 and isy0 are the
/// bottom edges, so that real y grows upwards. Nothing checks its input: an empty range gives infinities or NaN.
class ChCoord : public QObject
{
    Q_OBJECT

public:
    ChCoord() = default;

    /// The outer rectangle; the inner one becomes equal to it. Arguments: first edges, then second edges.
    void setScreenArea(double x0, double y0, double x1, double y1);
    /// The inner (plotting) rectangle alone.
    void setInnerArea(double x0, double y0, double x1, double y1);
    /// Recomputes the inner rectangle: the outer one less its margins, each a whole number of pixels.
    void setMargins();
    /// The real range.
    void setRealArea(double x0, double y0, double x1, double y1);
    void setRealX(double min, double max);
    void setRealY(double min, double max);

    double r2sx(double x) const { return m_isx0 + (m_isx1 - m_isx0) / (m_rx1 - m_rx0) * (x - m_rx0); }
    double r2sy(double y) const { return m_isy0 + (m_isy1 - m_isy0) / (m_ry1 - m_ry0) * (y - m_ry0); }
    /// A real length in pixels; negative along y where y grows upwards.
    double r2sdx(double d) const { return (m_isx1 - m_isx0) / (m_rx1 - m_rx0) * d; }
    double r2sdy(double d) const { return (m_isy1 - m_isy0) / (m_ry1 - m_ry0) * d; }
    double s2rx(double s) const { return m_rx0 + (m_rx1 - m_rx0) / (m_isx1 - m_isx0) * (s - m_isx0); }
    double s2ry(double s) const { return m_ry0 + (m_ry1 - m_ry0) / (m_isy1 - m_isy0) * (s - m_isy0); }
    /// The real distance from the first edge.
    double s2rxFromEdge(double s) const { return (m_rx1 - m_rx0) / (m_isx1 - m_isx0) * (s - m_isx0); }
    double s2ryFromEdge(double s) const { return (m_ry1 - m_ry0) / (m_isy1 - m_isy0) * (s - m_isy0); }
    /// s2rx and s2ry, kept within the real range.
    double s2rxLimit(double s) const;
    double s2ryLimit(double s) const;
    /// A pixel length as a real length.
    double s2rdx(double d) const { return (m_rx1 - m_rx0) / (m_isx1 - m_isx0) * d; }
    double s2rdy(double d) const { return (m_ry1 - m_ry0) / (m_isy1 - m_isy0) * d; }

    /// Whether a pixel lies within the band at either end of the inner (outer) rectangle; its border does not count.
    bool nearEdgeX(double s) const { return nearEdge(s, m_isx0, m_isx1, m_innerEdgeBand); }
    bool nearEdgeY(double s) const { return nearEdge(s, m_isy0, m_isy1, m_innerEdgeBand); }
    bool nearOuterEdgeX(double s) const { return nearEdge(s, m_sx0, m_sx1, m_outerEdgeBand); }
    bool nearOuterEdgeY(double s) const { return nearEdge(s, m_sy0, m_sy1, m_outerEdgeBand); }

    /// A tick step that is longer than `minPixels` along x: `step` itself or its first multiple by 2, 5, 10, 20, ...
    /// up to 1e8.
    double calcStep(double step, double minPixels) const;
    /// The same, also measured along x: the grids of the displays depend on it.
    double calcStepY(double step, double minPixels) const { return calcStep(step, minPixels); }

    double sx0() const { return m_sx0; }
    double sx1() const { return m_sx1; }
    double sy0() const { return m_sy0; }
    double sy1() const { return m_sy1; }
    double isx0() const { return m_isx0; }
    double isx1() const { return m_isx1; }
    double isy0() const { return m_isy0; }
    double isy1() const { return m_isy1; }
    double rx0() const { return m_rx0; }
    double rx1() const { return m_rx1; }
    double ry0() const { return m_ry0; }
    double ry1() const { return m_ry1; }
    double outerEdgeBand() const { return m_outerEdgeBand; }
    double innerEdgeBand() const { return m_innerEdgeBand; }
    double marginX0() const { return m_marginX0; }
    double marginX1() const { return m_marginX1; }
    double marginY1() const { return m_marginY1; }
    double marginY0() const { return m_marginY0; }

    int textLines = 20;      ///< text lines that fit into the inner height
    int textColumns = 25;    ///< for drawing code
    double textFill = 0.85;  ///< fraction of a line height that the text occupies
    bool showXYTitle = true; ///< whether the display draws its axis titles after the drawing routine

private:
    static bool nearEdge(double s, double edge0, double edge1, double bandFraction);

    double m_sx0 = 0, m_sx1 = 1, m_sy0 = 0, m_sy1 = 1;
    double m_isx0 = 0, m_isx1 = 1, m_isy0 = 0, m_isy1 = 1;
    double m_rx0 = 0, m_rx1 = 1, m_ry0 = 0, m_ry1 = 1;
    double m_outerEdgeBand = 0.1; // fractions of the width or height
    double m_innerEdgeBand = 0.1;
    double m_marginX0 = 0.1;
    double m_marginX1 = 0.05;
    double m_marginY1 = 0.05;
    double m_marginY0 = 0.1;
};
