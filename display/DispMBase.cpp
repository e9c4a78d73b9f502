#include "display/DispMBase.h"

#include "controls/CompactControls.h"
#include "controls/Field.h"
#include "controls/NumberTyping.h"
#include "display/HeaderMenu.h"
#include "display/MouseC.h"
#include "display/PlacedItem.h"
#include "display/PopBase.h"
#include "display/ScaleBar.h"

#include <QEvent>
#include <QLabel>
#include <QStylePainter>

#include <initializer_list>

namespace
{

constexpr int leastSide = 120;       // pixels: below that the room counts more than square cells
constexpr int errorColumn = 7;       // of the header
constexpr int headerCharacters = 48; // of the header without its title

/// What the user typed into a field that shows `limit`: leaving the field as it is keeps all digits of the limit.
double typedLimit(QLineEdit *field, double limit)
{
    field->setModified(false);
    return field->text() == fieldText(limit) ? limit : number(field);
}

} // namespace

DispMBase::DispMBase(QWidget *parent)
    : QFrame(parent)
{
    ui.setupUi(this);
    addLabels();
    for (QLineEdit *const limit : {ui.MaxV, ui.MinV})
        new NumberTyping(limit);
    setAttribute(Qt::WA_QuitOnClose, false);
    setUpPop(this, ui.DispABFrame, ui.gridLayout, 1, 0);
    m_menu = new HeaderMenu(
        ui.frame,
        [this] {
            return DisplayPicture{ui.Title->text(), ui.DispA, pictureSize(), [this](QStylePainter *p) {
                                      renderPicture(p);
                                  }};
        },
        this);
    connectArea();
    placeArea();
    for (QLineEdit *const readOut : {ui.XPos, ui.YPos, ui.Val})
        compact::fitField(readOut, QStringLiteral("-0.00"), QStringLiteral("-0.00000e+00"));
    for (QWidget *const watched : std::initializer_list<QWidget *>{ui.frame, ui.CBar, ui.MaxV, ui.MinV})
        watched->installEventFilter(this);
    connect(this, &DispMBase::draw, pop, &PopBase::updateAround);
    connect(ui.PopDockB, &QPushButton::clicked, this, &DispMBase::popDock);
    connect(pop, &PopBase::closed, this, &DispMBase::popDock);
    connect(ui.MaxV, &QLineEdit::editingFinished, this, &DispMBase::newZmax);
    connect(ui.MinV, &QLineEdit::editingFinished, this, &DispMBase::newZmin);
    connect(ui.CBar, &cBar::newScale, this, QOverload<>::of(&QWidget::update));
    connect(ui.CBar, &cBar::newScale, ui.DispA, QOverload<>::of(&QWidget::update)); // it may be popped out
    connect(ui.CBar, &cBar::newScale, this, &DispMBase::showLimits);
    connect(ui.CBar, &cBar::percentilesWanted, this, &DispMBase::takePercentiles);
    showLimits();
}

DispMBase::~DispMBase()
{
    // A field that has the focus announces its text while it is destroyed, when there is no display left to take it.
    ui.MaxV->disconnect(this);
    ui.MinV->disconnect(this);
}

/// Those of the header that are seen only at times.
void DispMBase::addLabels()
{
    m_error = new QLabel(ui.frame);
    m_error->setObjectName(QStringLiteral("ValError"));
    m_error->setToolTip(tr("Standard error of the value, from the counting noise"));
    m_error->hide();
    m_shortTitle = new QLabel(ui.frame);
    m_shortTitle->setObjectName(QStringLiteral("ShortTitle"));
    m_shortTitle->hide();
    ui.gridLayout_2->addWidget(m_shortTitle, 0, 0);
}

void DispMBase::connectArea()
{
    connect(ui.DispA, &DispArea::nowPos, this, &DispMBase::receiveNowPos);
    connect(ui.DispA, &DispArea::nowPos, this, &DispMBase::nowPos);
    connect(ui.DispA, &DispArea::draw, this, &DispMBase::receiveDraw);
    connect(ui.DispA, &DispArea::mPressed, this, &DispMBase::mPressed);
    connect(ui.DispA, &DispArea::mDragging, this, &DispMBase::mDragging);
    connect(ui.DispA, &DispArea::mReleased, this, &DispMBase::mReleased);
    connect(ui.DispA, &DispArea::mDClicked, this, &DispMBase::forgetChosenLimits);
    connect(ui.DispA, &DispArea::mDClicked, this, &DispMBase::mDClicked);
}

/// The colour column stands beside the drawing area, as high as it is.
void DispMBase::placeArea()
{
    ui.gridLayout_3->removeWidget(ui.DispA);
    ui.gridLayout_3->removeWidget(ui.frame_2);
    ui.gridLayout_3->addItem(new PlacedItem(ui.DispA, [this](const QRect &room) { return areaIn(room); }), 1, 0);
    const auto besideArea = [this](const QRect &room) {
        const QRect area = areaIn(ui.gridLayout_3->cellRect(1, 0));
        return QRect(room.left(), area.top(), room.width(), area.height());
    };
    ui.gridLayout_3->addItem(new PlacedItem(ui.frame_2, besideArea), 1, 1);

    // What the map leaves free is paper, as its margins are.
    QPalette paper = palette();
    ui.frame->setPalette(paper);
    ui.frame->setAutoFillBackground(true);
    paper.setColor(QPalette::Window, Qt::white);
    ui.DispABFrame->setPalette(paper);
    ui.DispABFrame->setAutoFillBackground(true);
}

QRect DispMBase::areaIn(const QRect &room) const
{
    if (m_cells.isEmpty())
        return room;
    // The margins are the same part of the width and of the height, so that the plot has the area's proportions.
    const QSize least = QSize(leastSide, leastSide).boundedTo(room.size());
    const QSize size = m_cells.scaled(room.size(), Qt::KeepAspectRatio).expandedTo(least);
    return QRect(QPoint(room.right() + 1 - size.width(), room.top() + (room.height() - size.height()) / 2), size);
}

void DispMBase::setCells(const QSize &cells)
{
    if (cells == m_cells)
        return;
    m_cells = cells;
    ui.gridLayout_3->invalidate();
    ui.gridLayout_3->activate();
}

void DispMBase::setCellWidth(double width, const QString &unit)
{
    m_cellWidth = width;
    m_unit = unit;
}

void DispMBase::takePercentiles()
{
    const std::optional<ValueRange> limits = percentiles ? percentiles() : std::nullopt;
    if (!limits)
        return;
    chooseLimits(*limits);
    ui.CBar->update();
    ui.DispA->update();
}

void DispMBase::setTitle(const QString &title, const QString &shortTitle)
{
    ui.Title->setText(title);
    m_shortTitle->setText(shortTitle);
    pop->setWindowTitle(title);
    if (ui.frame->isVisible()) // else it will be, with a width
        makeRoomInHeader();
}

void DispMBase::showValue(const QString &text)
{
    ui.Val->setText(text);
    ui.Val->setCursorPosition(0);
}

/// In the column of the button, which then stands at its right end.
void DispMBase::showError(const QString &text)
{
    if (m_error->isHidden() && !text.isEmpty()) {
        m_error->setFixedWidth(m_error->fontMetrics().boundingRect(QStringLiteral("± 0.0e-00")).width());
        ui.gridLayout_2->addWidget(m_error, 0, errorColumn, Qt::AlignLeft);
        ui.gridLayout_2->setAlignment(ui.PopDockB, Qt::AlignRight);
        ui.gridLayout_2->setColumnMinimumWidth(errorColumn, m_error->width() + ui.PopDockB->width());
        m_error->show();
        makeRoomInHeader();
    }
    m_error->setText(text);
}

void DispMBase::makeRoomInHeader()
{
    const int readOuts =
        headerCharacters * fontMetrics().averageCharWidth() + (m_error->isHidden() ? 0 : m_error->width());
    const auto fits = [this, readOuts](const QLabel *title) {
        return ui.frame->width() - title->sizeHint().width() >= readOuts;
    };
    ui.Title->setVisible(fits(ui.Title));
    m_shortTitle->setVisible(ui.Title->isHidden() && fits(m_shortTitle));
}

bool DispMBase::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == ui.frame && event->type() == QEvent::Resize)
        makeRoomInHeader();
    if (watched == ui.CBar && event->type() == QEvent::MouseButtonDblClick)
        ui.DispA->update(); // undoes the stretch, of which the bar says nothing
    if (watched != ui.frame && event->type() == QEvent::ToolTip)
        showHandleValues();
    return QFrame::eventFilter(watched, event);
}

void DispMBase::setRealRange(double x0, double y0, double x1, double y1)
{
    ui.DispA->setRealRange({{x0, x1}, {y0, y1}});
}

void DispMBase::offerRange(const RealRange &natural)
{
    ui.DispA->offerRange(natural);
}

void DispMBase::setLimits(double min, double max)
{
    ui.CBar->setLimits(min, max);
    showLimits();
}

void DispMBase::offerLimits(const std::optional<ValueRange> &natural)
{
    if (!natural || !ui.CBar->autoScale())
        return;
    if (m_naturalLimits != natural) {
        takeLimits(natural);
    } else if (!ui.DispA->scaleFixed) {
        const ValueRange limits = m_chosenLimits.value_or(*natural);
        setLimits(limits.min, limits.max);
    }
}

void DispMBase::takeLimits(const std::optional<ValueRange> &natural)
{
    m_chosenLimits.reset();
    if (!natural)
        return;
    m_naturalLimits = natural;
    setLimits(natural->min, natural->max);
}

void DispMBase::chooseLimits(const ValueRange &chosen)
{
    m_chosenLimits = chosen;
    setLimits(chosen.min, chosen.max);
}

void DispMBase::forgetChosenLimits(const MouseC *m)
{
    constexpr int modifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    if (m->dClickButton == Qt::LeftButton && (m->dClickModifiers & modifiers) == 0)
        m_chosenLimits.reset();
}

void DispMBase::receiveNowPos(double rx, double ry)
{
    showNumber(ui.XPos, rx);
    showNumber(ui.YPos, ry);
}

void DispMBase::receiveDraw(QStylePainter *p)
{
    emit draw(p);
}

void DispMBase::popDock()
{
    togglePop(ui.Title->text());
}

void DispMBase::clearScale()
{
    ui.DispA->scaleFixed = false;
}

void DispMBase::newZmax()
{
    ui.CBar->newZmax(typedLimit(ui.MaxV, ui.CBar->zmax()));
}

void DispMBase::newZmin()
{
    ui.CBar->newZmin(typedLimit(ui.MinV, ui.CBar->zmin()));
}

/// Leaves a field alone in which the user is typing.
void DispMBase::showLimits()
{
    const auto show = [](QLineEdit *field, double limit) {
        if (!(field->hasFocus() && field->isModified()))
            showNumber(field, limit);
    };
    show(ui.MaxV, ui.CBar->zmax());
    show(ui.MinV, ui.CBar->zmin());
}

/// In the tool tips: the fields have the values at the ends of the bar, whatever the stretch of the colours.
void DispMBase::showHandleValues()
{
    const auto valueAt = [this](int index) {
        return fieldText(ui.CBar->valueAt(index));
    };
    const QString upper = tr("Upper handle of the colours at %1").arg(valueAt(ui.CBar->topIndex));
    const QString lower = tr("Lower handle of the colours at %1").arg(valueAt(ui.CBar->bottomIndex));
    showNote(ui.MaxV, upper);
    showNote(ui.MinV, lower);
    showNote(ui.CBar, upper + QLatin1Char('\n') + lower);
}

QSize DispMBase::pictureSize() const
{
    return QSize(ui.DispA->width() + ui.frame_2->width(), ui.DispA->height());
}

/// The map and the colour bar with its limits, placed as on screen.
void DispMBase::renderPicture(QStylePainter *p)
{
    const QPoint column(ui.DispA->width(), 0);
    p->save();
    p->setClipRect(ui.DispA->rect(), Qt::IntersectClip);
    ui.DispA->renderArea(p);
    drawScaleBar(p, ui.DispA->cc, m_cellWidth, m_unit);
    p->restore();
    p->setPen(Qt::black);
    const QFont font = ui.MaxV->font();
    const auto drawLimit = [&](const QLineEdit *field, double limit) {
        ui.DispA->dt.drawText(p, field->geometry().translated(column), font, Qt::AlignCenter, 1, fieldText(limit),
                              font.pointSizeF());
    };
    drawLimit(ui.MaxV, ui.CBar->zmax());
    drawLimit(ui.MinV, ui.CBar->zmin());
    p->translate(column + ui.CBar->pos());
    ui.CBar->renderBar(p);
    p->setPen(QColor(150, 150, 150)); // as the plot: the white end would have no edge on paper
    p->setBrush(Qt::NoBrush);
    p->drawRect(0, 0, ui.CBar->width(), ui.CBar->height());
}
