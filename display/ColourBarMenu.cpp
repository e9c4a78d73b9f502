#include "display/ColourBarMenu.h"

#include "display/ColourTable.h"

#include <QActionGroup>
#include <QImage>
#include <QPixmap>
#include <QProxyStyle>

namespace
{

constexpr int pictureWidth = 72;
constexpr int pictureHeight = 14;

/// Menus show square icons; the pictures of the scales are wide.
class WidePictureStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
    {
        return metric == PM_SmallIconSize ? pictureWidth : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

/// The colours of a type, the low end at the left, or at the right when inverted.
QIcon pictureOf(int type, bool inverted, qreal ratio)
{
    const ColourTable colours = colourTable(type);
    QImage line(colours.size(), 1, QImage::Format_RGB32);
    for (int i = 0; i < colours.size(); ++i)
        line.setPixel(i, 0, colours.at(i));
    QPixmap picture = QPixmap::fromImage(line.mirrored(inverted, false))
                          .scaled(qRound(pictureWidth * ratio), qRound(pictureHeight * ratio));
    picture.setDevicePixelRatio(ratio);
    return QIcon(picture);
}

} // namespace

ColourBarMenu::ColourBarMenu(QWidget *parent)
    : QMenu(parent)
    , m_types(new QActionGroup(this))
    , m_inverted(new QAction(tr("Inverted"), this))
{
    auto *const wide = new WidePictureStyle;
    wide->setParent(this);
    setStyle(wide);

    const QString names[colourTableTypes] = {
        tr("Black, red, yellow, white"),
        tr("Black, green, cyan, white"),
        tr("Black, blue, magenta, white"),
        tr("Red, green, blue"),
        tr("Red, blue, green"),
        tr("Green, red, blue"),
        tr("Green, blue, red"),
        tr("Blue, red, green"),
        tr("Blue, green, red"),
        tr("Red, cyan"),
        tr("Green, magenta"),
        tr("Blue, yellow"),
    };
    for (int type = 0; type < colourTableTypes; ++type) {
        QAction *const action = addAction(pictureOf(type, false, devicePixelRatioF()), names[type]);
        action->setCheckable(true);
        action->setData(type);
        m_types->addAction(action);
    }
    addSeparator();
    m_inverted->setCheckable(true);
    addAction(m_inverted);

    connect(m_types, &QActionGroup::triggered, this,
            [this](const QAction *action) { emit typeChosen(action->data().toInt()); });
    connect(m_inverted, &QAction::triggered, this, &ColourBarMenu::invertedChosen);
}

void ColourBarMenu::setChosen(int type, bool inverted)
{
    m_types->actions().at(type)->setChecked(true);
    m_inverted->setChecked(inverted);
    m_inverted->setIcon(pictureOf(type, true, devicePixelRatioF())); // also: without one the tick is as wide as an icon
}
