#pragma once

#include "PanelTools.h"
#include "display/DispABase.h"
#include "display/DispMBase.h"
#include "display/HeaderMenu.h"
#include "samples/SampleTexts.h"

#include <QClipboard>
#include <QMenu>

/// A user who analyses the sample.
namespace paneltools
{

using tables::bytesOf;

/// A user who has loaded the whole sample and has calculated with one method.
class Analyst : public User
{
public:
    explicit Analyst(const SampleFiles &files, const char *method = "TypeNonEquiv")
    {
        keepEdge(QString::number(sample::edgeEnergy));
        QStringList maps;
        for (int i = 1; i <= sample::mapCount; ++i)
            maps += files.map(i);
        choose("MapFsSelect", maps);
        load(files, "123", true);
        for (int i = 1; i <= sample::referenceCount; ++i)
            type(QString("Ref%1File/Valence").arg(i), QString::number(sample::valences[i - 1]));
        const bool isFourPoints = QLatin1String(method) == QLatin1String("TypeFourPs");
        if (isFourPoints) // all are used, the third, nearest to the edge, as V point
            tick("45", "UseCB");
        useReferences(isFourPoints ? "12" : "123");
        click(method);
        panel.calcBoth();
        takeMessages();
    }

    const ResultRecords &results() { return panel.analysis().results(); }
    DispMBase *map() { return find<DispMBase>("ResultMap"); }
    QString limits() { return text("ResultMap/MinV") + " to " + text("ResultMap/MaxV"); }
    QString ratio(int i) { return text(QString("Ref%1File/RatioDisp").arg(i)); }
    QString amount(int i) { return text(QString("Ref%1File/AmountDisp").arg(i)); }
    double jump(int i) { return reference(i)->selector()->spectrum().edgeJump(); }

    QString writeTo(const QString &path)
    {
        type("SaveFSelect/FileName", path);
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
    /// An entry of the result map's header menu.
    void chooseInMap(const QString &entry)
    {
        for (QAction *const action : map()->headerMenu()->menu->actions()) {
            if (action->text() == entry)
                action->trigger();
        }
    }
    QStringList comparisons() { return copied(panel.displays()->dabs[Displays::LcfVsMps]->headerMenu()); }
};

} // namespace paneltools
