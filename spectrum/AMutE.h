#pragma once

#include "spectrum/SpectrumReader.h"

#include <QString>
#include <QVector>

/// Coefficients of a Victoreen line a + b L^3 + c L^4 with L = 12398.424360387684 / E (angstrom, E in eV): the smooth
/// absorption on one side of an edge (J. A. Victoreen, J. Appl. Phys. 19, 855, 1948) and a constant for all that does
/// not follow it.
struct VictoreenLine {
    double a = 0.0, b = 0.0, c = 0.0;

    double at(double energy) const;
};

/// L^3 and L^4 of a Victoreen line at an energy in eV.
struct VictoreenBasis {
    double l3, l4;
};
VictoreenBasis victoreenBasis(double energy);

/// One absorption spectrum mu(E), of a reference compound or of the sample, with its edge, its pre- and post-edge
/// lines and its values under five normalisations. A plain value.
///
/// Energies given to and returned by the operations are shifted ones, E' = measured energy - dE, in eV; mu is
/// dimensionless. Points stay in file order and are expected to rise in energy. Nothing reports an error: a division
/// by zero (equal energies, post = pre) gives infinities or NaN, which callers pass on.
class AMutE
{
public:
    /// The argument `type` of the value operations.
    enum Type {
        Raw = 0,            ///< mu
        PreSubtracted = 1,  ///< mu - pre(E')
        PostSubtracted = 2, ///< mu - post(E')
        ByEdgeJump = 3,     ///< (mu - pre(E')) / (post(E0) - pre(E0))
        ByBothLines = 4     ///< (mu - pre(E')) / (post(E') - pre(E'))
    };

    /// Reads a spectrum file and fits both lines with the present limits; true when the spectrum is usable. A path
    /// that is no readable regular file leaves the spectrum as it is. Any other file replaces its points, and valid()
    /// tells whether they can be used; a file beyond half a gigabyte is no spectrum. The lines of a file that cannot be
    /// used stay those fitted before.
    bool read(const QString &path);
    /// What the system said when the last read() could not open or read its file; empty otherwise.
    const QString &readProblem() const { return m_readProblem; }

    /// The middle of the steepest rising step between neighbouring points; among equal steps the first. Half of the
    /// first energy when no step rises by more than -1, and 0 without points. Does not set edgeEnergy().
    double findEdge() const;

    /// Fits the pre-edge line to the points below preEdgeEnd() and the post-edge line to those above
    /// postEdgeStart(), unweighted least squares. Without points in a range that line is NaN everywhere; without any
    /// point at all nothing changes.
    void fitLines();

    double preLine(double energy) const { return m_pre.at(energy); }
    double postLine(double energy) const { return m_post.at(energy); }
    /// post(E0) - pre(E0) at edgeEnergy().
    double edgeJump() const { return postLine(m_edgeEnergy) - preLine(m_edgeEnergy); }

    /// The index of the first point of the segment around an energy: 0 below the scan, pointCount() - 2 above it.
    int indexAt(double energy) const;
    /// mu, linear between points, continued along the first or last segment outside; 0 with fewer than 2 points.
    double muAt(double energy) const;
    /// The value of point `index` under `type`; 0 for an index or a type that does not exist.
    double valueAt(int type, int index) const;
    /// valueAt, linear between points and continued outside as muAt does.
    double valueAtEnergy(int type, double energy) const;
    /// Widens [*min, *max] by the values of the points with low <= E' <= high.
    void valueRange(int type, double low, double high, double *min, double *max) const;
    /// mu at an energy less the pre-edge line there (or the post-edge line), inside the scan only: false, `value`
    /// untouched, below the first and beyond the last point.
    bool valueMinusLine(double energy, bool subtractPostLine, double *value) const;

    bool valid() const { return m_valid; }
    void setValid(bool valid) { m_valid = valid; }
    QString fileName() const { return m_fileName; } ///< without its directory
    void setFileName(const QString &name) { m_fileName = name; }

    int pointCount() const { return m_points.size(); }
    const QVector<SpectrumPoint> &points() const { return m_points; }
    double shiftedEnergy(int index) const { return m_points.at(index).energy - m_dE; }
    void addPoint(const SpectrumPoint &point);
    /// No points, not valid, and both lines 0; limits, edge and shift stay.
    void clear();

    double angleMin() const { return m_angle.min; }
    double angleMax() const { return m_angle.max; }
    double energyMin() const { return m_energy.min; } ///< of the stored, unshifted energies
    double energyMax() const { return m_energy.max; }
    double muMin() const { return m_mu.min; }
    double muMax() const { return m_mu.max; }

    double preEdgeEnd() const { return m_preEdgeEnd; }
    void setPreEdgeEnd(double energy) { m_preEdgeEnd = energy; }
    double edgeEnergy() const { return m_edgeEnergy; }
    void setEdgeEnergy(double energy) { m_edgeEnergy = energy; }
    double postEdgeStart() const { return m_postEdgeStart; }
    void setPostEdgeStart(double energy) { m_postEdgeStart = energy; }
    double dE() const { return m_dE; }
    /// The lines stay as they are until fitLines() is called.
    void setDE(double shift) { m_dE = shift; }

    const VictoreenLine &preCoefficients() const { return m_pre; }
    const VictoreenLine &postCoefficients() const { return m_post; }

private:
    void forgetPoints();
    template <class Value>
    double interpolate(double energy, Value value) const;

    bool m_valid = false;
    QString m_fileName;
    QString m_readProblem;
    Extremes m_angle, m_energy, m_mu;
    QVector<SpectrumPoint> m_points;
    double m_preEdgeEnd = 8000.0;
    double m_edgeEnergy = 0.0;
    double m_postEdgeStart = 8500.0;
    double m_dE = 0.0;
    VictoreenLine m_pre, m_post;
};
