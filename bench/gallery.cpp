// Shows what the display folder draws, on made-up data: gallery opens a window per item, gallery --shots DIR saves
// their pictures instead. QT_SCALE_FACTOR=2 shows them as on a fine screen.
#include "MapGallery.h"

#include "display/ColourBarMenu.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/HeaderMenu.h"
#include "display/Histgram.h"
#include "display/HistogramBins.h"
#include "display/MarkLine.h"
#include "display/PopBase.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFormLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPainterPath>
#include <QStylePainter>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace
{

const QColor gridColour(200, 200, 255);

/// A made-up absorption edge: mu at an energy in eV.
double edge(double energy, double e0)
{
    const double k = energy > e0 ? std::sqrt(0.2625 * (energy - e0)) : 0;
    const double step = 0.5 + std::atan((energy - e0) / 2) / 3.14159265;
    return 0.2 + step * (1 + 0.25 * std::exp(-std::pow((energy - e0 - 6) / 5, 2)) + 0.1 * std::sin(4 * k) / (1 + k));
}

void beginGraph(DispABase *dab, QStylePainter *p)
{
    dab->area()->cc.setMargins();
    p->fillRect(dab->area()->rect(), Qt::white);
}

void drawGrid(QStylePainter *p, const ChCoord &cc, double stepX, double stepY)
{
    p->setPen(gridColour);
    for (double x = std::ceil(cc.rx0() / stepX) * stepX; x < cc.rx1(); x += stepX)
        p->drawLine(QPointF(cc.r2sx(x), cc.isy0()), QPointF(cc.r2sx(x), cc.isy1()));
    for (double y = std::ceil(cc.ry0() / stepY) * stepY; y < cc.ry1(); y += stepY)
        p->drawLine(QPointF(cc.isx0(), cc.r2sy(y)), QPointF(cc.isx1(), cc.r2sy(y)));
}

void drawSpectrum(DispABase *dab, QStylePainter *p, double e0)
{
    beginGraph(dab, p);
    dab->setXYTitle("Eng.[eV]", "mut");
    dab->setRealRange(7080, 0, 7230, 1.6);
    const ChCoord &cc = dab->area()->cc;
    drawGrid(p, cc, cc.calcStep(0.1, 20), 0.2);
    QPainterPath curve(QPointF(cc.r2sx(7080), cc.r2sy(edge(7080, e0))));
    for (double energy = 7080; energy <= 7230; energy += 0.5)
        curve.lineTo(cc.r2sx(energy), cc.r2sy(edge(energy, e0)));
    p->setRenderHint(QPainter::Antialiasing);
    p->strokePath(curve, QPen(Qt::blue, 1.5));
    p->setRenderHint(QPainter::Antialiasing, false);
    const MarkLines *const marks = dab->area()->markLines;
    for (int i = 0; marks && i < marks->marks.size(); ++i) {
        p->setPen(QPen(marks->selected == i ? Qt::red : Qt::darkGreen, 1, Qt::DashLine));
        const double at = marks->position(i);
        if (marks->marks.at(i)->isVertical())
            p->drawLine(QPointF(cc.r2sx(at), cc.isy0()), QPointF(cc.r2sx(at), cc.isy1()));
        else
            p->drawLine(QPointF(cc.isx0(), cc.r2sy(at)), QPointF(cc.isx1(), cc.r2sy(at)));
    }
    dab->area()->drawScale(p, true);
}

void drawHistogram(DispABase *dab, QStylePainter *p, const HistogramBins &bins)
{
    beginGraph(dab, p);
    dab->setXYTitle("Valence", "Num.");
    dab->setRealRange(bins.min, -0.1 * bins.largestCount(), bins.max, 1.1 * bins.largestCount());
    const ChCoord &cc = dab->area()->cc;
    drawGrid(p, cc, cc.calcStep(0.1, 20), bins.largestCount() / 5.0);
    p->setPen(Qt::black);
    p->setBrush(QColor(170, 200, 255));
    for (int i = 0; i < bins.n; ++i) {
        const QPointF top(cc.r2sx(bins.lowerEdge(i)), cc.r2sy(bins.counts.at(i)));
        p->drawRect(QRectF(top, QPointF(cc.r2sx(bins.upperEdge(i)), cc.r2sy(0))));
    }
    dab->area()->drawScale(p, true);
}

/// A spectrum with markers whose fields stand below it: the third is an offset from the second.
std::unique_ptr<QWidget> makeGraph()
{
    auto window = std::make_unique<QWidget>();
    auto *const layout = new QFormLayout(window.get());
    auto *const dab = new DispABase;
    dab->xTitleInArea = dab->yTitleInArea = true;
    dab->ui.Title->setText("Spectrum");
    dab->setMinimumSize(500, 380);
    layout->addRow(dab);
    auto *const marks = new MarkLines(dab);
    const std::pair<const char *, const char *> fields[] = {
        {"E0 [eV]", "7112"}, {"From [eV]", "7150"}, {"To, from there", "50"}};
    for (const auto &[name, value] : fields) {
        auto *const edit = new QLineEdit(value);
        layout->addRow(name, edit);
        marks->marks.append(new MarkLine(0, edit, marks));
        QObject::connect(edit, &QLineEdit::textChanged, dab, [dab] { dab->update(); });
    }
    marks->marks.at(2)->relative = true;
    marks->marks.at(2)->baseIndex = 1;
    dab->area()->markLines = marks;
    QObject::connect(marks, &MarkLines::moving, dab, [dab] { dab->area()->update(); });
    QObject::connect(dab, &DispABase::draw, dab, [dab](QStylePainter *p) { drawSpectrum(dab, p, 7112); });
    dab->headerMenu()->setValues([] {
        QString text;
        for (int energy = 7080; energy <= 7230; ++energy)
            text += QStringLiteral("%1\t%2\n").arg(energy).arg(edge(energy, 7112));
        return text;
    });
    return window;
}

HistogramBins makeBins()
{
    HistogramBins bins;
    bins.setBoxes(1.5, 3.5, 51);
    std::mt19937 random(1);
    std::normal_distribution<double> reduced(2.1, 0.15), oxidised(2.9, 0.2);
    for (int i = 0; i < 20000; ++i)
        bins.add(i % 3 ? reduced(random) : oxidised(random));
    return bins;
}

std::unique_ptr<QWidget> makeDisplays()
{
    auto displays = std::make_unique<Displays>();
    const HistogramBins bins = makeBins();
    QObject::connect(displays.get(), &Displays::draw, displays.get(),
                     [bins](Displays::DispId id, DispABase *dab, QStylePainter *p) {
                         if (id == Displays::HistA || id == Displays::HistDMut)
                             drawHistogram(dab, p, bins);
                         else
                             drawSpectrum(dab, p, 7112 + 4 * id);
                     });
    return displays;
}

/// Texts fitted into boxes of several shapes.
class Texts : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QStylePainter p(this);
        p.fillRect(rect(), Qt::white);
        DrawText text;
        for (int i = 0; i < 8; ++i) {
            const QRectF box(10, 10 + 46 * i, 30 + 40 * i, 10 + 4 * i);
            p.setPen(gridColour);
            p.drawRect(box);
            p.setPen(Qt::black);
            text.drawText(&p, box, font(), Qt::AlignCenter, 1, "Fitted: 7112.5 eV", 0);
            const QRectF capped = box.translated(330, 0);
            p.setPen(gridColour);
            p.drawRect(capped);
            p.setPen(Qt::black);
            text.drawText(&p, capped, font(), Qt::AlignRight | Qt::AlignVCenter, 1, "7112.5", 12);
        }
    }
};

std::unique_ptr<QWidget> makeTexts()
{
    auto texts = std::make_unique<Texts>();
    texts->resize(700, 390);
    return texts;
}

struct Item {
    QString name;
    std::function<std::unique_ptr<QWidget>()> make;
};

/// Saves a display popped out, its picture and the window after docking.
template <class Display>
void shootDisplay(Display *display, QWidget *window, const QString &name)
{
    display->popDock();
    QApplication::processEvents();
    display->pop->grab().save(name + "-popped.png");
    for (const char *const suffix : {".png", ".pdf"}) {
        display->headerMenu()->askFileName = [&](const QString &) {
            return name + "-saved" + suffix;
        };
        display->headerMenu()->menu->actions().at(1)->trigger();
    }
    display->popDock();
    QApplication::processEvents();
    window->grab().save(name + "-docked.png");
}

/// Saves a window as on screen, and more of its first display.
void shoot(QWidget *window, const QString &name)
{
    window->grab().save(name + ".png");
    if (auto *const map = qobject_cast<DispMBase *>(window))
        shootDisplay(map, window, name);
    else if (auto *const graph = window->findChild<DispABase *>())
        shootDisplay(graph, window, name);
    if (auto *const menu = window->findChild<ColourBarMenu *>()) {
        menu->setChosen(4, true);
        menu->popup(QPoint());
        menu->grab().save(name + "-menu.png");
        menu->close();
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser arguments;
    const QCommandLineOption shots("shots", "Save pictures into this folder.", "folder");
    const QCommandLineOption size("size", "Give the windows this size.", "1366x768");
    arguments.addOption(shots);
    arguments.addOption(size);
    arguments.addHelpOption();
    arguments.process(application);

    const Item items[] = {{"graph", makeGraph},
                          {"displays", makeDisplays},
                          {"texts", makeTexts},
                          {"map",
                           [] {
                               return makeMap(2048);
                           }},
                          {"small-map",
                           [] {
                               return makeMap(50);
                           }},
                          {"bars", makeBars},
                          {"lines", makeLines}};
    const QStringList sides = arguments.value(size).split('x');
    std::vector<std::unique_ptr<QWidget>> windows;
    for (const Item &item : items) {
        windows.push_back(item.make());
        windows.back()->setAttribute(Qt::WA_QuitOnClose); // here every window counts
        if (arguments.isSet(size))
            windows.back()->resize(sides.first().toInt(), sides.last().toInt());
        windows.back()->show();
        QApplication::processEvents();
        if (arguments.isSet(shots))
            shoot(windows.back().get(), QDir(arguments.value(shots)).filePath(item.name));
    }
    return arguments.isSet(shots) ? 0 : QApplication::exec();
}
