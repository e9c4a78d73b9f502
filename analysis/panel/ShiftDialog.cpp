#include "analysis/panel/ShiftDialog.h"

#include "analysis/shift/MapShift.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

ShiftDialog::ShiftDialog(const AnalysisInput &input, QWidget *parent)
    : QDialog(parent)
    , m_input(input)
    , m_text(new QLabel(tr("Looking for the energy shift of the maps...")))
    , m_progress(new QProgressBar)
{
    setObjectName(QStringLiteral("ShiftDialog"));
    setWindowTitle(tr("Energy shift of the maps"));
    setWindowModality(Qt::ApplicationModal);
    auto *const layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize); // it grows with its text
    m_text->setObjectName(QStringLiteral("ShiftText"));
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setFixedWidth(60 * m_text->fontMetrics().averageCharWidth());
    m_progress->setRange(0, 0);
    layout->addWidget(m_text);
    layout->addWidget(m_progress);
    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_close = buttons->button(QDialogButtonBox::Close);
    m_apply = buttons->addButton(tr("Apply"), QDialogButtonBox::ActionRole);
    m_apply->setToolTip(tr("Add the shift to the dE of all references and calculate"));
    m_close->setText(tr("Close"));
    m_close->setDefault(true); // nothing is applied by a mere Return
    m_apply->setAutoDefault(false);
    m_apply->setEnabled(false);
    m_close->setEnabled(false);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &ShiftDialog::reject);
    connect(m_apply, &QPushButton::clicked, this, [this] {
        accept();
        emit applied(m_found.shift);
    });
    connect(&m_work, &BackgroundWork::finished, this, [this] { show(m_found); });
    m_work.start([this] { m_found = findMapShift(m_input); });
}

void ShiftDialog::show(const EnergyShift &found)
{
    m_text->setText(textOf(found));
    m_progress->hide();
    m_apply->setEnabled(found.isFound());
    m_close->setEnabled(true);
    m_close->setFocus();
}

void ShiftDialog::reject()
{
    if (!m_work.isRunning())
        QDialog::reject();
}
