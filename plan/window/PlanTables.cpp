#include "plan/window/PlanTables.h"

#include "numeric/FieldText.h"
#include "plan/PlanReport.h"
#include "plan/PlanText.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QStringList>
#include <QTableWidget>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("PlanPage", text);
}

QTableWidget *newTable(const char *name, const QStringList &titles)
{
    auto *const table = new QTableWidget(0, titles.size());
    table->setObjectName(QLatin1String(name));
    table->setHorizontalHeaderLabels(titles);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}

void addLine(QTableWidget *table, const QStringList &cells, const QVector<int> &texts)
{
    const int row = table->rowCount();
    table->setRowCount(row + 1);
    for (int column = 0; column < cells.size(); ++column) {
        auto *const item = new QTableWidgetItem(cells[column]);
        const bool isText = texts.contains(column);
        item->setTextAlignment(Qt::AlignVCenter | (isText ? Qt::AlignLeft : Qt::AlignRight));
        if (isText)
            item->setToolTip(cells[column]);
        table->setItem(row, column, item);
    }
}

void addSet(QTableWidget *table, const QString &name, const PlannedSet &set)
{
    QStringList energies;
    for (const double energy : set.energies)
        energies << fieldText(energy);
    const auto number = [](double value) {
        return QString::number(value, 'f', 4);
    };
    addLine(table,
            {name, number(set.sigmaV), number(set.sigmaVAtShares), number(set.valencePerTenthEv),
             energies.join(QLatin1Char(' '))},
            {0, 4});
}

} // namespace

QTableWidget *newEnergyTable()
{
    QTableWidget *const table = newTable("PlanEnergyTable", {translated(QT_TRANSLATE_NOOP("PlanPage", "Energy [eV]")),
                                                             translated(QT_TRANSLATE_NOOP("PlanPage", "Share [%]")),
                                                             translated(QT_TRANSLATE_NOOP("PlanPage", "Separates"))});
    table->setToolTip(translated(QT_TRANSLATE_NOOP(
        "PlanPage", "The planned energies, the share of the whole exposure that each should get, and what it tells")));
    return table;
}

QTableWidget *newSetTable()
{
    QTableWidget *const table =
        newTable("PlanSetTable", {translated(QT_TRANSLATE_NOOP("PlanPage", "Set")), QStringLiteral("σV"),
                                  translated(QT_TRANSLATE_NOOP("PlanPage", "σV at shares")),
                                  translated(QT_TRANSLATE_NOOP("PlanPage", "ΔV / 0.1 eV")),
                                  translated(QT_TRANSLATE_NOOP("PlanPage", "Energies [eV]"))});
    table->setToolTip(translated(QT_TRANSLATE_NOOP(
        "PlanPage",
        "Standard error of the valence of a pixel at equal exposures and at the best shares, and the change "
        "of the valence when all energies are wrong by the same 0.1 eV; roots of the mean squares over the "
        "samples")));
    return table;
}

void showEnergies(QTableWidget *table, const PlanRequest &request, const PlannedSet &set)
{
    table->setRowCount(0);
    for (std::size_t k = 0; k < set.energies.size(); ++k) {
        QString role = planRoleText(request, set.roles[k]);
        if (set.vPoint == static_cast<int>(k))
            role += QLatin1String(", V");
        addLine(table, {fieldText(set.energies[k]), QString::number(100.0 * set.shares[k], 'f', 1), role}, {2});
    }
    table->resizeRowsToContents(); // names of files are long
}

void showSets(QTableWidget *table, const PlanResult &result)
{
    table->setRowCount(0);
    addSet(table, planText(PlanText::Planned), result.planned);
    for (const PlannedSet &set : result.compared)
        addSet(table, set.name, set);
    for (const PlannedSet &set : result.byNumber) {
        const bool isPlain = result.planned.hasExtraTerm && !set.hasExtraTerm;
        const QString name = translated(QT_TRANSLATE_NOOP("PlanPage", "%1 energies"));
        addSet(table, name.arg(set.energies.size()) + (isPlain ? QLatin1String(" *") : QLatin1String()), set);
    }
}
