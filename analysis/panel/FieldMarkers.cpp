#include "analysis/panel/FieldMarkers.h"

#include "controls/Field.h"
#include "display/DispArea.h"
#include "display/MouseRecording.h"

#include <QLineEdit>

FieldMarkers::FieldMarkers(DispArea *area, QObject *parent)
    : QObject(parent)
    , m_area(area)
{
    area->markLines = &m_lines;
    connect(area, &DispArea::mPressed, this, &FieldMarkers::noteText);
    connect(&m_lines, &MarkLines::moving, this, &FieldMarkers::follow);
    connect(&m_lines, &MarkLines::newPos, this, &FieldMarkers::finish);
}

void FieldMarkers::noteText()
{
    m_isDragged = false;
    const MarkLine *const picked = m_lines.marks.value(m_lines.selected);
    if (picked && picked->edit)
        m_before = picked->edit->text();
}

void FieldMarkers::follow()
{
    m_isDragged = m_isDragged || !mouserecording::isBesidePress(m_area->mouse);
    if (m_isDragged)
        emit moving();
}

void FieldMarkers::finish()
{
    if (m_lines.selected < 0 || m_lines.selected >= m_lines.marks.size())
        return;
    QLineEdit *const field = m_lines.marks.at(m_lines.selected)->edit;
    if (!field)
        return;
    if (m_isDragged)
        emit edited(field, m_before);
    else
        showText(field, m_before);
}

void FieldMarkers::clear()
{
    m_lines.clear();
    m_marks.clear();
}

void FieldMarkers::add(QLineEdit *field, int base)
{
    constexpr int vertical = 0;
    m_marks.push_back(std::make_unique<MarkLine>(vertical, field));
    m_marks.back()->relative = base >= 0;
    m_marks.back()->baseIndex = base;
    m_lines.marks.append(m_marks.back().get());
}
