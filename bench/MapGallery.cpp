#include "MapGallery.h"

#include "display/CColors.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"

#include <QGridLayout>
#include <QLabel>
#include <QStylePainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{

/// Round particles with a shell of higher valence on a support of 2.2; pixels of one edge are not known.
std::vector<double> madeUpValences(int side)
{
    std::vector<double> values(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    std::mt19937 random(3);
    std::normal_distribution<double> noise(0, 0.03);
    std::uniform_real_distribution<double> uniform(0, 1);
    for (double &value : values)
        value = 2.2 + noise(random);
    for (int particle = 0; particle < 60; ++particle) {
        const double x0 = uniform(random) * side;
        const double y0 = uniform(random) * side;
        const double radius = (0.02 + 0.06 * uniform(random)) * side;
        const double core = 2.3 + 0.4 * uniform(random);
        for (int y = std::max(0, int(y0 - radius)); y < std::min<double>(side, y0 + radius); ++y) {
            for (int x = std::max(0, int(x0 - radius)); x < std::min<double>(side, x0 + radius); ++x) {
                const double distance = std::hypot(x - x0, y - y0) / radius;
                if (distance < 1)
                    values[static_cast<std::size_t>(y * side + x)] = core + 0.9 * std::pow(distance, 3) + noise(random);
            }
        }
    }
    std::fill_n(values.begin(), side * (side / 50), std::numeric_limits<double>::quiet_NaN());
    return values;
}

class Lines : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        const CColors lines(60);
        for (int i = 0; i < lines.colors.size(); ++i) {
            const QPoint at(20 + i / 15 * 150, 20 + i % 15 * 22);
            painter.setPen(QPen(lines.colors.at(i), 2));
            painter.drawLine(at, at + QPoint(90, 0));
            painter.drawText(at + QPoint(100, 5), QString::number(i));
        }
    }
};

} // namespace

std::unique_ptr<QWidget> makeMap(int side)
{
    auto display = std::make_unique<DispMBase>();
    DispMBase *const map = display.get();
    map->ui.Title->setText("Result map: valence");
    map->setLimits(2, 3.5);
    const std::vector<double> values = madeUpValences(side);
    QObject::connect(map, &DispMBase::draw, map, [map, values, side](QStylePainter *p) {
        ChCoord &cc = map->area()->cc;
        cc.setMargins();
        p->fillRect(map->area()->rect(), Qt::white);
        map->setRealRange(0, 0, side, side);
        ColourScale scale = map->bar()->colourScale();
        scale.notFinite = 0xff909090u;
        map->picture.update({values.data(), side, side}, scale, map->bar()->shownTable());
        map->picture.draw(p, cc);
        map->area()->drawScale(p, true);
    });
    QObject::connect(map, &DispMBase::nowPos, map, [map, values, side](double x, double y) {
        const bool inside = x >= 0 && y >= 0 && x < side && y < side;
        const auto at = [&] {
            return static_cast<std::size_t>(int(y) * side + int(x));
        };
        map->ui.Val->setText(inside ? QString::number(values[at()], 'g', 6) : QString());
    });
    map->headerMenu()->hideValues();
    map->resize(620, 560);
    return display;
}

std::unique_ptr<QWidget> makeBars()
{
    auto window = std::make_unique<QWidget>();
    auto *const layout = new QGridLayout(window.get());
    for (int type = 0; type < 12; ++type) {
        layout->addWidget(new QLabel(QString::number(type)), 0, type, Qt::AlignCenter);
        for (const bool stretched : {false, true}) {
            auto *const bar = new cBar;
            bar->setCBarType(type);
            if (stretched) {
                bar->setInvertCBar(type % 2 == 1);
                bar->idxAtTop = bar->nColors * 1.2;
                bar->idxAtBottom = bar->nColors * -0.3;
            }
            layout->addWidget(bar, stretched ? 2 : 1, type);
        }
    }
    layout->setRowStretch(1, 1);
    layout->setRowStretch(2, 1);
    window->resize(640, 620);
    return window;
}

std::unique_ptr<QWidget> makeLines()
{
    auto lines = std::make_unique<Lines>();
    lines->resize(600, 360);
    return lines;
}
