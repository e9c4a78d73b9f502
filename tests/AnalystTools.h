#pragma once

#include "PanelTools.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "samples/SampleTexts.h"

#include <QClipboard>
#include <QMenu>

/// A user who analyses the sample, and the truth that he should find.
namespace paneltools
{

struct TruePixel {
    double x, y, fractions[3], thickness, valence;
};

/// What truth.txt says, pixel by pixel.
inline QVector<TruePixel> readTruth(const QString &path)
{
    QVector<TruePixel> pixels;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return pixels;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() != 7 || line.startsWith('#'))
            continue;
        double values[7];
        for (int i = 0; i < 7; ++i)
            values[i] = words.at(i).toDouble();
        pixels.append({values[0], values[1], {values[2], values[3], values[4]}, values[5], values[6]});
    }
    return pixels;
}

inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot open");
}

/// A user who has loaded the whole sample and has calculated with one method.
class Analyst : public User
{
public:
    explicit Analyst(const SampleFiles &files, const char *method = "TypeNonEquiv")
    {
        click("EdgeFixed");
        type("EdgeE", QString::number(sample::edgeEnergy));
        QStringList maps;
        for (int i = 1; i <= sample::mapCount; ++i)
            maps += files.map(i);
        choose("MapFsSelect", maps);
        for (int i = 1; i <= sample::referenceCount; ++i) {
            load(reference(i), files.reference(i));
            rowtools::type(reference(i)->valenceEdit(), QString::number(sample::valences[i - 1]));
        }
        load(target(), files.target());
        clickIn(row(sample::vPoint + 1), "VPointCB");
        const bool fourPoints = QLatin1String(method) == QLatin1String("TypeFourPs");
        for (int i = 0; i < sample::mapCount; ++i) {
            if (!fourPoints || i == sample::vPoint || sample::isAnchor[i])
                clickIn(row(i + 1), "UseCB");
        }
        useReferences(fourPoints ? "12" : "123");
        click(method);
        panel.calcBoth();
        takeMessages();
    }

    const ResultRecords &results() { return panel.analysis().results(); }
    DispMBase *map() { return find<DispMBase>("ResultMap"); }
    QString limits() { return map()->ui.MinV->text() + " to " + map()->ui.MaxV->text(); }
    QString ratio(int i) { return reference(i)->findChild<QLineEdit *>("RatioDisp")->text(); }
    QString amount(int i) { return reference(i)->findChild<QLineEdit *>("AmountDisp")->text(); }
    double jump(int i) { return reference(i)->selector()->spectrum().edgeJump(); }

    QString writeTo(const QString &path)
    {
        AFileSelect *const select = find<AFileSelect>("SaveFSelect");
        select->findChild<QLineEdit *>("FileName")->clear();
        rowtools::type(select->findChild<QLineEdit *>("FileName"), path);
        takeMessages();
        click("WriteB");
        return takeMessages();
    }
    /// What "Copy values" of a display's header menu gives.
    QStringList copied(HeaderMenu *menu)
    {
        for (QAction *const action : menu->menu->actions()) {
            if (action->text().remove('&') == "Copy values")
                action->trigger();
        }
        return QApplication::clipboard()->text().trimmed().split('\n');
    }
    QStringList comparisons() { return copied(panel.displays()->dabs[Displays::LcfVsMps]->headerMenu()); }
};

} // namespace paneltools
