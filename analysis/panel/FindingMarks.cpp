#include "analysis/panel/FindingMarks.h"

#include "analysis/panel/PanelInputs.h"
#include "controls/FieldMark.h"

#include "ui_FourPs.h"

#include <QHash>
#include <QPalette>
#include <QStringList>

FindingMarks::FindingMarks(const Ui_FourPs &form, const PanelInputs &inputs)
    : ui(form)
    , m_inputs(inputs)
{
}

QWidget *FindingMarks::controlOf(const Finding &finding) const
{
    using Control = Finding::Control;
    using Place = Finding::Place;
    if (finding.control == Control::PreEdgeEnd)
        return ui.PreEEndDE;
    if (finding.control == Control::PostEdgeStart)
        return ui.PostEStartDE;
    if (finding.place == Place::Edge)
        return ui.EdgeE;
    if (finding.place == Place::Target)
        return m_inputs.target()->pathEdit();
    if (finding.place == Place::Reference)
        return finding.control == Control::Valence ? m_inputs.references().at(finding.row)->valenceEdit()
                                                   : m_inputs.selector(finding.row)->pathEdit();
    const AEPoint *const row = m_inputs.points().at(finding.row);
    return finding.control == Control::Energy ? row->energyEdit() : row->fileSelect()->pathEdit();
}

void FindingMarks::show(const QVector<Finding> &findings)
{
    QStringList all;
    QHash<QWidget *, QStringList> reasons;
    for (const Finding &finding : findings) {
        all << finding.text;
        reasons[controlOf(finding)] << finding.text;
    }
    for (QWidget *const control : qAsConst(m_marked)) {
        if (!reasons.contains(control))
            FieldMark::set(control, FieldMark::Why::Finding, QString());
    }
    m_marked.clear();
    for (auto entry = reasons.cbegin(); entry != reasons.cend(); ++entry) {
        FieldMark::set(entry.key(), FieldMark::Why::Finding, entry.value().join(QLatin1Char('\n')));
        m_marked.insert(entry.key());
    }
    QPalette colours = ui.StatusLine->parentWidget()->palette();
    if (!all.isEmpty())
        colours.setColor(QPalette::WindowText, QColor(190, 50, 0));
    ui.StatusLine->setPalette(colours);
    ui.StatusLine->setToolTip(all.join(QLatin1Char('\n')));
}
