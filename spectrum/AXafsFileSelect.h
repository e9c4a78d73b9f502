#pragma once

#include "mapdata/AFileSelect.h"
#include "spectrum/AMutE.h"

#include <QPointer>
#include <QString>

class DispArea;
class MouseC;
class QStylePainter;

/// Chooses and loads one spectrum, with its energy shift, and draws it into a display.
class AXafsFileSelect : public AFileSelect
{
    Q_OBJECT

public:
    explicit AXafsFileSelect(QWidget *parent = nullptr);

    AMutE &spectrum() { return m_spectrum; }
    const AMutE &spectrum() const { return m_spectrum; }
    bool valid() const { return m_spectrum.valid(); }
    /// Whether the file chosen last was read. A path that cannot be read leaves the spectrum before it valid, and its
    /// edge is announced again: that edge is then none of the file chosen. False without a file.
    bool lastReadSucceeded() const { return m_lastReadSucceeded; }

    /// Draws into `display` from now on, and no more into the one before; null for none. Not owned.
    void setDisplay(DispArea *display);
    /// Draws all energies of the spectrum, or those about its edge only. At first all.
    void setFullRange(bool isFullRange);
    /// Draws again, when there is a display.
    void repaintDisplay();

    /// Whether valueAtEnergy() subtracts the post-edge line in place of the pre-edge line. At first it does not.
    void setSubtractPostLine(bool subtractPostLine) { m_subtractPostLine = subtractPostLine; }
    bool subtractPostLine() const { return m_subtractPostLine; }
    /// mu less a line at a shifted energy (eV); false, `value` untouched, outside of the spectrum.
    bool valueAtEnergy(double energy, double *value) const;

signals:
    /// A file was chosen; `e` is the edge of the spectrum that there is then, eV. See lastReadSucceeded().
    void foundNewEdge(double e);
    /// The spectrum was forgotten, or shifted by another dE.
    void updated();

public slots:
    /// Loads a spectrum without taking its name, as choose() does in the end. An empty path forgets the spectrum.
    void newFile(const QString &path);
    void setNewDE();
    void draw(QStylePainter *p);
    void mPressed(MouseC *m);
    void mDragging(MouseC *m);
    void mReleased(MouseC *m);

private:
    void forget();
    void releaseMarkers();
    void reportLoad(const QString &path);
    void showWhatWasFound();
    void drawTitles(QStylePainter *p);

    AMutE m_spectrum;
    QPointer<DispArea> m_display;
    bool m_lastReadSucceeded = false;
    bool m_subtractPostLine = false;
    bool m_fullRange = true;
};
