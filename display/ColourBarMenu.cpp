#include "display/ColourBarMenu.h"

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

/// The colours of an offered scale, the low end at the left, or at the right when inverted.
QIcon pictureOf(int position, bool inverted, qreal ratio)
{
    const ColourTable colours = offeredScale(position);
    QImage line(colours.size(), 1, QImage::Format_RGB32);
    for (int i = 0; i < colours.size(); ++i)
        line.setPixel(i, 0, colours.at(i));
    QPixmap picture = QPixmap::fromImage(line.mirrored(inverted, false))
                          .scaled(qRound(pictureWidth * ratio), qRound(pictureHeight * ratio));
    picture.setDevicePixelRatio(ratio);
    return QIcon(picture);
}

} // namespace

ColourTable offeredScale(int position)
{
    if (position == colourTableTypes)
        return evenColours();
    return position == colourTableTypes + 1 ? greyColours() : colourTable(position);
}

ColourBarMenu::ColourBarMenu(QWidget *parent)
    : QMenu(parent)
    , m_scales(new QActionGroup(this))
    , m_inverted(new QAction(tr("Inverted"), this))
{
    auto *const wide = new WidePictureStyle;
    wide->setParent(this);
    setStyle(wide);

    const QString names[offeredScales] = {
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
        tr("Even steps, dark blue to yellow (colour-blind safe)"),
        tr("Grey, black to white"),
    };
    for (int position = 0; position < offeredScales; ++position) {
        QAction *const action = addAction(pictureOf(position, false, devicePixelRatioF()), names[position]);
        action->setCheckable(true);
        action->setData(position);
        m_scales->addAction(action);
    }
    addSeparator();
    m_inverted->setCheckable(true);
    addAction(m_inverted);
    addSeparator();
    connect(addAction(tr("Limits by percentile (2nd to 98th)")), &QAction::triggered, this,
            &ColourBarMenu::percentilesChosen);

    connect(m_scales, &QActionGroup::triggered, this,
            [this](const QAction *action) { emit scaleChosen(action->data().toInt()); });
    connect(m_inverted, &QAction::triggered, this, &ColourBarMenu::invertedChosen);
}

void ColourBarMenu::setChosen(int position, bool inverted)
{
    m_scales->actions().at(position)->setChecked(true);
    m_inverted->setChecked(inverted);
    m_inverted->setIcon(
        pictureOf(position, true, devicePixelRatioF())); // also: without one the tick is as wide as an icon
}
