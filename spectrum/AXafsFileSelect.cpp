#include "spectrum/AXafsFileSelect.h"

#include "controls/WaitCursor.h"
#include "display/DispArea.h"
#include "display/GraphBoxes.h"
#include "spectrum/SpectrumDrawing.h"

#include <QDebug>
#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QSizeF>
#include <QStylePainter>

namespace
{
constexpr double largestText = 12; // points
}

AXafsFileSelect::AXafsFileSelect(QWidget *parent)
    : AFileSelect(parent)
{
    connect(this, &AFileSelect::newFilePath, this, &AXafsFileSelect::newFile);
    connect(this, &AFileSelect::newDE, this, &AXafsFileSelect::setNewDE);
}

void AXafsFileSelect::setDisplay(DispArea *display)
{
    if (display == m_display)
        return;
    if (m_display)
        m_display->disconnect(this);
    m_display = display;
    if (!display)
        return;
    connect(display, &DispArea::draw, this, &AXafsFileSelect::draw);
    connect(display, &DispArea::mPressed, this, &AXafsFileSelect::mPressed);
    connect(display, &DispArea::mReleased, this, &AXafsFileSelect::mReleased);
    connect(display, &DispArea::mDragging, this, &AXafsFileSelect::mDragging);
    display->update();
}

void AXafsFileSelect::setFullRange(bool isFullRange)
{
    m_fullRange = isFullRange;
    repaintDisplay();
}

void AXafsFileSelect::repaintDisplay()
{
    if (m_display)
        m_display->update();
}

bool AXafsFileSelect::valueAtEnergy(double energy, double *value) const
{
    return m_spectrum.valueMinusLine(energy, m_subtractPostLine, value);
}

void AXafsFileSelect::newFile(const QString &path)
{
    releaseMarkers();
    m_lastReadSucceeded = false;
    if (path.isEmpty()) {
        forget();
        return;
    }
    {
        const WaitCursor wait;
        m_lastReadSucceeded = m_spectrum.read(path);
    }
    reportLoad(path);
    if (!m_spectrum.valid())
        return;
    repaintDisplay();
    emit foundNewEdge(m_spectrum.findEdge());
}

void AXafsFileSelect::forget()
{
    m_spectrum.clear();
    m_spectrum.setFileName(QString());
    setExInfo(QString());
    if (m_display)
        m_display->scaleFixed = false;
    repaintDisplay();
    emit updated();
}

/// No marker of the display stays picked.
void AXafsFileSelect::releaseMarkers()
{
    if (!m_display || !m_display->markLines)
        return;
    m_display->markLines->isMoving = false;
    m_display->markLines->selected = -1;
}

void AXafsFileSelect::reportLoad(const QString &path)
{
    const QFileInfo info(path);
    if (m_lastReadSucceeded) {
        showWhatWasFound();
    } else if (!m_spectrum.readProblem().isEmpty()) {
        setExInfo(tr("Cannot read %1: %2").arg(info.fileName(), m_spectrum.readProblem()), true);
    } else if (info.isFile() && info.isReadable()) {
        setExInfo(tr("%1 is not a spectrum").arg(info.fileName()), true);
    } else {
        setExInfo(tr("Cannot read %1").arg(info.fileName()), true);
    }
}

/// The energies as they are used, less the shift.
void AXafsFileSelect::showWhatWasFound()
{
    setExInfo(tr("%1 points, %2-%3 eV, E0 %4")
                  .arg(m_spectrum.pointCount())
                  .arg(m_spectrum.energyMin() - m_spectrum.dE(), 0, 'f', 0)
                  .arg(m_spectrum.energyMax() - m_spectrum.dE(), 0, 'f', 0)
                  .arg(m_spectrum.findEdge(), 0, 'f', 1));
}

void AXafsFileSelect::setNewDE()
{
    const double before = m_spectrum.dE();
    m_spectrum.setDE(dEText().toDouble());
    qDebug() << "set new de";
    if (!m_spectrum.valid())
        return;
    qDebug() << "bb";
    if (m_lastReadSucceeded)
        showWhatWasFound();
    repaintDisplay();
    if (m_spectrum.dE() != before)
        emit updated();
}

void AXafsFileSelect::draw(QStylePainter *p)
{
    if (!m_display)
        return;
    ChCoord &cc = m_display->cc;
    cc.setMargins();
    cc.textLines = readableTextLines(cc);
    if (const auto natural = spectrumdrawing::naturalRange(m_spectrum, m_fullRange))
        m_display->offerRange(*natural);
    spectrumdrawing::drawSpectrum(p, cc, m_spectrum);
    m_display->drawScale(p, true);
    drawTitles(p);
    cc.showXYTitle = false; // the titles are drawn
}

void AXafsFileSelect::drawTitles(QStylePainter *p)
{
    DrawText &texts = m_display->dt;
    const ChCoord &cc = m_display->cc;
    const GraphBoxes boxes(cc);
    const QFont font;
    p->setPen(Qt::black);
    texts.drawText(p, boxes.xTitle, font, Qt::AlignCenter, 1, tr("Eng.[eV]"), largestText);
    p->rotate(270);
    texts.drawText(p, boxes.yTitle, font, Qt::AlignCenter, 1, tr("mut"), largestText);
    p->rotate(-270);
    if (!m_spectrum.valid())
        return;
    const QString jump = tr("Edge Jump : %1").arg(m_spectrum.edgeJump(), 0, 'g');
    const double line = (cc.isy0() - cc.isy1()) / cc.textLines;
    const QRectF room(0, 0, (cc.isx1() - cc.isx0()) / 2, 1.2 * line);
    QFont fitted = font;
    fitted.setPointSizeF(qBound(0.1, texts.fitSize(p, room, font, Qt::AlignCenter, jump), largestText));
    const double width = qMin(room.width(), QFontMetricsF(fitted, p->device()).boundingRect(jump).width() + line);
    const QRectF place = spectrumdrawing::placeForText(cc, m_spectrum, QSizeF(width, room.height()));
    texts.drawText(p, place, font, Qt::AlignCenter | Qt::TextDontClip, 1, jump, largestText);
}

void AXafsFileSelect::mPressed(MouseC *) {}

void AXafsFileSelect::mDragging(MouseC *) {}

void AXafsFileSelect::mReleased(MouseC *) {}
