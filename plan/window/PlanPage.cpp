#include "plan/window/PlanPage.h"

#include "controls/NumberTyping.h"
#include "plan/PlanReport.h"
#include "plan/PlanText.h"
#include "plan/window/PlanTables.h"
#include "plan/window/PlanView.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>

#include <algorithm>
#include <utility>

namespace
{

constexpr QSize comfortable(1300, 690); // pixels, for a screen of 1366 x 768

const char *const fieldNames[] = {"PlanCount",   "PlanFrom",      "PlanTo",     "PlanStep",
                                  "PlanSpacing", "PlanKeep",      "PlanCounts", "PlanBackground",
                                  "PlanDeltaE",  "PlanThickness", "PlanSamples"};

} // namespace

PlanPage::PlanPage(std::function<AnalysisInput()> inputs, std::function<int()> emptyRows)
    : m_inputs(std::move(inputs))
    , m_emptyRows(std::move(emptyRows))
{
    setObjectName(QStringLiteral("PlanPage"));
    setWindowTitle(tr("Plan energies"));
    setAttribute(Qt::WA_QuitOnClose, false);
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(newInputs());
    layout->addWidget(newResults(), 1);
    connect(&m_run, &PlanRun::progress, m_progress, &QProgressBar::setValue);
    connect(&m_run, &PlanRun::finished, this, &PlanPage::showOutcome);
    resize(comfortable);
    refresh();
}

QWidget *PlanPage::newInputs()
{
    auto *const inputs = new QWidget;
    auto *const form = new QFormLayout(inputs);
    form->setContentsMargins(0, 0, 0, 0);
    form->setVerticalSpacing(4);
    m_subject = new QLabel;
    m_text = new QLabel;
    for (QLabel *const label : {m_subject, m_text}) {
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    }
    m_text->setObjectName(QStringLiteral("PlanText"));
    m_text->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    form->addRow(m_subject);
    addFields(form);
    addButtons(form);
    form->addRow(m_text);
    inputs->setFixedWidth(36 * fontMetrics().averageCharWidth() + 80);
    return inputs;
}

void PlanPage::addFields(QFormLayout *form)
{
    const auto add = [form](const QString &name, const QString &note, QWidget *field) {
        field->setToolTip(note);
        form->addRow(name, field);
    };
    for (std::size_t i = 0; i < planFieldCount; ++i) {
        const auto field = static_cast<PlanField>(i);
        m_fields[i] = new QLineEdit;
        m_fields[i]->setObjectName(QLatin1String(fieldNames[i]));
        if (field != PlanField::Keep && field != PlanField::Samples)
            new NumberTyping(m_fields[i]);
        if (field == PlanField::Counts) {
            m_mode = new QComboBox;
            m_mode->setObjectName(QStringLiteral("PlanMode"));
            m_mode->addItems({tr("Transmission"), tr("Fluorescence")});
            add(tr("Mode"), tr("How the maps will be measured: it gives the noise"), m_mode);
        }
        add(planFieldName(field), planFieldNote(field), m_fields[i]);
    }
    m_extraTerm = new QCheckBox(tr("One background term more than the fit"));
    m_extraTerm->setObjectName(QStringLiteral("PlanExtraTerm"));
    m_extraTerm->setChecked(true);
    m_extraTerm->setToolTip(tr("Plan as if the background had one term more, where the number of energies allows it: "
                               "without it the energies cluster at the edge and fail on real data"));
    form->addRow(m_extraTerm);
}

void PlanPage::addButtons(QFormLayout *form)
{
    m_plan = new QPushButton(tr("Plan"));
    m_plan->setObjectName(QStringLiteral("PlanB"));
    m_plan->setToolTip(tr("Plan the energies for the references loaded and the method that is set"));
    m_progress = new QProgressBar;
    m_progress->setRange(0, 100);
    m_use = new QPushButton(tr("Use these"));
    m_use->setObjectName(QStringLiteral("PlanUseB"));
    m_copy = new QPushButton(tr("Copy table"));
    m_copy->setObjectName(QStringLiteral("PlanCopyB"));
    m_copy->setToolTip(tr("Put the plan on the clipboard as text"));
    form->addRow(m_plan, m_progress);
    form->addRow(m_use, m_copy);
    connect(m_plan, &QPushButton::clicked, this, &PlanPage::startOrStop);
    connect(m_use, &QPushButton::clicked, this, &PlanPage::use);
    connect(m_copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(tableText()); });
}

QWidget *PlanPage::newResults()
{
    m_view = new PlanView;
    m_energies = newEnergyTable();
    m_sets = newSetTable();
    auto *const upper = new QSplitter(Qt::Horizontal);
    upper->addWidget(m_view);
    upper->addWidget(m_energies);
    upper->setStretchFactor(0, 1);
    upper->setSizes({560, 370});
    auto *const all = new QSplitter(Qt::Vertical);
    all->addWidget(upper);
    all->addWidget(m_sets);
    all->setStretchFactor(0, 1);
    all->setSizes({400, 260});
    return all;
}

bool PlanPage::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        refresh();
    return QFrame::event(event);
}

/// The window's inputs may be others by now.
void PlanPage::refresh()
{
    const PlanRequest request = planRequest(m_inputs());
    m_subject->setText(planSubject(request));
    for (std::size_t i = 0; i < planFieldCount; ++i)
        m_fields[i]->setPlaceholderText(planFieldDefault(static_cast<PlanField>(i), request));
    refreshUse();
}

void PlanPage::startOrStop()
{
    if (m_run.isRunning())
        m_run.stop();
    else
        plan();
}

void PlanPage::plan()
{
    if (m_run.isRunning())
        return;
    PlanFields fields;
    for (std::size_t i = 0; i < planFieldCount; ++i)
        fields.texts[i] = m_fields[i]->text();
    fields.isFluorescence = m_mode->currentIndex() == 1;
    fields.hasExtraTerm = m_extraTerm->isChecked();
    PlanRequest request = planRequest(m_inputs());
    const QString mistake = takeFields(fields, &request);
    if (!mistake.isEmpty()) { // what is shown stays
        say(mistake);
        return;
    }
    m_note = dropUnfitLists(&request);
    m_plan->setText(tr("Cancel"));
    m_use->setEnabled(false);
    say(QString());
    m_run.start(request);
}

void PlanPage::showOutcome()
{
    m_plan->setText(tr("Plan"));
    m_progress->reset();
    if (const PlanResult *const found = result()) {
        m_view->show(m_run.request(), *found);
        showEnergies(m_energies, m_run.request(), found->planned);
        showSets(m_sets, *found);
        const bool hasTerm = found->planned.hasExtraTerm;
        QStringList notes = {planText(hasTerm ? PlanText::WithExtraTerm : PlanText::WithoutExtraTerm)};
        if (std::any_of(found->byNumber.begin(), found->byNumber.end(),
                        [hasTerm](const PlannedSet &set) { return hasTerm && !set.hasExtraTerm; }))
            notes << planText(PlanText::Marked);
        if (!m_note.isEmpty())
            notes << m_note;
        say(notes.join(QLatin1Char('\n')));
    } else {
        m_view->clear();
        m_energies->setRowCount(0);
        m_sets->setRowCount(0);
        say(std::get<QString>(m_run.outcome()));
    }
    refreshUse();
}

void PlanPage::say(const QString &text) const
{
    m_text->setText(text);
}

const PlanResult *PlanPage::result() const
{
    return m_run.isRunning() ? nullptr : std::get_if<PlanResult>(&m_run.outcome());
}

QString PlanPage::tableText() const
{
    return result() ? planTable(m_run.request(), *result()) : QString();
}

void PlanPage::refreshUse()
{
    const int planned = result() ? static_cast<int>(result()->planned.energies.size()) : 0;
    const int empty = m_emptyRows();
    m_copy->setEnabled(planned > 0);
    m_use->setEnabled(planned > 0 && planned <= empty);
    m_use->setToolTip(planned > empty
                          ? tr("Only %1 energy rows are empty, the plan has %2 energies").arg(empty).arg(planned)
                          : tr("Fill the empty energy rows with the planned energies; rows with a map or an "
                               "energy stay as they are"));
}

void PlanPage::use()
{
    refreshUse(); // rows may have been filled meanwhile
    if (!m_use->isEnabled())
        return;
    QVector<double> energies;
    for (const double energy : result()->planned.energies)
        energies.append(energy);
    emit wanted(energies, planVPoint(m_run.request(), result()->planned));
    refresh();
}
